"""With a desktop portal: mail with an attachment, and the file dialog of a confined program."""

import json
import re
import signal
import subprocess
import sys
from pathlib import Path

import pytest

from harness import desktop
from harness.waiting import wait_until

TOOL = Path(__file__).parent / "tools" / "portal.py"


@pytest.fixture
def portal(tmp_path):
    """A function that starts a portal with its answers and returns a function for the requests it got."""
    started = []
    log = tmp_path / "portal.log"

    def start(**answer):
        process = subprocess.Popen([sys.executable, TOOL, log, json.dumps(answer)], stdout=subprocess.PIPE, text=True)
        started.append(process)
        assert process.stdout.readline() == "ready\n"
        start.process = process
        return lambda: [json.loads(line) for line in log.read_text().splitlines()] if log.exists() else []

    yield start
    for process in started:
        process.terminate()
        process.wait(10)


@pytest.fixture
def start(make_quendo, reporter):
    """A function that starts the program with a page that reports every answer of the host."""

    def run(**environment):
        names = ["quendoNativeShareDidFinish", "quendoNativeExportDidFinish", "quendoNativeSaveAsDidFinish"]
        quendo = make_quendo(page=reporter.page(head="<script>" + "".join(
            f"window.{name} = (...values) => report('answered', values);" for name in names) + "</script>"))
        quendo.start(environment={"LC_ALL": "en_US.UTF-8", **environment})
        reporter.wait_for_page()
        quendo.wait_for_page()
        return quendo

    return run


def share_by_mail(quendo, reporter):
    reporter.run("""webkit.messageHandlers.quendoShare.postMessage({ attemptId: 'a', title: 'The title',
        filename: 'note.md', content: 'By the portal', url: 'https://quendo.example/' });""")
    wait_until(lambda: any(one.name == "Send by E-mail" for one in quendo.accessible().walk()), 10, "the popover")
    quendo.accessible().find_item("Send by E-mail").act("click")


@pytest.mark.parametrize("response, success", [(0, True), (1, False)])
def test_the_portal_gets_the_mail_with_the_file_attached(start, reporter, portal, response, success):
    asked = portal(response=response)
    share_by_mail(start(), reporter)
    assert reporter.wait_for("answered") == [success, "a"]
    request, = asked()
    assert request["subject"] == "The title" and request["attached"] == "By the portal"
    assert request["body"] == "https://quendo.example/"
    assert re.fullmatch("[A-Za-z0-9_]+", request["token"])


@pytest.mark.parametrize("response, success", [(0, True), (1, False)])
@pytest.mark.parametrize("manner", [{"early": True}, {"own_handle": True}, {"early": True, "own_handle": True}],
                         ids=lambda manner: "-".join(manner))
def test_the_answer_about_a_mail_counts_however_early_and_wherever_it_comes(start, reporter, portal, manner,
                                                                            response, success):
    portal(response=response, noise=True, **manner)
    share_by_mail(start(), reporter)
    assert reporter.wait_for("answered") == [success, "a"]


def test_a_confined_program_saves_through_the_portals_dialog(start, reporter, portal, tmp_path):
    asked = portal(response=0, paths=[str(tmp_path / "chosen.json")], choices=[["extension", "3"]])
    start(GDK_DEBUG="portals")
    reporter.run("""webkit.messageHandlers.quendoSaveAs.postMessage(
        { noteId: 'n', filename: 'note.md', content: 'Saved' });""")
    assert reporter.wait_for("answered") == [True, "n", "chosen.json", "Salvo como chosen.json"]
    assert (tmp_path / "chosen.json").read_text() == "Saved"
    request, = asked()
    assert (request["method"], request["name"]) == ("SaveFile", "note.md")
    (identifier, label, titles, chosen), = request["choices"]
    assert (identifier, label, chosen) == ("extension", "Extension:", "0")
    assert titles[0] == "Markdown (.md)" and titles[-1] == "Custom (type it in the name)" and len(titles) == 24


def test_a_confined_program_asks_again_for_a_name_that_gets_its_extension(start, reporter, portal, tmp_path):
    # The portal grants access to one file: another one beside it would be gone when the program exits.
    (tmp_path / "elsewhere").mkdir()
    asked = portal(response=0, paths=[str(tmp_path / "chosen"), str(tmp_path / "elsewhere" / "chosen.json")],
                   choices=[["extension", "3"]])
    start(GDK_DEBUG="portals")
    reporter.run("""webkit.messageHandlers.quendoSaveAs.postMessage(
        { noteId: 'n', filename: 'note.md', content: 'Saved' });""")
    assert reporter.wait_for("answered") == [True, "n", "chosen.json", "Salvo como chosen.json"]
    assert (tmp_path / "elsewhere" / "chosen.json").read_text() == "Saved"
    assert not list(tmp_path.glob("chosen*"))
    first, second = asked()
    assert (first["name"], first["choices"][0][3]) == ("note.md", "0")
    assert (second["name"], second["choices"][0][3]) == ("chosen.json", "3")


def test_a_portals_dialog_that_is_cancelled_is_answered_so(start, reporter, portal):
    portal(response=1)
    start(GDK_DEBUG="portals")
    reporter.run("""webkit.messageHandlers.quendoExport.postMessage(
        { filename: 'note.md', content: 'x', format: 'markdown' });""")
    assert reporter.wait_for("answered") == [False, "Export canceled"]


def test_a_place_of_the_portals_that_is_not_on_this_machine_is_a_failure_and_no_cancel(start, reporter, portal):
    portal(response=0, paths=["sftp://server.example/note.md"])
    start(GDK_DEBUG="portals")
    reporter.run("""webkit.messageHandlers.quendoSaveAs.postMessage(
        { noteId: 'n', filename: 'note.md', content: 'x' });""")
    assert reporter.wait_for("answered") == [False, "n", "", "Não foi possível salvar o arquivo"]
    reporter.run("""webkit.messageHandlers.quendoExport.postMessage(
        { filename: 'note.md', content: 'x', format: 'markdown' });""")
    assert reporter.wait_for("answered", 2) == [False, "Could not export the file"]


def test_the_page_follows_the_user_into_the_dark_and_back(start, reporter, portal):
    portal(settings={"color-scheme": 1})
    start()
    dark = "matchMedia('(prefers-color-scheme: dark)').matches"
    wait_until(lambda: reporter.evaluate(dark), 10, "dark")
    portal.process.send_signal(signal.SIGUSR1)
    wait_until(lambda: not reporter.evaluate(dark), 10, "no choice")


def test_the_window_has_the_contrast_that_the_user_chose(start, portal):
    portal(settings={"contrast": 1})
    quendo = start()
    quendo.wait_until_still()
    with_contrast = desktop.picture(quendo.window)
    portal.process.send_signal(signal.SIGUSR1)
    wait_until(lambda: desktop.picture(quendo.window) != with_contrast, 10, "the window to change")
