"""Files opened from the desktop become tabs."""

import os
import subprocess
import sys
from pathlib import Path

import pytest

from harness import desktop
from harness.waiting import wait_until

DRAG_SOURCE = Path(__file__).parent / "tools" / "drag_source.py"
DROP_TARGET = Path(__file__).parent / "tools" / "drop_target.py"


def receiving(reporter, body="return files.length;"):
    """A test page that reports the files it gets."""
    return reporter.page(head=f"""<script>
        window.quendoOpenNativeFiles = (files) => {{ report('delivered', files); {body} }};
        </script>""")


def names(delivery):
    return [file["name"] for file in delivery]


@pytest.mark.every_display
def test_files_of_the_command_line_become_tabs_of_the_real_page(make_quendo, tmp_path):
    (tmp_path / "first.md").write_text("# First\n", encoding="utf-8")
    (tmp_path / "segundo.txt").write_bytes("Segundo, em Latin-1: ação".encode("latin-1"))
    quendo = make_quendo().start(tmp_path / "first.md", tmp_path / "segundo.txt")
    quendo.state.wait_for_text("Segundo, em Latin-1: ação")
    notes = {note["name"]: note for note in quendo.state.document()["notes"]}
    assert notes["first.md"]["text"] == "# First\n" and notes["first.md"]["format"] == "markdown"
    assert notes["segundo.txt"]["format"] == "plain"
    opened = quendo.state.document()["tabs"]["open"]
    assert [notes["first.md"]["id"], notes["segundo.txt"]["id"]] == opened[-2:]


def test_each_entry_carries_exactly_its_four_fields(make_quendo, reporter, tmp_path):
    (tmp_path / "NOTES.MD").write_bytes(b"\xef\xbb\xbfcaf\xc3\xa9 \xe2\x80\xa8\"\\</script>\x00")
    (tmp_path / "ok.md").write_bytes(b"\xef\xbb\xbfcaf\xc3\xa9 \xe2\x80\xa8\"\\</script>")
    quendo = make_quendo(page=receiving(reporter)).start(tmp_path / "ok.md")
    assert reporter.wait_for("delivered") == [
        {"name": "ok.md", "content": "café \u2028\"\\</script>", "format": "markdown", "byteCount": 23}]
    quendo.start_another(tmp_path / "NOTES.MD")
    quendo.wait_for_alert("NOTES.MD: não parece ser um arquivo de texto")


@pytest.mark.every_display
def test_a_second_start_hands_its_files_over_and_tells_whether_any_was_taken(make_quendo, reporter, tmp_path):
    quendo = make_quendo(page=receiving(reporter)).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    (tmp_path / "good.txt").write_text("good")
    assert quendo.start_another(tmp_path / "good.txt", tmp_path / "missing.txt") == 0
    assert names(reporter.wait_for("delivered")) == ["good.txt"]
    quendo.dismiss_alert("missing.txt: o arquivo não pôde ser lido", "OK")
    assert quendo.start_another(tmp_path / "missing.txt", tmp_path) == 2
    quendo.wait_for_alert(f"missing.txt: o arquivo não pôde ser lido\n"
                          f"{tmp_path.name}: selecione um arquivo, não uma pasta")
    assert len(quendo.windows()) == 2, "the window and its alert"


def test_relative_paths_are_those_of_the_start_that_gave_them(make_quendo, reporter, tmp_path):
    quendo = make_quendo(page=receiving(reporter)).start()
    reporter.wait_for_page()
    elsewhere = tmp_path / "else where"
    elsewhere.mkdir()
    (elsewhere / "rel:ative.txt").write_text("relative")
    program = [str(quendo.installation.program), *quendo.arguments, "../else where/./rel:ative.txt"]
    assert subprocess.run(program, cwd=elsewhere, env=quendo.environment, timeout=20).returncode == 0
    assert names(reporter.wait_for("delivered")) == ["rel:ative.txt"]


