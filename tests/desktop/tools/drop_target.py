"""A window to drop things on, like another program's: drop_target.py LOG. What is dropped comes into LOG as text."""

import sys
from pathlib import Path

import gi

gi.require_version("Gdk", "4.0")
gi.require_version("Gtk", "4.0")
from gi.repository import Gdk, Gio, Gtk  # noqa: E402


def activate(application):
    target = Gtk.DropTarget.new(str, Gdk.DragAction.COPY | Gdk.DragAction.MOVE)
    target.connect("drop", lambda _target, text, _x, _y: Path(sys.argv[1]).write_text(text) > 0)
    label = Gtk.Label(label="Other program")
    label.add_controller(target)
    Gtk.ApplicationWindow(application=application, title="Other program", default_width=160, default_height=120,
                          child=label).present()


windows = Gtk.Application(flags=Gio.ApplicationFlags.NON_UNIQUE)
windows.connect("activate", activate)
windows.run()
