"""The page's part of a save: what its thread does to hand over ten thousand notes of which one was changed, against
a plain JSON.stringify of the whole document in the same page."""

import argparse
import tempfile
from pathlib import Path

from documents import state_document
from keyboard import PageScripts, Side
from programs import Installation, BUILD, require_private_desktop
from ratios import in_turns, limit_line, line

LIMIT = 0.01


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
        side = Side(directory / "quendo", installation, page, state_document(count, 6000),
                    lambda one: one.start_quendo())
        try:
            side.to_front()

            def measured(what):
                return side.ask(f"return measuredSaves.{what}()")

            def save():
                # The longest piece is that of a save as it comes by itself, and not part by part.
                return {**measured("parts"), "longest-piece": measured("longestBlock")}

            def stringify():
                return dict.fromkeys(("serialise", "join", "post", "longest-piece"), measured("stringify"))

            milliseconds = in_turns(pairs, save, stringify, warm_up=not chosen.quick)
        finally:
            side.close()
    times = {part: [(one / 1000, other / 1000) for one, other in both] for part, both in milliseconds.items()}
    for part, both in times.items():
        print(line(f"page-save/stringify {part} {name}", both), flush=True)
    # What the engine does in passing, such as clearing away, counts too, but no single time is to decide.
    print(limit_line(f"page-save/10ms serialise {name}", [one for one, _ in times["serialise"]], LIMIT, share=0.5),
          flush=True)


if __name__ == "__main__":
    main()
