"""The screen and the keyboard, through the helper that watches pixels."""

import subprocess
import time

from pixels import Picture, changes, growing_line, right_edge
from programs import BUILD
from harness import desktop

RETURN = 0xFF0D
# The next letter and the caret behind it are no wider.
_NEXT_LETTER = 48
# A caret may have been dark when the end of the line was looked for; no letter is as narrow.
_CARET = 2
_ROWS_AROUND = 3
# Empty lines that are added to the text, and the way back up into their middle, away from scroll bars.
_LINES_BELOW, _LINES_BACK = 14, 9
# Until a view has come to rest.
_STILL = 1


class Screen:
    """All places are (x, y, width, height) in pixels of the screen."""

    def __init__(self):
        self._helper = subprocess.Popen([BUILD / "bin" / "screen_watch"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)

    def _tell(self, *words):
        self._helper.stdin.write((" ".join(str(word) for word in words) + "\n").encode())
        self._helper.stdin.flush()

    def _numbers(self):
        line = self._helper.stdout.readline()
        if not line:
            raise RuntimeError(f"screen_watch ended with status {self._helper.wait()}")
        return [float(word) for word in line.split()]

    def picture(self, place):
        self._tell("picture", *place)
        return Picture(place[2], self._helper.stdout.read(place[2] * place[3] * 4))

    def press(self, key, place, timeout=2.0):
        """Presses a key and returns the seconds until the first pixel of the place changed; None if none did."""
        self._tell("press", key, *place, timeout)
        seconds, = self._numbers()
        return seconds if seconds >= 0 else None

    def type(self, keys, pace):
        """Presses keys without looking at the screen."""
        self._tell("type", pace, *keys)
        self._numbers()

    def start_recording(self, place, quiet, timeout):
        """Keeps all looks of a place until it has been filled and then still for `quiet` seconds."""
        self._tell("record", *place, quiet, timeout)
        self._helper.stdout.readline()

    def recorded(self):
        """(time of the first change on the whole screen, list of what `completion` takes)."""
        first, _count, *frames = self._numbers()
        return first, list(zip(frames[::2], frames[1::2], strict=True))

    def resolution(self, count):
        """The seconds after which the helper noticed each of so many drawings."""
        self._tell("resolution", count)
        return self._numbers()

    def close(self):
        self._helper.stdin.close()
        self._helper.wait(10)


class Line:
    """An empty line below the text in a window, found by typing in it."""

    def __init__(self, screen, window):
        self._screen = screen
        place = desktop.geometry(window)
        # With a rest in between: GTK's text views scroll only as far as the last of many keys demands.
        for keys in (["ctrl+End"] + ["Return"] * _LINES_BELOW, ["Up"] * _LINES_BACK):
            desktop.press(*keys)
            time.sleep(_STILL)
        steps, before = [], screen.picture(place)
        for letter in "nome":
            screen.press(ord(letter), place)
            time.sleep(0.35)
            after = screen.picture(place)
            steps.append(changes(before, after))
            before = after
        line = growing_line(steps)
        if line is None:
            raise RuntimeError(f"no line grew in the window {window.title!r}: {steps}")
        self._top = max(place[1], place[1] + line.top - _ROWS_AROUND)
        self._height = line.bottom - line.top + 2 * _ROWS_AROUND
        self._edge = place[0] + line.right

    def press(self, letter, rest):
        """Presses a letter and returns the seconds until the first pixel to the right of everything in the line
        changed: neither a blinking caret nor a mark under a word is there. Looks for the new end of the line
        `rest` seconds later."""
        behind = (self._edge + _CARET, self._top, _NEXT_LETTER, self._height)
        before = self._screen.picture(behind)
        seconds = self._screen.press(ord(letter), behind)
        time.sleep(rest)
        end = right_edge(before, self._screen.picture(behind))
        if end is not None:
            self._edge += _CARET + end
        return seconds
