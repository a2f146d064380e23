"""A desktop portal, as far as Quendo uses one: it sends mail and chooses a file, as it is told.

    portal.py LOG ANSWER

Each request is a line of JSON in LOG. ANSWER is a line of JSON: "response" is the portal's answer to every
request, 0 for done; "paths" the files that it chooses, or their URIs, one for each dialog, the last one again and
again; "choices" what is chosen beside it. With "early" the answer is sent before the call that asked returns; with
"own_handle" the request is not at the path that its token asks for, as with old portals; with "noise" an
answer to somebody else's request comes first, which says that it failed. "settings" are those of the user's look; at
SIGUSR1 they change to none.
"""

import json
import os
import signal
import sys

from gi.repository import Gio, GLib

_PATH = "/org/freedesktop/portal/desktop"
_INTERFACES = Gio.DBusNodeInfo.new_for_xml("""
<node>
  <interface name="org.freedesktop.portal.Email">
    <method name="ComposeEmail">
      <arg type="s"/><arg type="a{sv}"/><arg type="o" direction="out"/>
    </method>
    <property name="version" type="u" access="read"/>
  </interface>
  <interface name="org.freedesktop.portal.FileChooser">
    <method name="SaveFile">
      <arg type="s"/><arg type="s"/><arg type="a{sv}"/><arg type="o" direction="out"/>
    </method>
    <property name="version" type="u" access="read"/>
  </interface>
  <interface name="org.freedesktop.portal.Settings">
    <method name="Read"><arg type="s"/><arg type="s"/><arg type="v" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.portal.ProxyResolver">
    <method name="Lookup"><arg type="s"/><arg type="as" direction="out"/></method>
    <property name="version" type="u" access="read"/>
  </interface>
  <interface name="org.freedesktop.portal.NetworkMonitor">
    <method name="GetStatus"><arg type="a{sv}" direction="out"/></method>
    <method name="CanReach"><arg type="s"/><arg type="u"/><arg type="b" direction="out"/></method>
    <property name="version" type="u" access="read"/>
  </interface>
</node>""").interfaces
# A confined program asks this before it uses the network.
_NETWORK = {"Lookup": GLib.Variant("(as)", (["direct://"],)), "CanReach": GLib.Variant("(b)", (True,)),
            "GetStatus": GLib.Variant("(a{sv})", ({"available": GLib.Variant("b", True)},))}


def uri(place):
    return place if "://" in place else GLib.filename_to_uri(place)


class Portal:
    def __init__(self, bus, log, answer):
        self._bus = bus
        self._log = log
        self._answer = answer
        for interface in _INTERFACES:
            bus.register_object(_PATH, interface, self._called, lambda *_: GLib.Variant("u", 3), None)

    def _called(self, _bus, sender, _path, _interface, method, parameters, invocation):
        if method in _NETWORK:
            invocation.return_value(_NETWORK[method])
            return
        if method == "Read":
            value = self._answer.get("settings", {}).get(parameters.unpack()[1])
            if value is None:
                invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")
            else:
                # Old portals wrap the value twice.
                inner = GLib.Variant("v", GLib.Variant("u", value))
                invocation.return_value(GLib.Variant("(v)", (inner,)))
            return
        *_, options = parameters.unpack()
        request = {"method": method, "subject": options.get("subject"), "body": options.get("body"),
                   "token": options.get("handle_token"), "name": options.get("current_name"), "label": options.get("accept_label"),
                   "choices": [[one[0], one[1], [title for _, title in one[2]], one[3]]
                               for one in options.get("choices", [])]}
        files = invocation.get_message().get_unix_fd_list()
        if files:
            with os.fdopen(files.get(0), "rb") as attached:
                request["attached"] = attached.read().decode()
        with open(self._log, "a", encoding="utf-8") as log:
            log.write(json.dumps(request) + "\n")
        requests = f"{_PATH}/request/{sender[1:].replace('.', '_')}"
        own = self._answer.get("own_handle") or "handle_token" not in options
        handle = f"{requests}/{'own' if own else options['handle_token']}"
        results = {}
        paths = self._answer.get("paths")
        if paths:
            results["uris"] = GLib.Variant("as", [uri(paths.pop(0) if paths[1:] else paths[0])])
            results["choices"] = GLib.Variant("a(ss)", [tuple(one) for one in self._answer.get("choices", [])])
        if self._answer.get("noise"):
            self._respond(sender, f"{requests}/other", 2, {})
        if self._answer.get("early"):
            self._respond(sender, handle, self._answer["response"], results)
        else:
            GLib.timeout_add(300, self._respond, sender, handle, self._answer["response"], results)
        invocation.return_value(GLib.Variant("(o)", (handle,)))

    def end_settings(self):
        """The user takes every choice back."""
        for key in self._answer.get("settings", {}):
            self._bus.emit_signal(None, _PATH, "org.freedesktop.portal.Settings", "SettingChanged",
                                  GLib.Variant("(ssv)", ("org.freedesktop.appearance", key, GLib.Variant("u", 0))))
        return GLib.SOURCE_CONTINUE

    def _respond(self, sender, handle, response, results):
        self._bus.emit_signal(sender, handle, "org.freedesktop.portal.Request", "Response",
                              GLib.Variant("(ua{sv})", (response, results)))
        return GLib.SOURCE_REMOVE


def main():
    log, answer = sys.argv[1], json.loads(sys.argv[2])
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    portal = Portal(bus, log, answer)
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, portal.end_settings)
    Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE,
                                   lambda *_: print("ready", flush=True), None)
    GLib.MainLoop().run()


main()
