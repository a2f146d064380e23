"""Every menu command by its key, while the user is typing in the page."""

import subprocess

import pytest

from harness import desktop, menu
from harness.program import Quendo
from harness.recording import Journal, recording_page
from harness.reporter import Reporter
from harness.waiting import stays, wait_until

WITH_KEYS = [item for _, item in menu.PAGE_COMMANDS if item.key]


@pytest.fixture(scope="module")
def running(tmp_path_factory, installation, program_arguments):
    """One program with the recording page, shared by all tests of this file: (program, reporter)."""
    directory = tmp_path_factory.mktemp("menu-keys")
    server = Reporter()
    tree = installation.copy(directory, recording_page(server))
    program = Quendo(directory / "home", tree, program_arguments)
    program.start().wait_for_page()
    yield program, server
    program.stop()
    server.close()


@pytest.fixture
def journal(running):
    program, server = running
    journal = Journal(server, program)
    journal.clear()
    return journal


@pytest.fixture
def keyboard():
    """A function that changes the keyboard layout; the original one is restored at the end."""
    before = _layout()

    def change(layout):
        desktop.run("setxkbmap", layout)
        wait_until(lambda: _layout() == layout, 10, f"the keyboard layout {layout}")

    yield change
    change(before)


def _layout():
    for line in desktop.run("setxkbmap", "-query").splitlines():
        if line.startswith("layout:"):
            return line.split()[1]
    return "us"


@pytest.mark.parametrize("item", WITH_KEYS, ids=lambda item: item.action)
def test_key_runs_its_command_once_and_does_not_reach_the_page(journal, item):
    desktop.press(item.key)
    journal.expect(item.records)


@pytest.mark.parametrize("item", WITH_KEYS, ids=lambda item: item.action)
def test_key_works_in_rich_text_as_well(journal, item):
    journal.clear(focus="rich")
    desktop.press(item.key)
    journal.expect(item.records)


# X key codes of the key caps for a bracket: beside P on the American keyboard, further right on the Brazilian one.
BRACKETS = [("us", 34, 35), ("br", 35, 51), ("latam", None, 51)]


@pytest.mark.parametrize(("layout", "item", "code"),
                         [pytest.param(layout, menu.WINDOW.items[at], codes[at], id=f"{layout}-{at}")
                          for layout, *codes in BRACKETS for at in (0, 1) if codes[at]])
def test_bracket_keys_switch_tabs_on_other_keyboards(journal, keyboard, layout, item, code):
    keyboard(layout)
    _press_codes("CTRL", "SHIFT", code)
    journal.expect(item.records)


@pytest.mark.parametrize("layout", ["es", "de", "pt"])
@pytest.mark.parametrize("at", [0, 1])
def test_keyboards_that_have_brackets_only_with_altgr_can_switch_tabs(journal, keyboard, layout, at):
    keyboard(layout)
    # Both ways to read the menu's "Shift+Ctrl+[" there: with AltGr, or by the key's position.
    places = {"es": ((34, 35)), "de": ((17, 18)), "pt": ((17, 18))}[layout]
    _press_codes("CTRL", "SHIFT", "ALTGR", places[at])
    _press_codes("CTRL", "SHIFT", (34, 35)[at])
    journal.fence()
    assert menu.WINDOW.items[at].records[0] in journal.entries()


_MODIFIER_CODES = {"CTRL": 37, "SHIFT": 50, "ALTGR": 108}


def _press_codes(*names):
    """Presses physical keys together: the last one while the others are held."""
    codes = [str(_MODIFIER_CODES.get(one, one)) for one in names]
    desktop.run("xdotool", "keydown", *codes, "keyup", *reversed(codes))


@pytest.mark.parametrize("caps", ["Caps_Lock", "Num_Lock"])
def test_a_lock_key_does_not_disturb_the_commands(journal, caps):
    desktop.press(caps)
    try:
        # Not through `press`, which releases the locks while it presses a key.
        desktop.run("xdotool", "key", "ctrl+n")
        journal.expect(("createNote",))
    finally:
        desktop.press(caps)


def test_a_key_without_a_command_reaches_the_page(journal):
    desktop.press("ctrl+j")
    journal.expect(("keydown j",))


def test_the_keys_for_hiding_reach_the_page_and_hide_nothing(journal, running):
    program, _ = running
    desktop.press("ctrl+h", "ctrl+alt+h")
    journal.expect(("keydown h", "keydown h"))
    assert not desktop.is_minimised(program.window)


def test_plain_letters_reach_the_page_in_their_order(journal, running):
    _, server = running
    server.run("document.getElementById('editor').value = ''")
    desktop.type_text("#[hello] world!")
    wait_until(lambda: server.evaluate("document.getElementById('editor').value") == "#[hello] world!", 10,
               "what was typed in the text field")


def test_a_held_key_repeats_its_command_and_still_does_not_reach_the_page(journal):
    desktop.run("xdotool", "keydown", "ctrl", "key", "n", "key", "n", "key", "n", "keyup", "ctrl")
    journal.expect(("createNote",) * 3)


def test_close_tab_keeps_the_window_open(journal, running):
    program, _ = running
    window = program.window.id
    desktop.press("ctrl+w")
    journal.expect(("quendoCloseCurrentTab",))
    stays(lambda: program.running and program.window.id == window, 0.5, "the window")


@pytest.mark.parametrize("item", menu.EDIT.items, ids=lambda item: item.action)
def test_editing_keys_are_the_pages_to_handle(journal, item):
    key = item.key.rsplit("+", 1)[1]
    desktop.press(item.key)
    journal.fence()
    assert [one.lower() for one in journal.entries()] == [f"keydown {key}"]


def test_the_keyboard_layout_is_what_it_was():
    # Later tests must type on the original layout.
    assert subprocess.run(["setxkbmap", "-query"], capture_output=True, check=True).stdout
    assert _layout() == "us"
