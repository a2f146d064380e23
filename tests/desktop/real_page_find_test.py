"""Finding in the real page: in a note's text, by line number, and among all notes."""

import pytest

from harness.pointer import Pointer
from harness.waiting import wait_until
from harness.writing import paste_note, wait_for_active_text, write


def wait_for_count(page, text):
    page.wait_for(f"document.querySelector('.find-count')?.textContent === {text!r}")


def wait_for_field(page, name):
    page.wait_for(f"document.hasFocus() && document.activeElement.matches('.{name}')")


@pytest.mark.every_display
def test_words_are_counted_walked_and_left(opened):
    quendo, page = opened
    paste_note(quendo, page, "House, house and houses\nend")
    quendo.press("ctrl+f")
    wait_for_field(page, "find-what")
    quendo.type("house")
    wait_for_count(page, "3 in the text")
    quendo.press("Return")
    wait_for_count(page, "1 of 3")
    quendo.press("Return")
    wait_for_count(page, "2 of 3")
    quendo.press("shift+Return", "shift+Return")
    wait_for_count(page, "3 of 3")
    quendo.press("Escape")
    page.wait_for("!document.querySelector('.find')")
    page.wait_for_editor()
    # The last search is selected, so typing replaces it.
    quendo.type("tent")
    wait_for_active_text(quendo, "House, house and tents\nend")


def test_a_regular_expression_is_found_and_replaced_with_its_groups(opened):
    quendo, page = opened
    text = "2024-01-02\nno date\n2025-03-04"
    paste_note(quendo, page, text)
    quendo.press("ctrl+h")
    wait_for_field(page, "find-what")
    pointer = Pointer(quendo, page)
    pointer.click("document.querySelector('.find-regexp')")
    page.wait_for("document.querySelector('.find-regexp').getAttribute('aria-pressed') === 'true'")
    pointer.click("document.querySelector('.find-what')")
    quendo.type(r"(\d+")
    wait_for_count(page, "Incomplete expression")
    quendo.type(r")-(\d+)-(\d+)")
    wait_for_count(page, "2 in the text")
    quendo.press("Return", "Return")
    wait_for_count(page, "2 of 2")
    pointer.click("document.querySelector('.find-with')")
    quendo.type("$3/$2/$1")
    # Ctrl+Enter in the second field replaces all.
    quendo.press("ctrl+Return")
    wait_for_active_text(quendo, "02/01/2024\nno date\n04/03/2025")
    quendo.press("Escape")
    page.wait_for_editor()
    quendo.press("ctrl+z")
    wait_for_active_text(quendo, text)


def test_the_button_replaces_all_too(opened):
    quendo, page = opened
    paste_note(quendo, page, "one fish, two fish")
    quendo.press("ctrl+h")
    wait_for_field(page, "find-what")
    quendo.type("fish")
    wait_for_count(page, "2 in the text")
    pointer = Pointer(quendo, page)
    pointer.click("document.querySelector('.find-with')")
    wait_for_field(page, "find-with")
    quendo.type("bird")
    pointer.click("[...document.querySelectorAll('.find-button')].find((one) => one.textContent === 'Replace all')")
    wait_for_active_text(quendo, "one bird, two bird")


def test_a_line_is_gone_to_by_its_number(opened):
    quendo, page = opened
    paste_note(quendo, page, "one\ntwo\nthree")
    quendo.press("ctrl+alt+g")
    page.wait_for("document.hasFocus() && document.activeElement.matches('.cm-goto-line input')")
    quendo.type("2")
    quendo.press("Return")
    page.wait_for_editor()
    quendo.type(">")
    wait_for_active_text(quendo, "one\n>two\nthree")


def test_words_are_counted_in_the_text_and_in_what_is_selected(opened):
    quendo, page = opened
    paste_note(quendo, page, "one two three\nfour")
    page.wait_for("document.getElementById('textCount').textContent === '4 words · 18 characters'")
    quendo.press("shift+End")
    page.wait_for("document.getElementById('textCount').textContent === 'selected: 3 words · 13 characters'")


@pytest.mark.parametrize("query", ["acao", "ACAO de"])
def test_notes_are_found_without_their_accents(opened, query):
    quendo, page = opened
    paste_note(quendo, page, "Meeting\nlast week: Ação de graças")
    write(quendo, page, "Other")
    quendo.press("ctrl+p")
    page.wait_for("document.activeElement.id === 'searchInput'")
    quendo.type(query)
    wait_until(lambda: page.rows() == ["Meeting"], 10, "the one note that has it")
    page.wait_for("document.querySelector('#sidebar .row-excerpt mark')?.textContent.startsWith('Ação')")
    quendo.press("Return")
    wait_until(lambda: page.active_tab() == "Meeting", 10, "the found note")
    page.wait_for_editor()
