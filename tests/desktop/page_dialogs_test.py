"""The dialogs a page may open: prompt() and file inputs. Nothing else in a page opens one."""

import json

import pytest

from harness import desktop
from harness.waiting import stays, wait_until

_PANEL_TITLES = {"pt": ("Abrir arquivos de texto no Quendo", "Abrir"), "en": ("Open Text Files in Quendo", "Open"),
                 "es": ("Abrir archivos de texto en Quendo", "Abrir")}
_CANCEL = {"pt": "Cancelar", "en": "Cancel", "es": "Cancelar"}

# Without a title, the web view's own tooltip would be under the pointer at the next click.
_BODY = "<input id=files type=file title=' ' style='position:fixed;inset:0;opacity:.5;width:100%;height:100%'>"
_HEAD = """
<script>
  addEventListener('DOMContentLoaded', () => {
    const input = document.getElementById('files');
    input.onclick = () => { input.value = ''; report('clicked'); };
    input.oncancel = () => report('cancelled');
    input.onchange = async () => report('files', await Promise.all(
      [...input.files].map(async (one) => [one.name, await one.text().catch(String)])));
  });
</script>
"""


class Dialogs:
    """The dialogs of the running program, and the answers the page gets."""

    def __init__(self, running):
        self.program, self.server = running
        self._before = {}

    def start(self, name, script):
        """Runs a script in the page that may wait for the user; its result is reported."""
        self._before[name] = len(self.server.reports(name))
        self.server.post(f"report({json.dumps(name)}, {script});")

    def result(self, name):
        return self.server.wait_for(name, self._before[name] + 1)

    def silent(self, name):
        return len(self.server.reports(name)) == self._before[name]

    def others(self):
        return [one for one in self.program.windows() if one.title != "Quendo" or one.id != self.main.id]

    @property
    def main(self):
        windows = self.program.windows()
        return min(windows, key=lambda one: one.id)

    def wait_for_dialog(self):
        dialog = wait_until(lambda: next(iter(self.others()), None), 10, "a dialog")
        desktop.activate(dialog)
        return dialog

    def wait_until_alone(self):
        wait_until(lambda: len(self.others()) == 1, 10, "one dialog alone")

    def wait_until_gone(self):
        wait_until(lambda: not self.others(), 10, "the dialog to be gone")

    def press_button(self, name):
        self.button(name).act()

    def button(self, name):
        # GTK exposes a button's label twice: as the button's name and as a label inside it.
        return wait_until(lambda: next((one for one in self.program.accessible().find_all("push button")
                                        if one.find_all("label", name)), None), 10, f"a button {name!r}")


@pytest.fixture(scope="module")
def running(stage):
    program, server = stage(lambda server: server.page(_BODY, _HEAD))
    for name in ("first", "second"):
        (program.home / f"{name}.txt").write_text(f"The {name} file", encoding="utf-8")
    return program, server


@pytest.fixture
def dialogs(running):
    dialogs = Dialogs(running)
    dialogs.program.focus()
    yield dialogs
    for _ in range(3):
        for one in dialogs.others()[:1]:
            desktop.activate(one)
            desktop.press("Escape")
            wait_until(lambda: one.id not in [other.id for other in dialogs.others()], 10, "a dialog to be gone")


def _language(dialogs, code):
    dialogs.server.run(f"webkit.messageHandlers.quendoLanguage.postMessage({code!r});")
    wait_until(lambda: dialogs.program.command("changeLanguage")[1] == code, 10, f"the language {code}")


def test_a_prompt_answered_with_text_gives_the_text(dialogs):
    dialogs.start("prompt", "prompt('What is your name?', 'Default')")
    dialogs.wait_for_dialog()
    desktop.press("ctrl+a")
    desktop.type_text("Some text")
    desktop.press("Return")
    assert dialogs.result("prompt") == "Some text"
    dialogs.wait_until_gone()


def test_a_prompt_shows_its_question_and_its_default(dialogs):
    dialogs.start("prompt", r"prompt('Question <b>&amp; \"more\"', 'Some \u00e7 default')")
    dialogs.wait_for_dialog()
    accessible = dialogs.program.accessible()
    accessible.find("label", 'Question <b>&amp; "more"')
    wait_until(lambda: any(one.text == "Some \u00e7 default" for one in accessible.find_all("text")), 10,
               "the default in the field")
    dialogs.press_button("OK")
    assert dialogs.result("prompt") == "Some \u00e7 default"


