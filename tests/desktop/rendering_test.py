"""What draws the window and the page: the graphics card, or the processor without OpenGL."""

import signal
import time
from pathlib import Path

import pytest

from harness import process
from harness.waiting import wait_until

CARD_FAILED = "quendo: The graphics card shows nothing; the processor draws from now on.\n"
HAS_CARD = any(Path("/dev/dri").glob("renderD*"))


def threads(pid):
    return {task.read_text(encoding="utf-8").strip() for task in Path(f"/proc/{pid}/task").glob("*/comm")}


def is_composited(quendo):
    """Whether the page is put together by OpenGL, for which it has a thread (names keep their last 15 letters)."""
    [page] = wait_until(quendo.web_processes, what="the page's process")
    return "eadedCompositor" in threads(page)


@pytest.mark.skipif(HAS_CARD, reason="this machine has a card")
def test_without_a_card_the_processor_draws(quendo):
    quendo.wait_for_page()
    assert not is_composited(quendo)


@pytest.mark.parametrize("how", ["option", "setting", "environment"])
def test_the_user_can_have_opengl(make_quendo, how):
    quendo = make_quendo()
    if how == "setting":
        quendo.write_settings(quendo.settings.read_text(encoding="utf-8") + "[Strings]\nQuendoRendering=card\n")
    quendo.start(*(["--rendering=card"] if how == "option" else []),
                 environment={"GSK_RENDERER": "gl"} if how == "environment" else {})
    quendo.wait_for_page()
    assert is_composited(quendo)


def test_the_command_line_is_stronger_than_the_setting(make_quendo):
    quendo = make_quendo()
    quendo.write_settings(quendo.settings.read_text(encoding="utf-8") + "[Strings]\nQuendoRendering=card\n")
    quendo.start("--rendering=processor")
    quendo.wait_for_page()
    assert not is_composited(quendo)


def test_a_path_that_does_not_exist_is_refused(make_quendo):
    quendo = make_quendo()
    assert quendo.start_another("--rendering=abacus") == 1
    assert "--rendering is auto, card or processor" in quendo.output()


@pytest.mark.never_retried
def test_where_the_page_dies_before_its_first_frame_the_processor_takes_over(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page(head="""<script>
        report('script', true);
        const end = Date.now() + 2000;
        while (Date.now() < end);
        </script>""")).start("--rendering=card", wait=False)
    reporter.wait_for("script", 1)
    [page] = quendo.web_processes()
    process.kill(page)
    reporter.wait_for("script", 2)
    reporter.wait_for_page(1)
    assert CARD_FAILED in quendo.output()
    quendo.focus(quendo.wait_for_window())
    quendo.wait_for_page()
    assert not is_composited(quendo)
    assert quendo.terminate() == 0


@pytest.mark.never_retried
def test_where_no_frame_comes_the_processor_takes_over_and_what_is_typed_is_kept(make_quendo):
    quendo = make_quendo()
    quendo.start("--rendering=card", wait=False)
    [page] = wait_until(quendo.web_processes, what="the page's process")
    process.kill(page, signal.SIGSTOP)
    wait_until(lambda: CARD_FAILED in quendo.output(), 40, "the processor to take over")
    process.kill(page, signal.SIGCONT)
    quendo.focus(quendo.wait_for_window())
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("Drawn by the processor.")
    wait_until(lambda: "Drawn by the processor." in (quendo.state.text() or ""), what="the text on disk")
    assert quendo.terminate() == 0


@pytest.mark.never_retried
def test_where_frames_come_the_card_keeps_drawing(make_quendo):
    quendo = make_quendo()
    quendo.start("--rendering=card")
    quendo.wait_for_page()
    time.sleep(6)
    assert is_composited(quendo)
    assert CARD_FAILED not in quendo.output()
    [page] = quendo.web_processes()
    process.kill(page)
    wait_until(lambda: quendo.web_processes() and quendo.web_processes() != [page], what="another process")
    quendo.wait_for_page()
    assert CARD_FAILED not in quendo.output(), "a page that dies later is no fault of the card's"
