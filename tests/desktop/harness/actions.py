"""The menu commands the program exports on the session bus, and which of them are enabled.

For waiting and checking only. Tests give a command by its key or its menu item, as a person does.
"""

from gi.repository import Gio, GLib

# The second is the name in persistence test mode.
_NAMES = ("com.quendo.Quendo", "com.quendo.Quendo.PersistenceTest")


def _call(name, path, interface, method, parameters, reply):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync(name, path, interface, method, parameters, GLib.VariantType(reply),
                         Gio.DBusCallFlags.NO_AUTO_START, 2000, None).unpack()


def _owner(name):
    try:
        return _call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                     "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)), "(u)")[0]
    except GLib.Error:
        return None


def describe(pid):
    """Command name -> (enabled, state or None) of the program with process ID `pid`. Empty while it does not
    answer."""
    name = next((one for one in _NAMES if _owner(one) == pid), None)
    if name is None:
        return {}
    try:
        described = _call(name, "/" + name.replace(".", "/"), "org.gtk.Actions", "DescribeAll", None,
                          "(a{s(bgav)})")[0]
    except GLib.Error:
        return {}
    return {command: (enabled, state[0] if state else None)
            for command, (enabled, _type, state) in described.items()}
