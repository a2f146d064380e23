"""What the real page preserves: across restarts, a kill, and failing writes."""

import json

import pytest

from harness import process
from harness.waiting import wait_until
from harness.writing import (draft, paste_note, restart, start_again, stored_state, texts, wait_for_active_text,
                             write)

pytestmark = pytest.mark.never_retried

LINES = "\n".join(f"line {number}" for number in range(400))
# The first line fully visible, once nothing has scrolled for ten frames.
FIRST_VISIBLE = """
    const scroller = document.querySelector('.work .cm-scroller');
    for (let still = 0, last = scroller.scrollTop; still < 10; last = scroller.scrollTop) {
      await new Promise(requestAnimationFrame);
      still = scroller.scrollTop === last ? still + 1 : 0;
    }
    const top = scroller.getBoundingClientRect().top + 25;
    return [...document.querySelectorAll('.work .cm-line')].find((one) => one.getBoundingClientRect().bottom > top)
      ?.textContent ?? null;
"""


def choose_in_palette(quendo, page, name):
    quendo.press("ctrl+shift+p")
    page.wait_for("document.activeElement.matches('.palette-field')")
    quendo.type(name)
    page.wait_for(f"document.querySelector('.palette-row[aria-selected=true] span')?.textContent === {name!r}")
    quendo.press("Return")
    page.wait_for("!document.querySelector('dialog.palette[open]')")


def test_a_pinned_note_stays_first(opened):
    quendo, page = opened
    write(quendo, page, "Pinned")
    choose_in_palette(quendo, page, "Pin note")
    write(quendo, page, "Later")
    wait_until(lambda: page.rows() == ["Pinned", "Later"], 10, "the pinned note above the later one")
    restart(quendo, page)
    wait_until(lambda: page.rows() == ["Pinned", "Later"], 10, "the same order")
    assert page.evaluate("document.querySelector('.row .pin').getAttribute('aria-label')") == "Pinned:"
    quendo.press("ctrl+shift+bracketleft")
    wait_until(lambda: page.active_tab() == "Pinned", 10, "the pinned note")
    choose_in_palette(quendo, page, "Unpin note")
    page.wait_for("!document.querySelector('.row .pin')")
    write(quendo, page, "Latest")
    wait_until(lambda: page.rows()[0] == "Latest", 10, "the latest note first")


def test_deleted_notes_come_back_from_the_bin_also_after_a_restart(opened):
    quendo, page = opened
    for title in ("One", "Two", "Three"):
        write(quendo, page, title)
    for left in (["One", "Two"], ["One"]):
        choose_in_palette(quendo, page, "Delete note")
        wait_until(lambda: page.tabs() == left, 10, "the note to be gone")
        page.wait_for_editor()
    wait_until(lambda: texts(quendo) == ["One"], 10, "the notes to be in the bin on disk")
    for title in ("Two", "Three"):
        choose_in_palette(quendo, page, "Open the bin")
        wait_until(lambda: page.dialog() == "Bin", 10, "the bin")
        rows = "[...document.querySelectorAll('.bin .row-name')].map((row) => row.textContent)"
        expected = ["Two", "Three"] if title == "Two" else ["Three"]
        wait_until(lambda: page.evaluate(rows) == expected, 10, f"the bin to hold {expected}")
        quendo.press("Return")
        wait_until(lambda: page.active_tab() == title, 10, "the note to be back and open")
        page.wait_for_editor()
        restart(quendo, page)
        wait_until(lambda: page.active_tab() == title, 10, "the note to be there still")
    assert sorted(texts(quendo)) == ["One", "Three", "Two"] and quendo.state.document()["bin"] == []


def test_closed_tabs_are_opened_again_after_a_restart(opened):
    quendo, page = opened
    for title in ("One", "Two", "Three"):
        write(quendo, page, title)
    quendo.press("ctrl+w")
    wait_until(lambda: page.tabs() == ["One", "Two"], 10, "the last tab to be closed")
    quendo.press("ctrl+shift+bracketleft", "ctrl+w")
    wait_until(lambda: page.tabs() == ["Two"], 10, "the first tab to be closed")
    restart(quendo, page)
    wait_until(lambda: page.tabs() == ["Two"], 10, "the one tab")
    quendo.press("ctrl+shift+t")
    wait_until(lambda: page.tabs() == ["One", "Two"], 10, "the tab that was closed last, in its place")
    quendo.press("ctrl+shift+t")
    wait_until(lambda: page.tabs() == ["One", "Two", "Three"], 10, "the tab that was closed first")


