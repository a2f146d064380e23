"""What two ways of doing the same thing cost, measured in turns, and the one line that says so."""

from statistics import median, quantiles


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
    singles = [one / other for one, other in pairs]
    low, _, high = quantiles(singles, n=4) if len(singles) > 1 else (singles[0],) * 3
    return (f"{name} {first / second:.2f}  ({first * 1e3:.1f} ms against {second * 1e3:.1f} ms, "
            f"{len(pairs)} pairs, middle half {low:.2f} to {high:.2f})")
