"""The program as assistive technology sees it: menus, dialogs and buttons by role and name.

Roles are the names that AT-SPI gives them: "frame", "dialog", "alert", "menu bar", "menu", "menu item",
"check menu item", "push button", "text", "label".

This speaks the protocol directly: libatspi caches what it has seen, and aborts the process when an element goes away
at the wrong moment. Here every answer comes from the program itself, at the time of asking.
"""

import functools

from gi.repository import Gio, GLib

from .waiting import Timeout, wait_until

_REGISTRY = "org.a11y.atspi.Registry"
_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ACTION = "org.a11y.atspi.Action"
_COMPONENT = "org.a11y.atspi.Component"
_EDITABLE_TEXT = "org.a11y.atspi.EditableText"
_TEXT = "org.a11y.atspi.Text"

# Milliseconds the program has for one answer.
_PATIENCE = 20000
# Bit numbers of the states in the protocol.
_STATES = {"checked": 4, "editable": 7, "enabled": 8, "expandable": 9, "expanded": 10, "focusable": 11,
           "focused": 12, "modal": 16, "pressed": 20, "selectable": 22, "selected": 23, "sensitive": 24,
           "showing": 25, "visible": 30}
# The protocol's numbers of the roles that GTK names differently or not at all.
_ROLES = {7: "check box", 8: "check menu item", 16: "dialog", 23: "frame", 29: "label", 33: "menu", 34: "menu bar",
          35: "menu item", 43: "push button", 45: "radio menu item", 61: "text", 75: "application", 79: "entry",
          # These and some of the above are in the page.
          32: "list item", 37: "page tab", 38: "page tab list", 54: "status bar", 95: "document web", 98: "list box"}
_WINDOW_COORDINATES = 1


