"""A test page that defines everything the host's commands call, and keeps a journal of what happens to it."""

import itertools

from . import desktop
from .waiting import Timeout, stays, wait_until

_FUNCTIONS = ("createNote", "openCapture", "exportMarkdown", "flushPendingSave", "renderSidebar",
              "quendoSaveAsCurrentNote", "quendoCloseCurrentTab", "quendoRequestCloseTabs",
              "quendoReopenClosedTab", "quendoSwitchOpenTab", "quendoShowTabOverview",
              "quendoOpenShortcutGuide", "quendoSetLanguage", "showToast",
              "quendoCopyCurrentNoteForWhatsApp")

# The journal lives in the page, where calls and keys come one after the other: their order is a fact.
_SCRIPT = """
<script>
  window.journal = [];
  const note = (entry) => { window.journal.push(entry); };
  for (const name of %s) {
    window[name] = (...values) => {
      note([name, ...values].join(' '));
      if (name === 'quendoCopyCurrentNoteForWhatsApp') return true;
    };
  }
  window.setDrawer = (name, options) => note(`setDrawer ${name} ${options.focus}`);
  window.state = { set sidebarMode(mode) { note('sidebarMode=' + mode); } };
  const modifiers = ['Control', 'Shift', 'Alt', 'Meta', 'AltGraph', 'ISO_Level3_Shift', 'CapsLock', 'NumLock'];
  for (const type of ['keydown']) {
    window.addEventListener(type, (event) => {
      if (!modifiers.includes(event.key)) note(`${type} ${event.key}`);
    }, true);
  }
  window.addEventListener('DOMContentLoaded', () => {
    const search = document.getElementById('searchInput');
    search.select = () => {
      HTMLInputElement.prototype.select.call(search);
      note(document.activeElement === search && search.selectionEnd - search.selectionStart === 5
        ? 'searchInput focused and selected' : 'searchInput select() without the focus');
    };
    // The panel itself is the host's business and would only be in the way of the next key.
    document.getElementById('importFileInput').addEventListener('click', (event) => {
      event.preventDefault();
      note('importFileInput clicked');
    });
    document.getElementById('editor').focus();
  });
</script>
"""

_BODY = """
<input id="searchInput" value="words"><input id="importFileInput" type="file" hidden>
<textarea id="editor" rows="20" cols="80"></textarea><div id="rich" contenteditable>Rich text</div>
"""


def recording_page(reporter, body="", without=()):
    """The text of the page. `without` names functions that it is to lack."""
    names = [one for one in _FUNCTIONS if one not in without]
    return reporter.page(body=_BODY + body, head=_SCRIPT % names)


class Journal:
    """What happened to the recording page, as its test sees it."""

    _fences = itertools.cycle(("F6", "F8", "F9"))

    def __init__(self, reporter, program):
        self._reporter = reporter
        self._program = program

    def entries(self):
        return self._reporter.evaluate("window.journal")

    def clear(self, focus="editor"):
        """Forgets everything and puts the focus back where somebody writes, wherever it went before."""
        self._program.focus()
        for _ in range(5):
            if self.has_keyboard():
                break
            # A click closes an open menu and does nothing else; the next one then reaches the page.
            desktop.click_in(self._program.window, -200, -200)
            try:
                wait_until(self.has_keyboard, 0.5)
            except Timeout:
                continue
        self._reporter.run(f"document.getElementById({focus!r}).focus(); window.journal.length = 0;")

    def has_keyboard(self):
        """Whether keys go to the page, and not to a menu or to another window."""
        return self._reporter.evaluate("document.hasFocus()")

    def wait_for(self, records, timeout=10.0):
        """Waits until the journal holds at least as much as is expected."""
        try:
            wait_until(lambda: len(self.entries()) >= len(records), timeout, f"{records} in the journal")
        except AssertionError as error:
            raise AssertionError(f"{error}; it holds {self.entries()}") from None

    def fence(self):
        """Presses a key that nothing else uses and waits for it: all keys pressed before have arrived, or
        never will. Its own entry is taken out."""
        key = next(self._fences)
        desktop.press(key)
        wait_until(lambda: f"keydown {key}" in self.entries(), 10, f"{key} to reach the page")
        self._reporter.run(f"window.journal.splice(window.journal.indexOf('keydown {key}'), 1);")

    def expect(self, records):
        """The journal comes to hold exactly `records`, and nothing follows."""
        self.wait_for(records)
        self.fence()
        found = self.entries()
        assert found == list(records), f"the journal holds {found}"

    def stays_empty(self, duration=0.4):
        stays(lambda: not self.entries(), duration, "an empty journal", interval=0.1)
