"""How the program starts: as a second instance, in its sandbox, from any directory."""

import os
import shutil
import signal
import subprocess

import pytest

from harness import desktop, process
from harness.installation import Installation, sandbox_arguments
from harness.waiting import stays, wait_until

_TEST_MODE = {"QUENDO_PERSISTENCE_TEST": "1"}


@pytest.mark.every_display
def test_a_second_start_ends_well_and_makes_no_second_window(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page()).start()
    reporter.wait_for_page()
    window = quendo.window.id
    assert quendo.start_another() == 0
    assert [one.id for one in desktop.windows(quendo.pid)] == [window]
    assert reporter.loads == 1
    assert quendo.running


def test_a_second_start_brings_a_minimised_window_back(quendo):
    quendo.wait_for_page()
    window = quendo.window
    quendo.press("ctrl+m")
    wait_until(lambda: desktop.active_window() != window.id, 10, "the window to be minimised")
    assert quendo.start_another() == 0
    wait_until(lambda: desktop.active_window() == window.id, 10, "the window to be in front")
    assert "_NET_WM_STATE_HIDDEN" not in desktop.window_property(window, "_NET_WM_STATE")


def test_normal_and_test_mode_are_two_programs_and_each_start_finds_its_own(make_quendo):
    normal = make_quendo().start()
    test = make_quendo(home=normal.home).start(environment=_TEST_MODE)
    assert normal.running and test.running and normal.pid != test.pid
    assert normal.window.id != test.window.id
    assert desktop.active_window() == test.window.id

    assert normal.start_another() == 0
    wait_until(lambda: desktop.active_window() == normal.window.id, 10, "the first program's window in front")
    assert test.start_another(environment=_TEST_MODE) == 0
    wait_until(lambda: desktop.active_window() == test.window.id, 10, "the other program's window in front")
    assert len(normal.windows()) == len(test.windows()) == 1


@pytest.mark.every_display
def test_a_start_after_the_end_is_a_first_start(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page()).start()
    reporter.wait_for_page()
    assert quendo.terminate() == 0
    quendo.start()
    reporter.wait_for_page(2)


def test_the_pages_process_runs_in_a_sandbox(quendo):
    if sandbox_arguments():
        pytest.skip("this system does not permit the sandbox")
    quendo.wait_for_page()
    pages = wait_until(quendo.web_processes, 10, "the page's process")
    below = process.children(quendo.pid)
    assert any(process.name(one) == "bwrap" for one in below)
    for one in pages:
        assert os.readlink(f"/proc/{one}/ns/pid") != os.readlink(f"/proc/{quendo.pid}/ns/pid")
        assert os.readlink(f"/proc/{one}/ns/net") != os.readlink(f"/proc/{quendo.pid}/ns/net")


@pytest.fixture
def without_user_namespaces(make_quendo, reporter):
    """A program that finds a failing sandbox launcher, as if the kernel allowed no sandbox."""
    quendo = make_quendo(page=reporter.page())
    quendo.arguments.clear()
    launcher = quendo.external.bin / "bwrap"
    launcher.write_text("#!/bin/sh\necho 'bwrap: No permissions to create a new namespace' >&2\nexit 1\n")
    launcher.chmod(0o755)
    return quendo


def test_without_a_sandbox_the_program_says_so_and_ends(without_user_namespaces):
    quendo = without_user_namespaces.start(wait=False)
    assert quendo.wait_for_end() == 1
    lines = quendo.output().strip().splitlines()
    assert len(lines) == 1 and "--without-web-sandbox" in lines[0] and lines[0].endswith(".")
    assert not quendo.state.directory.exists()


def test_without_a_sandbox_the_program_goes_on_when_told_to(without_user_namespaces, reporter):
    quendo = without_user_namespaces.start("--without-web-sandbox")
    reporter.wait_for_page()
    for one in wait_until(quendo.web_processes, 10, "the page's process"):
        assert os.readlink(f"/proc/{one}/ns/pid") == os.readlink(f"/proc/{quendo.pid}/ns/pid")


PLACES = ["a b", "ação ñ 日本 🗒", "100% #1 ? [x] {y} (z)", "a+b&c=d;e'f", "%2e%2e %41", "a.b*c^d$e|f", "UPPER lower",
          "..hidden", "back\\slash"]

