#!/usr/bin/python3
"""Draws which folder of the sources includes which, for docs/architecture.md.

    tests/architecture/diagram.py            prints the diagram
    tests/architecture/diagram.py --update   writes it into the document
"""

import sys
from pathlib import Path

import checker

ROOT = Path(__file__).resolve().parents[2]
DOCUMENT = ROOT / "docs" / "architecture.md"
BEGIN, END = "<!-- includes -->\n", "<!-- end of includes -->"


def uses(files):
    """Folder -> the folders that its files include."""
    found = {}
    for path, text in files.items():
        own = checker.folder_of(path)
        others = {checker.folder_of(name) for _, name in checker.includes(text)} - {own, None}
        found.setdefault(own, set()).update(others)
    return found


def reachable(graph, start):
    seen, open_ends = set(), [start]
    while open_ends:
        for other in graph.get(open_ends.pop(), ()):
            if other not in seen:
                seen.add(other)
                open_ends.append(other)
    return seen


def reduced(graph):
    """The graph without the arrows that others imply: all of them would hide the order."""
    return {one: {other for other in others
                  if not any(other in reachable(graph, between) for between in others - {other})}
            for one, others in graph.items()}


def diagram(files):
    """A Mermaid flow chart; an arrow means "includes", directly or through what lies between."""
    graph = reduced(uses(files))
    lines = ["```mermaid", "flowchart TD"]
    for folders in reversed(checker.LEVELS):
        for folder in folders:
            for other in sorted(graph.get(folder, ()), key=lambda name: (-checker.LEVEL_OF[name], name)):
                lines.append(f"  {folder.replace('/', '_')}[{folder}] --> {other.replace('/', '_')}[{other}]")
    return "\n".join([*lines, "```"]) + "\n"


def documented(text):
    return text[text.index(BEGIN) + len(BEGIN):text.index(END)]


def main():
    drawn = diagram(checker.sources(ROOT / "src"))
    if "--update" in sys.argv[1:]:
        text = DOCUMENT.read_text(encoding="utf-8")
        DOCUMENT.write_text(text.replace(BEGIN + documented(text), BEGIN + drawn), encoding="utf-8")
    else:
        print(drawn, end="")


if __name__ == "__main__":
    main()
