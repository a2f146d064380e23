"""Sharing: the popover in the corner, its services, and what happens to the file."""

import contextlib
import fcntl
import itertools
import json
import os
import stat
import time
from pathlib import Path

import pytest

from harness import desktop
from harness.reporter import Reporter
from harness.waiting import stays, wait_until

SHARED = "quendoNativeShareDidFinish"


class Sharing:
    """A program whose test page shares a note and reports the answers."""

    def __init__(self, quendo, reporter):
        self.quendo = quendo
        self._reporter = reporter
        self.temporary = quendo.home / "tmp"

    def share(self, attempt, content="# Shared\n", filename="note.md", url="", title="The title"):
        note = {"attemptId": attempt, "title": title, "filename": filename, "content": content, "url": url}
        self._reporter.run(f"webkit.messageHandlers.quendoShare.postMessage({json.dumps(note)});")

    def items(self):
        """The popover's items, in order."""
        return [one.name for one in self._menu().walk() if one.role == "menu item"]

    def choose(self, item):
        self._menu().find_item(item).act("click")

    def is_open(self):
        return self._find_menu() is not None

    def _find_menu(self):
        # The menu bar's menus are closed, so this is the only menu with items.
        return next((one for one in self.quendo.accessible().find_all("menu")
                     if any(child.role == "menu item" for child in one.walk())), None)

    def _menu(self):
        return wait_until(self._find_menu, 10, "the share popover")

    def answer(self, count=1):
        return self._reporter.wait_for("answered", count)

    def folders(self):
        return sorted(one for one in self.temporary.iterdir() if one.name.startswith("Quendo-Share-"))


def register(quendo, name, kind, script):
    """Registers a test program for a file type; returns the file it writes to."""
    result = quendo.home / f"{name}.result"
    program = quendo.external.bin / name
    program.write_text(f"#!/bin/sh\nresult='{result}'\n{script}\n")
    program.chmod(0o755)
    applications = quendo.data / "applications"
    applications.mkdir(parents=True, exist_ok=True)
    (applications / f"{name}.desktop").write_text(
        f"[Desktop Entry]\nType=Application\nName={name}\nExec={program} %f\nMimeType={kind};\n")
    quendo.configuration.mkdir(parents=True, exist_ok=True)
    (quendo.configuration / "mimeapps.list").write_text(f"[Added Associations]\n{kind}={name}.desktop;\n")
    return result


def page_that_shares(reporter):
    return reporter.page(head=f"<script>window.{SHARED} = (...values) => report('answered', values);</script>")


@pytest.fixture
def sharing(make_quendo, reporter):
    quendo = make_quendo(page=page_that_shares(reporter))
    quendo.receiver = register(quendo, "receiver", "text/markdown", 'cat "$1" > "$result.part"; basename "$1" >> '
                               '"$result.part"; mv "$result.part" "$result"')
    quendo.mail = quendo.home / "mail"
    mailer = quendo.external.bin / "xdg-email"
    mailer.write_text(f"""#!/bin/sh
for one in "$@"; do printf '%s\\n' "$one"; done > '{quendo.mail}.part'; mv '{quendo.mail}.part' '{quendo.mail}'
while test -e '{quendo.home}/mail-open'; do sleep 0.1; done
test ! -e '{quendo.home}/no-mail'
""")
    mailer.chmod(0o755)
    quendo.start(environment={"LC_ALL": "en_US.UTF-8"})
    reporter.wait_for_page()
    quendo.wait_for_page()
    return Sharing(quendo, reporter)


def test_the_popover_lists_what_this_desktop_can_do(sharing):
    sharing.share("a", url="https://quendo.example/n/1")
    items = sharing.items()
    assert items[0] == "Send by E-mail" and "Open with receiver" in items
    assert items[-3:] == ["Copy File", "Copy Text", "Copy Link"]
    assert not any("Quendo" in one for one in items)


def test_the_shared_file_is_readable_by_the_user_alone(sharing):
    sharing.share("a", "private")
    sharing.items()
    folder, = sharing.folders()
    assert stat.S_IMODE(folder.stat().st_mode) == 0o700
    assert (folder / "note.md").read_text() == "private"


