"""Notes written by a newer version: they can be read, and nothing changes them on disk."""

import json
import signal
import subprocess

import pytest

from harness import desktop, process
from harness.waiting import stays, wait_until
from harness.writing import start_again

pytestmark = pytest.mark.never_retried

QUITS = {
    "key": lambda quendo: quendo.press("ctrl+q"),
    "window": lambda quendo: subprocess.run(["wmctrl", "-i", "-c", hex(quendo.window.id)], check=True),
    "signal": lambda quendo: process.kill(quendo.pid, signal.SIGTERM),
}


def newer(revision):
    """A document no current version writes: with unknown members, and whitespace that a rewrite would drop."""
    notes = [{"id": one, "text": text, "format": "markdown", "updated": 5, "shape": {"round": [1, None, 2.50]}}
             for one, text in (("a", "# From tomorrow\n\n- [ ] read me"), ("b", "Second"))]
    document = {"future": {"ação": ["\u2028", "🙂"]}, "version": 99, "notes": notes, "bin": [],
                "tabs": {"open": ["a", "b"], "active": "a", "closed": [], "grouped": True},
                "settings": {"language": "en", "glow": 1}, "captureDraft": "draft"}
    if revision is not None:
        document["revision"] = revision
    return (json.dumps(document, indent=3, ensure_ascii=False) + "\n \n").encode()


def files(quendo):
    """Everything in the state directory, byte for byte."""
    return {name: (quendo.state.directory / name).read_bytes() for name in quendo.state.names()
            if (quendo.state.directory / name).is_file()}


def wait_until_read_only(page):
    page.wait_for("document.querySelector('.notice')?.checkVisibility()")
    assert "newer version" in page.evaluate("document.querySelector('.notice').textContent")
    wait_until(lambda: page.status() == "readonly", 10, "the status to say it")
    wait_until(lambda: page.tabs() == ["From tomorrow", "Second"], 10, "the tabs")
    page.wait_for_editor()


def use_everything(quendo, page, file):
    """Does things that would change the notes if they were not protected."""
    shown = page.text()
    page.evaluate("(window.said = [], new MutationObserver((records) => said.push(...records.flatMap(({ addedNodes })"
                  " => [...addedNodes].map((node) => node.textContent)))).observe(document.querySelector('.toasts'),"
                  " { childList: true }), 1)")
    refused = "said.filter((one) => one.includes('Read only')).length"
    quendo.type("typed")
    quendo.press("ctrl+v", "ctrl+Return", "ctrl+b", "Delete", "alt+Down", "ctrl+z", "ctrl+s")
    quendo.press("ctrl+n")
    page.wait_for(f"{refused} === 1")
    assert page.text() == shown
    quendo.press("ctrl+k")
    quendo.type("a thought")
    quendo.press("ctrl+Return", "Escape")
    page.wait_for("!document.querySelector('dialog[open]')")
    quendo.press("ctrl+plus", "ctrl+alt+p", "ctrl+alt+p")
    quendo.press("ctrl+w")
    wait_until(lambda: page.tabs() == ["Second"], 10, "the tab to be closed, if only on the screen")
    before = page.evaluate(refused)
    assert quendo.start_another(file) == 0
    page.wait_for(f"{refused} > {before}")
    assert page.tabs() == ["Second"] and file.read_text() == "From a file\n"


@pytest.mark.parametrize("how, revision", [("key", 7), ("window", None), ("signal", 1)])
def test_nothing_changes_what_a_newer_program_has_written(open_page, how, revision):
    quendo, page = open_page(newer(revision))
    wait_until_read_only(page)
    before = files(quendo)
    assert before["state-v1.json"] == newer(revision)
    desktop.set_clipboard("pasted")
    file = quendo.home / "note.md"
    file.write_text("From a file\n")
    use_everything(quendo, page, file)
    # Longer than the page's delay before an automatic save.
    stays(lambda: files(quendo) == before, 1.0, "the document")
    QUITS[how](quendo)
    assert quendo.wait_for_end() == 0
    assert files(quendo) == before
    start_again(quendo, page)
    wait_until_read_only(page)
    QUITS[how](quendo)
    assert quendo.wait_for_end() == 0
    assert files(quendo) == before


def test_the_notes_can_be_read_and_copied(open_page):
    quendo, page = open_page(newer(7))
    wait_until_read_only(page)
    quendo.press("ctrl+a", "ctrl+c")
    wait_until(lambda: desktop.clipboard() == "# From tomorrow\n\n- [ ] read me", 10, "the copied text")
    quendo.press("ctrl+p")
    page.wait_for("document.activeElement.id === 'searchInput'")
    quendo.type("second")
    wait_until(lambda: page.rows() == ["Second"], 10, "the found note")
    quendo.press("Return")
    wait_until(lambda: page.active_tab() == "Second", 10, "the note")
