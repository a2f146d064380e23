"""Reads the documentation and the tree that it describes."""

import re
import shlex
import textwrap
from functools import cached_property
from pathlib import Path

# Made by builds or by tools; no part of the tree.
OUTPUTS = {"build", "web/dist"}
TOOLS = {"node_modules", "__pycache__"}

_FENCE = re.compile(r"^( *)(```+)(\w*)\n(.*?)^ *\2$", re.MULTILINE | re.DOTALL)
_INDENTED = re.compile(r"(?<=\n\n)(?:    .*\n)+")
_COMMENT = re.compile(r"<!--.*?-->", re.DOTALL)
SPAN = re.compile(r"(?<!`)(`+)(?!`)((?:(?!\n\n).)+?)(?<!`)\1(?!`)", re.DOTALL)
_LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
_HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)


class Tree:
    """A directory with sources."""

    def __init__(self, root):
        self.root = Path(root)

    @cached_property
    def files(self):
        """The relative paths of all files that belong to the sources."""
        found, folders = set(), [self.root]
        while folders:
            for path in folders.pop().iterdir():
                relative = str(path.relative_to(self.root))
                if not path.is_dir():
                    found.add(relative)
                elif relative not in OUTPUTS and path.name not in TOOLS and not path.name.startswith("."):
                    folders.append(path)
        return found

    @cached_property
    def folders(self):
        return {str(folder) for path in self.files for folder in Path(path).parents} - {"."}

    @cached_property
    def names(self):
        return {Path(path).name for path in self.files}

    def has(self, path):
        path = path.rstrip("/")
        return path in self.files or path in self.folders

    def text(self, path):
        try:
            return (self.root / path).read_text(encoding="utf-8")
        except (UnicodeDecodeError, FileNotFoundError):
            return ""

    @cached_property
    def words(self):
        """Every identifier, with hyphens or without, in everything that is no documentation."""
        found = set()
        for path in self.files:
            if path.endswith((".md", ".svg", ".png", "package-lock.json")) or path.startswith("tests/docs/"):
                continue
            text = self.text(path)
            found.update(re.findall(r"\w+", text))
            found.update(re.findall(r"--[a-z][\w-]*", text))
        return found

    @property
    def pages(self):
        return [Page(path, self.text(path)) for path in sorted(self.files) if path.endswith(".md")]


class Page:
    """A Markdown file: its headings, links, `spans` and commands."""

    def __init__(self, path, text):
        self.path = path
        self.folder = str(Path(path).parent)
        self.text = text
        self.blocks = [(kind, textwrap.dedent(body)) for _, _, kind, body in _FENCE.findall(text)]
        self.prose = _FENCE.sub("", text)
        # A list's continuation is indented as well, but by less.
        self.blocks += [("sh", textwrap.dedent(body)) for body in _INDENTED.findall(self.prose)]
        self.prose = _COMMENT.sub("", _INDENTED.sub("", self.prose))
        self.spans = [re.sub(r"\s+", " ", span).strip() for _, span in SPAN.findall(self.prose)]
        self.links = _LINK.findall(SPAN.sub("", self.prose))

    @property
    def anchors(self):
        """The headings, as links name them."""
        found = {}
        for heading in _HEADING.findall(self.prose):
            name = re.sub(r"[^\w\- ]", "", heading.lower().replace("`", "")).replace(" ", "-")
            found[name] = found.get(name, -1) + 1
        return {name if number == 0 else f"{name}-{number}"
                for name, count in found.items() for number in range(count + 1)}

    def section(self, heading):
        """What stands below a heading of the second level."""
        found = re.search(rf"^## {re.escape(heading)}\n(.*?)(?=^## |\Z)", self.text, re.MULTILINE | re.DOTALL)
        return found[1] if found else ""

    def commands(self):
        """Each simple command of the shell blocks, as a list of words."""
        for kind, body in self.blocks:
            if kind in ("sh", "console"):
                for line in body.replace("\\\n", " ").splitlines():
                    yield from words_of(line)

    def written_commands(self):
        """The spans that have more than one word."""
        for span in self.spans:
            if " " in span:
                yield from words_of(span)


def words_of(line):
    """The simple commands of a shell line. A line with an open quote is one word."""
    lexer = shlex.shlex(line, posix=True, punctuation_chars=True)
    lexer.whitespace_split = True
    try:
        words = list(lexer)
    except ValueError:
        return [[line]]
    commands = [[]]
    for word in words:
        if re.fullmatch(r"[;&|()]+", word):
            commands.append([])
        else:
            commands[-1].append(word)
    return [command for command in commands if command]


def rows(section):
    """The cells of a table's rows, without its head."""
    lines = [line for line in section.splitlines() if line.startswith("|")]
    return [[cell.strip() for cell in line.strip().strip("|").split("|")] for line in lines[2:]]
