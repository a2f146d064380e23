"""Export and Save As to the last step: the panel is filled in and the file written."""

import contextlib
import os
import stat
import subprocess
from pathlib import Path

import pytest

from harness import desktop
from harness.waiting import stays, wait_until

REMOTE_PLACE = Path(__file__).parent / "tools" / "remote_place.c"
WRITE_FAULT = Path(__file__).parent / "tools" / "write_fault.c"
EXPORTED = "quendoNativeExportDidFinish"
SAVED = "quendoNativeSaveAsDidFinish"


class Panels:
    """A program whose test page asks for panels and reports the answers."""

    def __init__(self, quendo, reporter):
        self.quendo = quendo
        self._reporter = reporter

    def export(self, filename, content="text", format="markdown", title="Export Markdown Note"):
        self._reporter.post("webkit.messageHandlers.quendoExport.postMessage("
                            f"{{ filename: {filename!r}, content: {content!r}, format: {format!r} }});")
        return self._open(title)

    def save_as(self, filename, content="text", note="n1"):
        self._reporter.post("webkit.messageHandlers.quendoSaveAs.postMessage("
                            f"{{ noteId: {note!r}, filename: {filename!r}, content: {content!r} }});")
        return self._open("Save Note As")

    def _open(self, title):
        window = self.quendo.wait_for_window(title)
        wait_until(lambda: desktop.active_window() == window.id, 10, "the panel to have the keyboard")
        return wait_until(lambda: next((one for one in self.quendo.accessible().children()
                                        if one.find_all("text", "Name:")), None), 10, "the panel's field")

    def click(self, panel, label):
        """Presses a button by its label."""
        next(one for one in panel.find_all("push button") if one.find_all("label", label)).act("click")

    def answer(self, count=1):
        return self._reporter.wait_for("answered", count)

    def answers(self):
        return self._reporter.reports("answered")

    def rename(self, panel, name):
        """Replaces the name in the panel's field, which is selected when the panel opens."""
        desktop.press("ctrl+a")
        desktop.type_text(name, delay=15)
        wait_until(lambda: name_in(panel) == name, 10, f"{name!r} in the field")

    def wait_until_gone(self):
        wait_until(lambda: len(self.quendo.windows()) == 1, 10, "the panel to be gone")

    def choose_extension(self, panel, steps):
        """Opens the pop-up by mouse and chooses by keyboard."""
        x, y, width, height = panel.find("combo box", "Extension:").extents()
        window = self.quendo.wait_for_window("Save Note As")
        desktop.click_in(window, x + width / 2, y + height / 2)
        desktop.wait_until_still(window, 0.3)
        desktop.press(*["Down"] * steps, "Return")


def name_in(panel):
    return panel.find("text", "Name:").text


def answering_page(reporter):
    return reporter.page(head=f"""<script>
        for (const name of ['{EXPORTED}', '{SAVED}'])
          window[name] = (...values) => report('answered', [name, ...values]);
        </script>""")


@pytest.fixture
def panels(make_quendo, reporter):
    quendo = make_quendo(page=answering_page(reporter)).start(environment={"LC_ALL": "en_US.UTF-8"})
    reporter.wait_for_page()
    quendo.wait_for_page()
    return Panels(quendo, reporter)


def test_an_export_is_written_under_its_suggested_name(panels):
    panel = panels.export("My note.md", "# Olá \u2028 \U0001f600\n")
    wait_until(lambda: name_in(panel) == "My note.md", 10, "the suggested name")
    desktop.press("Return")
    assert panels.answer() == [EXPORTED, True, "Markdown exported"]
    assert (panels.quendo.home / "My note.md").read_bytes() == "# Olá \u2028 \U0001f600\n".encode()
    panels.wait_until_gone()


