"""What a desktop asks of the program over the bus, where it starts no process itself: org.freedesktop.Application."""

import os
import shlex
import signal
from pathlib import Path

import pytest
from gi.repository import Gio, GLib

from harness import desktop, process
from harness.waiting import wait_until

pytestmark = pytest.mark.never_retried

NAME = "com.quendo.Quendo"
PATH = "/com/quendo/Quendo"


def bus():
    return Gio.bus_get_sync(Gio.BusType.SESSION, None)


def ask(method, *arguments):
    """A call of org.freedesktop.Application; the bus starts the program where none runs."""
    signature = {"Activate": "(a{sv})", "Open": "(asa{sv})", "ActivateAction": "(sava{sv})"}[method]
    bus().call_sync(NAME, PATH, "org.freedesktop.Application", method, GLib.Variant(signature, (*arguments, {})), None,
                    Gio.DBusCallFlags.NONE, 30000, None)


def owner():
    """Process ID of the program on the bus; None without one."""
    try:
        answer = bus().call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                 "GetConnectionUnixProcessID", GLib.Variant("(s)", (NAME,)), None,
                                 Gio.DBusCallFlags.NONE, 5000, None)
    except GLib.Error:
        return None
    return answer[0]


@pytest.fixture
def service(make_quendo):
    """A program that the bus starts. It is ended with the test."""
    quendo = make_quendo()
    launcher = quendo.home / "launch"
    variables = " ".join(f"{name}={shlex.quote(value)}" for name, value in quendo.environment.items())
    arguments = " ".join(map(shlex.quote, quendo.arguments))
    launcher.write_text(f"#!/bin/sh\ncd ~\nexec env -i {variables} {shlex.quote(str(quendo.installation.program))} "
                        f"{arguments} </dev/null >>{quendo.home}/output.log 2>&1\n")
    launcher.chmod(0o755)
    file = Path(os.environ["XDG_RUNTIME_DIR"]) / "dbus-1" / "services" / f"{NAME}.service"
    file.write_text(f"[D-BUS Service]\nName={NAME}\nExec={launcher}\n")
    reload_bus()
    yield quendo
    file.unlink()
    reload_bus()
    pid = owner()
    if pid:
        helpers = process.children(pid)
        process.kill(pid, signal.SIGTERM)
        wait_until(lambda: not process.alive(pid), 20, "the program to end")
        process.end_all(helpers)


def reload_bus():
    bus().call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReloadConfig", None, None,
                    Gio.DBusCallFlags.NONE, 5000, None)


def test_the_desktop_hands_files_over_to_the_program_that_runs(quendo):
    quendo.wait_for_page()
    file = quendo.home / "às vezes.md"
    file.write_text("Handed over by the desktop.", encoding="utf-8")
    ask("Open", [file.as_uri()])
    quendo.state.wait_for_text("Handed over by the desktop.")
    assert len(quendo.windows()) == 1


def test_activation_brings_the_window_of_the_program_that_runs_to_the_front(quendo):
    quendo.wait_for_page()
    window = quendo.window
    quendo.press("ctrl+m")
    wait_until(lambda: desktop.active_window() != window.id, 10, "the window to be minimised")
    ask("Activate")
    wait_until(lambda: desktop.active_window() == window.id, 10, "the window to be in front")


def test_a_new_note_from_the_desktops_menu_takes_what_is_typed_next(quendo):
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("Before")
    quendo.wait_for_window("Before — Quendo")
    ask("ActivateAction", "new-note", [])
    wait_until(lambda: quendo.window.title != "Before — Quendo", 10, "the new note")
    quendo.type("Begun from the dock")
    quendo.state.wait_for_text("Begun from the dock")
    assert not any("Before" in one and "Begun" in one for one in quendo.state.strings())


def test_the_bus_starts_the_program_for_files(service):
    file = service.home / "first.md"
    file.write_text("The program was started for this.", encoding="utf-8")
    ask("Open", [file.as_uri()])
    service.state.wait_for_text("The program was started for this.", 60)
    assert len(desktop.windows(owner())) == 1


def test_the_bus_starts_the_program_for_a_new_note_without_waiting_for_its_page(service):
    ask("ActivateAction", "new-note", [])
    pid = owner()
    window = wait_until(lambda: next(iter(desktop.windows(pid)), None), 30, "the window")
    desktop.activate(window)
    wait_until(lambda: service.state.text() is not None, 60, "the page to have saved")
    desktop.type_text("Begun while it started")
    service.state.wait_for_text("Begun while it started")
