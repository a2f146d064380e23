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
_OF_KEYS = ("key-to-pixel", "key-to-pixel-95th", "key-to-pixel-longest", "processor-a-key")
# What large texts are compared with: the least that a page can do for a key.
_PLAINEST = "bare-textarea"
# The kernel counts time in hundredths of a second; a ratio to less than one of them, in five seconds or
# for forty keys, would say nothing.
_LEAST = {"processor-idle": 0.002, "processor-a-key": 0.00025}


def _extend(lists, key, values):
    found = lists.setdefault(key, {})
    for name, several in values.items():
        found.setdefault(name, []).extend(several)


def _summary(name, values):
    return _MEASURES[name].summary(values[_MEASURES[name].source])


def _text(name, values):
    return _MEASURES[name].text(_summary(name, values))


def _ratio(name, one, other):
    return _summary(name, one) / max(_summary(name, other), _LEAST.get(name, 0))


def _compared(name, one, other):
    counts = " and ".join(str(len(values[_MEASURES[name].source])) for values in (one, other))
    return f"{_ratio(name, one, other):.2f}  ({_text(name, one)} against {_text(name, other)}, {counts} values)"


def _head(names, *more):
    return _row("", [*(_MEASURES[name].title for name in names), *more]), "|---" * (len(names) + 1 + len(more)) + "|"


def _row(title, cells, *more):
    return f"| {' | '.join([title, *cells, *more])} |"


class Results:
    """Program -> name of a value -> its values. The first program is the one that all others are compared with."""

    def __init__(self):
        self._values = {}
        self._large = {}
        self._drawn_by = {}

    def add(self, program, **values):
        _extend(self._values, program, values)

    def add_large(self, text, **values):
        """Values of the first program with another text than the others have."""
        _extend(self._large, text, values)

    def drawn_by(self, program, what):
        self._drawn_by[program] = what

    def leave_out(self, program):
        self._values.pop(program, None)

    def lines(self):
        """A line for each other program and measure, as all benchmarks print them."""
        first, *others = self._values.values()
        for other, values in zip(list(self._values)[1:], others, strict=True):
            for name in _MEASURES:
                yield f"screen/{other} {name} {_compared(name, first, values)}"
        for text, values in self._large.items():
            for name in _OF_KEYS:
                yield f"screen/{_PLAINEST} {name}, {text} {_compared(name, values, self._values[_PLAINEST])}"

    def table(self, heading, missing):
        """Markdown: the first program's own values, and below them its ratio to each other one's."""
        first, *others = self._values
        own = self._values[first]
        rows = [f"### On the screen: {heading}", "", *_head(_MEASURES, "drawn by"),
                _row(first, (_text(name, own) for name in _MEASURES), self._drawn_by[first])]
        for other in others:
            values = self._values[other]
            cells = (f"{_ratio(name, own, values):.2f} ({_text(name, values)})" for name in _MEASURES)
            rows.append(_row(other, cells, self._drawn_by[other]))
        if missing:
            rows += ["", f"Left out: {', '.join(missing)}."]
        if self._large:
            rows += ["", f"With large texts, against {_PLAINEST} with the small one:", "", *_head(_OF_KEYS)]
        for text, values in self._large.items():
            cells = (f"{_ratio(name, values, self._values[_PLAINEST]):.2f} ({_text(name, values)})"
                     for name in _OF_KEYS)
            rows.append(_row(f"{first}, {text}", cells))
        return "\n".join(rows)


def replace_table(document, table):
    """The document with another table between its two marker lines."""
    before, begin, rest = document.partition(_BEGIN + "\n")
    _old, end, after = rest.partition(_END)
    if not begin or not end:
        raise ValueError(f"the document lacks the lines {_BEGIN} and {_END}")
    return f"{before}{begin}{table}\n{end}{after}"


def write_table(path, table):
    path.write_text(replace_table(path.read_text(encoding="utf-8"), table), encoding="utf-8")