def test_dismissing_the_popover_answers_false_and_deletes_the_folder(sharing):
    sharing.share("a")
    sharing.items()
    desktop.press("Escape")
    assert sharing.answer() == [False, "a"]
    assert sharing.folders() == []
    # The page has the keyboard again, and the next share works.
    sharing.share("b")
    assert sharing.items()


def test_a_program_that_is_registered_for_the_type_receives_the_file(sharing):
    sharing.share("a", "# To the program\n")
    sharing.choose("Open with receiver")
    assert sharing.answer() == [True, "a"]
    wait_until(sharing.quendo.receiver.exists, 10, "the program to have the file")
    assert sharing.quendo.receiver.read_text() == "# To the program\nnote.md\n"
    assert sharing.folders() == []


def test_a_programs_name_is_shown_as_it_is(sharing):
    register(sharing.quendo, "under_score", "text/plain", "")
    sharing.share("a", filename="note.txt")
    assert "Open with under_score" in sharing.items()


def test_a_program_that_cannot_be_started_is_answered_false(sharing):
    (sharing.quendo.external.bin / "receiver").write_text("#!/nowhere/at/all\n")
    sharing.share("a")
    sharing.choose("Open with receiver")
    assert sharing.answer() == [False, "a"]
    assert sharing.folders() == []


@pytest.mark.parametrize("taken", [True, False])
def test_mail_has_the_file_attached_and_its_report_is_the_answer(sharing, taken):
    if not taken:
        (sharing.quendo.home / "no-mail").touch()
    sharing.share("a", "By mail", url="https://quendo.example/n/1")
    sharing.choose("Send by E-mail")
    assert sharing.answer() == [taken, "a"]
    said = sharing.quendo.mail.read_text().splitlines()
    assert said[said.index("--subject") + 1] == "The title"
    assert said[said.index("--body") + 1] == "https://quendo.example/n/1"
    attached = Path(said[said.index("--attach") + 1])
    # A mail program reads the attachment when the message is sent, long after the share has ended.
    assert attached.name == "note.md" and attached.read_text() == "By mail"
    assert stat.S_IMODE(attached.parent.parent.stat().st_mode) == 0o700
    assert sharing.folders() == []


def test_text_and_link_are_copied_and_read_by_another_program(sharing):
    sharing.share("a", "Copied ção \U0001f600", url="https://quendo.example/n/1")
    sharing.choose("Copy Text")
    assert sharing.answer() == [True, "a"]
    assert desktop.clipboard() == "Copied ção \U0001f600"
    sharing.share("b", url="https://quendo.example/n/1")
    sharing.choose("Copy Link")
    assert sharing.answer(2) == [True, "b"]
    assert desktop.clipboard() == "https://quendo.example/n/1"


def test_a_copied_file_can_be_pasted_after_the_share_has_ended(sharing):
    sharing.share("a", "Pasted")
    sharing.choose("Copy File")
    assert sharing.answer() == [True, "a"]
    address = desktop.run("xclip", "-selection", "clipboard", "-out", "-target", "text/uri-list").strip()
    assert address.startswith("file:///") and address.endswith("/note.md")
    assert Path(address.removeprefix("file://")).read_text() == "Pasted"


def test_a_second_share_is_answered_false_and_leaves_the_first_alone(sharing):
    sharing.share("a")
    sharing.items()
    sharing.share("b")
    assert sharing.answer() == [False, "b"]
    assert len(sharing.folders()) == 1
    sharing.choose("Copy Text")
    assert sharing.answer(2) == [True, "a"]


def test_a_folder_that_a_crash_left_goes_with_the_next_share_and_only_such_a_folder(sharing):
    sharing.share("a")
    sharing.items()
    left, = sharing.folders()
    sharing.quendo.kill()
    other = sharing.temporary / "Quendo-Share-notes"
    other.mkdir()
    link = sharing.temporary / "Quendo-Share-AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE"
    link.symlink_to(other)
    sharing.quendo.start(environment={"LC_ALL": "en_US.UTF-8"})
    sharing._reporter.wait_for_page(2)
    sharing.quendo.wait_for_page()
    assert left.exists()
    sharing.share("b")
    sharing.items()
    assert not left.exists() and other.exists() and link.is_symlink()


@pytest.mark.parametrize("field", ["content", "title", "filename"])
def test_a_text_with_half_a_character_is_answered_false_and_offered_to_nobody(sharing, field):
    sharing.share("a", **{field: "before \ud83d after"})
    assert sharing.answer() == [False, "a"]
    assert not sharing.is_open() and sharing.folders() == []
    sharing.share("b")
    assert sharing.items()


