"""The console as a program that is seen and operated."""

import subprocess
import time

from .accessible import AccessibleProgram, Gone
from .checks import CheckFailed, check, wait_until
from .desk import Program
from .picture import Picture
from .screen import Screen

# Beside the rows, where nothing is pressed, and short of the scroll bar, which a pointer would drag.
EDGE = 14


class Console:
    """Operates it like a person does: by what it shows, and never by what it is made of."""

    def __init__(self, binary, desk, log):
        self._binary = binary
        self._desk = desk
        self._log = log
        self._program = None

    def start(self, service):
        environment = dict(
            self._desk.environment, QT_QPA_PLATFORM="xcb", QT_QUICK_BACKEND="software",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", TRELLISPORT_BASE_URL=service.base_url,
            TRELLISPORT_CA_FILE=str(service.authority))
        self._program = Program([self._binary], environment, self._log)
        self._accessible = AccessibleProgram(self._desk.accessibility, self._program.pid)
        wait_until("the console is on the accessibility bus", self._is_there, 20,
                   self._program.output)
        window = wait_until("the console's window is there", lambda: self._xdotool(
            "search", "--onlyvisible", "--pid", self._program.pid)).split()[-1]
        # There is no window manager to do it.
        self._xdotool("windowmove", "--sync", window, 0, 0)
        self._xdotool("windowfocus", "--sync", window)

    def stop(self):
        if self._program is None:
            return
        code = self._program.stop()
        self._program = None
        # A Qt program that handles no signal ends by it.
        if code not in (0, -15):
            raise CheckFailed(f"the console ended with {code}")

    def output(self):
        return self._log.read_text(encoding="utf-8", errors="replace")

    def running(self):
        return self._program is not None and self._program.exit_code() is None

    def look(self):
        """What it shows now."""
        for _ in range(20):
            self._must_run()
            try:
                return Screen(self._accessible.look())
            except Gone:
                continue  # It changed while it was read.
        raise CheckFailed("the console changes faster than it can be read")

    def look_at_rest(self, seconds=0.0):
        """What it shows once nothing moves any more, and has not for so long."""
        previous = self.look()
        since = time.monotonic()

        def rested():
            nonlocal previous, since
            current = self.look()
            if current.lines() != previous.lines():
                previous, since = current, time.monotonic()
                return False
            return time.monotonic() >= since + seconds

        wait_until("the console comes to rest", rested)
        return previous

    def save_picture(self, path):
        """Writes a PNG file of what the display shows now."""
        Picture(self._desk.framebuffer).save(path)

    def picture_at_rest(self):
        """The display's picture once it stays the same."""
        previous = Picture(self._desk.framebuffer)

        def rested():
            nonlocal previous
            current = Picture(self._desk.framebuffer)
            still = current.pixels == previous.pixels
            previous = current
            return still

        wait_until("the picture comes to rest", rested)
        return previous

    def wait_for(self, what, holds, limit=10.0):
        """The first screen for which holds(screen) is true; gives the screen."""
        seen = None

        def probe():
            nonlocal seen
            seen = self.look()
            return seen if holds(seen) else None

        return wait_until(what, probe, limit, lambda: "\n".join(seen.lines()))

    def actions(self, node):
        """The names of what can be done with what is seen."""
        return self._accessible.actions(node)

    def press(self, role, name):
        """Presses what has the role and the name."""
        for _ in range(20):
            node = self._operable(role, name)
            try:
                actions = self.actions(node)
                action = "Toggle" if "Toggle" in actions else "Press"
                if action not in actions:
                    raise CheckFailed(f"the {role} {name!r} can't be pressed: {actions}")
                return self._accessible.act(node, action)
            except Gone:
                continue
        raise CheckFailed(f"the {role} {name!r} can't be reached")

    def opened_by(self, role, name):
        """Presses a link; gives the address that the browser is told to open."""
        before = self._desk.opened_links()
        self.press(role, name)
        wait_until(f"the {role} {name!r} opens something",
                   lambda: len(self._desk.opened_links()) > len(before))
        return self._desk.opened_links()[-1]

    def focus(self, name, index=0):
        """Puts the keyboard into the text field of the name."""
        node = self._operable("text", name, index)
        self._accessible.act(node, "SetFocus")
        self.wait_for(f"the field {name!r} has the keyboard", lambda screen: any(
            "focused" in field.states for field in screen.all("text", name)))

    def type_text(self, name, text, index=0):
        """Replaces the text of the field, key by key."""
        self.focus(name, index)
        self.keys("ctrl+a", "BackSpace")
        if text:
            self._xdotool("type", "--delay", 4, text)
        field = self._operable("text", name, index)
        wait_until(f"the field {name!r} holds {text!r}",
                   lambda: self._accessible.text(field) == text,
                   detail=lambda: f"it holds {self._accessible.text(field)!r}")

    def field_text(self, name, index=0):
        return self._accessible.text(self._operable("text", name, index))

    def keys(self, *keys):
        self._xdotool("key", "--delay", 4, *keys)

    def drag_up(self, from_y, to_y):
        """A finger near the trailing edge that pulls the content up and rests before it lifts."""
        x = self._desk.width - EDGE
        path = [word for part in range(1, 9)
                for word in ("mousemove", x, from_y - (from_y - to_y) * part // 8, "sleep", 0.015)]
        # Lifted sooner, the finger would make the content fly on.
        self._xdotool("mousemove", x, from_y, "mousedown", 1, *path, "sleep", 0.15, "mouseup", 1)

    def swipe_back(self):
        """A finger that goes from the leading edge to beyond the middle."""
        y = self._desk.height // 2
        path = [word for part in range(1, 9)
                for word in ("mousemove", 2 + self._desk.width * part // 10, y, "sleep", 0.015)]
        self._xdotool("mousemove", 2, y, "mousedown", 1, *path, "mouseup", 1)

    def wheel_up(self, y):
        """A good turn of the wheel over the content at that height."""
        self._xdotool("mousemove", self._desk.width - EDGE, y,
                      "click", "--repeat", 8, "--delay", 4, 4)

    def check_quiet(self):
        """Nothing has been complained about, but that the machine lacks a font."""
        complaints = [line for line in self.output().splitlines()
                      if not line.strip().startswith("OpenType support missing")]
        check("the console complained about nothing", not complaints, "\n".join(complaints))

    def _operable(self, role, name, index=0):
        def probe():
            screen = self.look()
            # What is seen comes before what must be scrolled to.
            found = screen.all(role, name) or [
                node for node in screen.present() if (node.role, node.name) == (role, name)]
            return found[index] if len(found) > index else None

        return wait_until(f"there is a {role} named {name!r}", probe,
                          detail=lambda: "\n".join(self.look().lines()))

    def _is_there(self):
        self._must_run()
        return self._accessible.present() and self.look().window

    def _must_run(self):
        code = self._program.exit_code()
        if code is not None:
            raise CheckFailed(f"the console ended by itself with {code}:\n{self.output()}")

    def _xdotool(self, *words):
        run = subprocess.run(["xdotool", *map(str, words)], env=self._desk.environment,
                             capture_output=True, text=True, timeout=20, check=False)
        return run.stdout.strip()
