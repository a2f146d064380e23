"""Prints the lines of the benchmarks as a table, with the aims and whether this run met them."""

import re
import sys

# The greatest ratio that is aimed at, by the beginning of a line's name. What has none is there to be read.
_AIMS = (
    ("launch/bare-window first-script", 1.10),
    ("launch/bare-window page-ready", 1.10),
    ("launch/bare-window can-type", 1.10),
    ("save/write+flush+rename", 1.15),
    ("scanner/simdjson-dom", 1.00),
    # Parts of a time that is not to be passed.
    ("typing/one-frame quendo", 1.00),
    ("typing/bare-editor thread-a-key", 1.80),
    ("search/50ms", 1.00),
    ("page-save/10ms serialise", 1.00),
    ("screen/bare-textarea key-to-pixel-longest", None),
    ("screen/bare-textarea key-to-pixel", 1.15),
    ("screen/bare-textarea processor-a-key", 1.40),
    ("screen/bare-textarea processor-idle", 1.10),
    ("screen/mini-browser text", 1.10),
    ("screen/chromium-app text", 1.00),
    ("screen/gnome-text-editor text", 1.00),
    # Bytes per byte.
    ("memory/40MB", 1.00),
    ("memory/document started", 8.00),
    ("memory/document saved", 8.00),
    ("memory/document start-peak", 12.00),
    ("memory/document save-peak", 12.00),
)
_LINE = re.compile(r"(\S.*?)\s+(\d+\.\d+)\s+\((.*)\)")


def rows(lines, quick):
    for line in lines:
        found = _LINE.fullmatch(line.strip())
        if not found:
            raise SystemExit(f"This is no line of a benchmark: {line.strip()}")
        name, ratio, detail = re.sub(r"\s+", " ", found[1]), float(found[2]), found[3]
        aim = next((aim for start, aim in _AIMS if name.startswith(start)), None)
        if aim is None:
            yield name, found[2], "", "", detail
        else:
            # Rounded as it is shown, so that what is read as the aim also counts as it.
            met = "" if quick else "met" if round(ratio, 2) <= aim else "not met"
            yield name, found[2], f"{aim:.2f}", met, detail


def main():
    table = [("what / against what", "ratio", "aim", "", "medians"),
             *rows(sys.stdin.read().splitlines(), "--quick" in sys.argv)]
    widths = [max(len(row[column]) for row in table) for column in range(4)]
    for name, ratio, aim, met, detail in table:
        print(f"{name:<{widths[0]}}  {ratio:>{widths[1]}}  {aim:>{widths[2]}}  {met:<{widths[3]}}  {detail}".rstrip())
    if "--quick" in sys.argv:
        print("\nA quick run: it shows that the benchmarks work, not how fast anything is.")


if __name__ == "__main__":
    main()
