"""Launch: from the start of the process to the page's first script, its load event and the moment from which
the page may be driven, against a bare window with the same page."""

import argparse
import json
import tempfile
from pathlib import Path

from programs import Comparison, Installation, ReadyWatch, BUILD, marked, require_private_desktop
from ratios import in_turns, line
from harness.reporter import Reporter

TIMEOUT = 60


def state_document(size):
    """A document as the page keeps it, of about `size` bytes."""
    text = ("## Reunião de amanhã\n\n- revisar o projeto **importante** com o cliente 😀\n- [link]"
            "(https://example.org/a/b)\n- \"citação\", ação, coração\n\n" * 24)
    notes = []
    weight = 0
    while weight < size:
        note = {"id": f"note-{len(notes)}", "text": f"# Nota {len(notes)}\n{text}", "format": "markdown",
                "name": None, "fileName": None, "lineBreak": "\n", "created": 1700000000000 + len(notes),
                "updated": 1700000000000 + len(notes)}
        weight += len(json.dumps(note, ensure_ascii=False).encode()) + 1
        notes.append(note)
    return json.dumps({"version": 1, "revision": 7, "notes": notes, "bin": [],
                       "tabs": {"open": ["note-0"], "active": "note-0", "closed": []},
                       "settings": {"language": "en", "sidebarOpen": True, "sidebarMode": "all"},
                       "captureDraft": ""}, ensure_ascii=False, separators=(",", ":"))


class Launches:
    """What a launch takes. With a reporter the page is one that reports by itself."""

    reports = 0  # So many loads have been reported so far.

    def __init__(self, comparison, watch, reporter=None):
        self._comparison = comparison
        self._watch = watch
        self._reporter = reporter

    def _page_marks(self, run):
        if not self._reporter:
            return {}
        Launches.reports += 1
        report = self._reporter.wait_for("loaded", Launches.reports, TIMEOUT)
        return {"first-script": report["first"] / 1000 - run.started,
                "load-event": report["load"] / 1000 - run.started}

    def quendo(self):
        self._watch.forget()
        run = self._comparison.start_quendo()
        try:
            marks = self._page_marks(run)
            return {**marks, "page-ready": self._watch.wait(TIMEOUT) - run.started}
        finally:
            run.end()

    def bare(self):
        run = self._comparison.start_bare()
        try:
            marks = self._page_marks(run)
            return {**marks, "page-ready": run.told() - run.started}
        finally:
            run.end()


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--quick", action="store_true", help="few launches, to see that it works")
    options.add_argument("--pairs", type=int, default=21)
    chosen = options.parse_args()
    require_private_desktop()
    watch = ReadyWatch()
    reporter = Reporter()

    def compare(comparison, with_reporter, names, suffix=""):
        launches = Launches(comparison, watch, reporter if with_reporter else None)
        times = in_turns(1 if chosen.quick else chosen.pairs, launches.quendo, launches.bare,
                         warm_up=not chosen.quick)
        for name in names:
            print(line(f"launch/bare-window {name}{suffix}", times[name]), flush=True)

    with tempfile.TemporaryDirectory(prefix="quendo-launch-") as directory:
        directory = Path(directory)
        installation = Installation.install(BUILD, directory)
        page = marked((installation.web / "index.html").read_text(encoding="utf-8"), reporter)
        compare(Comparison(directory / "marked", installation, page), True, ("first-script", "load-event"))
        # The page as people get it, so that no report of a page shares the moment that counts.
        compare(Comparison(directory / "installed", installation), False, ("page-ready",))
        size, suffix = (1_000_000, "-1MB") if chosen.quick else (20_000_000, "-20MB")
        compare(Comparison(directory / "large", installation, page, state_document(size)), True,
                ("first-script", "load-event", "page-ready"), suffix)
    reporter.close()


if __name__ == "__main__":
    main()
