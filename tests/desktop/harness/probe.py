"""The real page, with a way to look inside."""

import re

from .waiting import wait_until


def probed_page(installation, reporter):
    """Files that make the real page obey the reporter and leave it otherwise as installed. The content security policy
    is removed, because it forbids what the reporter does."""
    html = (installation.web / "index.html").read_text(encoding="utf-8")
    html, count = re.subn(r'<meta http-equiv="Content-Security-Policy"[^>]*>', lambda _: reporter.script(), html)
    assert count == 1, "the page's policy was not found"
    return {"index.html": html}


class Probe:
    """What the real page shows, read from the elements a user sees."""

    # The text of a note short enough to be on the screen as a whole.
    TEXT = r"[...document.querySelectorAll('.work .cm-line')].map((line) => line.textContent).join('\n')"

    def __init__(self, reporter):
        self._reporter = reporter

    @property
    def loads(self):
        return self._reporter.loads

    def wait_for_load(self, count):
        """Waits until the page has been loaded for the `count`-th time."""
        self._reporter.wait_for_page(count)

    def evaluate(self, expression):
        return self._reporter.evaluate(expression)

    def wait_for(self, expression, what=None, timeout=10.0):
        """Waits until an expression is true in the page and returns its value."""
        return wait_until(lambda: self.evaluate(expression), timeout, what or expression)

    def stall(self, milliseconds):
        """Keeps the page from handling anything for a while; returns once that has begun."""
        times = len(self._reporter.reports("stalled"))
        self.evaluate("setTimeout(() => { report('stalled');"
                      f" const end = performance.now() + {milliseconds}; while (performance.now() < end); }})")
        self._reporter.wait_for("stalled", times + 1)

    def tabs(self):
        return self.evaluate("[...document.querySelectorAll('.tab')].map((tab) => tab.textContent)")

    def active_tab(self):
        return self.evaluate("document.querySelector('.tab[aria-selected=true]')?.textContent ?? null")

    def text(self):
        """The text of the active note, if it is short."""
        return self.evaluate(self.TEXT)

    def rows(self):
        """Titles in the list of notes, in order; a pinned one starts with its mark."""
        return self.evaluate("[...document.querySelectorAll('#sidebar .row-title')].map((row) => row.textContent)")

    def toasts(self):
        return self.evaluate("[...document.querySelectorAll('.toast')].map((toast) => toast.textContent)")

    def dialog(self):
        """Title of the open dialog, or None."""
        return self.evaluate("document.querySelector('dialog[open] h2')?.textContent ?? null")

    def editor_has_focus(self):
        return self.evaluate("document.hasFocus() && !!document.activeElement?.closest('.cm-editor')")

    def wait_for_editor(self):
        wait_until(self.editor_has_focus, 10, "the editor to have the focus")

    def status(self):
        return self.evaluate("document.getElementById('saveState').dataset.state")