class Accessible:
    """One element. Nothing is cached; an element that is gone has no name, no text and no children."""

    def __init__(self, owner, path):
        self._owner = owner
        self._path = path

    @classmethod
    def application(cls, pid, timeout=10.0):
        """The application object of a process."""
        desktop = cls(_REGISTRY, "/org/a11y/atspi/accessible/root")
        return wait_until(lambda: next((one for one in desktop.children() if one._process() == pid), None), timeout,
                          f"process {pid} on the accessibility bus")

    @property
    def name(self):
        return self._property(_ACCESSIBLE, "Name", "")

    @property
    def role(self):
        number, = self._ask(_ACCESSIBLE, "GetRole", None, "(u)", (0,))
        if number in _ROLES:
            return _ROLES[number]
        return self._ask(_ACCESSIBLE, "GetRoleName", None, "(s)", ("",))[0]

    @property
    def description(self):
        return self._property(_ACCESSIBLE, "Description", "")

    @property
    def text(self):
        """The whole text of a label or an entry."""
        end = self._property(_TEXT, "CharacterCount", 0)
        return self._ask(_TEXT, "GetText", GLib.Variant("(ii)", (0, end)), "(s)", ("",))[0]

    def children(self):
        return [Accessible(*one) for one in self._ask(_ACCESSIBLE, "GetChildren", None, "(a(so))", ([],))[0]]

    @property
    def parent(self):
        return Accessible(*self._property(_ACCESSIBLE, "Parent", (self._owner, "/org/a11y/atspi/null")))

    @property
    def attributes(self):
        return self._ask(_ACCESSIBLE, "GetAttributes", None, "(a{ss})", ({},))[0]

    @property
    def child_count(self):
        return self._property(_ACCESSIBLE, "ChildCount", 0)

    def child_at(self, index):
        return Accessible(*self._ask(_ACCESSIBLE, "GetChildAtIndex", GLib.Variant("(i)", (index,)), "((so))",
                                     ((self._owner, "/org/a11y/atspi/null"),))[0])

    def cached_child_count(self):
        """The number of its children in what its program offers for caching."""
        items, = Accessible(self._owner, "/org/a11y/atspi/cache")._call(
            "org.a11y.atspi.Cache", "GetItems", None, "(a((so)(so)(so)iiassusau))")
        return next(item[4] for item in items if item[0][1] == self._path)

    def page(self, timeout=10.0):
        """Waits for the page in the program's web view, which is in a process of its own."""
        def find():
            inside = self.find("widget", "WebKitWebView", timeout).children()
            return next(iter(inside[0].find_all("document web")), None) if inside else None

        return wait_until(find, timeout, "the page in the web view", interval=0.1)

    def walk(self):
        """This element and all below it in its process, parents first."""
        yield self
        for child in self.children():
            if child._owner == self._owner:
                yield from child.walk()

    def find_all(self, role=None, name=None):
        """All elements below with this role and this name; either may be left out."""
        return [one for one in self.walk()
                if (role is None or one.role == role) and (name is None or one.name == name)]

    def find(self, role=None, name=None, timeout=10.0):
        """Waits for the first element below with this role and name."""
        try:
            return wait_until(lambda: next(iter(self.find_all(role, name)), None), timeout,
                              f"role {role!r} name {name!r}", interval=0.1)
        except AssertionError as error:
            raise AssertionError(f"{error}; there is\n{self.tree()}") from None

    def find_item(self, name, timeout=10.0):
        """Waits for the first menu item below with this name, of whatever kind: plain, check or radio."""
        return wait_until(lambda: next((one for one in self.walk()
                                        if one.name == name and one.role.endswith("menu item")), None),
                          timeout, f"a menu item {name!r}", interval=0.1)

    def gone(self, role=None, name=None, timeout=10.0):
        """Waits until no element below has this role and name."""
        wait_until(lambda: not self.find_all(role, name), timeout,
                   f"no role {role!r} name {name!r}", interval=0.1)

    def has(self, state):
        """Whether a state such as "sensitive", "visible", "checked", "focused" or "expanded" is set. GTK 4 does not
        set "showing"."""
        words = self._ask(_ACCESSIBLE, "GetState", None, "(au)", ([0, 0],))[0]
        return bool(words[0] & 1 << _STATES[state])

    @property
    def enabled(self):
        return self.has("sensitive")

    def actions(self):
        """Names of the element's actions."""
        count = self._property(_ACTION, "NActions", 0)
        return [self._ask(_ACTION, "GetName", GLib.Variant("(i)", (index,)), "(s)", ("",))[0]
                for index in range(count)]

    def act(self, action=None):
        """Performs the named action, or the first one: presses a button, chooses an item."""
        actions = self.actions()
        assert actions, f"{self} has no actions"
        index = 0 if action is None else actions.index(action)
        done, = self._ask(_ACTION, "DoAction", GLib.Variant("(i)", (index,)), "(b)", (False,))
        assert done, f"{actions[index]} of {self} was refused"

    def grab_focus(self):
        assert self._ask(_COMPONENT, "GrabFocus", None, "(b)", (False,))[0], f"{self} does not take the focus"

    def set_text(self, text):
        """Replaces the text of an entry."""
        done, = self._ask(_EDITABLE_TEXT, "SetTextContents", GLib.Variant("(s)", (text,)), "(b)", (False,))
        assert done, f"{self} takes no text"

    def extents(self):
        """(x, y, width, height) within the element's window."""
        return self._call(_COMPONENT, "GetExtents", GLib.Variant("(u)", (_WINDOW_COORDINATES,)), "((iiii))")[0]

    def tree(self, depth=0, limit=12):
        """The elements below in readable form, for messages and exploring."""
        lines = [f"{'  ' * depth}{self}"]
        if depth < limit:
            lines += [child.tree(depth + 1, limit) for child in self.children()]
        return "\n".join(lines)

    def __eq__(self, other):
        return isinstance(other, Accessible) and (self._owner, self._path) == (other._owner, other._path)

    def __hash__(self):
        return hash((self._owner, self._path))

    def __repr__(self):
        return f"{self.role} {self.name!r}"

    def _process(self):
        try:
            return _bus().call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                    "GetConnectionUnixProcessID", GLib.Variant("(s)", (self._owner,)),
                                    GLib.VariantType("(u)"), Gio.DBusCallFlags.NONE, _PATIENCE, None).unpack()[0]
        except GLib.Error:
            return None

    def _property(self, interface, name, otherwise):
        return self._ask("org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (interface, name)), "(v)",
                         (otherwise,))[0]

    def _ask(self, interface, method, parameters, reply, otherwise):
        try:
            return self._call(interface, method, parameters, reply)
        except GLib.Error as error:
            # A program that is too busy to answer must not look like an element that is gone.
            if error.matches(Gio.io_error_quark(), Gio.IOErrorEnum.TIMED_OUT):
                raise Timeout(f"the program did not answer {method} within {_PATIENCE / 1000:g} s") from None
            # The element went away between being found and being asked.
            return otherwise

    def _call(self, interface, method, parameters, reply):
        return _bus().call_sync(self._owner, self._path, interface, method, parameters, GLib.VariantType(reply),
                                Gio.DBusCallFlags.NO_AUTO_START, _PATIENCE, None).unpack()


