"""Launch: from the start of the process to the page's first script, its load event and the moments from which
the page may be driven and typed in, against a bare window with the same page."""

import argparse
import tempfile
from pathlib import Path

from documents import state_document
from programs import Comparison, Installation, ReadyWatch, BUILD, marked, require_private_desktop
from ratios import in_turns, line
from harness.reporter import Reporter

TIMEOUT = 60


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
                "load-event": report["load"] / 1000 - run.started,
                "can-type": report["typable"] / 1000 - run.started}

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

    def compare(comparison, with_reporter, names, suffix="", pairs=chosen.pairs):
        launches = Launches(comparison, watch, reporter if with_reporter else None)
        times = in_turns(1 if chosen.quick else pairs, launches.quendo, launches.bare,
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
        # The same weight in few large notes and in as many as a person collects in years.
        for suffix, count, size, pairs in (("-20MB", 20, 1_000_000, chosen.pairs),
                                           ("-10000-notes", 10_000, 6000, min(chosen.pairs, 11))):
            if chosen.quick:
                count = max(1, count // 50)
            compare(Comparison(directory / f"large{suffix}", installation, page, state_document(count, size)), True,
                    ("first-script", "load-event", "page-ready", "can-type"), suffix, pairs)
    reporter.close()


if __name__ == "__main__":
    main()
