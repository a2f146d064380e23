"""What two ways of doing the same thing cost, measured in turns, and the one line that says so.

As a program: makes one line of the pairs of each name that the plain benchmarks print (bench/InTurns.h).
"""

import sys
from itertools import groupby
from statistics import mean, median, quantiles

# A page's clock counts in milliseconds. What it takes for no time took half of one, for all that is known.
_SHORTEST = 0.0005


def in_turns(pairs, first, second, warm_up=True):
    """Runs both once unmeasured, then `pairs` times in turns, each going first every other time. Both return
    what they measured, as a dictionary from name to seconds. Returns name -> list of (first, second)."""
    if warm_up:
        first(), second()
    measured = {}
    for pair in range(pairs):
        if pair % 2 == 0:
            one, other = first(), second()
        else:
            other, one = second(), first()
        for name in one:
            measured.setdefault(name, []).append((one[name], other[name]))
    return measured


def line(name, pairs):
    """`pairs` holds (first, second) in seconds. The ratio is the one of the medians; the spread is that of the
    middle half of the single pairs' ratios."""
    first, second = median(one for one, _ in pairs), median(other for _, other in pairs)
    singles = [one / (other or _SHORTEST) for one, other in pairs]
    low, _, high = quantiles(singles, n=4) if len(singles) > 1 else (singles[0],) * 3
    ratio = first / (second or _SHORTEST)
    return (f"{name} {ratio:.{2 if ratio >= 0.1 else 3}f}  ({first * 1e3:.1f} ms against {second * 1e3:.1f} ms, "
            f"{len(pairs)} pairs, middle half {low:.2f} to {high:.2f})")


def part(values, share):
    """The value that this share of them does not exceed."""
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, int(len(ordered) * share))]


def _described(values):
    return (f"median {median(values) * 1e3:.1f}, mean {mean(values) * 1e3:.2f}, 99th {part(values, 0.99) * 1e3:.1f}, "
            f"longest {max(values) * 1e3:.1f} ms")


def values_line(name, first, second):
    """Many single times in seconds on each side, by a page's clock. That is coarse, which a mean of many evens out
    and a median does not, so that the ratio is the one of the means."""
    return (f"{name} {mean(first) / (mean(second) or _SHORTEST):.2f}  ({_described(first)}; against {_described(second)}; "
            f"{len(first)} and {len(second)} times)")


def limit_line(name, values, limit, share=0.99):
    """What all but the rarest of many times make of a limit that is not to be passed."""
    over = sum(one > limit for one in values)
    return (f"{name} {part(values, share) / limit:.2f}  ({_described(values)}; {over} of {len(values)} times over "
            f"{limit * 1e3:.0f} ms)")


def main():
    pairs = (row.rstrip("\n").split("\t") for row in sys.stdin)
    for name, several in groupby(pairs, lambda pair: pair[0]):
        print(line(name, [(float(first), float(second)) for _, first, second in several]), flush=True)


if __name__ == "__main__":
    main()
