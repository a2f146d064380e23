"""Windows whose pages clock what is typed into them with real keys."""

import ctypes
import subprocess
import time

from programs import ROOT, Comparison, open_to_reports
from harness import desktop
from harness.reporter import Reporter
from harness.waiting import wait_until

TIMEOUT = 120


class PageScripts:
    """The scripts for measuring pages, made from their sources."""

    def __init__(self, directory):
        self._directory = directory
        subprocess.run(["node", ROOT / "web" / "scripts" / "bench" / "build.mjs", "--outdir", directory],
                       check=True)

    def element(self, name):
        return "<script>" + (self._directory / f"{name}.js").read_text(encoding="utf-8") + "</script>"

    def bare_page(self, measuring, body):
        """A page without anything of Quendo's: the measuring script and the script that fills its body."""
        return ("<!doctype html><html><head><meta charset='utf-8'>" + self.element(measuring) +
                "<style>body { margin: 0 } .cm-editor { height: 100vh }</style></head><body>" +
                self.element(body) + "</body></html>")

    def quendo_page(self, installation, measuring):
        """The page as it is installed, with the measuring script before all others."""
        page = (installation.web / "index.html").read_text(encoding="utf-8")
        return page.replace("<head>", "<head>" + self.element(measuring), 1)


class Keyboard:
    """Presses keys as a person's keyboard does and knows when. A tool of its own would not say when."""

    def __init__(self):
        self._x = ctypes.CDLL("libX11.so.6")
        self._test = ctypes.CDLL("libXtst.so.6")
        self._x.XOpenDisplay.restype = ctypes.c_void_p
        self._display = ctypes.c_void_p(self._x.XOpenDisplay(None))
        if not self._display:
            raise RuntimeError("the display cannot be opened")

    def type(self, text, pace):
        """Types letters, spaces and commas, one every `pace` seconds, and returns the times of day in which the
        keys were pressed."""
        pressed = []
        due = time.monotonic()
        for character in text:
            time.sleep(max(0, due - time.monotonic()))
            pressed.append(time.time())
            code = self._x.XKeysymToKeycode(self._display, ctypes.c_ulong(ord(character)))
            for down in (1, 0):
                self._test.XTestFakeKeyEvent(self._display, code, down, ctypes.c_ulong(0))
            self._x.XFlush(self._display)
            due += pace
        return pressed


class Side:
    """One program with its page, and the keys for it."""

    _keyboard = None

    def __init__(self, directory, installation, page, state, start):
        Side._keyboard = Side._keyboard or Keyboard()
        self._reporter = Reporter()
        comparison = Comparison(directory, installation, open_to_reports(page, self._reporter), state)
        self._run = start(comparison)
        self._reporter.wait_for_page(timeout=TIMEOUT)
        self._window = wait_until(lambda: next(iter(desktop.windows(self._run.pid)), None), TIMEOUT, "the window")

    def ask(self, body):
        """Runs the body of an async function in the page and returns what it returns."""
        return self._reporter.run(body, TIMEOUT)

    def page_seconds(self):
        """The processor's time that the page's thread has had so far."""
        return self._run.page_seconds()

    def wait_until_settled(self):
        """Waits until the page has written and prepared what it does after its start."""
        self.ask("const state = () => document.querySelector('#saveState')?.dataset.state ?? 'saved';"
                 "while (state() !== 'saved') await new Promise((resolve) => setTimeout(resolve, 50));")
        time.sleep(2)

    def to_front(self):
        """Brings the window to the front; what follows from having left another one is over then."""
        desktop.activate(self._window)
        self.wait_until_settled()

    def typed(self, text, pace, recording):
        """Types one key every `pace` seconds and returns what the page recorded of each, with `pressed`, the time
        of day in which that key was pressed."""
        self.ask(f"window.{recording}.start()")
        pressed = Side._keyboard.type(text, pace)
        # A page that lags behind shows the last keys later.
        wait_until(lambda: self.ask(f"return window.{recording}.count()") >= len(text), 20, "all keys to be noticed")
        recorded = self.ask(f"return window.{recording}.take()")
        return [{**one, "pressed": when} for one, when in zip(recorded, pressed, strict=True)]

    def close(self):
        self._run.end()
        self._reporter.close()
