"""What changes between two pictures of the same place on the screen, and what that says about a text."""

from itertools import chain
from typing import NamedTuple

# Parts of one change that are no farther apart than this belong together: the dot of an i, the caret after a letter.
_ROWS_APART = 4
_COLUMNS_APART = 16
# A caret that blinks changes no more pixels than this, twice as wide on a sharp display included.
_CARET = 160


class Box(NamedTuple):
    """A part of a picture; `right` and `bottom` are the first column and row beyond it."""

    left: int
    top: int
    right: int
    bottom: int


class Picture:
    """Pixels of 4 bytes, row by row."""

    def __init__(self, width, pixels):
        self._width = width
        self._pixels = memoryview(pixels).cast("I")

    def _rows(self):
        return (self._pixels[start:start + self._width] for start in range(0, len(self._pixels), self._width))

    def changed_rows(self, later):
        """Row -> its columns that differ in a later picture; only rows that have some."""
        return {row: [column for column, (one, other) in enumerate(zip(before, after)) if one != other]
                for row, (before, after) in enumerate(zip(self._rows(), later._rows(), strict=True))
                if before != after}


def _groups(numbers, apart):
    """Runs of sorted numbers in which neighbours are no farther apart than this."""
    groups = []
    for number in numbers:
        if groups and number - groups[-1][-1] <= apart:
            groups[-1].append(number)
        else:
            groups.append([number])
    return groups


def changes(before, after):
    """The boxes around what differs between two pictures."""
    return list(_boxes(before.changed_rows(after)))


def _boxes(differing):
    """Cuts along empty rows and columns until there is nothing left to cut."""
    bands = _groups(sorted(differing), _ROWS_APART)
    for band in bands:
        groups = _groups(sorted(set(chain.from_iterable(differing[row] for row in band))), _COLUMNS_APART)
        for columns in groups:
            left, right = columns[0], columns[-1] + 1
            if len(bands) == len(groups) == 1:
                yield Box(left, band[0], right, band[-1] + 1)
            else:
                kept = {row: [one for one in differing[row] if left <= one < right] for row in band}
                yield from _boxes({row: ones for row, ones in kept.items() if ones})


def growing_line(steps):
    """The line that was typed in: the one change whose right edge moves on with every key. `steps` has the boxes of
    each key. None if there is no such change."""
    best = None
    for start in steps[0]:
        line = start
        for boxes in steps[1:]:
            nexts = [one for one in boxes if one.top < line.bottom and line.top < one.bottom
                     and line.right < one.right and one.left <= line.right + _COLUMNS_APART]
            if not nexts:
                break
            found = min(nexts, key=lambda one: one.right)
            line = Box(min(line.left, found.left), min(line.top, found.top), found.right,
                       max(line.bottom, found.bottom))
        else:
            if best is None or line.bottom - line.top > best.bottom - best.top:
                best = line
    return best


def right_edge(before, after):
    """The first column to the right of all that differs; None if nothing does."""
    ends = [columns[-1] + 1 for columns in before.changed_rows(after).values()]
    return max(ends, default=None)


def completion(frames):
    """When a place on the screen got its final look. `frames` has for each look the time and the number of pixels
    in which it differs from the last one. A caret may go on blinking."""
    when = frames[-1][0]
    for time, differing in reversed(frames):
        if differing > _CARET:
            break
        when = time
    return when