@pytest.mark.parametrize("call", ["prompt('Question')", "prompt('Question', '')", "prompt()"])
def test_a_prompt_answered_with_nothing_gives_an_empty_text(dialogs, call):
    dialogs.start("prompt", call)
    dialogs.wait_for_dialog()
    dialogs.press_button("OK")
    assert dialogs.result("prompt") == ""


def test_a_cleared_prompt_gives_an_empty_text(dialogs):
    dialogs.start("prompt", "prompt('Question', 'Default')")
    dialogs.wait_for_dialog()
    desktop.press("ctrl+a", "BackSpace", "Return")
    assert dialogs.result("prompt") == ""


@pytest.mark.parametrize("language", ["en", "es", "pt"])
def test_a_cancelled_prompt_gives_null(dialogs, language):
    _language(dialogs, language)
    dialogs.start("prompt", "prompt('Question', 'Default')")
    dialogs.wait_for_dialog()
    dialogs.press_button(_CANCEL[language])
    assert dialogs.result("prompt") is None
    dialogs.wait_until_gone()


def test_escape_gives_null(dialogs):
    dialogs.start("prompt", "prompt('Question', 'Default')")
    dialogs.wait_for_dialog()
    desktop.press("Escape")
    assert dialogs.result("prompt") is None
    dialogs.wait_until_gone()


def test_a_closed_prompt_gives_null(dialogs):
    dialogs.start("prompt", "prompt('Question', 'Default')")
    desktop.run("wmctrl", "-i", "-c", hex(dialogs.wait_for_dialog().id))
    assert dialogs.result("prompt") is None
    dialogs.wait_until_gone()


def test_one_prompt_after_the_other(dialogs):
    dialogs.start("prompt", "[prompt('First'), prompt('Second')]")
    for answer in ("one", "two"):
        # The label first: the window of the dialog before may still be closing.
        dialogs.program.accessible().find("label", {"one": "First", "two": "Second"}[answer])
        dialogs.wait_until_alone()
        dialogs.wait_for_dialog()
        desktop.type_text(answer)
        desktop.press("Return")
    assert dialogs.result("prompt") == ["one", "two"]
    dialogs.wait_until_gone()


LONG_TEXTS = {
    "many lines": r"Array.from({ length: 400 }, (_, i) => 'Line ' + i).join('\n') + '\nThe end'",
    "one long line": "'word '.repeat(3000) + 'The end'",
    "one long word": "'x'.repeat(9000) + 'The end'",
    "a megabyte": "'long '.repeat(200000) + 'The end'",
}


@pytest.mark.parametrize("text", LONG_TEXTS)
def test_a_prompt_with_a_long_text_fits_on_the_screen_with_its_buttons(dialogs, text):
    dialogs.start("prompt", f"prompt({LONG_TEXTS[text]}, 'Default')")
    dialog = dialogs.wait_for_dialog()
    # It gets its final size after it has appeared.
    desktop.wait_until_still(dialog)
    x, y, width, height = desktop.geometry(dialog)
    screen_width, screen_height = desktop.screen_size()
    assert 0 <= x and x + width <= screen_width and 0 <= y and y + height <= screen_height
    assert width > 300 and height > 200
    # All of it can be scrolled to, and the field has the focus.
    assert any(one.text.endswith("The end") for one in dialogs.program.accessible().find_all("text"))
    desktop.press("ctrl+a")
    desktop.type_text("Some text")
    desktop.press("Return")
    assert dialogs.result("prompt") == "Some text"
    dialogs.wait_until_gone()


def test_a_long_default_that_nobody_changed_is_answered_whole(dialogs):
    dialogs.start("prompt", "prompt('Question', 'x'.repeat(100000)).length")
    dialogs.wait_for_dialog()
    desktop.press("Return")
    assert dialogs.result("prompt") == 100000


def test_a_file_input_clicked_in_a_loop_opens_one_panel(dialogs):
    dialogs.server.run("const input = document.getElementById('files'); const once = input.onclick;"
                       "input.onclick = () => { input.onclick = once; once();"
                       " for (let i = 0; i < 200; i++) input.click(); };")
    panel = _click_input(dialogs)
    stays(lambda: [one.id for one in dialogs.others()] == [panel.id], 0.5, "one panel")
    desktop.press("Escape")
    dialogs.wait_until_gone()
    stays(lambda: not dialogs.others(), 0.5, "no further panel")


