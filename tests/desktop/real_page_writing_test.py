"""Writing in the real page with real keys and the mouse: lists, tasks, carets, lines, folds, undo."""

import re

from harness.pointer import Pointer
from harness.waiting import wait_until
from harness.writing import active_text, paste_note, texts, wait_for_active_text, write


def line(number):
    return f"document.querySelectorAll('.cm-line')[{number}]"


def test_lists_go_on_move_by_levels_and_end(opened):
    quendo, page = opened
    quendo.press("ctrl+n")
    page.wait_for_editor()
    quendo.type("1. one\ntwo\n")
    quendo.press("Tab")
    quendo.type("inside\n")
    quendo.press("shift+Tab")
    quendo.type("three\n\nafter\n- [x] done\nto do")
    # Enter on an empty item ends the list, and an item is numbered after the one above it.
    expected = r"1\. one\n2\. two\n   1\. inside\n3\. three\nafter\n- \[x\] done\n- \[ \] to do"
    wait_until(lambda: re.fullmatch(expected, active_text(quendo) or ""), 10, "the list on disk")


def test_a_task_is_ticked_by_key_and_by_the_mouse(opened):
    quendo, page = opened
    paste_note(quendo, page, "- [ ] one\n- [ ] two")
    quendo.press("ctrl+Return")
    wait_for_active_text(quendo, "- [x] one\n- [ ] two")
    Pointer(quendo, page).click("document.querySelectorAll('.md-task')[1]")
    wait_for_active_text(quendo, "- [x] one\n- [x] two")
    quendo.type("!")
    # The caret is back where it was.
    wait_for_active_text(quendo, "!- [x] one\n- [x] two")


def test_bold_and_italic_have_keys(opened):
    quendo, page = opened
    write(quendo, page, "word")
    quendo.press("ctrl+b", "ctrl+i")
    wait_for_active_text(quendo, "***word***")
    quendo.press("ctrl+b")
    wait_for_active_text(quendo, "*word*")


def test_carets_at_the_same_word_write_at_once(opened):
    quendo, page = opened
    paste_note(quendo, page, "one two one three one")
    quendo.press("ctrl+d", "ctrl+d", "ctrl+d")
    quendo.type("ten")
    wait_for_active_text(quendo, "ten two ten three ten")
    quendo.press("ctrl+z")
    wait_for_active_text(quendo, "one two one three one")


def test_carets_in_lines_above_and_below_write_at_once(opened):
    quendo, page = opened
    paste_note(quendo, page, "aa\nbb\ncc")
    quendo.press("Down", "ctrl+alt+Down", "ctrl+alt+Up", "ctrl+alt+Up")
    page.wait_for("document.querySelectorAll('.cm-otherCursor').length === 2")
    quendo.type("> ")
    wait_for_active_text(quendo, "> aa\n> bb\n> cc")
    quendo.press("Escape", "ctrl+End")
    quendo.type("!")
    wait_for_active_text(quendo, "> aa\n> bb\n> cc!")


def test_the_mouse_sets_more_carets(opened):
    quendo, page = opened
    paste_note(quendo, page, "aa\nbb\ncc")
    pointer = Pointer(quendo, page)
    pointer.click(line(0), x=300)
    pointer.click(line(2), "alt", x=300)
    page.wait_for("document.querySelectorAll('.cm-otherCursor').length === 1")
    quendo.type("|")
    wait_for_active_text(quendo, "aa|\nbb\ncc|")


def test_the_mouse_selects_a_column(opened):
    quendo, page = opened
    paste_note(quendo, page, "aaaaaaaa1\nbbbbbbbb2\ncccccccc3")
    Pointer(quendo, page).drag((line(0), 1), (line(2), 300), "alt", "shift")
    quendo.type("x")
    wait_until(lambda: page.text() != "aaaaaaaa1\nbbbbbbbb2\ncccccccc3", 10, "the column to be replaced")
    wait_for_active_text(quendo, "x\nx\nx")


def test_lines_move_double_and_join(opened):
    quendo, page = opened
    paste_note(quendo, page, "one\ntwo\nthree")
    quendo.press("alt+Down")
    wait_for_active_text(quendo, "two\none\nthree")
    quendo.press("alt+Up")
    wait_for_active_text(quendo, "one\ntwo\nthree")
    quendo.press("alt+shift+Down", "alt+shift+Up")
    wait_for_active_text(quendo, "one\none\none\ntwo\nthree")
    quendo.press("ctrl+j")
    wait_for_active_text(quendo, "one\none one\ntwo\nthree")


def test_a_section_folds_by_key_and_opens_by_a_click(opened):
    quendo, page = opened
    text = "# One\n\nhidden\n\n# Two\n\nend"
    paste_note(quendo, page, text)
    quendo.press("ctrl+alt+bracketleft")
    page.wait_for("!!document.querySelector('.fold-rest')")
    assert "hidden" not in page.text() and "end" in page.text()
    Pointer(quendo, page).click("document.querySelector('.fold-rest')")
    page.wait_for(f"{page.TEXT}.includes('hidden')")
    page.wait_for_editor()
    quendo.press("ctrl+alt+shift+bracketleft")
    page.wait_for("document.querySelectorAll('.fold-rest').length === 2")
    quendo.press("ctrl+alt+shift+bracketright")
    page.wait_for("!document.querySelector('.fold-rest')")
    # Folding only affects the display: the text is unchanged.
    wait_for_active_text(quendo, text)


def test_each_note_keeps_its_undo_history_while_others_are_in_front(opened):
    quendo, page = opened
    write(quendo, page, "first")
    quendo.paste(" more")
    wait_for_active_text(quendo, "first more")
    write(quendo, page, "second")
    quendo.press("ctrl+shift+bracketleft")
    wait_until(lambda: page.active_tab() == "first more", 10, "the first note")
    quendo.press("ctrl+z")
    wait_for_active_text(quendo, "first")
    quendo.press("ctrl+shift+bracketright")
    wait_until(lambda: page.active_tab() == "second", 10, "the second note")
    quendo.press("ctrl+z")
    wait_for_active_text(quendo, "")
    quendo.press("ctrl+shift+bracketleft")
    wait_until(lambda: page.active_tab() == "first", 10, "the first note")
    quendo.press("ctrl+shift+z")
    wait_for_active_text(quendo, "first more")
    assert sorted(texts(quendo)) == ["", "first more"]