def test_a_new_file_has_the_users_default_mode_and_no_other_file_stays(panels):
    before = set(os.listdir(panels.quendo.home))
    panels.export("note.md")
    desktop.press("Return")
    panels.answer()
    file = panels.quendo.home / "note.md"
    mask = os.umask(0)
    os.umask(mask)
    assert stat.S_IMODE(file.stat().st_mode) == 0o666 & ~mask
    assert set(os.listdir(panels.quendo.home)) - before == {"note.md"}


def test_another_name_is_typed_and_confirmed_with_the_button(panels):
    panel = panels.export("note.txt", "plain text", "plain", "Export Text File")
    panels.rename(panel, "other")
    panels.click(panel, "Export")
    assert panels.answer() == [EXPORTED, True, "File exported"]
    assert (panels.quendo.home / "other.txt").read_text() == "plain text"


@pytest.mark.parametrize("way", ["Escape", "Cancel"])
def test_a_cancelled_panel_writes_nothing_and_says_so(panels, way):
    panel = panels.export("note.md")
    if way == "Escape":
        desktop.press("Escape")
    else:
        panels.click(panel, "Cancel")
    assert panels.answer() == [EXPORTED, False, "Export canceled"]
    assert not (panels.quendo.home / "note.md").exists()
    panels.wait_until_gone()


def confirm_replacing(panels, title, replace, about=""):
    """Answers the panel's question whether to replace the existing file whose name contains `about`."""
    question = wait_until(lambda: next((one for one in panels.quendo.windows() if one.title not in (title, "Quendo")),
                                       None), 10, "the question")
    wait_until(lambda: desktop.active_window() == question.id, 10, "the question to have the keyboard")
    name = "Replace" if replace else "Cancel"
    asked = wait_until(lambda: next((one for one in panels.quendo.accessible().children()
                                     if one.find_all("label", "Replace")), None), 10, "the question's buttons")
    assert any(about in one.name for one in asked.find_all("label")), asked.tree()
    panels.click(asked, name)
    wait_until(lambda: question not in panels.quendo.windows(), 10, "the question to be gone")


def test_a_file_is_replaced_only_after_the_question_and_keeps_its_mode(panels):
    file = panels.quendo.home / "note.md"
    file.write_text("old")
    file.chmod(0o604)
    panels.export("note.md", "new")
    desktop.press("Return")
    confirm_replacing(panels, "Export Markdown Note", replace=False)
    assert file.read_text() == "old" and panels.answers() == []
    desktop.press("Return")
    confirm_replacing(panels, "Export Markdown Note", replace=True)
    assert panels.answer() == [EXPORTED, True, "Markdown exported"]
    assert file.read_text() == "new" and stat.S_IMODE(file.stat().st_mode) == 0o604


def test_an_extension_that_is_added_does_not_replace_a_file_unasked(panels):
    file = panels.quendo.home / "list.txt"
    file.write_text("old")
    other = panels.quendo.home / "list"
    other.write_text("neither replaced nor asked about")
    panel = panels.save_as("x.txt", "new")
    panels.rename(panel, "list")
    desktop.press("Return")
    confirm_replacing(panels, "Save Note As", replace=True, about="“list.txt”")
    assert panels.answer() == [SAVED, True, "n1", "list.txt", "Salvo como list.txt"]
    assert file.read_text() == "new" and other.read_text().startswith("neither")


@pytest.mark.parametrize("request_panel, answer", [
    (Panels.save_as, lambda name: [SAVED, True, "n1", name, f"Salvo como {name}"]),
    (Panels.export, lambda name: [EXPORTED, True, "Markdown exported"]),
], ids=["save as", "export"])
def test_a_folder_that_is_typed_with_the_name_is_kept_when_the_extension_is_added(panels, request_panel, answer):
    home = panels.quendo.home
    for folder in ("sub", "tilde", "absolute"):
        (home / folder).mkdir()
    typed = ["sub/one", "~/tilde/two", f"{home}/absolute/three"]
    for number, name in enumerate(typed, 1):
        panel = request_panel(panels, "note.md", name)
        panels.rename(panel, name)
        desktop.press("Return")
        assert panels.answer(number) == answer(f"{Path(name).name}.md")
        panels.wait_until_gone()
    # The next panel opens in the folder where the last one was confirmed.
    request_panel(panels, "four.md", "four")
    desktop.press("Return")
    assert panels.answer(4) == answer("four.md")
    written = {str(file.relative_to(home)): file.read_text() for folder in ("sub", "tilde", "absolute", ".")
               for file in (home / folder).glob("*.md")}
    assert written == {"sub/one.md": typed[0], "tilde/two.md": typed[1], "absolute/three.md": typed[2],
                       "absolute/four.md": "four"}


