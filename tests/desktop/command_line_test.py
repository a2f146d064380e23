"""What a start asks for on its command line: files, standard input, a new note; in a first start and in a second one."""

import contextlib
import os
import signal
import subprocess
from pathlib import Path

import pytest

from harness.waiting import stays, wait_until

# What is piped is kept by nothing else.
pytestmark = pytest.mark.never_retried

ENGLISH = {"LC_ALL": "en_US.UTF-8"}
MOST = 20_000_000


def receiving(reporter, body="return files.length;", content=""):
    """A test page that remembers, in their order, the files it gets and the notes it is to make."""
    return reporter.page(content, f"""<script>
        window.asked = [];
        window.quendoOpenNativeFiles = (files) => {{ asked.push(files.map(({{ name }}) => name)); {body} }};
        window.createNote = () => asked.push('new note');
        window.quendoPrepareForTermination = () => ({{ serialized: '{{}}', revision: 1 }});
        </script>""")


def asked(reporter):
    return reporter.evaluate("window.asked")


def wait_for_asked(reporter, *expected):
    """Waits until the page was asked for this, and for nothing else."""
    wait_until(lambda: len(asked(reporter)) >= len(expected), 20, "the page to be asked")
    assert asked(reporter) == list(expected)


@pytest.fixture
def real(make_quendo):
    quendo = make_quendo()
    quendo.environment |= ENGLISH
    return quendo


def holds_texts(process, count=1):
    """Whether the process has that many texts of standard input open: its own, or those of starts that wait for it."""
    found = 0
    for one in Path(f"/proc/{process.pid}/fd").iterdir():
        with contextlib.suppress(FileNotFoundError):
            found += "quendo-standard-input" in os.readlink(one)
    return found >= count


def notes(quendo):
    """The notes on disk as (name, text)."""
    return [(note.get("name"), note["text"]) for note in quendo.state.document()["notes"]]


def active(quendo):
    document = quendo.state.document()
    return next(note for note in document["notes"] if note["id"] == document["tabs"]["active"])


# Standard input.

@pytest.mark.parametrize("first", [True, False], ids=["first start", "second start"])
def test_what_is_piped_becomes_a_note_and_is_on_disk(real, first):
    text = "Piped: ação, 日本 🗒\n".encode()
    if first:
        real.start("-", stdin=text)
    else:
        real.start().wait_for_page()
        assert real.start_another("-", stdin=text) == 0
    real.state.wait_for_text("Piped: ação, 日本 🗒")
    assert ("Standard input", "Piped: ação, 日本 🗒\n") in notes(real)
    assert active(real)["name"] == "Standard input" and active(real)["format"] == "plain"
    assert real.terminate() == 0
    assert "Piped" in real.state.text()


def test_the_note_has_its_name_in_the_language_of_the_window(make_quendo):
    quendo = make_quendo().start("-", stdin=b"texto")
    quendo.state.wait_for_text("texto")
    assert ("Entrada padrão", "texto") in notes(quendo)


@pytest.mark.parametrize("first", [True, False], ids=["first start", "second start"])
def test_bytes_that_are_not_utf8_are_decoded_as_those_of_a_file(real, tmp_path, first):
    # Windows-1252, as a file of these bytes would be read.
    text = "Ação a 5 €, “sim”".encode("cp1252")
    (tmp_path / "same.txt").write_bytes(text)
    if first:
        real.start("-", tmp_path / "same.txt", stdin=text)
    else:
        real.start().wait_for_page()
        assert real.start_another("-", tmp_path / "same.txt", stdin=text) == 0
    real.state.wait_for_text("same.txt")
    assert dict(notes(real))["Standard input"] == dict(notes(real))["same.txt"] == "Ação a 5 €, “sim”"


@pytest.mark.parametrize("first", [True, False], ids=["first start", "second start"])
def test_what_is_no_text_is_refused_in_the_window_and_on_the_terminal(make_quendo, reporter, first):
    quendo = make_quendo(page=receiving(reporter))
    alert = "Entrada padrão: não parece ser um arquivo de texto"
    if first:
        quendo.start("-", stdin=b"\x89PNG\r\n\x00\x01")
        quendo.dismiss_alert(alert)
        assert quendo.terminate() == 2
    else:
        quendo.start().wait_for_page()
        assert quendo.start_another("-", stdin=b"\x89PNG\r\n\x00\x01") == 2
        quendo.wait_for_alert(alert)
    assert "quendo: the text of standard input was not opened\n" in quendo.output()
    assert first or asked(reporter) == []


