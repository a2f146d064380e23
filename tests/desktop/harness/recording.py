"""A test page that defines everything the host's commands call and keeps a journal of the calls and keys."""

import itertools

from . import desktop
from .waiting import Timeout, stays, wait_until

_FUNCTIONS = ("createNote", "openCapture", "exportMarkdown", "flushPendingSave", "renderSidebar",
              "quendoSaveAsCurrentNote", "quendoCloseCurrentTab", "quendoRequestCloseTabs",
              "quendoReopenClosedTab", "quendoSwitchOpenTab", "quendoShowTabOverview",
              "quendoOpenShortcutGuide", "quendoSetLanguage", "showToast",
              "quendoCopyCurrentNoteForWhatsApp")

# The journal is kept in the page, where calls and keys have a definite order.
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
    // The panel is tested elsewhere; here it would only catch the next key.
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
    """The text of the page, without the functions named in `without`."""
    names = [one for one in _FUNCTIONS if one not in without]
    return reporter.page(body=_BODY + body, head=_SCRIPT % names)


class Journal:
    """A test's view of the recording page's journal."""

    _fences = itertools.cycle(("F6", "F8", "F9"))

    def __init__(self, reporter, program):
        self._reporter = reporter
        self._program = program

    def entries(self):
        return self._reporter.evaluate("window.journal")

    def clear(self, focus="editor"):
        """Forgets everything and puts the focus into the element with the ID `focus`, wherever it was before."""
        self._program.focus()
        wait_until(self._take_keyboard, 20, "the page to have the keyboard")
        self._reporter.run(f"document.getElementById({focus!r}).focus(); window.journal.length = 0;")

    def _take_keyboard(self):
        if self.has_keyboard():
            return True
        # A click only closes an open menu; the next one then reaches the page.
        desktop.click_in(self._program.window, -200, -200)
        try:
            return wait_until(self.has_keyboard, 0.5)
        except Timeout:
            return False

    def has_keyboard(self):
        """Whether keys go to the page, not to a menu or another window."""
        return self._reporter.evaluate("document.hasFocus()")

    def wait_for(self, records, timeout=10.0):
        """Waits until the journal has at least as many entries as `records`."""
        try:
            wait_until(lambda: len(self.entries()) >= len(records), timeout, f"{records} in the journal")
        except AssertionError as error:
            raise AssertionError(f"{error}; it holds {self.entries()}") from None

    def fence(self):
        """Presses a key nothing else uses and waits for it: every earlier key has arrived by then, or never will.
        Removes its own entry."""
        key = next(self._fences)
        desktop.press(key)
        wait_until(lambda: f"keydown {key}" in self.entries(), 10, f"{key} to reach the page")
        self._reporter.run(f"window.journal.splice(window.journal.indexOf('keydown {key}'), 1);")

    def expect(self, records):
        """Waits until the journal holds exactly `records` and checks that nothing follows."""
        self.wait_for(records)
        self.fence()
        found = self.entries()
        assert found == list(records), f"the journal holds {found}"

    def stays_empty(self, duration=0.4):
        stays(lambda: not self.entries(), duration, "an empty journal", interval=0.1)
