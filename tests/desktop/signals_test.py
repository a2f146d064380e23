"""Signals that ask for an end, to the program alone and to everything that it has started with it: Ctrl+C in a
terminal, a terminal that is closed, a service manager, the end of a login."""

import os
import signal
import subprocess
import uuid
from pathlib import Path

import pytest

from harness import desktop, process
from harness.installation import sandbox_arguments
from harness.waiting import wait_until

pytestmark = pytest.mark.never_retried

SIGNALS = [signal.SIGINT, signal.SIGTERM, signal.SIGHUP]
WITHOUT_SANDBOX = {"WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS": "1"}
HIERARCHIES = [Path("/sys/fs/cgroup"), Path("/sys/fs/cgroup/unified")]


@pytest.fixture
def control_group():
    """A control group of the test's own, as a directory."""
    for hierarchy in HIERARCHIES:
        group = hierarchy / f"quendo-test-{uuid.uuid4()}"
        try:
            if (hierarchy / "cgroup.procs").exists():
                group.mkdir()
                break
        except OSError:
            continue
    else:
        pytest.skip("this machine does not let a control group be made")
    yield group

    def removed():
        # A process that has ended but for its last thread is not listed any more, and still counts.
        try:
            group.rmdir()
        except OSError:
            return False
        return True

    wait_until(removed, what="the control group to be empty")


def to_process(program, number):
    process.kill(program.pid, number)


def to_process_group(program, number):
    os.killpg(program.pid, number)


def to_control_group(program, number, group):
    """As a service manager does it: every member, those that the signal ends first make no difference."""
    members = [int(line) for line in (group / "cgroup.procs").read_text().split()]
    assert program.pid in members and set(program.web_processes()) <= set(members)
    for member in sorted(members, reverse=True):
        process.kill(member, number)


def ends_with_everything_kept(program, send, text):
    """Types, sends the signal at once, and checks that the text is on disk and that nothing is left running."""
    program.wait_for_page()
    program.press("ctrl+n")
    program.type("Begun before. ")
    program.state.wait_for_text("efore.")
    program.type(text)
    below = process.children(program.pid)
    send()
    assert program.wait_for_exit() == 0
    assert program.state.holds(text), program.state.text()
    wait_until(lambda: not any(map(process.alive, below)), 20, "every process of the program to be gone")


@pytest.mark.parametrize("number", SIGNALS, ids=lambda one: one.name)
@pytest.mark.parametrize("send", [to_process, to_process_group], ids=["process", "process group"])
def test_what_was_typed_just_before_a_signal_is_kept(quendo, send, number):
    ends_with_everything_kept(quendo, lambda: send(quendo, number), "Typed, and signalled at once.")


@pytest.mark.parametrize("number", SIGNALS, ids=lambda one: one.name)
def test_what_was_typed_just_before_a_signal_to_the_control_group_is_kept(make_quendo, control_group, number):
    quendo = make_quendo()
    start = f"echo $$ >'{control_group}/cgroup.procs' && exec \"$@\""
    quendo.launcher = ["/bin/sh", "-c", start, "sh"]
    quendo.start()
    ends_with_everything_kept(quendo, lambda: to_control_group(quendo, number, control_group), "In a service.")


def test_without_the_sandbox_a_signal_to_the_group_costs_nothing_either(make_quendo):
    quendo = make_quendo().start(environment=WITHOUT_SANDBOX)
    ends_with_everything_kept(quendo, lambda: to_process_group(quendo, signal.SIGTERM), "Without a sandbox.")


@pytest.mark.parametrize("environment", [None, WITHOUT_SANDBOX], ids=["sandbox", "no sandbox"])
def test_every_process_of_the_page_blocks_the_signals(make_quendo, environment):
    if environment is None and sandbox_arguments():
        pytest.skip("this system does not permit the sandbox")
    quendo = make_quendo().start(environment=environment)
    quendo.wait_for_page()
    for one in quendo.processes():
        assert process.blocked_signals(one) >= set(SIGNALS), process.name(one)


def test_a_signal_right_after_the_start_ends_the_program(make_quendo):
    quendo = make_quendo().start(wait=False)
    quendo.wait_for_window()
    os.killpg(quendo.pid, signal.SIGTERM)
    assert quendo.wait_for_exit() == 0


def test_a_program_that_was_started_to_ignore_a_hangup_goes_on_after_one(make_quendo):
    quendo = make_quendo()
    quendo.launcher = ["/usr/bin/nohup"]
    quendo.start()
    quendo.wait_for_page()
    process.kill(quendo.pid, signal.SIGHUP)
    quendo.press("ctrl+n")
    quendo.type("The terminal is gone.")
    quendo.state.wait_for_text("terminal is gone.")
    assert quendo.terminate() == 0


# Blocked signals must keep no process alive that the program or its sandbox ends.

def test_nothing_outlives_a_program_that_is_killed(quendo):
    quendo.wait_for_page()
    below = process.children(quendo.pid)
    process.kill(quendo.pid)
    wait_until(lambda: not any(map(process.alive, below)), 20, "every process of the program to be gone")