def test_a_note_that_was_emptied_is_opened_again_with_its_text(opened):
    quendo, page = opened
    write(quendo, page, "Draft")
    quendo.press("ctrl+a", "Delete")
    page.wait_for("!!document.querySelector('.work .cm-placeholder')")
    quendo.press("ctrl+w")
    wait_until(lambda: page.tabs() == [], 10, "the tab to be closed")
    wait_until(lambda: page.rows() == ["Untitled"], 10, "the note in the list")
    quendo.press("ctrl+shift+t")
    wait_until(lambda: page.tabs() == ["Untitled"], 10, "the tab to be back")
    page.wait_for_editor()
    quendo.press("ctrl+z")
    page.wait_for(f"{page.TEXT} === 'Draft'")
    quendo.press("ctrl+a", "Delete")
    page.wait_for("!!document.querySelector('.work .cm-placeholder')")
    restart(quendo, page)
    wait_until(lambda: page.tabs() == ["Untitled"], 10, "the empty note")
    page.wait_for_editor()
    quendo.press("ctrl+w")
    wait_until(lambda: page.tabs() == [], 10, "the tab to be closed")
    restart(quendo, page)
    quendo.press("ctrl+shift+t")
    wait_until(lambda: page.tabs() == ["Untitled"], 10, "the tab to be back after all that")
    # A note that was never written in leaves nothing behind.
    quendo.press("ctrl+n")
    wait_until(lambda: page.tabs() == ["Untitled", "Untitled"], 10, "a new note")
    page.wait_for_editor()
    quendo.press("ctrl+w")
    wait_until(lambda: page.tabs() == ["Untitled"], 10, "the tab to be closed")
    wait_until(lambda: page.rows() == ["Untitled"], 10, "the note in the list")


def test_two_long_notes_are_where_they_were_left_after_a_restart(open_page, reporter):
    quendo, page = open_page(stored_state({"a": f"First\n{LINES}", "b": f"Second\n{LINES}"}))
    page.wait_for_editor()
    visible = lambda: reporter.run(FIRST_VISIBLE)
    quendo.press(*["Page_Down"] * 6, "Right")
    page.wait_for("document.querySelector('.work .cm-scroller').scrollTop > 500")
    first = visible()
    quendo.press("ctrl+shift+bracketright")
    wait_until(lambda: page.active_tab() == "Second", 10, "the second note")
    quendo.press(*["Page_Down"] * 3, "Right", "Right")
    page.wait_for("document.querySelector('.work .cm-scroller').scrollTop > 200")
    second = visible()
    assert first != second and "line 0" not in (first, second)
    for _ in range(2):
        restart(quendo, page)
        page.wait_for_editor()
        wait_until(lambda: visible() == second, 10, f"{second!r} on top")
        quendo.press("ctrl+shift+bracketleft")
        wait_until(lambda: page.active_tab() == "First", 10, "the first note")
        wait_until(lambda: visible() == first, 10, f"{first!r} on top")
        quendo.press("ctrl+shift+bracketright")
        wait_until(lambda: page.active_tab() == "Second", 10, "the second note")
        wait_until(lambda: visible() == second, 10, f"{second!r} on top again")
    # The carets are restored: one and two letters into a line far down.
    quendo.type("!")
    wait_until(lambda: "\nli!ne " in texts(quendo)[1], 10, "the letter in the second note")
    quendo.press("ctrl+shift+bracketleft")
    wait_until(lambda: page.active_tab() == "First", 10, "the first note")
    quendo.type("!")
    wait_until(lambda: "\nl!ine " in texts(quendo)[0], 10, "the letter in the first note")
    assert all(text.index("!") > 200 for text in texts(quendo))


@pytest.mark.every_display
def test_a_thought_that_was_not_kept_yet_outlives_a_kill(opened):
    quendo, page = opened
    write(quendo, page, "Being written")
    quendo.press("ctrl+k")
    page.wait_for("document.activeElement.matches('.capture-field')")
    quendo.type("half a thou")
    wait_until(lambda: draft(quendo) == "half a thou", 10, "the draft on disk")
    quendo.kill()
    start_again(quendo, page)
    wait_until(lambda: page.active_tab() == "Being written", 10, "the note")
    quendo.press("ctrl+k")
    page.wait_for("document.querySelector('.capture-field')?.value === 'half a thou'")
    quendo.type("ght")
    quendo.press("ctrl+Return")
    wait_until(lambda: sorted(texts(quendo)) == ["Being written", "half a thought"], 10, "the kept thought")
    wait_until(lambda: draft(quendo) == "", 10, "no draft to be left")


