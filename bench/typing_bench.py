"""Typing: from the press of a key to the end of the frame that shows its character, against an editor of the same
library that does nothing but take keys, undo them and wrap lines, on the same text."""

import argparse
import tempfile
from pathlib import Path

from documents import left_in_the_middle, only_note, state_document
from keyboard import PageScripts, Side
from programs import Installation, BUILD, require_private_desktop
from ratios import in_turns, limit_line, line, values_line
from harness import desktop

# Between the keys of somebody who types fast. Saves fall due while such typing goes on.
PACE = 0.07
FRAME = 0.016
WORDS = "palavras que se escrevem sem parar e com acentos nenhuns, "


class Typist:
    """Types into one of the programs and keeps what its keys took."""

    def __init__(self, side):
        self._side = side
        self.keys = []

    def round(self, length):
        """Types so many keys. Returns the time that each took of the page's thread, with all that went on there
        meanwhile."""
        self._side.to_front()
        before = self._side.page_seconds()
        text = (WORDS * (length // len(WORDS) + 1))[:length]
        for key in self._side.typed(text, PACE, "typedKeys"):
            self.keys.append({"painted": key["painted"] / 1000 - key["pressed"],
                              "busy": (key["handled"] + key["drawn"]) / 1000})
        return (self._side.page_seconds() - before) / length

    def times(self, what):
        return [key[what] for key in self.keys]

    def close(self):
        self._side.close()


def compare(directory, installation, scripts, name, document, rounds, length):
    directory.mkdir()
    typists = []
    try:
        for kind, page, state, start in (
                ("quendo", scripts.quendo_page(installation, "typing"), document, lambda one: one.start_quendo()),
                ("bare", scripts.bare_page("typing", "bareEditor"), only_note(document), lambda one: one.start_bare())):
            typists.append(Typist(Side(directory / kind, installation, page, state, start)))
        quendo, bare = typists
        # The engines compile what runs often; the first keys show nothing but that.
        quendo.round(length), bare.round(length)
        quendo.keys.clear(), bare.keys.clear()
        pairs = in_turns(rounds, lambda: {"": quendo.round(length)}, lambda: {"": bare.round(length)},
                         warm_up=False)[""]
    finally:
        for typist in typists:
            typist.close()
    for what in ("painted", "busy"):
        print(values_line(f"typing/bare-editor {what} {name}", quendo.times(what), bare.times(what)), flush=True)
    print(line(f"typing/bare-editor thread-a-key {name}", pairs), flush=True)
    for who, typist in (("quendo", quendo), ("bare-editor", bare)):
        print(limit_line(f"typing/one-frame {who} {name}", typist.times("busy"), FRAME), flush=True)


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--quick", action="store_true", help="a few keys in a small text, to see that it works")
    chosen = options.parse_args()
    require_private_desktop()
    desktop.park_pointer()
    cases = (("10KB", 1, 10_000), ("1MB", 1, 1_000_000), ("20MB", 1, 20_000_000), ("10000-notes", 10_000, 6000))
    if chosen.quick:
        cases = (("200-notes", 200, 6000),)
    rounds, length = (1, 15) if chosen.quick else (4, 75)
    with tempfile.TemporaryDirectory(prefix="quendo-typing-") as directory:
        directory = Path(directory)
        installation = Installation.install(BUILD, directory)
        scripts = PageScripts(directory / "scripts")
        for name, count, size in cases:
            document = left_in_the_middle(state_document(count, size, active=count // 2))
            compare(directory / name, installation, scripts, name, document, rounds, length)


if __name__ == "__main__":
    main()