@pytest.mark.parametrize("first", [True, False], ids=["first start", "second start"])
@pytest.mark.parametrize("size", [MOST, MOST + 1])
def test_the_limit_is_that_of_a_file(make_quendo, reporter, first, size):
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.quendoOpenNativeFiles = (files) => { report('size', files[0].content.length); return 1; };
        </script>"""))
    if first:
        quendo.start("-", stdin=b"x" * size)
    else:
        quendo.start().wait_for_page()
        assert quendo.start_another("-", stdin=b"x" * size, timeout=40) == (0 if size <= MOST else 2)
    if size <= MOST:
        assert reporter.wait_for("size", timeout=30) == size
    else:
        quendo.wait_for_alert("Entrada padrão: excede o limite de 20 MB")


def test_what_never_ends_is_not_read_forever(make_quendo, reporter):
    quendo = make_quendo(page=receiving(reporter)).start()
    quendo.wait_for_page()
    with open("/dev/zero", "rb") as endless:
        assert quendo.start_another("-", stdin=endless) == 2


@pytest.mark.parametrize("first", [True, False], ids=["first start", "second start"])
def test_nothing_piped_is_a_new_note(make_quendo, reporter, first):
    quendo = make_quendo(page=receiving(reporter))
    if first:
        quendo.start("-", stdin=b"")
    else:
        quendo.start().wait_for_page()
        assert quendo.start_another("-", stdin=b"") == 0
    wait_for_asked(reporter, "new note")
    assert quendo.start_another("-", "--new-note", stdin=b"") == 0
    wait_for_asked(reporter, "new note", "new note")


@pytest.mark.parametrize("running", [False, True], ids=["first start", "second start"])
def test_a_standard_input_that_cannot_be_read_is_named(make_quendo, reporter, running):
    quendo = make_quendo(page=receiving(reporter))
    if running:
        quendo.start().wait_for_page()
    closed = subprocess.run(["sh", "-c", 'exec "$@" <&-', "sh", quendo.installation.program, "-", "--new-note"],
                            env=quendo.environment, stderr=subprocess.PIPE, timeout=20)
    assert closed.returncode == 1
    assert closed.stderr == b"quendo: standard input could not be read: Bad file descriptor\n"
    assert not running or asked(reporter) == []
    assert running or not quendo.state.directory.exists()


def test_a_closed_standard_input_does_not_matter_to_files(make_quendo, reporter, tmp_path):
    (tmp_path / "a.txt").write_text("a")
    quendo = make_quendo(page=receiving(reporter))
    quendo.launcher = ["sh", "-c", 'exec "$@" <&-', "sh"]
    quendo.start(tmp_path / "a.txt")
    wait_for_asked(reporter, ["a.txt"])
    assert quendo.start_another(tmp_path / "a.txt", "--new-note") == 0
    wait_for_asked(reporter, ["a.txt"], ["a.txt"], "new note")


def test_a_terminal_is_read_until_its_end(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.quendoOpenNativeFiles = (files) => { report('text', files[0].content); return 1; };
        </script>""")).start()
    quendo.wait_for_page()
    master, terminal = os.openpty()
    try:
        other = quendo.begin_another("-", stdin=terminal)
        os.write(master, b"typed on\n")
        stays(lambda: other.poll() is None and not reporter.reports("text"), 0.5, "the start to read on")
        os.write(master, b"a terminal\n\x04")
        assert other.wait(20) == 0
        assert reporter.wait_for("text") == "typed on\na terminal\n"
    finally:
        os.close(master)
        os.close(terminal)


