"""What the programs on the screen took, as lines of ratios and as the table in the document."""

from statistics import median

from ratios import part

_BEGIN, _END = "<!-- screen -->", "<!-- end of screen -->"


class _Measure:
    def __init__(self, title, source, summary, scale, unit):
        self.title = title
        self.source = source  # The name of the values in Results.
        self.summary = summary
        self._scale = scale
        self._unit = unit

    def text(self, value):
        return f"{value * self._scale:.{1 if value * self._scale < 10 else 0}f} {self._unit}"


def _late(values):
    return part(values, 0.95)


_MEASURES = {
    "window": _Measure("to the window", "window", median, 1e3, "ms"),
    "text": _Measure("to the text", "text", median, 1e3, "ms"),
    "key-to-pixel": _Measure("key to pixel", "key", median, 1e3, "ms"),
    "key-to-pixel-95th": _Measure("95th of it", "key", _late, 1e3, "ms"),
    "key-to-pixel-longest": _Measure("longest", "key", max, 1e3, "ms"),
    "processor-a-key": _Measure("processor a key", "processor", median, 1e3, "ms"),
    "processor-idle": _Measure("processor idle", "idle", median, 100, "%"),
    "memory": _Measure("memory", "memory", median, 1e-6, "MB"),
    "memory-after-an-hour": _Measure("after an hour", "hour", median, 1e-6, "MB"),
}
# The kernel counts time in hundredths of a second; a ratio to less than one of them, in five seconds or
# for forty keys, would say nothing.
_LEAST = {"processor-idle": 0.002, "processor-a-key": 0.00025}


class Results:
    """Program -> name of a value -> its values. The first program is the one that all others are compared with."""

    def __init__(self):
        self._values = {}
        self._drawn_by = {}

    def add(self, program, **values):
        of_program = self._values.setdefault(program, {})
        for name, several in values.items():
            of_program.setdefault(name, []).extend(several)

    def drawn_by(self, program, what):
        self._drawn_by[program] = what

    def leave_out(self, program):
        self._values.pop(program, None)

    def _summary(self, program, name):
        return _MEASURES[name].summary(self._values[program][_MEASURES[name].source])

    def _ratio(self, other, name):
        first = self._summary(next(iter(self._values)), name)
        return first / max(self._summary(other, name), _LEAST.get(name, 0))

    def lines(self):
        """A line for each other program and measure, as all benchmarks print them."""
        first, *others = self._values
        for other in others:
            for name, measure in _MEASURES.items():
                one, another = (measure.text(self._summary(program, name)) for program in (first, other))
                yield (f"screen/{other} {name} {self._ratio(other, name):.2f}  ({one} against {another}, "
                       f"{len(self._values[first][measure.source])} and {len(self._values[other][measure.source])} "
                       "values)")

    def table(self, heading, missing):
        """Markdown: the first program's own values, and below them its ratio to each other one's."""
        first, *others = self._values
        rows = [f"### On the screen: {heading}", "",
                "| | " + " | ".join(one.title for one in _MEASURES.values()) + " | drawn by |",
                "|---" * (len(_MEASURES) + 2) + "|",
                self._row(first, lambda name, value: value),
                *(self._row(other, lambda name, value: f"{self._ratio(other, name):.2f} ({value})")
                  for other in others)]
        if missing:
            rows += ["", f"Left out: {', '.join(missing)}."]
        return "\n".join(rows)

    def _row(self, program, shown):
        cells = (shown(name, measure.text(self._summary(program, name))) for name, measure in _MEASURES.items())
        return f"| {program} | {' | '.join(cells)} | {self._drawn_by[program]} |"


def replace_table(document, table):
    """The document with another table between its two marker lines."""
    before, begin, rest = document.partition(_BEGIN + "\n")
    _old, end, after = rest.partition(_END)
    if not begin or not end:
        raise ValueError(f"the document lacks the lines {_BEGIN} and {_END}")
    return f"{before}{begin}{table}\n{end}{after}"


def write_table(path, table):
    path.write_text(replace_table(path.read_text(encoding="utf-8"), table), encoding="utf-8")
