"""A window to drag files from, like a file manager's: drag_source.py ADDRESS..."""

import sys

import gi

gi.require_version("Gdk", "4.0")
gi.require_version("Gtk", "4.0")
from gi.repository import Gdk, Gio, GLib, Gtk  # noqa: E402


def activate(application):
    list_of_addresses = "".join(f"{address}\r\n" for address in sys.argv[1:])
    source = Gtk.DragSource(actions=Gdk.DragAction.COPY)
    source.set_content(Gdk.ContentProvider.new_for_bytes("text/uri-list", GLib.Bytes(list_of_addresses.encode())))
    label = Gtk.Label(label="Files")
    label.add_controller(source)
    Gtk.ApplicationWindow(application=application, title="Files", default_width=160, default_height=120,
                          child=label).present()


files = Gtk.Application(flags=Gio.ApplicationFlags.NON_UNIQUE)
files.connect("activate", activate)
files.run()