def test_interrupting_a_start_that_reads_a_terminal_ends_it(make_quendo):
    quendo = make_quendo()
    read, write = os.pipe()
    try:
        quendo.start("-", stdin=read, wait=False)
        wait_until(lambda: holds_texts(quendo), 10, "the start to read")
        os.kill(quendo.pid, signal.SIGINT)
        assert quendo.wait_for_end() == -signal.SIGINT
        assert not quendo.windows()
    finally:
        os.close(read)
        os.close(write)


# New notes, and all of it in one go.

@pytest.mark.parametrize("first", [True, False], ids=["first start", "second start"])
def test_a_new_note_is_ready_to_be_written(real, first):
    if first:
        real.start("--new-note").wait_for_page()
    else:
        real.start().wait_for_page()
        assert real.start_another("--new-note") == 0
        real.focus()
    real.type("Written at once")
    real.state.wait_for_text("Written at once")
    assert active(real)["text"] == "Written at once" and active(real).get("name") is None


@pytest.mark.parametrize("first", [True, False], ids=["first start", "second start"])
def test_everything_comes_in_the_order_given_and_the_new_note_last(make_quendo, reporter, tmp_path, first):
    for name in ("a.txt", "b.txt", "-dash.txt"):
        (tmp_path / name).write_text(name)
    quendo = make_quendo(page=receiving(reporter))
    arguments = ["--new-note", tmp_path / "a.txt", "-", "--rendering=auto", tmp_path / "b.txt", "-", "--"]
    if first:
        quendo.start(*arguments, stdin=b"piped")
    else:
        quendo.start().wait_for_page()
        assert quendo.start_another(*arguments, stdin=b"piped") == 0
    everything = ["a.txt", "Entrada padrão", "b.txt"], "new note"
    wait_for_asked(reporter, *everything)
    dashed = subprocess.run([quendo.installation.program, *quendo.arguments, "--", "-dash.txt"], cwd=tmp_path,
                            env=quendo.environment, timeout=20)
    assert dashed.returncode == 0
    wait_for_asked(reporter, *everything, ["-dash.txt"])


def test_starts_while_the_page_loads_are_all_kept_once(make_quendo, reporter, slow, tmp_path):
    (tmp_path / "a.txt").write_text("a")
    quendo = make_quendo(page=receiving(reporter, content=f"<img src='{slow.url}/picture.png'>"))
    quendo.start("--new-note", "-", stdin=b"one")
    assert slow.asked.wait(10)
    others = [quendo.begin_another("--new-note"), quendo.begin_another("-", stdin=b"two")]
    assert quendo.start_another(tmp_path / "a.txt") == 0
    wait_until(lambda: holds_texts(quendo, 2), 10, "the text to be handed over")
    stays(lambda: all(one.poll() is None for one in others) and not asked(reporter), 0.5, "the starts to wait")
    slow.answer()
    assert [one.wait(30) for one in others] == [0, 0]
    wait_until(lambda: len(asked(reporter)) == 3, 10, "the files and the notes")
    files, *rest = asked(reporter)
    assert sorted(files) == ["Entrada padrão", "Entrada padrão", "a.txt"] and rest == ["new note", "new note"]


def test_a_second_start_tells_that_it_brought_nothing(make_quendo, reporter, tmp_path):
    quendo = make_quendo(page=receiving(reporter)).start()
    quendo.wait_for_page()
    assert quendo.start_another(tmp_path / "gone.txt") == 2
    assert quendo.output().endswith("quendo: none of the files was opened\n")
    # A file can be given again; what was piped cannot.
    (tmp_path / "a.txt").write_text("a")
    assert quendo.start_another(tmp_path / "a.txt", "-", stdin=b"\x00\x01") == 2
    assert quendo.output().endswith("quendo: the text of standard input was not opened\n")
    assert quendo.start_another(tmp_path / "gone.txt", "-", stdin=b"text") == 0


def test_a_page_that_opens_nothing_has_refused_what_was_piped(make_quendo, reporter):
    quendo = make_quendo(page=receiving(reporter, "return 0;")).start()
    quendo.wait_for_page()
    assert quendo.start_another("-", stdin=b"text") == 2
    assert quendo.output().endswith("quendo: the text of standard input was not opened\n")


