"""Reads and operates a program through the accessibility bus.

Every look asks the program anew; nothing is remembered between two looks.
"""

from dataclasses import dataclass, field

from gi.repository import Gio, GLib

PREFIX = "org.a11y.atspi."
REGISTRY = (PREFIX + "Registry", "/org/a11y/atspi/accessible/root")
CALL_LIMIT_MS = 5000

# The protocol's numbers; the names that programs give with them differ between toolkit versions.
ROLES = {2: "alert", 7: "check box", 20: "filler", 23: "window", 27: "image", 29: "label",
         31: "list", 32: "list item", 37: "page tab", 38: "page tab list", 39: "panel",
         42: "progress bar", 43: "button", 49: "scroll area", 61: "text", 62: "toggle button",
         75: "application", 79: "text", 83: "heading", 85: "section", 88: "link", 98: "list",
         99: "panel", 101: "notification", 116: "label"}
STATES = {"checked": 4, "enabled": 8, "focusable": 11, "focused": 12, "multi line": 17,
          "selected": 23, "sensitive": 24, "showing": 25, "visible": 30, "read only": 43}


class Gone(Exception):
    """The program or the thing in it is not there any more."""


@dataclass
class Node:
    """One accessible thing, as it was when it was looked at. Places are in pixels."""

    address: tuple
    role: str
    name: str
    states: frozenset
    x: int = 0
    y: int = 0
    width: int = 0
    height: int = 0
    children: list = field(default_factory=list)

    @property
    def bottom(self):
        return self.y + self.height

    @property
    def right(self):
        return self.x + self.width

    @property
    def showing(self):
        return "showing" in self.states

    def walk(self):
        """This one and all below it, in the program's order."""
        yield self
        for child in self.children:
            yield from child.walk()

    def lines(self, depth=0):
        """The tree as text, for a person."""
        place = f"({self.x}, {self.y}, {self.width} x {self.height})"
        more = "".join(f" [{word}]" for word in sorted(
            self.states & {"checked", "focused", "selected"}))
        hidden = "" if self.showing else " hidden"
        yield f"{'  ' * depth}{self.role} {self.name!r} {place}{hidden}{more}"
        for child in self.children:
            yield from child.lines(depth + 1)


class AccessibleProgram:
    """One program on the accessibility bus."""

    def __init__(self, bus, pid):
        self._bus = bus
        self._pid = pid
        self._root = None

    def present(self):
        """Whether it has registered itself."""
        if self._root is None:
            for address in self._call(REGISTRY, "Accessible", "GetChildren"):
                if self._owner(address[0]) == self._pid:
                    self._root = tuple(address)
        return self._root is not None

    def look(self):
        """The whole tree, from the application down. Raises Gone when it changed meanwhile."""
        return self._node(self._root)

    def actions(self, node):
        """The names of what can be done with it, as it is now."""
        if PREFIX + "Action" not in self._call(node.address, "Accessible", "GetInterfaces"):
            return []
        return [action[0] for action in self._call(node.address, "Action", "GetActions")]

    def act(self, node, action):
        """Does the named action. Raises Gone when the node is not there or can't do it."""
        done = self._call(node.address, "Action", "DoAction",
                          GLib.Variant("(i)", (self.actions(node).index(action),)))
        if not done:
            raise Gone(f"{node.role} {node.name!r} refused to {action}")

    def text(self, node):
        """What stands in a text field."""
        return self._call(node.address, "Text", "GetText", GLib.Variant("(ii)", (0, -1)))

    def _owner(self, connection):
        reply = self._bus.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "GetConnectionUnixProcessID", GLib.Variant("(s)", (connection,)), None,
            Gio.DBusCallFlags.NONE, CALL_LIMIT_MS, None)
        return reply.unpack()[0]

    def _node(self, address):
        low, high = self._call(address, "Accessible", "GetState")
        bits = low | high << 32
        node = Node(
            address=address,
            role=self._role(address),
            name=self._property(address, "Name"),
            states=frozenset(name for name, bit in STATES.items() if bits >> bit & 1))
        if node.role != "application":
            node.x, node.y, node.width, node.height = self._call(
                address, "Component", "GetExtents", GLib.Variant("(u)", (0,)))
        # What stands on a screen that is not shown is of no interest.
        if node.role == "application" or "visible" in node.states:
            node.children = [self._node(tuple(child))
                             for child in self._call(address, "Accessible", "GetChildren")]
        return node

    def _role(self, address):
        number = self._call(address, "Accessible", "GetRole")
        return ROLES.get(number, f"role {number}")

    def _property(self, address, name):
        return self._call(address, None, "Get",
                          GLib.Variant("(ss)", (PREFIX + "Accessible", name)))

    def _call(self, address, interface, method, arguments=None):
        interface = PREFIX + interface if interface else "org.freedesktop.DBus.Properties"
        try:
            reply = self._bus.call_sync(address[0], address[1], interface, method, arguments,
                                        None, Gio.DBusCallFlags.NONE, CALL_LIMIT_MS, None)
        except GLib.Error as error:
            raise Gone(f"{method} at {address[1]}: {error.message}") from error
        return reply.unpack()[0]
