"""Messages: from the page's "quendoState" to the answer in the page, against two bare windows: one whose
handler writes, flushes and renames the same bytes, and one that answers at once."""

import argparse
import tempfile
from pathlib import Path

from programs import Comparison, Installation, BUILD, require_private_desktop
from ratios import in_turns, line
from harness.reporter import Reporter

TIMEOUT = 60

# The page's clock has a resolution of a millisecond, so that a round trip is measured as a part of many.
_PREPARE = """
  const note = 'Reunião **importante** 😀 com o cliente, "citação", ação, coração. ';
  window.rest = ',"notes":[' + JSON.stringify(note.repeat(Math.floor(%d / 80))) + ']}';
  window.revision = 0;
  window.quendoNativeSaveDidFinish = (success, revision) => window.answered(success, revision);
  const handler = window.webkit.messageHandlers.quendoState;
  window.save = () => new Promise((resolve, reject) => {
    const expected = ++window.revision;
    window.answered = (success, revision) =>
      success && revision === expected ? resolve() : reject(new Error('a wrong answer'));
    handler.postMessage({ serialized: '{"revision":' + expected + window.rest, revision: expected });
  });
  return new TextEncoder().encode(window.rest).length;
"""
_ROUNDS = """
  const start = performance.now();
  for (let round = 0; round < %d; ++round) await window.save();
  return (performance.now() - start) / %d / 1000;
"""


class Page:
    """One of the windows, and the way to command its page."""

    def __init__(self, directory, installation, start, size):
        self._reporter = Reporter()
        comparison = Comparison(directory, installation, self._reporter.page("<h1>Messages</h1>"))
        self._run = start(comparison)
        self._reporter.wait_for_page(timeout=TIMEOUT)
        self._reporter.run(_PREPARE % size, TIMEOUT)

    def seconds(self, rounds):
        return self._reporter.run(_ROUNDS % (rounds, rounds), TIMEOUT)

    def close(self):
        self._run.end()
        self._reporter.close()


def compare(directory, installation, name, size, pairs, rounds):
    saved = directory / "saved"
    saved.mkdir(parents=True)
    pages = []
    try:
        for kind, start in (("quendo", lambda one: one.start_quendo()),
                            ("write", lambda one: one.start_bare("--save-in", saved)),
                            ("nothing", lambda one: one.start_bare())):
            pages.append(Page(directory / kind, installation, start, size))
        quendo, writing, answering = pages
        for floor, page in (("bare-window-that-writes", writing), ("bare-window-that-answers", answering)):
            measured = in_turns(pairs, lambda: {"": quendo.seconds(rounds)}, lambda: {"": page.seconds(rounds)})
            print(line(f"message/{floor} {name}", measured[""]), flush=True)
    finally:
        for page in pages:
            page.close()


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--quick", action="store_true", help="a few rounds, to see that it works")
    chosen = options.parse_args()
    require_private_desktop()
    with tempfile.TemporaryDirectory(prefix="quendo-messages-") as directory:
        directory = Path(directory)
        installation = Installation.install(BUILD, directory)
        for name, size, rounds in (("10KB", 10_000, 20), ("1MB", 1_000_000, 5)):
            pairs, rounds = (1, 2) if chosen.quick else (21, rounds)
            compare(directory / name, installation, name, size, pairs, rounds)


if __name__ == "__main__":
    main()
