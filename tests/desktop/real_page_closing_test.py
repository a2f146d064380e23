"""The real page takes no input between its final state and the end of the quit, or its cancellation."""

import json

import pytest

from harness import desktop
from harness.pointer import Pointer
from harness.waiting import wait_until
from harness.writing import draft, texts, write

pytestmark = pytest.mark.never_retried

STORE_FAILED = "Não foi possível gravar o rascunho no disco. Libere espaço e tente novamente."
# Keys of the page, and keys of menu commands that the host runs in the page.
KEYS = ["ctrl+shift+p", "ctrl+k", "ctrl+n", "ctrl+p", "ctrl+w", "ctrl+shift+t", "ctrl+o", "ctrl+f", "ctrl+z",
        "Tab", "Escape", "Return", "Delete"]
OPEN = {
    "the editor": (None, "document.querySelector('.work .cm-content').textContent"),
    "the capture": ("ctrl+k", "document.querySelector('.capture-field')?.value"),
    "the palette": ("ctrl+shift+p", "document.querySelector('.palette-field')?.value"),
}


def freeze(page):
    """Does the first step of a quit; returns the document to be saved, without its revision."""
    return json.loads(page.evaluate("quendoPrepareForTermination().serialized")) | {"revision": 0}


def seen(page):
    return page.evaluate("""[
        [...document.querySelectorAll('dialog')].map((one) => one.className),
        [...document.querySelectorAll('input, textarea')].map((one) => one.value),
        [...document.querySelectorAll('.cm-content')].map((one) => one.textContent),
        [...document.querySelectorAll('.tab, .toast')].map((one) => one.textContent)]""")


def press_everything(quendo, reporter):
    """Returns once all keys have reached the page: it gets key releases even while it is closing."""
    before = len(reporter.reports("pressed"))
    reporter.run("""window.onkeyup ??= (event) => { if (event.key === 'F9') report('pressed'); };""")
    for key in KEYS:
        quendo.press(key)
        quendo.type("q")
    quendo.press("F9")
    reporter.wait_for("pressed", before + 1, timeout=20)


@pytest.mark.parametrize("place", OPEN)
def test_no_key_opens_or_writes_anything_once_the_final_state_is_taken(opened, reporter, place):
    quendo, page = opened
    key, value = OPEN[place]
    write(quendo, page, "Kept")
    if key:
        quendo.press(key)
        page.wait_for(f"{value} === ''")
    quendo.type(" half")
    start = page.wait_for(f"{value}.endsWith(' half') && {value}")
    final = freeze(page)
    assert place != "the capture" or final["captureDraft"] == " half"
    before = seen(page)
    press_everything(quendo, reporter)
    assert seen(page) == before and freeze(page) == final
    Pointer(quendo, page).click("document.querySelector('.status')")
    press_everything(quendo, reporter)
    assert seen(page) == before and freeze(page) == final
    assert len(quendo.windows()) == 1, "no file dialog"
    page.evaluate("quendoTerminationDidCancel()")
    quendo.type(" more")
    page.wait_for(f"{value} === {json.dumps(start + ' more')}")
    # Everything works again.
    for opening in ("ctrl+k", "ctrl+shift+p"):
        quendo.press(opening)
        page.wait_for("document.activeElement.matches('.capture-field, .palette-field')")
        quendo.press("Escape")
        wait_until(lambda: page.dialog() is None, 10, "the dialog to close")


def test_a_toast_of_before_does_nothing_until_the_quit_is_cancelled(opened):
    quendo, page = opened
    write(quendo, page, "One")
    write(quendo, page, "Two")
    quendo.press("ctrl+alt+w")
    page.wait_for("!!document.querySelector('.toast button')")
    final = freeze(page)
    pointer = Pointer(quendo, page)
    clicks = "window.clicks ??= (addEventListener('pointerup', () => clicks++), 0)"
    assert page.evaluate(clicks) == 0
    pointer.click("document.querySelector('.toast button')")
    page.wait_for("clicks > 0")
    assert freeze(page) == final and page.tabs() == ["Two"]
    page.evaluate("quendoTerminationDidCancel()")
    pointer.click("document.querySelector('.toast button')")
    wait_until(lambda: page.tabs() == ["One", "Two"], 10, "the tabs to be back")


def test_a_capture_goes_on_after_a_quit_that_the_disk_refused(opened):
    quendo, page = opened
    write(quendo, page, "Kept")
    wait_until(lambda: page.status() == "saved", 10, "the note to be saved")
    directory = quendo.state.directory
    aside = directory.with_name("aside")
    directory.rename(aside)
    directory.write_text("a file where the directory should be")
    quendo.press("ctrl+k")
    page.wait_for("document.activeElement.matches('.capture-field')")
    quendo.type("half a thou")
    quendo.press("ctrl+q")
    quendo.dismiss_alert(STORE_FAILED, "Continue Editing")
    wait_until(lambda: desktop.active_window() == quendo.window.id, what="the window to have the focus again")
    page.wait_for("document.activeElement.matches('.capture-field')")
    directory.unlink()
    aside.rename(directory)
    quendo.type("ght")
    page.wait_for("document.querySelector('.capture-field').value === 'half a thought'")
    # Without the save key: the last words are saved by the quit itself.
    quendo.press("ctrl+q")
    assert quendo.wait_for_end() == 0
    assert draft(quendo) == "half a thought" and texts(quendo) == ["Kept"]