def test_addresses_are_decoded_and_those_of_other_machines_refused(make_quendo, reporter, tmp_path):
    quendo = make_quendo(page=receiving(reporter)).start()
    reporter.wait_for_page()
    (tmp_path / "a b%.txt").write_text("encoded")
    address = (tmp_path / "a b%.txt").as_uri()
    assert quendo.start_another(address, address, "https://example.com/far.txt") == 0
    assert names(reporter.wait_for("delivered")) == ["a b%.txt"]
    quendo.wait_for_alert("far.txt: selecione um arquivo, não uma pasta")


def test_a_name_that_is_not_utf8_is_opened_and_shown_repaired(make_quendo, reporter, tmp_path):
    name = os.fsencode(tmp_path) + b"/caf\xe9.md"
    with open(name, "wb") as file:
        file.write(b"coffee")
    make_quendo(page=receiving(reporter)).start(os.fsdecode(name))
    assert names(reporter.wait_for("delivered")) == ["caf\ufffd.md"]


def test_pipes_devices_and_directories_are_refused_without_waiting_for_them(make_quendo, reporter, tmp_path):
    quendo = make_quendo(page=receiving(reporter)).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    os.mkfifo(tmp_path / "pipe")
    assert quendo.start_another(tmp_path / "pipe", "/dev/zero", tmp_path) == 2
    lines = [f"{name}: selecione um arquivo, não uma pasta" for name in ("pipe", "zero", tmp_path.name)]
    quendo.wait_for_alert("\n".join(lines))
    assert reporter.reports("delivered") == []


def test_a_link_to_a_file_is_followed(make_quendo, reporter, tmp_path):
    (tmp_path / "real.txt").write_text("behind the link")
    (tmp_path / "link.md").symlink_to(tmp_path / "real.txt")
    make_quendo(page=receiving(reporter)).start(tmp_path / "link.md")
    assert reporter.wait_for("delivered")[0]["content"] == "behind the link"


def test_files_that_come_while_a_delivery_runs_follow_it(make_quendo, reporter, tmp_path):
    for name in ("1.txt", "2.txt", "3.txt"):
        (tmp_path / name).write_text(name)
    quendo = make_quendo(page=receiving(reporter, "return new Promise((done) => window.finish = done);")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    for name in ("1.txt", "2.txt", "3.txt"):
        assert quendo.start_another(tmp_path / name) == 0
    assert len(reporter.reports("delivered")) == 1
    reporter.run("finish(1);")
    assert names(reporter.wait_for("delivered", 2)) == ["2.txt", "3.txt"]


def test_a_page_that_throws_gets_the_files_again_with_the_next_ones(make_quendo, reporter, tmp_path):
    for name in ("a.txt", "b.txt"):
        (tmp_path / name).write_text(name)
    quendo = make_quendo(page=receiving(
        reporter, "if (!window.tried) { window.tried = true; throw new Error('no'); } return 1;")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    assert quendo.start_another(tmp_path / "a.txt") == 0
    quendo.dismiss_alert("A interface não conseguiu criar as abas. Os arquivos continuam aguardando no Quendo.")
    assert quendo.start_another(tmp_path / "b.txt") == 0
    assert names(reporter.wait_for("delivered", 2)) == ["a.txt", "b.txt"]


def test_a_page_that_reloads_itself_during_a_delivery_gets_the_files_again(make_quendo, reporter, tmp_path):
    (tmp_path / "a.txt").write_text("a")
    # Reports of the first page may be lost with it, so the second one reports for both.
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.quendoOpenNativeFiles = (files) => {
          const name = files[0].name;
          if (sessionStorage.before) { report('delivered', [sessionStorage.before, name]); return 1; }
          sessionStorage.before = name;
          location.reload();
          return new Promise(() => {});
        };
        </script>"""))
    quendo.start(tmp_path / "a.txt")
    assert reporter.wait_for("delivered", timeout=20) == ["a.txt", "a.txt"]


@pytest.mark.parametrize("size, taken", [(20_000_000, True), (20_000_001, False)])
def test_the_limit_of_a_file_is_exact(make_quendo, reporter, tmp_path, size, taken):
    (tmp_path / "big.txt").write_bytes(b"x" * size)
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.quendoOpenNativeFiles = (files) => { report('delivered', files[0].content.length); return 1; };
        </script>""")).start(tmp_path / "big.txt")
    if taken:
        assert reporter.wait_for("delivered", timeout=30) == size
    else:
        quendo.wait_for_alert("big.txt: excede o limite de 20 MB")
    wait_until(lambda: quendo.running, what="the program to go on")