def test_a_folder_that_is_typed_is_opened(panels):
    home = panels.quendo.home
    (home / "sub").mkdir()
    panel = panels.save_as("note.md", "text")
    panels.rename(panel, "sub")
    desktop.press("Return")
    wait_until(lambda: name_in(panel) == "", 10, "the field to be empty in the other folder")
    desktop.type_text("inside", delay=15)
    wait_until(lambda: name_in(panel) == "inside", 10, "the name in the field")
    desktop.press("Return")
    assert panels.answer() == [SAVED, True, "n1", "inside.md", "Salvo como inside.md"]
    assert (home / "sub" / "inside.md").read_text() == "text" and not (home / "sub.md").exists()


@pytest.mark.parametrize("filename, written", [
    ("~draft.md", "~draft.md"), ("~root", "~root.md"), ("~/../up.md", "~-..-up.md"), ("~", "~.md"), ("..", "...md"),
    ("...list", "...list"),
])
def test_a_suggested_name_is_the_name_of_a_file_in_the_folder_on_show(panels, filename, written):
    panels.export(filename, "text")
    desktop.press("Return")
    assert panels.answer() == [EXPORTED, True, "Markdown exported"]
    assert (panels.quendo.home / written).read_text() == "text"


def test_a_suggested_name_with_a_tilde_is_asked_about_and_takes_another_type(panels):
    file = panels.quendo.home / "~draft.json"
    file.write_text("old")
    panel = panels.save_as("~draft.md", "new")
    panels.choose_extension(panel, 3)
    wait_until(lambda: name_in(panel) == "~draft.json", 10, "the name with the other extension")
    panels.click(panel, "Save")
    confirm_replacing(panels, "Save Note As", replace=True)
    assert panels.answer() == [SAVED, True, "n1", "~draft.json", "Salvo como ~draft.json"]
    assert file.read_text() == "new"


def test_a_type_that_is_chosen_changes_the_name_and_not_the_folder_that_was_typed_before_it(panels):
    folder = panels.quendo.home / "v1.2"
    folder.mkdir()
    panel = panels.save_as("draft.md", "{}")
    panels.rename(panel, str(folder / "notes"))
    panels.choose_extension(panel, 3)
    wait_until(lambda: name_in(panel) == str(folder / "notes.json"), 10, "the path with the other extension")
    panels.click(panel, "Save")
    assert panels.answer() == [SAVED, True, "n1", "notes.json", "Salvo como notes.json"]
    assert (folder / "notes.json").read_text() == "{}"


def test_a_place_that_is_not_on_this_machine_is_a_failure_and_no_cancel(make_quendo, reporter, tmp_path):
    library = tmp_path / "remote_place.so"
    subprocess.run(["g++", "-xc", "-shared", "-fPIC", "-o", library, REMOTE_PLACE, "-ldl"], check=True)
    quendo = make_quendo(page=answering_page(reporter))
    folder = quendo.home / "server"
    folder.mkdir()
    quendo.start(environment={"LC_ALL": "en_US.UTF-8", "LD_PRELOAD": str(library),
                              "QUENDO_TEST_REMOTE_DIRECTORY": str(folder)})
    reporter.wait_for_page()
    quendo.wait_for_page()
    panels = Panels(quendo, reporter)
    panels.rename(panels.save_as("note.md"), str(folder / "note.md"))
    desktop.press("Return")
    assert panels.answer() == [SAVED, False, "n1", "", "Não foi possível salvar o arquivo"]
    panels.wait_until_gone()
    panels.rename(panels.export("note.md"), str(folder / "note.md"))
    desktop.press("Return")
    assert panels.answer(2) == [EXPORTED, False, "Could not export the file"]
    assert not os.listdir(folder)


