"""The accessible tree of a program, read and used over D-Bus as an assistive technology does.

Speaks AT-SPI's D-Bus interfaces directly: no client library whose cache may be stale, and each
call has its own time limit.
"""
import re

import dbus
import dbus.bus

from harness.images import Rect
from harness.processes import DEFAULT_TIMEOUT, wait_for

PREFIX = "org.a11y.atspi."
NULL_PATH = "/org/a11y/atspi/null"
# The states in the order of their bits.
STATES = (
    "invalid active armed busy checked collapsed defunct editable enabled expandable expanded "
    "focusable focused has-tooltip horizontal iconified modal multi-line multiselectable opaque "
    "pressed resizable selectable selected sensitive showing single-line stale transient vertical "
    "visible manages-descendants indeterminate required truncated animated invalid-entry "
    "supports-autocompletion selectable-text is-default visited checkable has-popup "
    "read-only").split()


class Node:
    """One accessible object."""

    def __init__(self, bus, owner, path):
        self._bus, self.owner, self.path = bus, str(owner), str(path)

    def _object(self):
        return self._bus.get_object(self.owner, self.path, introspect=False)

    def _call(self, interface, method, *arguments):
        call = self._object().get_dbus_method(method, PREFIX + interface)
        return call(*arguments, timeout=DEFAULT_TIMEOUT)

    def _property(self, interface, name):
        return self._object().Get(PREFIX + interface, name, timeout=DEFAULT_TIMEOUT,
                                  dbus_interface=dbus.PROPERTIES_IFACE)

    @property
    def name(self):
        return str(self._property("Accessible", "Name"))

    @property
    def description(self):
        return str(self._property("Accessible", "Description"))

    @property
    def role(self):
        return str(self._call("Accessible", "GetRoleName"))

    @property
    def states(self):
        low, high = self._call("Accessible", "GetState")
        bits = int(low) | int(high) << 32
        return {state for i, state in enumerate(STATES) if bits >> i & 1}

    @property
    def children(self):
        return [Node(self._bus, owner, path)
                for owner, path in self._call("Accessible", "GetChildren") if path != NULL_PATH]

    @property
    def rect(self):
        """Its place on the screen."""
        return Rect(*map(int, self._call("Component", "GetExtents", dbus.UInt32(0))))

    @property
    def text(self):
        return str(self._call("Text", "GetText", dbus.Int32(0), dbus.Int32(-1)))

    @text.setter
    def text(self, text):
        if not self._call("EditableText", "SetTextContents", text):
            raise AssertionError(f"{self.name!r} refused the text")

    @property
    def actions(self):
        count = int(self._property("Action", "NActions"))
        return [str(self._call("Action", "GetName", dbus.Int32(i))) for i in range(count)]

    def do(self, action):
        actions = self.actions
        if action not in actions:
            raise AssertionError(f"{self.name!r} offers {actions} and not {action!r}")
        self._call("Action", "DoAction", dbus.Int32(actions.index(action)))

    def focus(self):
        self._call("Component", "GrabFocus")

    def walk(self, depth=0):
        """(depth, node) of all that is shown below it, parents before their children."""
        for child in self.children:
            try:
                if "showing" not in child.states:
                    continue
                yield depth, child
                yield from child.walk(depth + 1)
            except dbus.DBusException:
                continue    # it went away while we looked

    def find_all(self, role=None, name=None):
        """The shown nodes below it with that role and a name that matches the whole pattern."""
        found = []
        for _, node in self.walk():
            try:
                if (role in (None, node.role)
                        and (name is None or re.fullmatch(name, node.name))):
                    found.append(node)
            except dbus.DBusException:
                continue
        return found


class Accessibility:
    """The accessible tree of one desktop."""

    def __init__(self, session_bus):
        launcher = session_bus.get_object("org.a11y.Bus", "/org/a11y/bus", introspect=False)
        address = launcher.GetAddress(dbus_interface="org.a11y.Bus", timeout=DEFAULT_TIMEOUT)
        self._bus = dbus.bus.BusConnection(str(address))
        self._bus.set_exit_on_disconnect(False)

    def close(self):
        self._bus.close()

    def applications(self):
        root = Node(self._bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        return root.children

    def find_all(self, role=None, name=None):
        return [node for application in self.applications()
                for node in application.find_all(role, name)]

    def find(self, role=None, name=None, limit=DEFAULT_TIMEOUT):
        """The first such node, waited for."""
        return wait_for(lambda: self.find_all(role, name), limit, f"{role} {name!r} to be shown")[0]

    def press(self, role, name):
        self.find(role, name).do("Press")

    def dump(self):
        """All that is shown, for the log of a test that failed."""
        lines = []
        for application in self.applications():
            for depth, node in application.walk():
                try:
                    lines.append(f"{'  ' * depth}{node.role} {node.name!r} {tuple(node.rect)} "
                                 f"{sorted(node.states & {'focused', 'selected', 'sensitive'})}")
                except dbus.DBusException:
                    lines.append("  " * depth + "(gone)")
        return "\n".join(lines)
