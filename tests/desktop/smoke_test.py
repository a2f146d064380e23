"""The shortest path through the program: it opens, takes a note and saves it."""

import pytest

from harness import desktop
from harness.waiting import wait_until


@pytest.mark.every_display
def test_window_opens_with_its_title(quendo):
    assert quendo.window.title == "Quendo"
    assert desktop.active_window() == quendo.window.id


@pytest.mark.every_display
def test_a_typed_note_is_saved_and_is_there_again(quendo):
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("A note of the smoke test")
    quendo.state.wait_for_text("A note of the smoke test")
    assert quendo.terminate() == 0

    quendo.start().wait_for_page()
    # Typing on adds to the document only if the page has the old note: both end up in one document.
    revision = quendo.state.revision()
    quendo.press("ctrl+n")
    quendo.type("Another one")
    quendo.state.wait_for_text("Another one")
    assert quendo.state.holds("A note of the smoke test")
    assert quendo.state.revision() > revision


def test_another_page_in_the_same_place_is_shown(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page("<h1>Another page</h1>")).start()
    assert reporter.evaluate("document.querySelector('h1').textContent") == "Another page"
    reporter.run("document.title = 'changed'; report('told', document.title)")
    assert reporter.wait_for("told") == "changed"
    wait_until(lambda: quendo.web_processes(), what="the page's process to be found")