def test_a_folder_that_another_running_instance_shares_stays(sharing, make_quendo):
    # The first instance shares by mail, as two popovers on one display would contend for the keyboard.
    mail_is_open = sharing.quendo.home / "mail-open"
    mail_is_open.touch()
    sharing.share("a", "Shared")
    sharing.choose("Send by E-mail")
    wait_until(sharing.quendo.mail.exists, 10, "the mail program")
    shared, = sharing.folders()
    with contextlib.closing(Reporter()) as reporter:
        # An instance in persistence test mode has its own notes but the same temporary directory.
        other = make_quendo(page=page_that_shares(reporter), home=sharing.quendo.home)
        other.start(environment={"QUENDO_PERSISTENCE_TEST": "1"}, wait=False).wait_for_page()
        reporter.wait_for_page()
        others_sharing = Sharing(other, reporter)
        others_sharing.share("b")
        others_sharing.items()
        assert (shared / "note.md").read_text() == "Shared"
        other.kill()
    # No instance shares that one any more.
    left, = set(sharing.folders()) - {shared}
    mail_is_open.unlink()
    assert sharing.answer() == [True, "a"]
    sharing.share("c")
    sharing.items()
    assert not left.exists()


@pytest.fixture
def cached_copy(make_quendo, reporter):
    """(program not yet started, function that puts a copy into its cache)"""
    quendo = make_quendo(page=reporter.page())
    numbers = itertools.count()

    def put(hours):
        folder = quendo.home / ".cache" / "Quendo" / "Shared" / f"AAAAAAAA-BBBB-CCCC-DDDD-{next(numbers):012}"
        folder.mkdir(parents=True)
        (folder / "note.md").write_text("copied")
        grow_old(folder, hours)
        return folder

    return quendo, put


def grow_old(folder, hours):
    then = time.time() - hours * 3600
    os.utime(folder, (then, then))


def test_copies_for_other_programs_go_a_day_later_at_start_and_at_quit(cached_copy, reporter):
    quendo, put = cached_copy
    old, young, in_use = put(25), put(23), put(25)
    lock = os.open(in_use, os.O_RDONLY)
    # As another instance does with the copy it is sharing.
    fcntl.flock(lock, fcntl.LOCK_EX)
    quendo.start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    wait_until(lambda: not old.exists(), 10, "the old copy to go at the start")
    assert (young / "note.md").exists() and (in_use / "note.md").exists()
    os.close(lock)
    grow_old(young, 25)
    still_young = put(1)
    assert quendo.terminate() == 0
    assert not young.exists() and not in_use.exists()
    assert (still_young / "note.md").exists()


def test_without_a_place_for_files_the_text_is_shared(sharing):
    sharing.temporary.rename(sharing.temporary.with_name("away"))
    sharing.temporary.write_text("a file where the directory should be")
    sharing.share("a", "Only text")
    assert sharing.items() == ["Send by E-mail", "Copy Text"]
    sharing.choose("Copy Text")
    assert sharing.answer() == [True, "a"]
    assert desktop.clipboard() == "The title\n\nOnly text"


@pytest.mark.parametrize("language, expected", [
    ("pt_BR.UTF-8", ["Enviar por e-mail", "Copiar arquivo", "Copiar texto", "Copiar link"]),
    ("es_ES.UTF-8", ["Enviar por correo", "Copiar archivo", "Copiar texto", "Copiar enlace"])])
def test_the_popover_speaks_the_interface_language(make_quendo, reporter, language, expected):
    quendo = make_quendo(page=reporter.page()).start(environment={"LC_ALL": language})
    reporter.wait_for_page()
    quendo.wait_for_page()
    sharing = Sharing(quendo, reporter)
    sharing.share("a", url="https://quendo.example/")
    assert [one for one in sharing.items() if not one.startswith("Abri")] == expected


def test_quitting_with_the_popover_open_leaves_no_folder(sharing):
    sharing.share("a")
    sharing.items()
    assert sharing.quendo.terminate() == 0
    assert sharing.folders() == []
    stays(lambda: not any(one.startswith("Quendo-Share") for one in os.listdir(sharing.temporary)), 0.2)