def web_pages():
    """The documents of all web processes on the bus, whether or not a window shows them."""
    return [page for owner in _web_processes() for path in _paths_below(owner, "/org/a11y/webkit/accessible")
            for page in Accessible(owner, path).find_all("document web")]


def web_elements():
    """How many elements all web processes have made for those who asked for them."""
    return sum(len(_paths_below(owner, "/org/a11y/atspi/accessible")) for owner in _web_processes())


def _web_processes():
    bus = Accessible("org.freedesktop.DBus", "/org/freedesktop/DBus")
    names, = bus._call("org.freedesktop.DBus", "ListNames", None, "(as)")
    # Elements are owned by the connection, not by its name.
    return [bus._call("org.freedesktop.DBus", "GetNameOwner", GLib.Variant("(s)", (name,)), "(s)")[0]
            for name in names if ".Sandboxed.WebProcess-" in name]


def _paths_below(owner, path):
    xml, = Accessible(owner, path)._ask("org.freedesktop.DBus.Introspectable", "Introspect", None, "(s)", ("<node/>",))
    return [f"{path}/{node.path}" for node in Gio.DBusNodeInfo.new_for_xml(xml).nodes]


class Listener:
    """Hears what elements tell of themselves, as a screen reader does: (event, element, detail) for each, where an
    event is called "StateChanged focused" or "TextChanged insert". To be closed at the end."""

    def __init__(self, *kinds):
        """Kinds as in "object:text-changed"."""
        self._heard = []
        self._subscription = _bus().signal_subscribe(
            None, "org.a11y.atspi.Event.Object", None, None, None, Gio.DBusSignalFlags.NONE, self._hear)
        self._kinds = kinds
        for kind in kinds:
            self._tell_registry("RegisterEvent", kind)

    def close(self):
        for kind in self._kinds:
            self._tell_registry("DeregisterEvent", kind)
        _bus().signal_unsubscribe(self._subscription)

    def heard(self):
        """Everything so far."""
        while GLib.MainContext.default().iteration(False):
            pass
        return list(self._heard)

    def wait_for(self, condition, what, timeout=10.0):
        """Waits until `condition(event, element, detail)` holds for something that was heard."""
        return wait_until(lambda: next((one for one in self.heard() if condition(*one)), None), timeout, what)

    def _hear(self, _bus, owner, path, _interface, member, parameters):
        detail, _first, _second, value = parameters.unpack()[:4]
        self._heard.append((f"{member} {detail}", Accessible(owner, path), value))

    def _tell_registry(self, method, kind):
        _bus().call_sync(_REGISTRY, "/org/a11y/atspi/registry", _REGISTRY, method,
                         GLib.Variant("(sass)", (kind, [], "")) if method == "RegisterEvent"
                         else GLib.Variant("(s)", (kind,)), None, Gio.DBusCallFlags.NONE, _PATIENCE, None)


@functools.cache
def _bus():
    """The accessibility bus; its address comes from the session bus."""
    address = Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
        "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, GLib.VariantType("(s)"),
        Gio.DBusCallFlags.NONE, 20000, None).unpack()[0]
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
