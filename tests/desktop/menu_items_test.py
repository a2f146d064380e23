"""Every menu command by its item: through accessibility, by keyboard and by mouse."""

import pytest

from harness import desktop, menu
from harness.program import Quendo
from harness.recording import Journal, recording_page
from harness.reporter import Reporter
from harness.waiting import stays, wait_until

LANGUAGE = "pt"


@pytest.fixture(scope="module")
def running(tmp_path_factory, installation, program_arguments):
    """One program with the recording page, shared by all tests of this file: (program, reporter)."""
    directory = tmp_path_factory.mktemp("menu-items")
    server = Reporter()
    tree = installation.copy(directory, recording_page(server))
    program = Quendo(directory / "home", tree, program_arguments)
    program.start().wait_for_page()
    yield program, server
    program.stop()
    server.close()


@pytest.fixture
def program(running):
    return running[0]


@pytest.fixture
def journal(running):
    program, server = running
    journal = Journal(server, program)
    journal.clear()
    return journal


def _ids(value):
    return getattr(value, "action", "")


@pytest.mark.parametrize(("entry", "item"), menu.PAGE_COMMANDS, ids=_ids)
def test_item_runs_its_command_once(program, journal, entry, item):
    program.choose(entry.title(LANGUAGE), item.title(LANGUAGE))
    journal.wait_for(item.records)
    assert journal.entries() == list(item.records)


@pytest.mark.parametrize(("entry", "item"), [menu.PAGE_COMMANDS[at] for at in (0, 4, 7, -1)], ids=_ids)
def test_item_can_be_chosen_with_arrows_and_return(program, journal, entry, item):
    # A pointer resting on the bar would switch menus too.
    desktop.park_pointer()
    desktop.press("F10")
    _wait_for_focus(program, menu.BAR[0].items[0])
    for reached in menu.BAR[1:menu.BAR.index(entry) + 1]:
        desktop.press("Right")
        _wait_for_focus(program, reached.items[0])
    for _ in range(entry.items.index(item)):
        desktop.press("Down")
    _wait_for_focus(program, item)
    desktop.press("Return")
    journal.wait_for(item.records)
    assert journal.entries() == list(item.records)


@pytest.mark.parametrize(("entry", "item"), [menu.PAGE_COMMANDS[at] for at in (0, 6, 7, 11)], ids=_ids)
def test_item_can_be_chosen_with_the_mouse(program, journal, entry, item):
    opened = program.open_menu(entry.title(LANGUAGE))
    target = opened.find_item(item.title(LANGUAGE))
    _click_item(program, entry, target)
    journal.wait_for(item.records)
    assert journal.entries() == list(item.records)


def test_f10_reaches_the_menu_bar_and_escape_leaves_it(program, journal):
    desktop.press("F10")
    wait_until(lambda: not journal.has_keyboard(), 10, "the menu bar to take the keyboard")
    desktop.press("Escape")
    wait_until(journal.has_keyboard, 10, "the page to have the keyboard again")
    assert not [one for one in journal.entries() if one != "keydown F10"]


def test_writing_goes_on_after_a_menu_was_opened_and_left(program, journal):
    program.open_menu("Arquivo")
    program.close_menu()
    wait_until(journal.has_keyboard, 10, "the page to have the keyboard again")


def test_writing_goes_on_after_an_item_was_chosen(program, journal):
    program.choose("Arquivo", "Salvar agora")
    journal.wait_for(("flushPendingSave",))
    wait_until(journal.has_keyboard, 10, "the page to have the keyboard again")


def test_writing_goes_on_after_an_item_was_chosen_by_keyboard(program, journal):
    desktop.press("F10")
    _wait_for_focus(program, menu.BAR[0].items[0])
    desktop.press("Right")
    _wait_for_focus(program, menu.FILE.items[0])
    desktop.press("Return")
    journal.wait_for(("createNote",))
    wait_until(journal.has_keyboard, 10, "the page to have the keyboard again")


def test_a_pointer_that_passes_over_the_menu_bar_does_not_take_the_keyboard(program, journal):
    left, top, _, _ = desktop.geometry(program.window)
    for x in (20, 70, 130, 200):
        desktop.run("xdotool", "mousemove", str(left + x), str(top + 12))
    stays(journal.has_keyboard, 1, "the page's keyboard")


def test_items_show_their_keys(program, journal):
    names = {"ctrl": "Ctrl", "shift": "Shift", "alt": "Alt", "bracketleft": "[", "bracketright": "]"}
    for entry in menu.BAR:
        opened = program.open_menu(entry.title(LANGUAGE))
        for item in entry.items:
            labels = [one.name for one in opened.find_item(item.title(LANGUAGE)).find_all("label")]
            shown = {frozenset(one.split("+")) for one in labels[1:]}
            expected = {frozenset(names.get(one, one.upper()) for one in item.key.split("+"))} if item.key else set()
            assert shown == expected, item
        program.close_menu()
        journal.clear()


def test_menus_hold_what_they_must_in_order(program, journal):
    for entry in menu.BAR:
        assert list(program.menu_items(entry.title(LANGUAGE))) == [one.title(LANGUAGE) for one in entry.items]
        journal.clear()


def _wait_for_focus(program, item):
    """Waits until an item of an open menu has the keyboard focus."""

    def focused():
        return any(one.name == item.title(LANGUAGE) and one.has("focused")
                   for one in program.accessible().find("menu bar").walk())

    wait_until(focused, 10, f"{item.title(LANGUAGE)!r} to have the focus")


def _click_item(program, entry, target):
    """Clicks an item of an open menu. Its accessible extents are relative to the menu's own surface, which starts a
    little above the lower edge of the menu's title."""
    _, top, _, height = program.accessible().find("menu bar").find("menu item", entry.title(LANGUAGE)).extents()
    x, y, width, item_height = target.extents()
    desktop.click_in(program.window, x + width / 2, top + height + y + item_height / 2 - 4)