def test_nothing_of_a_lost_page_is_left_once_another_has_come(quendo):
    quendo.wait_for_page()
    page = quendo.web_processes()
    helpers = [one for one in process.children(quendo.pid) if process.name(one) in ("bwrap", "xdg-dbus-proxy")]
    for one in page:
        process.kill(one)
    wait_until(lambda: set(quendo.web_processes()) - set(page), 20, "another page's process")
    quendo.wait_for_page()
    wait_until(lambda: not any(map(process.alive, page)), 20, "the lost page's process to be gone")
    # Its launcher goes with it; the bus filter is the new page's too or goes as well.
    now = [one for one in process.children(quendo.pid) if process.name(one) in ("bwrap", "xdg-dbus-proxy")]
    wait_until(lambda: len(now) <= len(helpers) or not any(map(process.alive, helpers)), 20, "its helpers to be gone")


# Programs that are started for the user are none of the program's own.

def test_a_program_that_a_link_opens_has_its_signals(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page("<a id=a href='https://example.com/'>there</a>"))
    masks = record_masks(quendo, quendo.external.bin / "xdg-open")
    quendo.start()
    reporter.wait_for_page()
    reporter.run("document.getElementById('a').click()")
    assert_unblocked(masks)


def test_a_mail_program_has_its_signals(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page())
    masks = record_masks(quendo, quendo.external.bin / "xdg-email")
    share(quendo, reporter, "Send by E-mail")
    assert_unblocked(masks)


def test_a_program_that_a_note_is_opened_with_has_its_signals(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page())
    masks = record_masks(quendo, quendo.external.bin / "xdg-open")
    share(quendo, reporter, "Open with Test handler")
    assert_unblocked(masks)


def record_masks(quendo, program):
    """Makes a program write down what it blocks; returns the file."""
    result = quendo.home / "masks"
    program.write_text(f"#!/bin/sh\ngrep SigBlk /proc/self/status > '{result}.part'; mv '{result}.part' '{result}'\n")
    program.chmod(0o755)
    return result


def share(quendo, reporter, item):
    quendo.start(environment={"LANG": "en_US.UTF-8"})
    reporter.wait_for_page()
    reporter.run("webkit.messageHandlers.quendoShare.postMessage("
                 "{ attemptId: 'a', title: 'T', filename: 'n.txt', content: 'text', url: '' });")
    wait_until(lambda: quendo.accessible().find_all("menu item", item), 15, f"{item!r} to be offered")
    quendo.accessible().find("menu item", item).act("click")


def assert_unblocked(masks):
    wait_until(masks.exists, 15, "the program to be started")
    blocked = int(masks.read_text().split()[1], 16)
    assert not [one.name for one in SIGNALS if blocked >> (one - 1) & 1]


# What stands in the way of a page's answer.

def test_a_page_that_is_lost_while_it_prepares_is_asked_again_when_it_is_back(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.quendoNativeSaveDidFinish = () => report('saved');
        window.quendoPrepareForTermination = () => {
          report('asked');
          if (!window.__QUENDO_NATIVE_STATE__) for (;;) {}
          return { serialized: '{"came":"back"}', revision: 2 };
        };
        </script>""")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    reporter.run("""webkit.messageHandlers.quendoState.postMessage({ serialized: '{"n":1}', revision: 1 });""")
    reporter.wait_for("saved")
    process.kill(quendo.pid, signal.SIGTERM)
    reporter.wait_for("asked")
    for one in quendo.web_processes():
        process.kill(one)
    assert quendo.wait_for_exit(30) == 0
    assert quendo.state.document() == {"came": "back"}


def test_a_prompt_that_nobody_answers_does_not_hold_up_the_end(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.quendoPrepareForTermination = () => ({ serialized: '{"kept":1}', revision: 1 });
        </script>""")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    reporter.post("report('answer', prompt('Name?', 'typed so far'));")
    wait_until(lambda: len(quendo.windows()) == 2, 15, "the prompt")
    process.kill(quendo.pid, signal.SIGTERM)
    assert quendo.wait_for_exit() == 0
    assert quendo.state.document() == {"kept": 1}


def test_a_key_that_is_held_does_not_delay_the_question_until_the_quit_is_cancelled(make_quendo, reporter):
    # The page is slower than the keys, so that some always wait.
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.keys = 0;
        addEventListener('keydown', () => {
          keys++;
          const end = performance.now() + 40;
          while (performance.now() < end) {}
        });
        window.quendoPrepareForTermination = () => ({ serialized: JSON.stringify({ keys }), revision: 1 });
        </script>""")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    held = subprocess.Popen(["xdotool", "key", "--delay", "15", "--repeat", "4000", "a"])
    try:
        wait_until(lambda: reporter.evaluate("keys") > 5, 15, "keys to arrive")
        process.kill(quendo.pid, signal.SIGTERM)
        assert quendo.wait_for_exit() == 0
        assert quendo.state.document()["keys"] > 5
    finally:
        held.kill()
        held.wait()


def test_keys_that_wait_for_a_slow_page_are_all_in_what_is_kept(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.typed = '';
        addEventListener('keydown', (event) => {
          typed += event.key;
          const end = performance.now() + 60;
          while (performance.now() < end) {}
        });
        window.quendoPrepareForTermination = () => ({ serialized: JSON.stringify({ typed }), revision: 1 });
        </script>""")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    desktop.press("x")
    wait_until(lambda: reporter.evaluate("typed") == "x", 15, "the page to have the keyboard")
    desktop.type_text("abcdefghijklmnopqrstuvwxyz", 1)
    process.kill(quendo.pid, signal.SIGTERM)
    assert quendo.wait_for_exit() == 0
    assert quendo.state.document()["typed"].endswith("bcdefghijklmnopqrstuvwxyz")
