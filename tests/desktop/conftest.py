"""Fixtures of the real-window tests. Run them with scripts/with-desktop, as ./test does."""

import contextlib
import os
import re
from pathlib import Path

import pytest

from harness import desktop
from harness.installation import ROOT, Installation, sandbox_arguments
from harness.probe import Probe, probed_page
from harness.program import Quendo
from harness.reporter import Reporter
from harness.slow import SlowServer


@pytest.hookimpl(tryfirst=True, hookwrapper=True)
def pytest_runtest_makereport(item, call):
    outcome = yield
    report = outcome.get_result()
    # A screenshot of the failure says more than any message; the fixtures still exist at this point.
    if report.when == "call" and report.failed and desktop.is_private():
        pictures = Path(os.environ.get("QUENDO_TEST_PICTURES", ROOT / "build" / "test-results" / "desktop" / "pictures"))
        # Without characters that ImageMagick interprets.
        name = re.sub(r"[^A-Za-z0-9._-]+", "-", item.nodeid)
        try:
            report.sections.append(("screen", str(desktop.screenshot(pictures / f"{name}.png"))))
        except Exception as error:  # A test's own failure must stay the one that is reported.
            report.sections.append(("screen", f"no picture: {error}"))


def pytest_collection_modifyitems(config, items):
    def runs_here(item):
        is_special = item.get_closest_marker("wayland_only") is not None
        return is_special or item.get_closest_marker("every_display") if desktop.is_wayland() else not is_special

    config.hook.pytest_deselected(items=[item for item in items if not runs_here(item)])
    items[:] = filter(runs_here, items)
    # desktop-suite.py finds the marker in the JUnit file.
    for item in items:
        if item.get_closest_marker("never_retried"):
            item.user_properties.append(("never_retried", "true"))


@pytest.fixture(scope="session", autouse=True)
def private_desktop():
    if not desktop.is_private():
        pytest.exit("These tests press keys and move the pointer, so that they run only on a desktop of "
                    "their own: scripts/with-desktop python3 -m pytest tests/desktop", returncode=4)
    desktop.let_no_key_repeat()


@pytest.fixture(scope="session")
def installation(tmp_path_factory):
    """The installed program, moved away from its prefix. Shared: tests must not change it."""
    build = Path(os.environ.get("QUENDO_BUILD", ROOT / "build" / "release"))
    assert (build / "bin" / "quendo").exists(), f"there is no program in {build}; build it first"
    return Installation.install(build, tmp_path_factory.mktemp("installation"))


@pytest.fixture(scope="session")
def program_arguments():
    """Options the program needs on this machine."""
    return sandbox_arguments()


@pytest.fixture
def reporter():
    """The loopback server that a test page reports to and takes commands from."""
    server = Reporter()
    yield server
    server.close()


@pytest.fixture
def slow():
    """A server that holds its answers back until `slow.answer()`."""
    server = SlowServer()
    yield server
    server.close()


@pytest.fixture
def make_quendo(tmp_path, installation, program_arguments):
    """A function that makes a Quendo that is not started yet. Every one of them is stopped at the end.

    page       the text of an index.html, or a directory, instead of the real page
    files      more files for the page's directory: relative path -> text or bytes
    home       a home directory to go on with; a fresh one by default
    arguments  arguments for each start
    """
    made = []

    def make(page=None, files=None, home=None, arguments=()):
        number = len(made) + 1
        tree = installation
        if page is not None or files:
            tree = installation.copy(tmp_path / f"tree{number}", page, files)
        quendo = Quendo(home or tmp_path / f"home{number}", tree, [*program_arguments, *arguments])
        made.append(quendo)
        return quendo

    yield make
    for quendo in made:
        quendo.stop()


@pytest.fixture
def quendo(make_quendo):
    """The real program with its real page, started, its window active."""
    return make_quendo().start()


@pytest.fixture
def open_page(make_quendo, installation, reporter):
    """A function that starts the real page on a document given as text, in a language (English by default), and
    returns (program, page)."""

    def start(state=None, language="en_US", environment=None):
        quendo = make_quendo(files=probed_page(installation, reporter))
        quendo.environment |= {"LC_ALL": f"{language}.UTF-8"} | (environment or {})
        if state is not None:
            quendo.state.write(state)
        quendo.start().wait_for_page()
        reporter.wait_for_page()
        return quendo, Probe(reporter)

    return start


@pytest.fixture
def opened(open_page):
    """(program, page): the real page in English, without notes."""
    return open_page()


@pytest.fixture(scope="module")
def stage(tmp_path_factory, installation, program_arguments):
    """A function that starts a program with a page of the test's for all tests of a file, and returns the
    program and its reporter. For tests that do not change what the next one finds.

    page         a function that makes the page's text from the reporter
    files        more files for the page's directory
    environment  on top of the program's own
    """
    with contextlib.ExitStack() as end:

        def start(page, files=None, environment=None):
            directory = tmp_path_factory.mktemp("stage")
            server = Reporter()
            end.callback(server.close)
            program = Quendo(directory / "home", installation.copy(directory, page(server), files),
                             program_arguments)
            end.callback(program.stop)
            program.start(environment=environment)
            server.wait_for_page()
            return program, server

        yield start