def test_a_file_that_the_page_has_taken_outlives_its_process_though_a_save_is_still_out(opened, reporter):
    quendo, page = opened
    write(quendo, page, "Being written")
    wait_until(lambda: page.status() == "saved", 10, "the note to be saved")
    # From here on no answer reaches the page. After the page has returned from the call, the answer to a later message
    # shows that the host considers the file delivered.
    reporter.run("""
        window.quendoNativeSaveDidFinish = () => {};
        window.quendoNativeClipboardDidFinish = () => report('taken');
        const open = quendoOpenNativeFiles;
        window.quendoOpenNativeFiles = (files) => {
          setTimeout(() => webkit.messageHandlers.quendoClipboard.postMessage(
            { text: 'x', successMessage: 'x', requestId: 'x' }), 50);
          return open(files);
        };""")
    quendo.type(" more")
    page.wait_for(f"{page.TEXT} === 'Being written more'")
    wait_until(lambda: page.status() == "saving", 10, "a save to be out")
    file = quendo.home / "handed over.md"
    file.write_text("# From the desktop\n")
    loads = page.loads
    assert quendo.start_another(file) == 0
    reporter.wait_for("taken")
    for pid in quendo.web_processes():
        process.kill(pid)
    page.wait_for_load(loads + 1)
    quendo.wait_for_page()
    wait_until(lambda: page.tabs() == ["Being written more", "handed over.md"], 10, "the file's tab")
    assert "# From the desktop\n" in texts(quendo)


def test_size_theme_and_preview_are_as_they_were_chosen_after_a_restart(opened):
    quendo, page = opened
    paste_note(quendo, page, "# Note")
    size = "parseFloat(getComputedStyle(document.documentElement).fontSize)"
    theme = "document.documentElement.dataset.theme"
    assert page.evaluate(size) == 16
    quendo.press("ctrl+plus", "ctrl+plus")
    page.wait_for(f"{size} === 20")
    other = "Dark" if page.evaluate(theme) == "light" else "Light"
    choose_in_palette(quendo, page, f"{other} appearance")
    page.wait_for(f"{theme} === {other.lower()!r}")
    quendo.press("ctrl+alt+p")
    page.wait_for("document.querySelector('.preview h1')?.checkVisibility()")
    restart(quendo, page)
    page.wait_for(f"{size} === 20 && {theme} === {other.lower()!r}")
    page.wait_for("document.querySelector('.preview h1')?.checkVisibility()")
    page.wait_for_editor()
    quendo.press("ctrl+minus")
    page.wait_for(f"{size} < 18 && {size} > 17")
    quendo.press("ctrl+0", "ctrl+alt+p")
    page.wait_for(f"{size} === 16 && !document.querySelector('.preview').checkVisibility()")
    choose_in_palette(quendo, page, "Appearance like the desktop")
    restart(quendo, page)
    page.wait_for(f"{size} === 16 && {theme} !== {other.lower()!r}")
    assert not page.evaluate("document.querySelector('.preview').checkVisibility()")


def test_saving_that_fails_is_never_called_saved_and_is_tried_less_and_less(opened, reporter):
    quendo, page = opened
    write(quendo, page, "Safe")
    wait_until(lambda: page.status() == "saved", 10, "the note to be saved")
    # From here on: what the page posts, and which failures it is notified of, with times.
    reporter.run("""
        window.said = []; window.failures = []; window.successes = 0;
        const state = document.getElementById('saveState');
        new MutationObserver(() => said.push(state.dataset.state)).observe(state, { attributes: true });
        const told = quendoNativeSaveDidFinish;
        window.quendoNativeSaveDidFinish = (success, revision) => {
          if (success) successes++; else failures.push(performance.now());
          return told(success, revision);
        };""")
    directory = quendo.state.directory
    aside = directory.with_name("aside")
    directory.rename(aside)
    directory.write_text("")
    written = (aside / "state-v1.json").read_bytes()
    quendo.type(" one")
    page.wait_for("failures.length >= 1", timeout=20)
    for number in range(4):
        quendo.type(f" {number}")
        page.wait_for(f"document.querySelector('.work .cm-line').textContent.endsWith(' {number}')")
    page.wait_for("failures.length >= 3", timeout=30)
    times = page.evaluate("failures")
    pauses = [later - sooner for sooner, later in zip(times, times[1:])]
    # First after a second, then after twice as long; typing meanwhile does not speed it up.
    assert pauses[0] > 900 and pauses[1] > 1900, pauses
    said = page.evaluate("said")
    assert "failed" in said and "saved" not in said and page.evaluate("successes") == 0, said
    assert page.status() == "failed" and (aside / "state-v1.json").read_bytes() == written
    directory.unlink()
    aside.rename(directory)
    # On its own, at the next attempt.
    wait_until(lambda: page.status() == "saved", 30, "the note to be saved after all")
    wait_for_active_text(quendo, "Safe one 0 1 2 3")
    assert "Everything is saved again" in json.dumps(page.toasts())
