"""A client of the accessibility bus, as a screen reader is one.

Raw calls, one property at a time: whatever the program does not answer is an error here, not an empty text.
"""

import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

ATSPI = "org.a11y.atspi."
ROOT = "/org/a11y/atspi/accessible/root"
PATIENCE = 20  # seconds; only a failure waits that long
STATES = (
    "invalid active armed busy checked collapsed defunct editable enabled expandable expanded focusable "
    "focused has-tooltip horizontal iconified modal multi-line multiselectable opaque pressed resizable "
    "selectable selected sensitive showing single-line stale transient vertical visible "
    "manages-descendants indeterminate required truncated animated invalid-entry supports-autocompletion "
    "selectable-text is-default visited checkable has-popup read-only"
).split()


class Failure(Exception):
    """What was expected and did not come."""


def call(connection, owner, path, interface, method, arguments=None, result=None):
    """One call, with its single result unpacked."""
    answer = connection.call_sync(
        owner, path, interface, method, arguments, GLib.VariantType(result) if result else None,
        Gio.DBusCallFlags.NONE, PATIENCE * 1000, None)
    return answer.unpack()[0] if result else None


class Event:
    """What the program told about one of its objects."""

    def __init__(self, path, kind, detail, value):
        self.path, self.kind, self.detail, self.value = path, kind, detail, value

    def __str__(self):
        return f"{self.path.rsplit('/', 1)[1]} {self.kind}:{self.detail} {self.value}"


class Bus:
    """The accessibility bus of this session, switched on; events are collected from then on."""

    def __init__(self):
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = call(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, "(s)")
        on = GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True)))
        call(session, "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", on)
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self.events = []
        self.connection.signal_subscribe(
            None, ATSPI + "Event.Object", None, None, None, Gio.DBusSignalFlags.NONE, self._take)
        for event in ("object:", "window:", "focus:"):
            call(self.connection, ATSPI + "Registry", "/org/a11y/atspi/registry", ATSPI + "Registry",
                 "RegisterEvent", GLib.Variant("(s)", (event,)))

    def _take(self, _connection, _sender, path, _interface, signal, parameters):
        detail, first, _second, value = parameters.unpack()[:4]
        self.events.append(Event(path, signal, detail, first if signal == "StateChanged" else value))

    def until(self, what, check):
        """The first result of `check` that is true; looked at anew with every event."""
        end = time.monotonic() + PATIENCE
        context = GLib.MainContext.default()
        while True:
            try:
                found = check()
            except GLib.Error as error:
                if not error.matches(Gio.dbus_error_quark(), Gio.DBusError.UNKNOWN_OBJECT):
                    raise
                found = None  # an object went while its neighbours were asked; the next look is without it
            if found:
                return found
            if time.monotonic() > end:
                raise Failure(f"timed out: {what}")
            GLib.timeout_add(20, lambda: False)  # what changes without an event
            context.iteration(True)

    def event(self, since, what, matches):
        """Waits for an event that came after `since`, a length of `events`."""
        return self.until(f"event {what}", lambda: next((e for e in self.events[since:] if matches(e)), None))

    def application(self, name):
        """The program of that name, once it has come."""
        desktop = Node(self, ATSPI + "Registry", ROOT)
        return self.until(f"application {name}",
                          lambda: next((node for node in desktop.children if node.name == name), None))


class Node:
    """An object of a program. Everything is asked anew each time."""

    def __init__(self, bus, owner, path):
        self.bus, self.owner, self.path = bus, owner, path

    def __eq__(self, other):
        return (self.owner, self.path) == (other.owner, other.path)

    def __str__(self):
        return f"{self.role} \"{self.name}\""

    def _call(self, interface, method, arguments=None, result=None):
        return call(self.bus.connection, self.owner, self.path, ATSPI + interface, method, arguments, result)

    def _get(self, interface, name):
        return call(self.bus.connection, self.owner, self.path, "org.freedesktop.DBus.Properties", "Get",
                    GLib.Variant("(ss)", (ATSPI + interface, name)), "(v)")

    def _node(self, reference):
        return Node(self.bus, *reference)

    @property
    def name(self):
        return self._get("Accessible", "Name")

    @property
    def description(self):
        return self._get("Accessible", "Description")

    @property
    def role(self):
        return self._call("Accessible", "GetRoleName", None, "(s)")

    @property
    def states(self):
        low, high = self._call("Accessible", "GetState", None, "(au)")
        bits = low | high << 32
        return {state for bit, state in enumerate(STATES) if bits >> bit & 1}

    @property
    def interfaces(self):
        return {name.removeprefix(ATSPI) for name in self._call("Accessible", "GetInterfaces", None, "(as)")}

    @property
    def parent(self):
        return self._node(self._get("Accessible", "Parent"))

    @property
    def index(self):
        return self._call("Accessible", "GetIndexInParent", None, "(i)")

    @property
    def child_count(self):
        return self._get("Accessible", "ChildCount")

    @property
    def children(self):
        return [self._node(child) for child in self._call("Accessible", "GetChildren", None, "(a(so))")]

    def child(self, index):
        return self._node(self._call("Accessible", "GetChildAtIndex", GLib.Variant("(i)", (index,)), "((so))"))

    @property
    def extents(self):
        """Left, top, width and height on the screen."""
        return self._call("Component", "GetExtents", GLib.Variant("(u)", (0,)), "((iiii))")

    def grab_focus(self):
        if not self._call("Component", "GrabFocus", None, "(b)"):
            raise Failure(f"{self} does not take the focus")

    @property
    def value(self):
        return self._get("Value", "CurrentValue")

    @value.setter
    def value(self, number):
        call(self.bus.connection, self.owner, self.path, "org.freedesktop.DBus.Properties", "Set",
             GLib.Variant("(ssv)", (ATSPI + "Value", "CurrentValue", GLib.Variant("d", number))))

    @property
    def range(self):
        return self._get("Value", "MinimumValue"), self._get("Value", "MaximumValue")

    @property
    def actions(self):
        return [action[0] for action in self._call("Action", "GetActions", None, "(a(sss))")]

    def do(self, action):
        if action not in self.actions:
            raise Failure(f"{self} has no action {action}, only {self.actions}")
        self._call("Action", "DoAction", GLib.Variant("(i)", (self.actions.index(action),)), "(b)")

    @property
    def text(self):
        length = self._get("Text", "CharacterCount")
        return self._call("Text", "GetText", GLib.Variant("(ii)", (0, length)), "(s)")

    def write(self, text):
        if not self._call("EditableText", "SetTextContents", GLib.Variant("(s)", (text,)), "(b)"):
            raise Failure(f"{self} takes no text")

    @property
    def table_size(self):
        return self._get("Table", "NRows"), self._get("Table", "NColumns")

    def cell(self, row, column):
        return self._node(self._call("Table", "GetAccessibleAt", GLib.Variant("(ii)", (row, column)), "((so))"))

    def lines(self, indent=""):
        """The tree below, to be read when something failed."""
        value = f" {self.value:g}" if "Value" in self.interfaces else ""
        actions = f" {self.actions}" if "Action" in self.interfaces else ""
        yield f"{indent}{self}{value} {self.description!r} [{' '.join(sorted(self.states))}]{actions}"
        if "showing" in self.states or self.role == "filler":
            for child in self.children[:20]:
                yield from child.lines(indent + "  ")
