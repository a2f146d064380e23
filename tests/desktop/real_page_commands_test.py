"""A command does the same by key, menu and palette; the guide lists the right keys."""

import pytest

from harness import desktop
from harness.waiting import wait_until
from harness.writing import paste_note, texts, wait_for_active_text, write

# Command -> (key, path in the menu, name in the palette).
COMMANDS = {
    "new": ("ctrl+n", ("File", "New Note"), "New note"),
    "capture": ("ctrl+k", ("File", "Quick Capture"), "Quick capture"),
    "open": ("ctrl+o", ("File", "Open File…"), "Open a copy of a file…"),
    "save as": ("ctrl+shift+s", ("File", "Save As…"), "Save as…"),
    "whatsapp": ("ctrl+alt+c", ("File", "Copy for WhatsApp"), "Copy for WhatsApp"),
    "search": ("ctrl+p", ("View", "Search Notes"), "Search notes"),
    "previous": ("ctrl+shift+bracketleft", ("Window", "Previous Tab"), "Previous tab"),
    "next": ("ctrl+shift+bracketright", ("Window", "Next Tab"), "Next tab"),
    "close": ("ctrl+w", ("Window", "Close Tab…"), "Close tab"),
    "reopen": ("ctrl+shift+t", ("Window", "Reopen Closed Tab"), "Reopen closed tab"),
    "overview": (None, ("Window", "Show All Tabs"), "Show all tabs"),
    "guide": (None, ("Shortcuts", "How to Use Advanced Editing…"), "Shortcut guide"),
}


def run_in_palette(quendo, page, name):
    quendo.press("ctrl+shift+p")
    page.wait_for("document.activeElement.matches('.palette-field')")
    quendo.type(name)
    page.wait_for("document.querySelector('.palette-row[aria-selected=true] span')?.textContent"
                  f" === {name!r}")
    quendo.press("Return")


@pytest.fixture(params=["key", "menu", "palette"])
def give(request, opened):
    """A function that gives a command of the table; by the menu if it has no key."""
    quendo, page = opened

    def run(name):
        key, path, label = COMMANDS[name]
        if request.param == "palette":
            run_in_palette(quendo, page, label)
        elif request.param == "menu" or key is None:
            quendo.choose(*path)
        else:
            quendo.press(key)

    return run


def test_tabs_obey_in_every_way(opened, give):
    quendo, page = opened
    for title in ("One", "Two"):
        before = len(page.tabs())
        give("new")
        page.wait_for(f"document.querySelectorAll('.tab').length === {before + 1}")
        page.wait_for_editor()
        quendo.type(title)
        wait_until(lambda: page.active_tab() == title, 10, "what was typed to be the title")
    give("previous")
    wait_until(lambda: page.active_tab() == "One", 10, "the tab before")
    give("next")
    wait_until(lambda: page.active_tab() == "Two", 10, "the tab after")
    give("close")
    wait_until(lambda: page.tabs() == ["One"], 10, "the tab to be closed")
    give("reopen")
    wait_until(lambda: page.tabs() == ["One", "Two"] and page.active_tab() == "Two", 10, "the tab to be back")
    page.wait_for_editor()
    quendo.type("!")
    wait_for_active_text(quendo, "Two!")
    assert sorted(texts(quendo)) == ["One", "Two!"]


def test_panels_and_copies_come_in_every_way_and_escape_leaves_them(opened, give):
    quendo, page = opened
    paste_note(quendo, page, "**bold** word")
    for name, title in [("overview", "Open tabs"), ("guide", "Shortcut guide"), ("capture", "Quick capture")]:
        give(name)
        wait_until(lambda: page.dialog() == title, 10, f"the panel {title!r}")
        quendo.press("Escape")
        page.wait_for("!document.querySelector('dialog[open]')")
        page.wait_for_editor()
    give("search")
    page.wait_for("document.activeElement.id === 'searchInput'")
    quendo.press("Escape")
    page.wait_for_editor()
    desktop.set_clipboard("before")
    give("whatsapp")
    wait_until(lambda: desktop.clipboard() == "*bold* word", 10, "the copy")
    for name, title in [("open", "Open Text Files in Quendo"), ("save as", "Save Note As")]:
        give(name)
        panel = quendo.wait_for_window(title)
        wait_until(lambda: desktop.active_window() == panel.id, 10, "the panel to have the keyboard")
        quendo.press("Escape")
        wait_until(lambda: len(quendo.windows()) == 1, 10, "the panel to be gone")
        page.wait_for_editor()
    quendo.type("!")
    wait_for_active_text(quendo, "!**bold** word")


def test_the_palette_narrows_down_and_is_left_without_an_effect(opened):
    quendo, page = opened
    write(quendo, page, "Note")
    quendo.press("ctrl+shift+p")
    page.wait_for("document.activeElement.matches('.palette-field')")
    everything = page.evaluate("document.querySelectorAll('.palette-row').length")
    quendo.type("appea")
    page.wait_for("document.querySelectorAll('.palette-row').length === 3")
    assert everything > 20
    quendo.press("Down")
    page.wait_for("document.querySelectorAll('.palette-row')[1].getAttribute('aria-selected') === 'true'")
    quendo.type(" xyz")
    page.wait_for("document.querySelector('.palette-outcome').textContent === 'No command like “appea xyz”.'")
    quendo.press("Return", "Escape")
    page.wait_for("!document.querySelector('dialog[open]')")
    page.wait_for_editor()
    quendo.type("!")
    wait_for_active_text(quendo, "Note!")


def test_the_guide_lists_the_keys(opened):
    quendo, page = opened
    quendo.choose("Shortcuts", "How to Use Advanced Editing…")
    wait_until(lambda: page.dialog() == "Shortcut guide", 10, "the guide")
    listed = page.evaluate("[...document.querySelectorAll('dialog .guide *')].filter((one) => one.querySelector('kbd'))"
                           ".map((one) => one.innerText.replace(/\\s+/g, ' ').trim())")
    for label, keys in [("New note", "Ctrl+N"), ("Quick capture", "Ctrl+K"), ("Command palette", "Shift+Ctrl+P"),
                        ("Preview beside", "Ctrl+Alt+P"), ("Find in the text", "Ctrl+F"),
                        ("Find and replace", "Ctrl+H"), ("Go to line", "Ctrl+Alt+G"),
                        ("Close tab", "Ctrl+W"), ("Join lines", "Ctrl+J")]:
        assert f"{label} {keys}" in listed
