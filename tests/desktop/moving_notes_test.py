"""Notes are backed up, moved to another computer and taken out, by the ways that the README names."""

import json
import os
import shutil
import subprocess
from pathlib import Path

import pytest

from harness import desktop
from harness.waiting import wait_until
from harness.writing import start_again, texts, write

pytestmark = pytest.mark.never_retried

README = Path(__file__).parents[2] / "README.md"


def choose_in_palette(quendo, page, name):
    quendo.press("ctrl+shift+p")
    page.wait_for("document.activeElement.matches('.palette-field')")
    quendo.type(name)
    page.wait_for(f"document.querySelector('.palette-row[aria-selected=true] span')?.textContent === {name!r}")
    quendo.press("Return")


def quit_by_key(quendo):
    quendo.press("ctrl+q")
    assert quendo.wait_for_end() == 0


def save_file(quendo, path):
    """Answers the panel that is being opened with a whole path."""
    window = quendo.wait_for_window("Save Note As")
    wait_until(lambda: desktop.active_window() == window.id, 10, "the panel to have the keyboard")
    panel = wait_until(lambda: next((one for one in quendo.accessible().children()
                                     if one.find_all("text", "Name:")), None), 10, "the panel's field")
    desktop.press("ctrl+a")
    desktop.type_text(str(path), delay=15)
    wait_until(lambda: panel.find("text", "Name:").text == str(path), 10, "the path in the panel's field")
    desktop.press("Return")
    wait_until(path.exists, 10, "the file to be written")
    wait_until(lambda: len(quendo.windows()) == 1, 10, "the panel to be gone")


def test_a_copy_that_is_made_while_notes_are_saved_is_whole_and_opens_elsewhere(opened, open_page, tmp_path):
    quendo, page = opened
    write(quendo, page, "First")
    quendo.state.wait_for_text("First")
    # Long enough for a save to take a while.
    quendo.paste("some words in a line of a long note\n" * 10_000)
    revisions = set()

    def copy_during_saves():
        quendo.type("x")
        quendo.press("ctrl+s")
        for _ in range(20):
            copy = shutil.copyfile(quendo.state.primary, tmp_path / "copy.json")
            document = json.loads(copy.read_bytes())
            assert document["notes"][0]["text"].startswith("First")
            revisions.add(document["revision"])
        return len(revisions) > 10

    wait_until(copy_during_saves, 60, "copies of many saves")
    write(quendo, page, "Last")
    quit_by_key(quendo)

    other, page = open_page(quendo.state.primary.read_bytes())
    wait_until(lambda: page.active_tab() == "Last", 10, "the notes on the other computer")
    assert len(page.tabs()) == 2 and texts(other)[0].startswith("First")


def documented(comment):
    """The command in the README that has this comment."""
    line, = (line for line in README.read_text(encoding="utf-8").splitlines() if line.endswith(f"# {comment}"))
    return line


def run_in_home(command, home):
    subprocess.run(["bash", "-c", command], env=os.environ | {"HOME": str(home)}, check=True)


def test_the_readmes_commands_make_a_copy_and_put_it_back(opened):
    quendo, page = opened
    write(quendo, page, "Kept")
    quendo.state.wait_for_text("Kept")
    run_in_home(documented("makes a copy"), quendo.home)
    write(quendo, page, "Later")
    quit_by_key(quendo)
    assert sorted(texts(quendo)) == ["Kept", "Later"]
    run_in_home(documented("puts it back"), quendo.home)
    start_again(quendo, page)
    wait_until(lambda: page.tabs() == ["Kept"], 10, "the notes of the copy")
    write(quendo, page, "Goes on")
    quit_by_key(quendo)
    assert sorted(texts(quendo)) == ["Goes on", "Kept"]


def test_the_readmes_copy_is_put_back_on_another_computer(opened, open_page):
    quendo, page = opened
    write(quendo, page, "Moved")
    quit_by_key(quendo)
    run_in_home(documented("makes a copy"), quendo.home)
    other, page = open_page()
    quit_by_key(other)
    shutil.copy(quendo.home / "quendo-notes.tar.gz", other.home)
    run_in_home(documented("puts it back"), other.home)
    start_again(other, page)
    wait_until(lambda: page.tabs() == ["Moved"], 10, "the notes that were moved")


def test_all_notes_leave_as_one_file_that_another_computer_takes(opened, open_page, tmp_path):
    quendo, page = opened
    write(quendo, page, "One")
    write(quendo, page, "Two")
    library, book = tmp_path / "notes.json", tmp_path / "book.md"
    choose_in_palette(quendo, page, "Export all notes as JSON…")
    save_file(quendo, library)
    choose_in_palette(quendo, page, "Export all notes as a Markdown book…")
    save_file(quendo, book)
    assert [note["text"] for note in json.loads(library.read_bytes())["notes"]] == ["One", "Two"]
    assert all(title in book.read_text(encoding="utf-8") for title in ("One", "Two"))
    quit_by_key(quendo)

    other, page = open_page()
    write(other, page, "Mine")
    assert other.start_another(library) == 0
    wait_until(lambda: page.dialog() == "Bring in another library", 10, "the question")
    page.evaluate("[...document.querySelectorAll('dialog[open] button')].find((one) => one.textContent === 'Merge').click()")
    wait_until(lambda: sorted(texts(other)) == ["Mine", "One", "Two"], 10, "the notes of both on disk")


def test_one_note_leaves_as_the_file_that_it_is(opened, tmp_path):
    quendo, page = opened
    write(quendo, page, "# Plan")
    path = tmp_path / "plan.md"
    quendo.press("ctrl+shift+s")
    save_file(quendo, path)
    assert path.read_text(encoding="utf-8").rstrip("\n") == "# Plan"