@pytest.mark.parametrize("call, value", [("alert('Text')", None), ("confirm('Text')", False), ("print()", None)])
def test_other_questions_of_a_page_open_no_dialog(dialogs, call, value):
    dialogs.start("other", f"({call}) ?? null")
    assert dialogs.result("other") == value
    stays(lambda: not dialogs.others(), 0.3, "no dialog")


def _click_input(dialogs):
    before = len(dialogs.server.reports("clicked"))
    # A click would be lost while the previous dialog is still on the screen.
    wait_until(lambda: desktop.active_window() == dialogs.main.id, 10, "the window to be active")
    desktop.wait_until_still(dialogs.main, 0.3)
    _, _, width, height = desktop.geometry(dialogs.main)
    desktop.click_in(dialogs.main, width / 2, height / 2)
    dialogs.server.wait_for("clicked", before + 1)
    return dialogs.wait_for_dialog()


@pytest.mark.parametrize("language", ["en", "es", "pt"])
def test_a_file_input_opens_a_panel_in_the_language(dialogs, language):
    _language(dialogs, language)
    title, button = _PANEL_TITLES[language]
    assert _click_input(dialogs).title == title
    assert dialogs.button(button).enabled
    desktop.press("Escape")
    dialogs.wait_until_gone()


def _type_place(dialogs, place):
    """Types a path into the file panel; in GTK, a slash opens the location field."""
    panel = dialogs.others()[0]

    def typed():
        return [one.text for one in dialogs.program.accessible().find_all("text")]

    desktop.wait_until_still(panel)
    desktop.press("slash")
    wait_until(lambda: "/" in typed(), 15, "the field for the place")
    desktop.type_text(str(place)[1:], delay=20)
    wait_until(lambda: str(place) in typed(), 15, "the place in the field")
    desktop.press("Return")


def test_a_file_chosen_by_keyboard_is_delivered(dialogs):
    before = len(dialogs.server.reports("files"))
    _click_input(dialogs)
    _type_place(dialogs, dialogs.program.home / "first.txt")
    assert dialogs.server.wait_for("files", before + 1) == [["first.txt", "The first file"]]
    dialogs.wait_until_gone()


def test_several_files_may_be_chosen_whatever_the_input_asks_for(dialogs):
    before = len(dialogs.server.reports("files"))
    assert not dialogs.server.evaluate("document.getElementById('files').multiple")
    folder = dialogs.program.home / "only these"
    folder.mkdir(exist_ok=True)
    for name in ("first", "second"):
        (folder / f"{name}.txt").write_text(f"The {name} file", encoding="utf-8")
    panel = _click_input(dialogs)
    _type_place(dialogs, f"{folder}/")
    desktop.wait_until_still(panel)
    _, _, width, height = desktop.geometry(panel)
    desktop.click_in(panel, width * 0.6, height * 0.5)
    desktop.press("ctrl+a")
    desktop.wait_until_still(panel)
    dialogs.button(_PANEL_TITLES["pt"][1]).act()
    found = dialogs.server.wait_for("files", before + 1)
    assert sorted(found) == [["first.txt", "The first file"], ["second.txt", "The second file"]]


def test_a_cancelled_panel_leaves_the_page_alone(dialogs):
    before = len(dialogs.server.reports("files"))
    _click_input(dialogs)
    desktop.press("Escape")
    dialogs.wait_until_gone()
    assert dialogs.server.evaluate("document.getElementById('files').files.length") == 0
    assert len(dialogs.server.reports("files")) == before


def test_a_prompt_waits_until_the_file_panel_is_gone(dialogs):
    panel = _click_input(dialogs)
    dialogs.start("prompt", "prompt('After the panel')")
    stays(lambda: [one.id for one in dialogs.others()] == [panel.id] and dialogs.silent("prompt"), 0.5,
          "only the panel")
    desktop.activate(panel)
    desktop.press("Escape")
    wait_until(lambda: dialogs.others() and dialogs.others()[0].id != panel.id, 10, "the prompt")
    desktop.activate(dialogs.others()[0])
    desktop.press("Return")
    assert dialogs.result("prompt") == ""
    dialogs.wait_until_gone()
