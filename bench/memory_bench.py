"""Memory: what all processes of Quendo hold above a Quendo without notes, for each byte of the document: at the
peak of the start and after it, at the peak of a save and after it. And what they hold above a bare window with the
same page and one note."""

import argparse
import tempfile
import threading
import time
from pathlib import Path

from documents import state_document
from keyboard import Keyboard
from programs import Comparison, Installation, ReadyWatch, BUILD, require_private_desktop
from harness import desktop, process
from harness.waiting import wait_until

TIMEOUT = 120
PACE = 0.05
ABOVE_BARE_WINDOW = 40e6
MOMENTS = ("start-peak", "started", "save-peak", "saved")
_KINDS = {"quendo": "host", "WebKitWebProces": "page", "WebKitNetworkPr": "network"}


def _proportional_bytes(pid):
    """Memory of a process in which what it shares with others counts by its share; 0 when it is gone."""
    try:
        with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
            return next((int(line.split()[1]) * 1024 for line in file if line.startswith("Pss:")), 0)
    except OSError:
        return 0


class Watch:
    """Looks at a program and all that it started, again and again."""

    def __init__(self, pid):
        self._pid = pid
        self._peak = {}
        self._ended = threading.Event()
        self._lock = threading.Lock()
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()

    def _run(self):
        while not self._ended.wait(PACE):
            now = self.now()
            with self._lock:
                if sum(now.values()) > sum(self._peak.values()):
                    self._peak = now

    def now(self):
        """Bytes by kind of process."""
        held = {}
        for pid in (self._pid, *process.children(self._pid)):
            kind = _KINDS.get(process.name(pid), "other")
            held[kind] = held.get(kind, 0) + _proportional_bytes(pid)
        return held

    def peak(self):
        """The most since the last call, all processes taken together."""
        with self._lock:
            peak, self._peak = self._peak, {}
        return peak

    def close(self):
        self._ended.set()
        self._thread.join()


def held(comparison, ready, keyboard, document, settle):
    """Bytes by kind of process in each of the moments. `settle` is the time in seconds after which what was only
    needed for a moment should be gone."""
    ready.forget()
    run = comparison.start_quendo()
    watch = Watch(run.pid)
    try:
        ready.wait(TIMEOUT)
        window = wait_until(lambda: next(iter(desktop.windows(run.pid)), None), TIMEOUT, "the window")
        desktop.activate(window)
        # The page saves a document that it was given, too.
        time.sleep(settle)
        moments = {"start-peak": watch.peak(), "started": watch.now()}
        watch.peak()
        before = document.stat().st_mtime_ns if document.exists() else 0
        if not before:
            desktop.press("ctrl+n")
        keyboard.type("abc", 0.2)
        wait_until(lambda: document.exists() and document.stat().st_mtime_ns != before, TIMEOUT, "the save")
        time.sleep(settle)
        return {**moments, "save-peak": watch.peak(), "saved": watch.now()}
    finally:
        watch.close()
        run.end()


def at_rest(run, settle):
    """Bytes by kind of process of a window in which nothing is done."""
    watch = Watch(run.pid)
    try:
        window = wait_until(lambda: next(iter(desktop.windows(run.pid)), None), TIMEOUT, "the window")
        desktop.activate(window)
        time.sleep(settle)
        return watch.now()
    finally:
        watch.close()
        run.end()


def line(name, moment, some, none, size):
    total, base = sum(some.values()), sum(none.values())
    shares = ", ".join(f"{kind} {some[kind] / 1e6:.0f}" for kind in sorted(some, key=some.get, reverse=True))
    return (f"memory/document {moment} {name} {max(0, total - base) / size:.2f}  ({total / 1e6:.0f} MB ({shares}) "
            f"against {base / 1e6:.0f} MB without notes; document of {size / 1e6:.1f} MB)")


def bare_window_line(comparison, settle):
    quendo = sum(at_rest(comparison.start_quendo(), settle).values())
    bare = sum(at_rest(comparison.start_bare(), settle).values())
    return (f"memory/40MB above-bare-window {max(0, quendo - bare) / ABOVE_BARE_WINDOW:.2f}  "
            f"({quendo / 1e6:.0f} MB against {bare / 1e6:.0f} MB)")


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--quick", action="store_true", help="few notes and short waits, to see that it works")
    options.add_argument("--notes", type=int, nargs="*", default=[500, 3300, 10_000])
    chosen = options.parse_args()
    require_private_desktop()
    desktop.park_pointer()
    settle, counts = (2, [200]) if chosen.quick else (30, chosen.notes)
    ready, keyboard = ReadyWatch(), Keyboard()
    with tempfile.TemporaryDirectory(prefix="quendo-memory-") as directory:
        directory = Path(directory)
        installation = Installation.install(BUILD, directory)

        def measure(name, state):
            comparison = Comparison(directory / name, installation, state=state)
            return held(comparison, ready, keyboard, comparison.document, settle)

        # The first start of all compiles the content filter.
        if not chosen.quick:
            measure("first", None)
        one_note = Comparison(directory / "one-note", installation, state=state_document(1, 10_000))
        print(bare_window_line(one_note, settle), flush=True)
        none = measure("empty", None)
        for count in counts:
            state = state_document(count, 6000)
            some = measure(f"{count}-notes", state)
            for moment in MOMENTS:
                print(line(f"{count}-notes", moment, some[moment], none[moment], len(state.encode())), flush=True)


if __name__ == "__main__":
    main()
