"""The real page in the real window, used as a person uses it."""

import pytest

from harness import desktop
from harness.waiting import wait_until
from harness.writing import stored_state, write


def test_notes_tabs_switching_closing_and_reopening(opened):
    quendo, page = opened
    for title in ("One", "Two", "Three"):
        write(quendo, page, f"# {title}\nText of {title}")
    assert page.tabs() == ["One", "Two", "Three"]
    quendo.press("ctrl+shift+bracketleft")
    wait_until(lambda: page.active_tab() == "Two", 10, "the tab before")
    quendo.press("ctrl+shift+bracketright", "ctrl+shift+bracketright")
    wait_until(lambda: page.active_tab() == "One", 10, "the first tab after the last")
    quendo.press("ctrl+w")
    wait_until(lambda: page.tabs() == ["Two", "Three"], 10, "the tab to be closed")
    quendo.press("ctrl+shift+t")
    wait_until(lambda: page.tabs() == ["One", "Two", "Three"], 10, "the tab to be back in its place")
    page.wait_for_editor()
    quendo.press("ctrl+alt+w")
    wait_until(lambda: page.tabs() == ["One"], 10, "the other tabs to be closed")
    assert any("2 tabs closed" in one for one in page.toasts())
    page.wait_for_editor()
    quendo.type("!")
    quendo.state.wait_for_text("Text of One")
    quendo.press("ctrl+alt+shift+w")
    wait_until(lambda: page.tabs() == [], 10, "the last tab to be closed")
    quendo.press("ctrl+shift+t")
    wait_until(lambda: page.tabs() == ["One"], 10, "the tab to be back")


def test_more_tabs_than_can_be_opened_again_are_closed_only_when_that_is_agreed_to(open_page):
    quendo, page = open_page(stored_state({f"n{number}": f"Note {number}" for number in range(52)}))
    for answer, left in (("Escape", 52), ("Return", 1)):
        page.wait_for_editor()
        quendo.press("ctrl+alt+w")
        page.wait_for("document.querySelector('dialog[open] .question')?.textContent === 'Close 51 tabs?'")
        quendo.press(answer)
        page.wait_for("!document.querySelector('dialog[open]')")
        assert len(page.tabs()) == left
    page.wait_for_editor()
    assert page.active_tab() == "Note 0"


def test_overview_shows_and_opens_a_tab(opened):
    quendo, page = opened
    for title in ("One", "Two"):
        write(quendo, page, f"# {title}")
    quendo.choose("Window", "Show All Tabs")
    wait_until(lambda: page.dialog() == "Open tabs", 10, "the overview")
    cards = page.evaluate("[...document.querySelectorAll('.card-title')].map((card) => card.textContent)")
    assert cards == ["One", "Two"]


def test_search_finds_and_opens_a_note(opened):
    quendo, page = opened
    write(quendo, page, "# Shopping\nBread and olives")
    write(quendo, page, "# Other")
    quendo.press("ctrl+p")
    page.wait_for("document.activeElement.id === 'searchInput'")
    quendo.type("olives")
    page.wait_for("document.querySelectorAll('#sidebar [role=option]').length === 1")
    quendo.press("Return")
    wait_until(lambda: page.active_tab() == "Shopping", 10, "the found note")
    page.wait_for_editor()


def test_quick_capture_keeps_a_thought_beside_the_note(opened):
    quendo, page = opened
    write(quendo, page, "# Being written")
    quendo.press("ctrl+k")
    page.wait_for("document.activeElement.matches('.capture-field')")
    quendo.type("Call the plumber")
    quendo.press("Escape")
    wait_until(lambda: page.dialog() is None, 10, "the panel to close")
    quendo.press("ctrl+k")
    page.wait_for("document.querySelector('.capture-field')?.value === 'Call the plumber'")
    quendo.press("ctrl+Return")
    wait_until(lambda: page.dialog() is None, 10, "the panel to close")
    quendo.state.wait_for_text("Call the plumber")
    assert page.active_tab() == "Being written"
    page.wait_for_editor()


