"""Everything the real page sends out of a note, by its own menu and the program's, to the last step."""

import pytest

from harness import desktop
from harness.probe import Probe, probed_page
from harness.waiting import wait_until

TEXT = "# Plan\n\n- **bold** and [link](https://example.org)\n"


@pytest.fixture
def written(make_quendo, installation, reporter):
    """(program, page), in English, with a Markdown note."""
    quendo = make_quendo(files=probed_page(installation, reporter))
    quendo.start(environment={"LC_ALL": "en_US.UTF-8"}).wait_for_page()
    reporter.wait_for_page()
    page = Probe(reporter)
    quendo.press("ctrl+n")
    page.wait_for_editor()
    quendo.paste(TEXT)
    page.wait_for("document.querySelector('.cm-content').textContent.includes('example.org')")
    return quendo, page


def choose(quendo, page, command):
    """Opens the note's menu and moves to an entry, by keyboard only."""
    quendo.press("Escape", "shift+Tab")
    page.wait_for("document.activeElement.id === 'noteMenuButton'")
    quendo.press("Return")
    page.wait_for("!!document.activeElement.closest('#noteMenu')")
    for _ in range(20):
        if page.evaluate("document.activeElement.dataset.command") == command:
            break
        quendo.press("Down")
    page.wait_for(f"document.activeElement.dataset.command === {command!r}")
    quendo.press("Return")


def toast(page, text):
    wait_until(lambda: text in page.toasts(), 10, f"the toast {text!r}")


@pytest.mark.parametrize("command, copied", [
    ("copyMarkdown", TEXT),
    ("copyPlain", "Plan\n\n- bold and link (https://example.org)"),
    ("whatsapp", "*Plan*\n\n- *bold* and link: https://example.org"),
], ids=["copyMarkdown", "copyPlain", "whatsapp"])
def test_the_note_is_copied_for_another_program(written, command, copied):
    quendo, page = written
    desktop.set_clipboard("before")
    choose(quendo, page, command)
    wait_until(lambda: desktop.clipboard() != "before", 10, "the copy")
    assert desktop.clipboard().rstrip("\n") == copied.rstrip("\n")
    wait_until(page.toasts, 10, "a word about it")


def test_the_key_copies_for_whatsapp_too(written):
    quendo, page = written
    desktop.set_clipboard("before")
    quendo.press("ctrl+alt+c")
    wait_until(lambda: desktop.clipboard().startswith("*Plan*"), 10, "the copy")


def test_save_as_remembers_the_name_on_the_note(written):
    quendo, page = written
    quendo.press("ctrl+shift+s")
    panel = quendo.wait_for_window("Save Note As")
    wait_until(lambda: desktop.active_window() == panel.id, 10, "the panel to have the keyboard")
    quendo.press("ctrl+a")
    quendo.type("my plan.txt", delay=15)
    quendo.press("Return")
    wait_until(lambda: (quendo.home / "my plan.txt").exists(), 10, "the file")
    assert (quendo.home / "my plan.txt").read_text() == TEXT
    wait_until(lambda: [one["fileName"] for one in quendo.state.document()["notes"]] == ["my plan.txt"], 10,
               "the name in the state")
    wait_until(page.toasts, 10, "a word about it")
    # Next time the panel suggests that name.
    choose(quendo, page, "saveAs")
    quendo.wait_for_window("Save Note As")
    field = quendo.accessible().find("text", "Name:")
    wait_until(lambda: field.text == "my plan.txt", 10, "the remembered name")
    quendo.press("Escape")


@pytest.mark.parametrize("command, title, name, text", [
    ("exportMarkdown", "Export Markdown Note", "Plan.md", TEXT),
    ("exportText", "Export Text File", "Plan.txt", "Plan\n\n- bold and link (https://example.org)"),
], ids=["exportMarkdown", "exportText"])
def test_the_note_is_exported(written, command, title, name, text):
    quendo, page = written
    choose(quendo, page, command)
    panel = quendo.wait_for_window(title)
    wait_until(lambda: desktop.active_window() == panel.id, 10, "the panel to have the keyboard")
    quendo.press("Return")
    wait_until(lambda: (quendo.home / name).exists(), 10, "the file")
    assert (quendo.home / name).read_text().rstrip("\n") == text.rstrip("\n")
    toast(page, "Markdown exported" if command == "exportMarkdown" else "File exported")


def test_the_note_is_shared_and_the_popover_can_be_left(written):
    quendo, page = written
    choose(quendo, page, "share")
    wait_until(lambda: any(one.name == "Copy File" for one in quendo.accessible().walk()), 10, "the popover")
    quendo.press("Escape")
    toast(page, "Nothing was shared")
    choose(quendo, page, "share")
    wait_until(lambda: any(one.name == "Copy Text" for one in quendo.accessible().walk()), 10, "the popover")
    quendo.accessible().find_item("Copy Text").act("click")
    wait_until(lambda: desktop.clipboard() == TEXT, 10, "the copied text")