def test_a_start_waits_until_the_page_has_what_was_piped(make_quendo, reporter):
    quendo = make_quendo(page=receiving(reporter, "return new Promise((done) => window.finish = done);")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    other = quendo.begin_another("-", stdin=b"text")
    wait_for_asked(reporter, ["Entrada padrão"])
    stays(lambda: other.poll() is None, 0.5, "the second start")
    reporter.run("finish(1);")
    assert other.wait(10) == 0


def test_a_start_whose_program_dies_says_that_the_text_is_gone(make_quendo, reporter):
    quendo = make_quendo(page=receiving(reporter, "return new Promise(() => {});")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    other = quendo.begin_another("-", stdin=b"text")
    wait_for_asked(reporter, ["Entrada padrão"])
    quendo.kill()
    assert other.wait(10) == 1
    assert quendo.output().endswith("quendo: the text of standard input was not opened\n")


# While the first one quits.

@pytest.fixture
def quitting(make_quendo, reporter, slow):
    """A function that starts a program and returns it during a quit, which `slow.answer()` ends with the page's
    reply."""

    def start(reply):
        page = receiving(reporter).replace("() => ({ serialized: '{}', revision: 1 })", f"""() => {{
            const request = new XMLHttpRequest();
            request.open('GET', '{slow.url}', false);
            try {{ request.send(); }} catch {{}}
            return {reply};
          }}""")
        quendo = make_quendo(page=page).start()
        reporter.wait_for_page()
        quendo.wait_for_page()
        os.kill(quendo.pid, signal.SIGTERM)
        assert slow.asked.wait(10)
        return quendo

    return start


def test_what_comes_during_a_quit_is_opened_by_a_new_start(quitting, reporter, slow, tmp_path):
    (tmp_path / "a.txt").write_text("a")
    quendo = quitting("{ serialized: '{}', revision: 1 }")
    other = quendo.begin_another("-", tmp_path / "a.txt", "--new-note", stdin=b"text")
    third = quendo.begin_another(tmp_path / "a.txt", "-", stdin=b"more text")
    wait_until(lambda: holds_texts(quendo, 2), 10, "the starts to be handed over")
    slow.answer()
    assert quendo.wait_for_end() == 0
    reporter.wait_for_page(2)
    # Either of them becomes the program, and gets what the other one was started for.
    wait_until(lambda: sum(len(one) for one in asked(reporter) if one != "new note") == 4, 20, "the files")
    wait_until(lambda: asked(reporter).count("new note") == 1, 10, "the note")
    assert sorted(name for one in asked(reporter) if one != "new note" for name in one) == [
        "Entrada padrão", "Entrada padrão", "a.txt", "a.txt"]
    wait_until(lambda: sorted(one.poll() is None for one in (other, third)) == [False, True], 10, "one program")
    assert {one.poll() for one in (other, third)} == {None, 0}


def test_what_comes_during_a_quit_that_is_cancelled_is_opened_here(quitting, reporter, slow):
    quendo = quitting("null")
    other = quendo.begin_another("-", "--new-note", stdin=b"text")
    wait_until(lambda: holds_texts(quendo), 10, "the start to be handed over")
    assert other.poll() is None
    slow.answer()
    wait_for_asked(reporter, ["Entrada padrão"], "new note")
    assert other.wait(10) == 0 and quendo.running and reporter.loads == 1


def test_a_quit_while_the_page_loads_waits_for_what_was_piped(real):
    real.start("-", stdin=b"Piped just before the end", wait=False)
    real.wait_for_window()
    assert real.terminate() == 0
    assert real.state.holds("Piped just before the end")


# What asks for no start.

@pytest.mark.parametrize("arguments, status", [(["--help"], 0), (["--version"], 0), (["--bogus"], 1)])
def test_texts_need_no_display_and_no_bus_and_write_nothing(make_quendo, arguments, status):
    quendo = make_quendo()
    environment = {name: value for name, value in quendo.environment.items()
                   if name not in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR")}
    run = subprocess.run([quendo.installation.program, *arguments], env=environment, capture_output=True, timeout=20)
    assert run.returncode == status
    assert bool(run.stdout) == (status == 0) and bool(run.stderr) == (status != 0)
    assert not quendo.state.directory.exists()