@pytest.mark.parametrize("name", ["Ação.md", "plain text.txt"])
def test_a_file_is_opened_through_the_file_dialog(opened, name):
    quendo, page = opened
    file = quendo.home / name
    file.write_text("From a file: ção\n", encoding="utf-8")
    quendo.press("ctrl+o")
    dialog = quendo.wait_for_window("Open Text Files in Quendo")
    wait_until(lambda: desktop.active_window() == dialog.id, 10, "the dialog to have the keyboard")
    # A slash opens the location field.
    quendo.type("/")
    field = quendo.accessible().find("text")
    # xdotool remaps missing letters one by one, which is unreliable on a busy machine.
    quendo.paste(str(file)[1:])
    wait_until(lambda: field.text == str(file), 10, "the path in the dialog")
    quendo.press("Return")
    wait_until(lambda: name in page.tabs() or file.stem in page.tabs(), 10, "a tab with the file's name")
    quendo.state.wait_for_text("From a file: ção")
    page.wait_for_editor()
    # The desktop's list of recent files, which every program's dialogs and menus show.
    recent = quendo.data / "recently-used.xbel"
    wait_until(lambda: recent.exists() and file.as_uri() in recent.read_text(encoding="utf-8"), 10, "the recent file")


def test_the_file_dialog_can_be_left_without_a_file(opened):
    quendo, page = opened
    write(quendo, page, "# Before")
    quendo.press("ctrl+o")
    quendo.wait_for_window("Open Text Files in Quendo")
    quendo.press("Escape")
    wait_until(lambda: len(quendo.windows()) == 1, 10, "the dialog to be gone")
    page.wait_for_editor()
    quendo.type(" and after")
    wait_until(lambda: page.active_tab() == "Before and after", 10, "writing to go on")


def test_the_shortcut_guide_opens_by_its_item(opened):
    quendo, page = opened
    quendo.choose("Shortcuts", "How to Use Advanced Editing…")
    wait_until(lambda: page.dialog() == "Shortcut guide", 10, "the guide")


def test_the_status_says_saved_and_failed_and_saved_again(opened):
    quendo, page = opened
    write(quendo, page, "# Safe")
    wait_until(lambda: page.status() == "saved", 10, "the note to be saved")
    # A file in place of the directory makes every write fail, even for root.
    directory = quendo.state.directory
    aside = directory.with_name("aside")
    directory.rename(aside)
    directory.write_text("")
    quendo.type(" no more")
    wait_until(lambda: page.status() == "failed", 20, "the failure to be shown")
    assert any("Saving failed" in one for one in page.toasts())
    directory.unlink()
    aside.rename(directory)
    quendo.press("ctrl+s")
    wait_until(lambda: page.status() == "saved", 20, "the note to be saved after all")
    quendo.state.wait_for_text("Safe no more")


@pytest.mark.never_retried
def test_the_first_keys_after_the_page_has_come_are_not_lost(opened):
    quendo, page = opened
    write(quendo, page, "# Kept")
    wait_until(lambda: page.status() == "saved", 10, "the note to be saved")
    assert quendo.terminate() == 0
    quendo.start()
    quendo.wait_for_page()
    quendo.type("#[x] first ")
    page.wait_for("document.querySelector('.cm-line')?.textContent === '# Kept#[x] first '")


def test_real_page_lacks_no_global_of_the_menu(opened):
    names = ["createNote", "openCapture", "exportMarkdown", "flushPendingSave", "quendoSaveAsCurrentNote",
             "quendoCloseCurrentTab", "quendoRequestCloseTabs", "quendoReopenClosedTab", "quendoSwitchOpenTab",
             "quendoShowTabOverview", "quendoOpenShortcutGuide", "quendoSetLanguage", "renderSidebar", "setDrawer",
             "showToast", "quendoCopyCurrentNoteForWhatsApp"]
    _, page = opened
    assert [one for one in names if page.evaluate(f"typeof window.{one}") != "function"] == []
    assert page.evaluate("'sidebarMode' in state && !!document.getElementById('importFileInput')")
