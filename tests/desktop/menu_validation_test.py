"""Which commands are enabled before the page is loaded, and that they change without any input."""

import pytest

from harness import desktop, menu
from harness.recording import Journal, recording_page
from harness.waiting import wait_until


@pytest.fixture
def loading(make_quendo, reporter, slow):
    """The program while its page already runs scripts but still waits for a picture."""
    quendo = make_quendo(page=recording_page(reporter, body=f"<img src='{slow.url}/picture.png'>")).start()
    reporter.wait_for_page()
    assert slow.asked.wait(10)
    return quendo


def test_page_commands_wait_for_the_page_and_then_come_by_themselves(loading, slow):
    for entry in menu.BAR:
        shown = loading.menu_items(entry.title("pt"))
        for item in entry.items:
            assert shown[item.title("pt")] == (not item.needs_page), item.title("pt")
    opened = loading.open_menu("Arquivo")
    item = opened.find_item("Nova nota")
    assert not item.enabled
    slow.answer()
    # The menu is open and there is no input.
    wait_until(lambda: item.enabled, 10, "the item to be enabled in the open menu")
    loading.close_menu()
    for entry in menu.BAR:
        assert all(loading.menu_items(entry.title("pt")).values()), entry.title("pt")


def test_languages_can_be_chosen_while_the_page_loads(loading, reporter, slow):
    loading.choose("Quendo", "Idioma", "English")
    wait_until(lambda: loading.command("changeLanguage") == (True, "en"), 10, "the tick at English")
    assert loading.menu_items("File")["New Note"] is False
    # The page could not be notified then, and is not notified later.
    assert "quendoSetLanguage en" not in reporter.evaluate("window.journal")


def test_keys_of_disabled_commands_do_nothing(loading, reporter, slow):
    journal = Journal(reporter, loading)
    journal.clear()
    for _, item in menu.PAGE_COMMANDS:
        if item.key:
            desktop.press(item.key)
    journal.fence()
    assert not [one for one in journal.entries() if not one.startswith("keydown ")]
    slow.answer()
    loading.wait_for_page()
    # They were dropped, not queued.
    journal.fence()
    assert not [one for one in journal.entries() if not one.startswith("keydown ")]
    journal.clear()
    desktop.press("ctrl+n")
    journal.expect(("createNote",))


def test_quitting_is_possible_while_the_page_loads(loading):
    desktop.press("ctrl+q")
    assert loading.wait_for_end() == 0
