"""Input methods, dead keys and compose sequences: into notes, fields of the page, and panels of the desktop.

What an input method composes is on the screen before it is in the note. Nothing of it may be lost, whatever comes next.
"""

import os
import signal

import pytest

from harness import desktop, pointer
from harness.input_methods import InputMethods
from harness.waiting import wait_until
from harness.writing import stored_state, texts, wait_for_active_text

pytestmark = pytest.mark.never_retried

# What "gksrm" composes: the first syllable is in the note, the second one not yet.
KEYS = "gksrm"
COMPOSED = "한그"


@pytest.fixture(scope="module")
def input_methods(tmp_path_factory):
    methods = InputMethods(tmp_path_factory.mktemp("ibus") / "home")
    yield methods
    methods.end()


@pytest.fixture
def note(input_methods, open_page):
    """(program, page): the real page with an empty note, which has the focus, and the engine for Korean."""
    input_methods.choose("hangul")
    quendo, page = open_page(stored_state({"first": "", "second": "Other"}), environment=input_methods.environment)
    page.wait_for_editor()
    return quendo, page


def compose(page):
    """Begins to write Korean in the note, and leaves the last syllable unfinished."""
    desktop.press("shift+space")
    desktop.type_text(KEYS)
    wait_until(lambda: page.text() == COMPOSED, 10, f"{COMPOSED!r} on the screen")


def wait_for_texts(quendo, *expected):
    wait_until(lambda: texts(quendo) == list(expected), 15, f"{expected} on disk")


def name_field(quendo):
    """Opens the panel in which a note's file is named, and returns its field, which has the keyboard. Its text is to
    be removed before any is composed: see docs/input-methods.md."""
    desktop.press("ctrl+shift+s")
    panel = quendo.wait_for_window("Save Note As")
    wait_until(lambda: desktop.active_window() == panel.id, 10, "the panel to have the keyboard")
    field = quendo.accessible().find("text", "Name:")
    wait_until(lambda: field.has("focused") or any(one.has("focused") for one in field.walk()), 10, "the focus in it")
    desktop.wait_until_still(panel)
    return field


@pytest.mark.parametrize("engine, switch, keys, shown, end, text", [
    ("hangul", "shift+space", "gksrmf", "한글", "space", "한글 "),
    ("anthy", "ctrl+j", "nihongo", "にほんご", "Return", "にほんご"),
    ("libpinyin", None, "nihao", "你好", "space", "你好"),
])
def test_an_engine_composes_into_a_note(input_methods, note, engine, switch, keys, shown, end, text):
    quendo, page = note
    input_methods.choose(engine)
    if switch:
        desktop.press(switch)
    desktop.type_text(keys)
    wait_until(lambda: page.text() == shown, 10, f"{shown!r} to be composed")
    desktop.press(end)
    wait_for_active_text(quendo, text)


def test_letters_that_are_not_for_the_engine_keep_their_order(note):
    quendo, _ = note
    text = "The quick brown fox jumps over the lazy dog."
    desktop.type_text(text)
    wait_for_active_text(quendo, text)


def test_an_engine_composes_into_fields_and_panels(note):
    quendo, page = note
    desktop.type_text("Text")
    wait_for_active_text(quendo, "Text")
    desktop.press("ctrl+a", "shift+space")
    desktop.type_text("gksrmf ")
    wait_for_active_text(quendo, "한글 ")
    desktop.press("Escape")
    for command in ("ctrl+f", "ctrl+k", "ctrl+p"):
        desktop.press(command)
        page.wait_for("document.activeElement?.matches('input, textarea')", f"a field after {command}")
        # Escape, below, ends the engine's Korean mode.
        desktop.press("shift+space")
        desktop.type_text("gksrmf ")
        page.wait_for("document.activeElement.value === '한글 '", f"the text in the field after {command}")
        desktop.press("ctrl+a", "BackSpace", "Escape")
    field = name_field(quendo)
    desktop.press("ctrl+a", "BackSpace", "shift+space")
    desktop.type_text("gksrmf ")
    wait_until(lambda: field.text == "한글 ", 10, "the name in the panel")


