"""Spell checking with the desktop's dictionaries, in the real page."""

import pytest

from harness import desktop
from harness.pointer import Pointer
from harness.waiting import Timeout, wait_until
from harness.writing import wait_for_active_text, write


@pytest.mark.parametrize("language, wrong, right", [("en_US", "sentense", "sentence"), ("pt_BR", "palavva", "palavra"),
                                                    ("es_ES", "palabrra", "palabra")])
def test_a_misspelled_word_is_put_right_by_a_guess_of_the_desktops_language(open_page, language, wrong, right):
    quendo, page = open_page(language=language)
    write(quendo, page, f"{wrong} x")
    # The dictionaries are loaded some time after the page.
    wait_until(lambda: offers(quendo, page, right), 30, f"the guess {right!r}")
    quendo.accessible().find("menu item", right).act()
    wait_for_active_text(quendo, f"{right} x")
    quendo.press("ctrl+z")
    wait_for_active_text(quendo, f"{wrong} x")


def offers(quendo, page, guess):
    """Whether the menu of the note's first word offers this guess; if so, the menu stays open."""
    Pointer(quendo, page).click("document.querySelector('.work .cm-line')", x=20, button=3)
    try:
        wait_until(lambda: quendo.accessible().find_all("menu item", guess), 3)
        return True
    except Timeout:
        desktop.press("Escape")
        return False