def test_the_first_panel_shows_the_users_documents(make_quendo, reporter):
    quendo = make_quendo(page=answering_page(reporter))
    (quendo.home / "Papers").mkdir()
    quendo.configuration.mkdir(exist_ok=True)
    (quendo.configuration / "user-dirs.dirs").write_text('XDG_DOCUMENTS_DIR="$HOME/Papers"\n')
    quendo.start(environment={"LC_ALL": "en_US.UTF-8"})
    reporter.wait_for_page()
    quendo.wait_for_page()
    panels = Panels(quendo, reporter)
    panels.export("note.md", "text")
    desktop.press("Return")
    panels.answer()
    assert (quendo.home / "Papers" / "note.md").read_text() == "text"


def test_a_link_is_followed_to_its_target(panels):
    target = panels.quendo.home / "elsewhere" / "target.md"
    target.parent.mkdir()
    target.write_text("old")
    link = panels.quendo.home / "link.md"
    link.symlink_to(target)
    panels.export("link.md", "new")
    desktop.press("Return")
    confirm_replacing(panels, "Export Markdown Note", replace=True)
    panels.answer()
    assert link.is_symlink() and target.read_text() == "new"


def test_save_as_offers_its_types_and_changes_the_name_at_once(panels):
    panel = panels.save_as("draft.md", "{}")
    panel.find("label", "Extension:")
    wait_until(lambda: name_in(panel) == "draft.md", 10, "the suggested name")
    panels.choose_extension(panel, 3)
    wait_until(lambda: name_in(panel) == "draft.json", 10, "the name with the other extension")
    panels.click(panel, "Save")
    assert panels.answer() == [SAVED, True, "n1", "draft.json", "Salvo como draft.json"]
    assert (panels.quendo.home / "draft.json").read_text() == "{}"


def test_save_as_takes_a_typed_name_of_any_kind(panels):
    panel = panels.save_as("note", "all:")
    panels.rename(panel, "Makefile")
    desktop.press("Return")
    assert panels.answer() == [SAVED, True, "n1", "Makefile", "Salvo como Makefile"]
    assert (panels.quendo.home / "Makefile").read_text() == "all:"


def test_a_cancelled_save_as_answers_in_portuguese(panels):
    panels.save_as("note.md")
    desktop.press("Escape")
    assert panels.answer() == [SAVED, False, "n1", "", "Salvamento cancelado"]


def test_a_second_request_waits_for_the_first_and_both_are_answered_once(panels):
    panels.save_as("one.md", "1", "a")
    panels._reporter.post("webkit.messageHandlers.quendoSaveAs.postMessage("
                          "{ noteId: 'b', filename: 'two.md', content: '2' });")
    stays(lambda: len(panels.quendo.windows()) == 2, 0.5, "one panel at a time")
    desktop.press("Return")
    assert panels.answer() == [SAVED, True, "a", "one.md", "Salvo como one.md"]
    panels._open("Save Note As")
    desktop.press("Escape")
    assert panels.answer(2) == [SAVED, False, "b", "", "Salvamento cancelado"]
    panels.wait_until_gone()
    assert len(panels.answers()) == 2


@contextlib.contextmanager
def small_disk(quendo):
    """A directory of 64 KB with an old note in it. The program is stopped before it is removed."""
    folder = quendo.home / "small"
    folder.mkdir()
    mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "quendo-test", folder], capture_output=True)
    if mounted.returncode != 0:
        pytest.skip("this machine does not let a small file system be mounted")
    try:
        (folder / "note.md").write_text("old")
        yield folder
    finally:
        quendo.stop()
        subprocess.run(["umount", folder], check=True)


