"""The page's part of a save: what its thread does to hand over ten thousand notes of which one was changed, against
a plain JSON.stringify of the whole document in the same page, and against the same page in a bare window."""

import argparse
import tempfile
from pathlib import Path

from documents import state_document
from keyboard import PageScripts, Side
from programs import Installation, BUILD, require_private_desktop
from ratios import in_turns, limit_line, line

LIMIT = 0.01


def save(side):
    """What a save consists of in one of the windows, in seconds."""
    side.to_front()
    times = side.ask("return { ...await measuredSaves.parts(), stringify: measuredSaves.stringify() }")
    # The longest piece is that of a save as it comes by itself, and not part by part.
    times["longest-piece"] = side.ask("return measuredSaves.longestBlock()")
    return {name: time / 1000 for name, time in times.items()}


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--quick", action="store_true", help="one save of few notes, to see that it works")
    chosen = options.parse_args()
    require_private_desktop()
    count, pairs = (200, 1) if chosen.quick else (10_000, 9)
    name = f"{count}-notes"
    with tempfile.TemporaryDirectory(prefix="quendo-page-saves-") as directory:
        directory = Path(directory)
        installation = Installation.install(BUILD, directory)
        page = PageScripts(directory / "scripts").quendo_page(installation, "saves")
        document = state_document(count, 6000)
        sides = []
        try:
            for kind, start in (("quendo", lambda one: one.start_quendo()), ("bare", lambda one: one.start_bare())):
                sides.append(Side(directory / kind, installation, page, document, start))
            quendo, bare = sides
            pairs_of_parts = in_turns(pairs, lambda: save(quendo), lambda: save(bare), warm_up=not chosen.quick)
        finally:
            for side in sides:
                side.close()
    serialised = [one for one, _ in pairs_of_parts["serialise"]]
    stringified = [one for one, _ in pairs_of_parts.pop("stringify")]
    print(line(f"page-save/stringify serialise {name}", list(zip(serialised, stringified))), flush=True)
    for part, both in pairs_of_parts.items():
        print(line(f"page-save/bare-window {part} {name}", both), flush=True)
    # What the engine does in passing, such as clearing away, counts too, but no single time is to decide.
    print(limit_line(f"page-save/10ms serialise {name}", serialised, LIMIT, share=0.5), flush=True)


if __name__ == "__main__":
    main()
