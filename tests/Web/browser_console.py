"""The console in a phone's browser, seen and operated by the elements that it has for screen readers."""

import tempfile
from pathlib import Path

from harness.accessible import Gone, Node
from harness.checks import CheckFailed, check, wait_until
from harness.console import Console
from harness.screen import Screen
from browser import PagePicture

ROLES = {"window": "window", "text": "label", "button": "button", "checkbox": "check box",
         "tab": "page tab", "tablist": "page tab list", "textbox": "text", "heading": "heading",
         "link": "link", "list": "list", "listitem": "list item", "progressbar": "progress bar",
         "img": "image", "status": "notification", "alert": "alert", "group": "panel", "": "filler",
         "menu": "panel", "menuitem": "button"}
ACTIONS = {"press": "Press", "toggle": "Toggle", "focus": "SetFocus"}
KEYS = {"ctrl+a": "Control+a", "BackSpace": "Backspace"}


class BrowserConsole(Console):
    """Does what the harness asks of a console, in a page."""

    def __init__(self, browser, size):
        self._browser = browser
        self._width, self._height = size
        self._texts = {}
        self._actions = {}
        self._has_page = False

    def start(self, service):
        self._browser.call("open", url=service.page_url())
        self._has_page = True
        self.wait_for_words()

    def wait_for_words(self):
        """The page has been loaded; returns when the program is up in it."""
        wait_until("the console speaks", lambda: self._tree() is not None, 60, self.output)

    def stop(self):
        if self._has_page:
            self._has_page = False
            self._browser.call("leave")

    def running(self):
        return self._has_page

    def output(self):
        return "\n".join(self._browser.call("said"))

    def actions(self, node):
        return [self._actions[node.address]] if self._actions.get(node.address) else []

    def save_picture(self, path):
        self._browser.call("picture", file=str(path))

    def picture_at_rest(self):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder) / "page.png"

            def picture():
                self._browser.call("picture", file=str(file))
                return file.read_bytes()

            previous = picture()

            def rested():
                nonlocal previous
                current = picture()
                still = current == previous
                previous = current
                return still

            wait_until("the picture comes to rest", rested)
            return PagePicture(file)

    def opened_by(self, role, name):
        before = len(self._browser.call("opened"))
        self.press(role, name)
        wait_until(f"the {role} {name!r} opens something",
                   lambda: [one for one in self._browser.call("opened")[before:]
                            if one.startswith("http")])
        return [one for one in self._browser.call("opened")[before:] if one.startswith("http")][-1]

    def keys(self, *keys):
        self._browser.call("keys", keys=[KEYS.get(key, key) for key in keys])

    def drag_up(self, from_y, to_y):
        x = self._width - 14
        self._browser.call("drag", pause=15, rest=300,
                           path=[[x, from_y - (from_y - to_y) * part / 8] for part in range(9)])

    def swipe_back(self):
        y = self._height // 2
        self._browser.call("drag", pause=15, rest=0,
                           path=[[2 + self._width * part / 10, y] for part in range(9)])

    def wheel_up(self, y):
        """A good pull down."""
        x = self._width - 14
        self._browser.call("drag", pause=10, rest=0,
                           path=[[x, y - 150 + 300 * part / 8] for part in range(9)])

    def check_quiet(self):
        complaints = [message for message in self._browser.call("said") if not is_expected(message)]
        check("the console complained about nothing", not complaints, "\n".join(complaints))

    # What the base class does through the accessibility bus and the display.

    def look(self):
        tree = self._tree()
        if tree is None:
            raise CheckFailed("the console shows nothing")
        self._texts, self._actions = {}, {}
        return Screen(self._node(tree, is_root=True))

    def look_at_rest(self, seconds=0.0):
        wait_until("the console comes to rest", lambda: not self._browser.call("busy"))
        return super().look_at_rest(seconds)

    def type_text(self, name, text, index=0):
        self.focus(name, index)
        self.keys("ctrl+a", "BackSpace")
        if text:
            self._browser.call("type", text=text)
        wait_until(f"the field {name!r} holds {text!r}",
                   lambda: self.field_text(name, index) == text,
                   detail=lambda: f"it holds {self.field_text(name, index)!r}")

    def field_text(self, name, index=0):
        return self._texts[self._operable("text", name, index).address]

    def press(self, role, name):
        for _ in range(20):
            # What is pressed while it changes is not pressed.
            self.look_at_rest()
            node = self._operable(role, name)
            if set(self.actions(node)) & {"Press", "Toggle"}:
                if self._browser.call("act", id=node.address[0]):
                    return
            else:
                raise CheckFailed(f"the {role} {name!r} can't be pressed: {self.actions(node)}")
        raise CheckFailed(f"the {role} {name!r} can't be reached")

    def focus(self, name, index=0):
        node = self._operable("text", name, index)
        if not self._browser.call("act", id=node.address[0]):
            raise Gone(f"text {name!r}")
        self.wait_for(f"the field {name!r} has the keyboard", lambda screen: any(
            "focused" in field.states for field in screen.all("text", name)))

    def _tree(self):
        return self._browser.call("look")

    def _node(self, seen, is_root=False):
        role = "window" if is_root else ROLES.get(seen["role"], seen["role"])
        states = frozenset(seen["states"].split())
        if "offscreen" not in states:
            states |= {"showing"}
        node = Node((seen["id"],), role, seen["name"], states | {"visible"}, *seen["place"])
        self._texts[node.address] = seen.get("value")
        self._actions[node.address] = ACTIONS.get(seen.get("action"))
        node.children = [self._node(child) for child in seen["children"]]
        return node


def is_expected(message):
    """What browsers say of replies that tests have made fail, and of the toolkit's own way to wait."""
    return ("Failed to load resource" in message or "OpenType support missing" in message
            or "Qt has caught an exception" in message)