@pytest.fixture
def drag(make_quendo):
    """A function that drags files, given as URLs, from another window onto the program's."""
    started = []

    def run(quendo, *addresses):
        source = subprocess.Popen([sys.executable, DRAG_SOURCE, *addresses], stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, env=os.environ | {"GTK_A11Y": "none"})
        started.append(source)
        window = wait_until(lambda: next((one for one in desktop.windows() if one.title == "Files"), None), 15,
                            "the window with the files")
        desktop.run("wmctrl", "-i", "-r", hex(window.id), "-e", "0,0,0,-1,-1")
        wait_until(lambda: desktop.geometry(window)[0] < 50, 10, "the window with the files in the corner")
        desktop.drag(window, quendo.window)

    yield run
    for process in started:
        process.terminate()
        process.wait(10)


def test_files_dropped_onto_the_page_become_tabs_in_their_order(make_quendo, drag, tmp_path):
    (tmp_path / "one dropped.md").write_text("# Dropped one\n")
    (tmp_path / "two.txt").write_text("Dropped two\n")
    quendo = make_quendo().start()
    quendo.wait_for_page()
    drag(quendo, (tmp_path / "one dropped.md").as_uri(), (tmp_path / "two.txt").as_uri())
    quendo.state.wait_for_text("Dropped two")
    document = quendo.state.document()
    notes = {note["id"]: note for note in document["notes"]}
    assert [notes[one]["name"] for one in document["tabs"]["open"][-2:]] == ["one dropped.md", "two.txt"]


def test_what_cannot_be_opened_of_what_is_dropped_is_named(make_quendo, reporter, drag, tmp_path):
    (tmp_path / "good.txt").write_text("good")
    quendo = make_quendo(page=receiving(reporter)).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    drag(quendo, tmp_path.as_uri(), (tmp_path / "good.txt").as_uri(), "https://example.com/far.txt")
    assert names(reporter.wait_for("delivered")) == ["good.txt"]
    quendo.wait_for_alert(f"{tmp_path.name}: selecione um arquivo, não uma pasta\n"
                          "far.txt: selecione um arquivo, não uma pasta")


def test_a_selection_is_dragged_to_another_program_as_its_text(make_quendo, reporter, tmp_path):
    page = reporter.page("<style>body { display: grid; place-items: center; height: 95vh; font-size: 120px }</style>"
                         "<p id=text>Ação dragged</p>")
    quendo = make_quendo(page=page).start()
    reporter.wait_for_page()
    reporter.run("getSelection().selectAllChildren(document.getElementById('text'));")
    dropped = tmp_path / "dropped.txt"
    other = subprocess.Popen([sys.executable, DROP_TARGET, dropped], env=os.environ | {"GTK_A11Y": "none"})
    try:
        target = wait_until(lambda: next((one for one in desktop.windows() if one.pid == other.pid), None), 10,
                            "the other window")
        # In a corner, beside the words.
        desktop.run("wmctrl", "-i", "-r", hex(target.id), "-e", "0,20,20,-1,-1")
        wait_until(lambda: desktop.geometry(target)[0] < 60, 10, "the other window in its corner")
        desktop.wait_until_still(target)
        desktop.drag(quendo.window, target)
        wait_until(dropped.exists, 10, "something to be dropped")
        assert dropped.read_text() == "Ação dragged"
    finally:
        other.terminate()
        other.wait(10)
