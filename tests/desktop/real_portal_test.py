"""With the portal of a real desktop: its dialogs, its mail, its links, its settings."""

import os
import signal
import subprocess
from pathlib import Path

import pytest

from gi.repository import Gio, GLib
from harness import desktop
from harness.external import ExternalHandler
from harness.waiting import wait_until

PROGRAMS = Path("/usr/libexec")
_NAMES = {"xdg-permission-store": "org.freedesktop.impl.portal.PermissionStore",
          "xdg-desktop-portal-gtk": "org.freedesktop.impl.portal.desktop.gtk",
          "xdg-desktop-portal": "org.freedesktop.portal.Desktop"}


def has_owner(name):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                         GLib.Variant("(s)", (name,)), None, Gio.DBusCallFlags.NONE, 2000, None).unpack()[0]


class RealPortal:
    """The portal and what belongs to it, with a home of its own, and the desktop's programs in it."""

    def __init__(self, home):
        self.home = home
        self.external = ExternalHandler(home)
        self._settings = home / ".config" / "glib-2.0" / "settings" / "keyfile"
        self._settings.parent.mkdir(parents=True)
        self.choose("default")
        environment = os.environ | {
            "HOME": str(home), "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_DATA_HOME": str(home / ".local" / "share"), "XDG_CURRENT_DESKTOP": "gnome",
            "GSETTINGS_BACKEND": "keyfile"}
        self._processes = []
        for program, name in _NAMES.items():
            self._processes.append(subprocess.Popen([PROGRAMS / program], env=environment, cwd=home,
                                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
            wait_until(lambda: has_owner(name), 10, program)

    def choose(self, scheme):
        """The user's choice of light and dark."""
        self._settings.write_text(f"[org/gnome/desktop/interface]\ncolor-scheme='{scheme}'\n")

    def wait_for_dialog(self, title):
        """The portal's dialog, with the keyboard."""
        dialog = wait_until(lambda: next((one for one in desktop.windows() if one.title == title), None), 10, title)
        assert dialog.pid == self._processes[1].pid
        desktop.activate(dialog)
        desktop.wait_until_still(dialog)

    def stop(self):
        for one in reversed(self._processes):
            one.send_signal(signal.SIGTERM)
        for one in self._processes:
            one.wait(10)


@pytest.fixture
def portal(tmp_path):
    if not all((PROGRAMS / program).exists() for program in _NAMES):
        pytest.skip("there is no desktop portal on this machine")
    portal = RealPortal(tmp_path / "portal")
    yield portal
    portal.stop()


@pytest.fixture
def confined(portal, make_quendo, reporter):
    """A program that reaches files, links and mail by way of the portal only."""
    names = ["quendoNativeShareDidFinish", "quendoNativeSaveAsDidFinish"]
    page = reporter.page("<a id=link href='mailto:somebody@example.com'>there</a>", head="<script>" + "".join(
        f"window.{name} = (...values) => report('answered', values);" for name in names) +
        "window.quendoOpenNativeFiles = (files) => { report('opened', files); return files.length; };</script>")
    quendo = make_quendo(page=page)
    (quendo.configuration / "mimeapps.list").unlink()
    (quendo.data / "applications" / "quendo-test-handler.desktop").unlink()
    quendo.start(environment={"LC_ALL": "en_US.UTF-8", "GDK_DEBUG": "portals", "GTK_USE_PORTAL": "1"})
    reporter.wait_for_page()
    quendo.wait_for_page()
    return quendo


def test_the_page_follows_the_desktop_into_the_dark_and_back(portal, make_quendo, reporter):
    portal.choose("prefer-dark")
    quendo = make_quendo(page=reporter.page())
    quendo.start()
    reporter.wait_for_page()
    dark = "matchMedia('(prefers-color-scheme: dark)').matches"
    wait_until(lambda: reporter.evaluate(dark), 10, "dark")
    portal.choose("default")
    wait_until(lambda: not reporter.evaluate(dark), 10, "light")


def test_a_note_is_saved_in_its_dialog(portal, confined, reporter, tmp_path):
    reporter.run("""webkit.messageHandlers.quendoSaveAs.postMessage(
        { noteId: 'n', filename: 'note.md', content: 'Saved' });""")
    portal.wait_for_dialog("Save Note As")
    desktop.press("ctrl+a")
    desktop.type_text(str(tmp_path / "chosen.md"))
    desktop.press("Return")
    assert reporter.wait_for("answered") == [True, "n", "chosen.md", "Salvo como chosen.md"]
    assert (tmp_path / "chosen.md").read_text() == "Saved"


# Of the schemes that lead outside, the one that no browser of this machine has taken.
def test_a_link_is_opened_by_it(portal, confined, reporter):
    reporter.run("document.getElementById('link').click();")
    portal.external.wait_for("mailto:somebody@example.com")


def test_a_mail_goes_to_the_desktops_mail_program(portal, confined, reporter):
    reporter.run("""webkit.messageHandlers.quendoShare.postMessage({ attemptId: 'a', title: 'The title',
        filename: 'note.md', content: 'By the portal', url: 'https://quendo.example/' });""")
    wait_until(lambda: any(one.name == "Send by E-mail" for one in confined.accessible().walk()), 10, "the popover")
    confined.accessible().find_item("Send by E-mail").act("click")
    assert reporter.wait_for("answered") == [True, "a"]
    mail, = wait_until(portal.external.opened, 10, "a mail")
    assert mail.startswith("mailto:") and "subject=The%20title" in mail and "attach" in mail


def test_a_file_is_opened_in_its_dialog(portal, make_quendo, tmp_path):
    (tmp_path / "chosen.md").write_text("Out of the portal's dialog")
    quendo = make_quendo().start(environment={"LC_ALL": "en_US.UTF-8", "GDK_DEBUG": "portals"})
    quendo.wait_for_page()
    quendo.press("ctrl+o")
    portal.wait_for_dialog("Open Text Files in Quendo")
    # Pasted, because the field for a path completes what is typed.
    desktop.set_clipboard(str(tmp_path / "chosen.md"))
    desktop.press("ctrl+l", "ctrl+a", "ctrl+v")

    def confirmed():
        # What is pasted comes a little later.
        desktop.press("Return")
        return all(one.pid == quendo.pid for one in desktop.windows())

    wait_until(confirmed, 10, "the dialog to be gone", interval=0.5)
    quendo.state.wait_for_text("Out of the portal's dialog")