_PAGE = """
<link rel=stylesheet href="style sheet.css"><script src="script.js"></script>
<img id=inside src="img/in side.svg"><img id=up src="../secret.svg"><img id=neighbour src="../web2/secret.svg">
<p id=probe></p>
"""
_SVG = '<svg xmlns="http://www.w3.org/2000/svg" width="7" height="5"></svg>'


@pytest.mark.parametrize("name", PLACES)
def test_a_copy_of_the_program_works_in_any_directory(make_quendo, installation, reporter, tmp_path, name):
    quendo = make_quendo()
    tree = installation.copy(tmp_path / "page", reporter.page(_PAGE), {
        "style sheet.css": "#probe { width: 7px }", "script.js": "window.ran = true;", "img/in side.svg": _SVG})
    place = tmp_path / name
    shutil.move(tree.prefix, place)
    quendo.installation = Installation(place)
    for directory in (quendo.installation.web.parent, quendo.installation.web.parent / "web2"):
        directory.mkdir(exist_ok=True)
        (directory / "secret.svg").write_text(_SVG)
    quendo.start()
    reporter.wait_for_page()
    found = reporter.run(
        "if (document.readyState !== 'complete') await new Promise((resolve) => { onload = resolve; });"
        "return [window.ran === true, document.getElementById('probe').offsetWidth,"
        " ...['inside', 'up', 'neighbour'].map((one) => document.getElementById(one).naturalWidth)];")
    assert found == [True, 7, 7, 0, 0]
    stays(lambda: quendo.running, 0.2, "the program")


def test_the_real_page_works_in_a_moved_copy(make_quendo, installation, tmp_path):
    place = tmp_path / "Ção com espaço #1"
    shutil.copytree(installation.prefix, place)
    quendo = make_quendo()
    quendo.installation = Installation(place)
    quendo.start().wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("Written elsewhere")
    quendo.state.wait_for_text("Written elsewhere")


@pytest.fixture
def other_session():
    """The environment of another session of the same user: a bus of its own."""
    bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"],
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    yield {"DBUS_SESSION_BUS_ADDRESS": bus.stdout.readline().strip(), "LC_ALL": "en_US.UTF-8"}
    bus.terminate()
    bus.wait(10)


def test_another_session_does_not_open_the_same_notes_a_second_time(make_quendo, other_session):
    quendo = make_quendo().start()
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("Typed in the first session")
    other = make_quendo(home=quendo.home).start(environment=other_session, wait=False)
    _wait_for_alert(other)
    desktop.press("Return")
    assert other.wait_for_end() == 0
    quendo.focus()
    quendo.type(", and on it goes")
    assert quendo.terminate() == 0
    assert quendo.state.holds("Typed in the first session, and on it goes")


def _wait_for_alert(other):
    """Waits for the alert that says where the notes are, while nothing else is shown."""
    wait_until(lambda: len(other.windows()) == 1, 20, "the alert of the second program")
    desktop.wait_until_still(other.windows()[0])
    desktop.activate(other.windows()[0])


def test_the_notes_open_by_themselves_when_the_other_session_ends(make_quendo, reporter, other_session):
    quendo = make_quendo().start()
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("Begun in the first session")
    page = reporter.page(head="<script>report('state', JSON.stringify(window.__QUENDO_NATIVE_STATE__));</script>")
    other = make_quendo(page=page, home=quendo.home).start(environment=other_session, wait=False)
    _wait_for_alert(other)
    assert not reporter.loads, "nothing is opened meanwhile"
    quendo.focus()
    quendo.type(", saved there")
    assert quendo.terminate() == 0
    assert "Begun in the first session, saved there" in reporter.wait_for("state", timeout=20)
    wait_until(lambda: [one.title for one in other.windows()] == ["Quendo"], 10, "the alert to be gone")


@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGINT], ids=lambda one: one.name)
def test_a_start_that_waits_for_the_other_session_ends_at_a_signal(make_quendo, other_session, number):
    quendo = make_quendo().start()
    quendo.wait_for_page()
    other = make_quendo(home=quendo.home).start(environment=other_session, wait=False)
    _wait_for_alert(other)
    process.kill(other.pid, number)
    assert other.wait_for_end() == 0


def test_notes_can_be_opened_once_the_other_session_has_ended(make_quendo, reporter, other_session):
    quendo = make_quendo().start()
    quendo.kill()
    other = make_quendo(page=reporter.page(), home=quendo.home).start(environment=other_session)
    reporter.wait_for_page()
    assert [one.title for one in other.windows()] == ["Quendo"]
    assert other.terminate() == 0
