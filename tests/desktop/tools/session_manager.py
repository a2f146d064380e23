"""A desktop's session manager, as far as a program that takes part in a session sees it.

Each line of its input is a signal that the program gets: "QueryEndSession", "CancelEndSession", "EndSession". Each
line of its output is what the program did: "ready", "RegisterClient", "Inhibit FLAGS", "Uninhibit",
"EndSessionResponse OK", "gone".
"""

import sys

from gi.repository import Gio, GLib

_APPLICATION = "com.quendo.Quendo"
_MANAGER = "org.gnome.SessionManager"
_CLIENT = "org.gnome.SessionManager.ClientPrivate"
_CLIENT_PATH = "/org/gnome/SessionManager/Program"
_INTERFACES = Gio.DBusNodeInfo.new_for_xml(f"""
<node>
  <interface name="{_MANAGER}">
    <method name="RegisterClient">
      <arg name="app_id" type="s"/><arg name="startup_id" type="s"/><arg name="path" type="o" direction="out"/>
    </method>
    <method name="UnregisterClient"><arg name="path" type="o"/></method>
    <method name="Inhibit">
      <arg name="app_id" type="s"/><arg name="toplevel" type="u"/><arg name="reason" type="s"/>
      <arg name="flags" type="u"/><arg name="cookie" type="u" direction="out"/>
    </method>
    <method name="Uninhibit"><arg name="cookie" type="u"/></method>
  </interface>
  <interface name="{_CLIENT}">
    <method name="EndSessionResponse"><arg name="is_ok" type="b"/><arg name="reason" type="s"/></method>
    <signal name="QueryEndSession"><arg name="flags" type="u"/></signal>
    <signal name="EndSession"><arg name="flags" type="u"/></signal>
    <signal name="CancelEndSession"/>
    <signal name="Stop"/>
  </interface>
</node>""").interfaces


class SessionManager:
    def __init__(self, bus):
        self._bus = bus
        self._client = None
        for path, interface in (("/org/gnome/SessionManager", _INTERFACES[0]), (_CLIENT_PATH, _INTERFACES[1])):
            bus.register_object(path, interface, self._called, None, None)

    def _called(self, _bus, sender, _path, _interface, method, parameters, invocation):
        values = parameters.unpack()
        if method == "RegisterClient" and values[0] != _APPLICATION:
            # The accessibility bus registers with the session manager too.
            return invocation.return_value(GLib.Variant("(o)", ("/org/gnome/SessionManager/Other",)))
        if method == "RegisterClient":
            self._client = sender
            Gio.bus_watch_name_on_connection(self._bus, sender, Gio.BusNameWatcherFlags.NONE, None,
                                             lambda *_: say("gone"))
            say(method)
            return invocation.return_value(GLib.Variant("(o)", (_CLIENT_PATH,)))
        if method == "Inhibit":
            say(f"{method} {values[3]}")
            return invocation.return_value(GLib.Variant("(u)", (1,)))
        say(f"{method} {values[0]}" if method == "EndSessionResponse" else method)
        return invocation.return_value(None)

    def signal(self, name):
        parameters = None if name == "CancelEndSession" else GLib.Variant("(u)", (0,))
        self._bus.emit_signal(self._client, _CLIENT_PATH, _CLIENT, name, parameters)
        self._bus.flush_sync()


def say(line):
    print(line, flush=True)


def main():
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    manager = SessionManager(bus)
    loop = GLib.MainLoop()

    def hear(_channel, _condition):
        line = sys.stdin.readline().strip()
        if line:
            manager.signal(line)
        else:
            loop.quit()
        return bool(line)

    GLib.io_add_watch(sys.stdin.fileno(), GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN | GLib.IOCondition.HUP, hear)
    Gio.bus_own_name_on_connection(bus, _MANAGER, Gio.BusNameOwnerFlags.NONE, lambda *_: say("ready"), None)
    loop.run()


main()