@pytest.mark.parametrize("command, tabs, before, after", [
    ("ctrl+s", 2, [COMPOSED, "Other"], ["한그가 ", "Other"]),
    ("ctrl+n", 3, [COMPOSED, "Other", ""], [COMPOSED, "Other", "가 "]),
    ("ctrl+w", 1, [COMPOSED, "Other"], [COMPOSED, "가 Other"]),
])
def test_a_command_keeps_what_is_composed(note, command, tabs, before, after):
    quendo, page = note
    compose(page)
    desktop.press(command)
    wait_until(lambda: len(page.tabs()) == tabs, 10, f"{tabs} tabs")
    wait_for_texts(quendo, *before)
    page.wait_for_editor()
    desktop.type_text("rk ")
    wait_for_texts(quendo, *after)


def test_find_escape_and_undo_keep_what_is_composed(note):
    quendo, page = note
    desktop.type_text("First. ")
    wait_for_texts(quendo, "First. ", "Other")
    desktop.press("shift+space")
    desktop.type_text(KEYS)
    wait_until(lambda: page.text() == f"First. {COMPOSED}", 10, "the composition")
    # The key that ends a composition may do nothing else: see docs/input-methods.md.
    desktop.press("ctrl+f")
    wait_for_texts(quendo, f"First. {COMPOSED}", "Other")
    desktop.press("Escape")
    page.wait_for_editor()
    desktop.press("ctrl+z")
    wait_until(lambda: COMPOSED not in page.text(), 10, "the composition to be undone")
    desktop.press("ctrl+shift+z")
    wait_for_texts(quendo, f"First. {COMPOSED}", "Other")


def test_a_click_on_another_note_loses_nothing_of_a_composition(note):
    quendo, page = note
    compose(page)
    pointer.Pointer(quendo, page).click("[...document.querySelectorAll('#sidebar [role=option]')].at(-1)")
    wait_until(lambda: page.text() == "Other", 10, "the other note")
    # WebKitGTK writes the last syllable twice: see docs/input-methods.md.
    wait_until(lambda: texts(quendo) in ([COMPOSED, "Other"], [COMPOSED + COMPOSED[-1], "Other"]), 15,
               "the composition on disk")


@pytest.mark.parametrize("by", ["key", "signal"])
def test_a_quit_saves_what_is_composed(note, by):
    quendo, page = note
    compose(page)
    if by == "key":
        desktop.press("ctrl+q")
    else:
        os.kill(quendo.pid, signal.SIGTERM)
    assert quendo.wait_for_exit() == 0
    assert texts(quendo) == [COMPOSED, "Other"]


@pytest.fixture
def dead_keys():
    """A keyboard with dead keys, and the menu key as compose key."""
    desktop.run("setxkbmap", "-layout", "us", "-variant", "intl", "-option", "compose:menu")
    yield
    desktop.run("setxkbmap", "-layout", "us", "-variant", "", "-option", "")


@pytest.mark.parametrize("ibus", [False, True], ids=["gtk", "ibus"])
def test_dead_keys_and_compose_write_letters_everywhere(input_methods, open_page, dead_keys, ibus):
    if ibus:
        input_methods.choose("xkb:us:intl:eng")
    quendo, page = open_page(stored_state({"first": ""}), environment=input_methods.environment if ibus else None)
    page.wait_for_editor()
    keys = ("dead_acute", "e", "dead_tilde", "a", "Multi_key", "o", "e")
    desktop.press(*keys)
    wait_for_active_text(quendo, "éãœ")
    desktop.press("ctrl+a", "dead_acute", "a")
    wait_for_active_text(quendo, "á")
    desktop.press("ctrl+p")
    page.wait_for("document.activeElement?.matches('input')", "the search field")
    desktop.press(*keys)
    page.wait_for("document.activeElement.value === 'éãœ'", "the letters in the search field")
    desktop.press("Escape", "Escape")
    field = name_field(quendo)
    desktop.press("ctrl+a", "BackSpace", *keys)
    wait_until(lambda: field.text == "éãœ", 10, "the letters in the panel")
