"""The console as a program that is seen and operated."""

import subprocess

from .accessible import AccessibleProgram, Gone
from .checks import CheckFailed, check, wait_until
from .desk import Program
from .picture import Picture
from .screen import Screen


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

    def look_at_rest(self):
        """What it shows once nothing moves any more."""
        previous = self.look()

        def rested():
            nonlocal previous
            current = self.look()
            still = current.lines() == previous.lines()
            previous = current
            return still

        wait_until("the console comes to rest", rested)
        return previous

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

    def press(self, role, name):
        """Presses what has the role and the name."""
        for _ in range(20):
            node = self._operable(role, name)
            action = "Toggle" if "Toggle" in node.actions else "Press"
            if action not in node.actions:
                raise CheckFailed(f"the {role} {name!r} can't be pressed: {node.actions}")
            try:
                return self._accessible.act(node, action)
            except Gone:
                continue
        raise CheckFailed(f"the {role} {name!r} can't be reached")

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

    def wheel(self, x, y, clicks):
        """Turns the wheel over the point; clicks below 0 turn it up."""
        button = 5 if clicks > 0 else 4
        self._xdotool("mousemove", x, y, "click", "--repeat", abs(clicks), "--delay", 4, button)

    def park_pointer(self):
        """Out of the way, where it hovers over nothing."""
        self._xdotool("mousemove", self._desk.width - 1, 60)

    def check_quiet(self):
        """Nothing has been complained about."""
        check("the console wrote nothing to its output", not self.output(), self.output())

    def _operable(self, role, name, index=0):
        def probe():
            found = self.look().all(role, name)
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
