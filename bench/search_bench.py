"""Search: from the input of a key in the search field to the end of the frame that shows what was found in ten
thousand notes, against a page that looks through the same texts with `includes`."""

import argparse
import tempfile
from pathlib import Path

from documents import state_document
from keyboard import PageScripts, Side
from programs import Installation, BUILD, require_private_desktop
from ratios import limit_line, values_line
from harness import desktop

PACE = 0.2
LIMIT = 0.05
# Words of all texts, words of none, and such as are only found after a part of them was.
QUERIES = ("mercado", "zebra", "projeto lista", "quxo", "escrever texto")

_EMPTY = """
  const field = document.querySelector('#searchInput');
  field.value = '';
  field.dispatchEvent(new Event('input', { bubbles: true }));
  field.focus();
"""


def search(side, queries):
    """Types the queries, each into an empty field."""
    side.to_front()
    found = []
    for query in queries:
        side.ask(_EMPTY)
        # The page prepares its texts once somebody goes to the field.
        side.wait_until_settled()
        found += side.typed(query, PACE, "typedSearches")
    return found


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--quick", action="store_true", help="one query in few notes, to see that it works")
    chosen = options.parse_args()
    require_private_desktop()
    desktop.park_pointer()
    count, rounds, queries = (200, 1, QUERIES[:1]) if chosen.quick else (10_000, 2, QUERIES)
    with tempfile.TemporaryDirectory(prefix="quendo-search-") as directory:
        directory = Path(directory)
        installation = Installation.install(BUILD, directory)
        scripts = PageScripts(directory / "scripts")
        document = state_document(count, 6000)
        sides = []
        try:
            for kind, page, start in (
                    ("quendo", scripts.quendo_page(installation, "searches"), lambda one: one.start_quendo()),
                    ("bare", scripts.bare_page("searches", "bareSearch"), lambda one: one.start_bare())):
                sides.append((Side(directory / kind, installation, page, document, start), []))
            for number in range(rounds):
                for side, times in sides if number % 2 == 0 else sides[::-1]:
                    times += search(side, queries)
        finally:
            for side, _ in sides:
                side.close()
        quendo, bare = (times for _, times in sides)
        for what in ("found", "shown"):
            print(values_line(f"search/includes {what} {count}-notes",
                              *([one[what] / 1000 for one in times] for times in (quendo, bare))), flush=True)
        print(limit_line(f"search/50ms shown {count}-notes", [one["shown"] / 1000 for one in quendo], LIMIT),
              flush=True)


if __name__ == "__main__":
    main()
