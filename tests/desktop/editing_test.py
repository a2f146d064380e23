"""Undo, redo, cut, copy, paste and select all in every text field of the real page, by key and by menu item."""

import json

import pytest

from harness import desktop
from harness.probe import Probe, probed_page
from harness.program import Quendo
from harness.reporter import Reporter
from harness.waiting import Timeout, stays, wait_until

LINES = 3000
LONG = "\n".join(f"Line {number} of a long note, with some words in it." for number in range(LINES))


def state(text):
    note = {"id": "long", "text": text, "format": "markdown", "name": None, "fileName": None, "lineBreak": "\n",
            "created": 1, "updated": 1}
    return json.dumps({"version": 1, "revision": 1, "notes": [note], "bin": [],
                       "tabs": {"open": ["long"], "active": "long", "closed": []},
                       "settings": {"language": "en", "sidebarOpen": True, "sidebarMode": "all"},
                       "captureDraft": ""})


@pytest.fixture(scope="module")
def running(tmp_path_factory, installation, program_arguments):
    """One program with the real page and a long note, shared by all tests of this file: (program, page)."""
    directory = tmp_path_factory.mktemp("editing")
    server = Reporter()
    tree = installation.copy(directory, files=probed_page(installation, server))
    program = Quendo(directory / "home", tree, program_arguments)
    program.state.write(state(LONG))
    program.start().wait_for_page()
    yield program, Probe(server)
    program.stop()
    server.close()


@pytest.fixture(params=["key", "item"])
def command(request, running):
    """A function that gives an editing command; tests run once with its key and once with its menu item."""
    program, _ = running
    keys = {"Undo": "ctrl+z", "Redo": "ctrl+shift+z", "Cut": "ctrl+x", "Copy": "ctrl+c", "Paste": "ctrl+v",
            "Select All": "ctrl+a"}
    menus = {"Undo": "Desfazer", "Redo": "Refazer", "Cut": "Recortar", "Copy": "Copiar", "Paste": "Colar",
             "Select All": "Selecionar Tudo"}

    def give(name):
        if request.param == "key":
            desktop.press(keys[name])
        else:
            program.choose("Editar", menus[name])

    return give


@pytest.fixture
def page(running):
    program, page = running
    program.focus()
    desktop.press("Escape")
    take_keyboard(program, page)
    desktop.set_clipboard("nothing yet")
    return page


def take_keyboard(program, page):
    """Returns the keyboard focus to the page if the menu bar still has it."""
    for _ in range(20):
        if page.evaluate("document.hasFocus()"):
            return
        # At the lower edge, where a click does nothing in the page.
        desktop.click_in(program.window, -400, -16)
        try:
            page.wait_for("document.hasFocus()", timeout=0.5)
        except Timeout:
            continue
    raise AssertionError("the page did not get the keyboard")


# A field of each kind, and how it is reached.
def in_editor(program, page):
    desktop.press("ctrl+n")
    page.wait_for("document.querySelector('.cm-placeholder') !== null")
    page.wait_for_editor()
    return "document.querySelector('.cm-content').innerText.replace(/\\n$/, '')"


def in_search(program, page):
    desktop.press("ctrl+p")
    page.wait_for("document.activeElement.id === 'searchInput'")
    desktop.press("ctrl+a", "BackSpace")
    return "document.getElementById('searchInput').value"


def in_capture(program, page):
    desktop.press("ctrl+k")
    page.wait_for("document.activeElement.matches('.capture-field')")
    desktop.press("ctrl+a", "BackSpace")
    return "document.querySelector('.capture-field').value"


PLACES = pytest.mark.parametrize("place", [in_editor, in_search, in_capture])


@PLACES
def test_select_all_copy_cut_and_paste(running, page, command, place):
    program, _ = running
    value = place(program, page)
    desktop.type_text("some words")
    page.wait_for(f"{value} === 'some words'")
    command("Select All")
    command("Copy")
    wait_until(lambda: desktop.clipboard() == "some words", 10, "the copied words")
    command("Cut")
    page.wait_for(f"!{value}.includes('some words')")
    desktop.set_clipboard("from elsewhere: ção 🙂")
    command("Paste")
    page.wait_for(f"{value} === 'from elsewhere: ção 🙂'")


UNDO_PLACES = pytest.mark.parametrize(
    ("place", "command"),
    [pytest.param(place, how, id=f"{place.__name__}-{how}")
     for place in (in_editor, in_search, in_capture) for how in ("key", "item")], indirect=["command"])


@UNDO_PLACES
def test_undo_and_redo(running, page, command, place):
    program, _ = running
    value = place(program, page)
    desktop.type_text("once")
    page.wait_for(f"{value} === 'once'")
    desktop.set_clipboard(" more")
    desktop.press("ctrl+v")
    page.wait_for(f"{value} === 'once more'")
    command("Undo")
    page.wait_for(f"{value} === 'once'")
    command("Redo")
    page.wait_for(f"{value} === 'once more'")


def test_select_all_takes_the_whole_of_a_long_note(running, page, command):
    open_long_note(page)
    command("Select All")
    command("Copy")
    wait_until(lambda: desktop.clipboard() == LONG, 10, "the whole note on the clipboard")


def test_a_long_text_comes_in_by_one_paste_and_goes_by_one_undo(running, page):
    program, _ = running
    in_editor(program, page)
    desktop.set_clipboard(LONG)
    desktop.press("ctrl+v")
    page.wait_for(f"document.querySelector('.cm-content').innerText.includes('Line {LINES - 1} ')", timeout=20)
    desktop.press("ctrl+z")
    page.wait_for("document.querySelector('.cm-placeholder') !== null")


def test_copied_text_is_offered_to_other_programs_as_plain_text(running, page):
    program, _ = running
    in_editor(program, page)
    desktop.type_text("**bold** <b>")
    desktop.press("ctrl+a", "ctrl+c")
    wait_until(lambda: desktop.clipboard() == "**bold** <b>", 10, "the copied text")


def test_rich_text_of_another_program_brings_no_elements(running, page):
    program, _ = running
    in_editor(program, page)
    html = "<b>bold</b> <script>alert(1)</script><img src=x onerror=alert(1)>"
    desktop.offer_on_clipboard("text/html", html.encode())
    desktop.press("ctrl+v")
    page.wait_for(f"{page.TEXT} === {json.dumps(html)}")
    # The editor puts images of this class around its own widgets.
    foreign = "document.querySelector('.cm-content :is(b, script, img:not(.cm-widgetBuffer))')"
    stays(lambda: not page.evaluate(f"!!{foreign}"), 0.5, "the editor free of foreign elements")


def test_no_function_key_ends_the_program(make_quendo):
    # In persistence test mode, because the shared program has the name on the session bus.
    program = make_quendo()
    program.environment["QUENDO_PERSISTENCE_TEST"] = "1"
    program.start().wait_for_page()
    desktop.press("ctrl+n")
    for number in (1, 2, 3, 4, 5, 6, 8, 9, 11, 12, 7):
        desktop.press(f"F{number}")
        desktop.type_text("x")
    stays(lambda: program.running, 2, "the program")


def open_long_note(page):
    desktop.press("ctrl+p")
    desktop.type_text("Line 0 of a long")
    page.wait_for("document.querySelectorAll('#sidebar [role=option]').length === 1 && "
                  "document.querySelector('#sidebar [role=option]').textContent.includes('Line 0')")
    desktop.press("Return")
    page.wait_for("document.querySelector('.cm-content').innerText.includes(' of a long note')")
    page.wait_for_editor()
