"""Typing goes where it was typed, however late the page is: commands do not overtake keys, nor keys commands."""

import pytest

from harness import desktop
from harness.waiting import Timeout, wait_until
from harness.writing import stored_state, texts

pytestmark = pytest.mark.never_retried


def type_and_press(*steps):
    """Types texts and presses keys (with a "+") without waiting for the page."""
    for step in steps:
        if "+" in step:
            desktop.press(step)
        else:
            desktop.type_text(step)


@pytest.fixture
def note(open_page):
    """(program, page): the real page with one empty note, which has the focus."""
    quendo, page = open_page(state=stored_state({"first": ""}))
    page.wait_for_editor()
    return quendo, page


def wait_for_texts(quendo, *expected):
    try:
        wait_until(lambda: sorted(texts(quendo)) == sorted(expected), 20)
    except Timeout:
        pass
    assert sorted(texts(quendo)) == sorted(expected)


def test_twelve_notes_typed_in_one_go_keep_their_texts(note):
    quendo, page = note
    lines = [f"Note number {number}." for number in range(12)]
    steps = [step for line in lines for step in (line, "ctrl+n")]
    type_and_press(*steps[:-1])
    wait_for_texts(quendo, *lines)


def test_a_command_waits_for_the_keys_before_it_and_goes_before_those_after_it(note):
    quendo, page = note
    page.stall(1000)
    type_and_press("before", "ctrl+n", "between", "ctrl+n", "after")
    wait_for_texts(quendo, "before", "between", "after")


def test_a_closed_tab_has_all_that_was_typed_into_it(note):
    quendo, page = note
    page.stall(1000)
    type_and_press("all of it", "ctrl+w")
    wait_until(lambda: page.tabs() == [], 10, "no tab")
    wait_for_texts(quendo, "all of it")


def test_a_page_that_stands_still_for_long_loses_no_key(note):
    quendo, page = note
    page.stall(5000)
    type_and_press("abc", "ctrl+n", "def")
    wait_until(lambda: sorted("".join(texts(quendo))) == sorted("abcdef"), 20, "all six letters")


def test_keys_that_are_held_back_are_there_after_a_quit(note):
    quendo, page = note
    page.stall(1000)
    type_and_press("before", "ctrl+n", "after", "ctrl+q")
    assert quendo.wait_for_exit() == 0
    assert sorted(texts(quendo)) == ["after", "before"]


def test_the_menu_s_keys_still_work_in_a_page_that_stands_still(note):
    quendo, page = note
    page.stall(20000)
    type_and_press("abc", "ctrl+n", "ctrl+n", "ctrl+n", "ctrl+n", "ctrl+m")
    wait_until(lambda: desktop.is_minimised(quendo.window), 10, "the window to be minimised")