@pytest.mark.parametrize("read_only", [False, True], ids=["full", "read only"])
def test_a_disk_that_takes_nothing_leaves_the_old_file_and_says_so(panels, read_only):
    with small_disk(panels.quendo) as folder:
        if read_only:
            subprocess.run(["mount", "-o", "remount,ro", folder], check=True)
        panel = panels.export("note.md", "x" * 100_000)
        panels.rename(panel, str(folder / "note.md"))
        desktop.press("Return")
        confirm_replacing(panels, "Export Markdown Note", replace=True)
        assert panels.answer() == [EXPORTED, False, "Could not export the file"]
        assert os.listdir(folder) == ["note.md"] and (folder / "note.md").read_text() == "old"


def test_a_name_that_the_file_system_refuses_can_be_changed(panels):
    # 180 characters, which the name field accepts, but 720 bytes, which no file system does.
    panel = panels.save_as("\U0001f600" * 180)
    desktop.press("Return")
    wait_until(lambda: len(panels.quendo.windows()) == 3, 10, "a word about it")
    desktop.press("Return")
    wait_until(lambda: len(panels.quendo.windows()) == 2, 10, "the panel alone")
    assert panels.answers() == []
    panels.rename(panel, "short.txt")
    desktop.press("Return")
    assert panels.answer() == [SAVED, True, "n1", "short.txt", "Salvo como short.txt"]


def test_a_panel_that_is_open_while_the_page_reloads_is_answered_once_to_the_new_page(panels):
    panels.export("note.md")
    panels._reporter.post("location.reload();")
    panels._reporter.wait_for_page(2)
    desktop.press("Return")
    assert panels.answer() == [EXPORTED, True, "Markdown exported"]
    stays(lambda: len(panels.answers()) == 1, 0.5, "one answer")


def test_whichever_call_of_the_write_fails_the_old_file_is_whole_and_the_page_has_one_answer(make_quendo, reporter,
                                                                                            tmp_path):
    fault, control = tmp_path / "write_fault.so", tmp_path / "control"
    subprocess.run(["g++", "-xc", "-shared", "-fPIC", "-o", fault, WRITE_FAULT, "-ldl"], check=True)
    control.write_text("0 0")
    quendo = make_quendo(page=answering_page(reporter))
    file = quendo.home / "small" / "note.md"
    file.parent.mkdir()
    quendo.start(environment={"LC_ALL": "en_US.UTF-8", "LD_PRELOAD": str(fault),
                              "QUENDO_TEST_FAULT_DIRECTORY": str(file.parent),
                              "QUENDO_TEST_FAULT_CONTROL": str(control)})
    reporter.wait_for_page()
    quendo.wait_for_page()
    panels = Panels(quendo, reporter)
    calls = []
    for number in range(1, 12):
        file.write_text("old")
        panel = panels.export("note.md", f"new {number}")
        if number == 1:
            panels.rename(panel, str(file))
        control.write_text(f"{number} {number}")
        desktop.press("Return")
        confirm_replacing(panels, "Export Markdown Note", replace=True)
        answer = panels.answer(number)
        control.write_text("0 0")
        panels.wait_until_gone()
        calls = [line.split()[1] for line in (tmp_path / "control.log").read_text().splitlines()
                 if line.startswith(f"{number} ")]
        assert file.read_text() == (f"new {number}" if answer[1] else "old"), calls
        assert os.listdir(file.parent) == ["note.md"], calls
        if len(calls) < number:
            break
    assert calls == ["open", "write", "fdatasync", "fchmod", "rename", "fsync"], "a whole write ends the rounds"
    assert [one[1] for one in panels.answers()] == [False] * 5 + [True, True]
