"""What a screen reader gets: the window, its menus and dialogs, and the page in it. See docs/accessibility.md."""

import os
import subprocess
from pathlib import Path

import pytest

from harness import desktop, process
from harness.accessibility import Accessible, Listener, web_elements, web_pages
from harness.installation import ROOT, sandbox_arguments
from harness.waiting import wait_until
from harness.writing import stored_state

NOTES = {"first": "Shopping\nBread and milk", "second": "Travel\nTrain at nine"}


@pytest.fixture
def listen():
    """A function that makes a Listener, which is closed at the end."""
    listeners = []

    def make(*kinds):
        listeners.append(Listener(*kinds))
        return listeners[-1]

    yield make
    for listener in listeners:
        listener.close()


def note_names(page):
    return [one.name for one in page.find("list box", "Notes").walk() if one.role == "list item"]


def test_a_screen_reader_walks_from_the_window_into_the_page(open_page):
    quendo, _ = open_page(stored_state(NOTES))
    window = quendo.accessible()
    view = window.find("widget", "WebKitWebView")
    wait_until(view.children, 10, "the page in the web view")
    assert web_elements() == 0, "the page's tree is made for nobody"
    page = window.page()
    shown = note_names(page)
    assert len(shown) == 2 and all(any(title in name for name in shown) for title in ("Shopping", "Travel"))
    assert [one.name for one in page.find("page tab list", "Open tabs").walk() if one.role == "page tab"] == \
        ["Shopping", "Travel"]
    assert page.find("entry", "Note text").text.splitlines() == NOTES["first"].splitlines()

    # From the text up to the window, as a reader does to know which window has the focus.
    above = [page.find("entry", "Note text")]
    while above[-1].role != "application":
        above.append(above[-1].parent)
    assert page in above
    assert view in above and window.find("frame") in above
    # In all the ways in which a reader asks for children.
    assert view.child_count == view.cached_child_count() == len(view.children()) == 1
    assert view.child_at(0) == view.children()[0] and view.child_at(0).parent == view


def test_a_screen_reader_hears_the_focus_what_is_typed_and_what_is_announced(listen, open_page):
    listener = listen("object:state-changed:focused", "object:text-changed", "object:children-changed")
    quendo, page = open_page(stored_state(NOTES))
    quendo.accessible().page()
    quendo.press("ctrl+n")
    page.wait_for_editor()
    quendo.type("hi")
    listener.wait_for(lambda event, element, _: event == "StateChanged focused" and element.name == "Note text",
                      "the focus in the text")
    for letter in "hi":
        listener.wait_for(lambda event, element, text: event == "TextChanged insert" and text == letter
                          and element.name == "Note text", f"the letter {letter!r}")
    quendo.press("ctrl+alt+w")
    wait_until(page.toasts, 10, "a toast")
    said = page.toasts()[0]
    listener.wait_for(lambda event, element, _: event == "ChildrenChanged add"
                      and element.attributes.get("live") == "polite"
                      and any(one.text and one.text in said for one in element.walk()), f"{said!r} in a live region")


def test_a_page_that_is_loaded_again_is_there_again(open_page):
    quendo, _ = open_page(stored_state(NOTES))
    before = quendo.accessible().page()
    [pid] = quendo.web_processes()
    process.kill(pid)
    wait_until(lambda: quendo.web_processes() not in ([], [pid]), 20, "another process")
    wait_until(lambda: quendo.accessible().page(20) != before, 20, "another page")
    text = quendo.accessible().page().find("entry", "Note text").text
    assert text.splitlines() == NOTES["first"].splitlines()


# What follows is not Quendo's. The tests notice when the system gets better than docs/accessibility.md says.


def without_sandbox():
    """The environment in which a bare window does as Quendo does where there is no sandbox."""
    return {"WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS": "1"} if sandbox_arguments() else {}


def web_page(title):
    """The page with this title, wherever it is on the bus."""
    return next((page for page in web_pages() if page.name == title), None)


@pytest.fixture
def bare_page(tmp_path):
    """(web view, page) of a window with nothing but a web view, both as accessible elements."""
    document = tmp_path / "page.html"
    document.write_text("<!doctype html><title>Bare</title><textarea autofocus aria-label=Text></textarea>")
    build = Path(os.environ.get("QUENDO_BUILD", ROOT / "build" / "release"))
    program = subprocess.Popen([build / "bin" / "bare_window", document],
                               env=os.environ | {"HOME": str(tmp_path)} | without_sandbox())
    try:
        desktop.activate(wait_until(lambda: next(iter(desktop.windows(program.pid)), None), 10, "the window"))
        view = Accessible.application(program.pid).find("widget", "WebKitWebView")
        yield view, wait_until(lambda: web_page("Bare"), 10, "the page on the bus")
    finally:
        program.terminate()
        program.wait(10)


def test_the_system_s_web_view_does_not_show_its_page_by_itself(bare_page):
    view, page = bare_page
    assert page.find_all("entry", "Text"), "the page's process has all of it on the bus"
    assert view.children() == [], "GTK shows the page now: src/platform/gtk/accessibility is no longer needed"


@pytest.mark.skipif(bool(sandbox_arguments()), reason="only the sandbox keeps it from hearing")
def test_a_sandboxed_page_does_not_hear_of_a_screen_reader_that_comes_later(bare_page, listen):
    _, page = bare_page
    text = page.find("entry", "Text")
    listener = listen("object:text-changed")
    wait_until(lambda: text.has("focused"), 10, "the focus in the text")
    desktop.type_text("abc")
    # Whatever the page's process tells of the letters is on its way before this answer.
    wait_until(lambda: text.text == "abc", 10, "the letters in the page")
    assert listener.heard() == [], "WebKitGTK tells late listeners now: docs/accessibility.md says it does not"
