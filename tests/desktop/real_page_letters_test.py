"""Letters that take several keys, and right-to-left letters, in the real page."""

import pytest

from harness import desktop
from harness.waiting import wait_until
from harness.writing import paste_note, wait_for_active_text, write


@pytest.fixture(scope="module", autouse=True)
def keyboard():
    """A keyboard with dead keys and a compose key that can be switched to Hebrew and Arabic. xdotool would otherwise
    remap missing letters one by one while typing, which no person does."""
    desktop.run("setxkbmap", "-layout", "us,il,ara", "-variant", "intl,,", "-option", "compose:menu")
    yield
    desktop.run("setxkbmap", "-layout", "us", "-variant", "", "-option", "")


@pytest.mark.parametrize("keys, letter", [
    (["dead_acute", "e"], "é"),
    (["dead_tilde", "a"], "ã"),
    (["dead_circumflex", "O"], "Ô"),
    (["Multi_key", "apostrophe", "e"], "é"),
    (["Multi_key", "comma", "c"], "ç"),
    (["ctrl+shift+u", "e", "9", "Return"], "é"),
], ids=["acute", "tilde", "circumflex", "compose-acute", "compose-cedilla", "code"])
def test_keys_that_are_one_letter_together(opened, keys, letter):
    quendo, page = opened
    write(quendo, page, "caf")
    quendo.press(*keys)
    quendo.type(" x")
    wait_for_active_text(quendo, f"caf{letter} x")
    quendo.press("BackSpace", "BackSpace", "BackSpace")
    wait_for_active_text(quendo, "caf")


def test_a_letter_that_is_not_finished_can_be_given_up(opened):
    quendo, page = opened
    write(quendo, page, "one")
    quendo.press("dead_acute", "Escape")
    quendo.type("two")
    wait_for_active_text(quendo, "onetwo")


def test_dead_keys_write_at_the_caret(opened):
    quendo, page = opened
    paste_note(quendo, page, "Sao Paulo")
    quendo.press("Right", "Delete", "dead_tilde", "a")
    wait_for_active_text(quendo, "São Paulo")


def test_dead_keys_write_into_fields_too(opened):
    quendo, page = opened
    paste_note(quendo, page, "Ação")
    quendo.press("ctrl+p")
    page.wait_for("document.activeElement.id === 'searchInput'")
    quendo.press("a", "Multi_key", "comma", "c", "dead_tilde", "a", "o")
    page.wait_for("document.getElementById('searchInput').value === 'ação'")
    wait_until(lambda: page.rows() == ["Ação"], 10, "the note")


def test_lines_run_the_way_they_are_written(opened):
    quendo, page = opened
    quendo.press("ctrl+n")
    page.wait_for_editor()
    quendo.type("left\nשלום עולם\n- مرحبا abc 12")
    text = "left\nשלום עולם\n- مرحبا abc 12"
    wait_for_active_text(quendo, text)
    directions = "[...document.querySelectorAll('.cm-line')].map((line) => getComputedStyle(line).direction)"
    assert page.evaluate(directions) == ["ltr", "rtl", "rtl"]
    quendo.press("Up", "Home")
    quendo.type("!")
    wait_for_active_text(quendo, text.replace("שלום", "!שלום"))
