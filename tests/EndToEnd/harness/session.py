"""What a user's session adds for notifications: a push service, and starting the console by name."""

import os
import re
import signal
import subprocess
from pathlib import Path

from gi.repository import Gio, GLib

from .accessible import AccessibleProgram, Gone
from .checks import check_equal, wait_until
from .desk import Program, connect
from .practice_service import PracticeService
from .screen import Screen
from .window_manager import ask_to_close

LIMIT_MS = 20_000


class PushingService(PracticeService):
    """The practice service, asked for what concerns pushes."""

    def happen_somewhere(self, event):
        """The agent does it now, in a project to which it can happen."""
        return self._control("tick", event=event)


class PushService:
    """The practice push service."""

    def __init__(self, binary, data, environment, log):
        self._program = Program([binary, "--data", data, "--port", 0], environment, log)
        wait_until("the push service listens", lambda: re.search(
            r"^push endpoints at ", self._program.output(), re.MULTILINE),
            detail=self._program.output)

    def stop(self):
        self._program.stop()


class InstalledConsole:
    """The console as the session bus knows it after an installation: it starts it by its name."""

    def __init__(self, binary, packaged, desk, service, console_environment):
        """packaged: the service file that is installed with it."""
        self._desk = desk
        self._packaged = packaged
        self._identity = packaged.stem
        self._bus = connect(desk.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.log = desk.folder / "installed-console.log"
        self._binary = binary
        self._environment = dict(
            console_environment, TRELLISPORT_BASE_URL=service.base_url,
            TRELLISPORT_CA_FILE=str(service.authority), QT_QUICK_BACKEND="software",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")

    def install(self):
        """The packaged file as it is, but for the program's place. The program gets nothing of the
        bus's own environment, so that only what is named here counts."""
        variables = " ".join(f"{name}={value}" for name, value in self._environment.items())
        starter = self._desk.folder / "start-console"
        starter.write_text(
            f"#!/bin/sh\nexec env -i {variables} {self._binary} \"$@\" >>{self.log} 2>&1\n",
            encoding="utf-8")
        starter.chmod(0o755)
        content, count = re.subn(r"^Exec=/\S*/trellisport-manager(?= |$)", f"Exec={starter}",
                                 self._packaged.read_text(encoding="utf-8"), flags=re.MULTILINE)
        check_equal("lines of the packaged service file that name the program", count, 1)
        (self._desk.folder / "services" / self._packaged.name).write_text(content,
                                                                          encoding="utf-8")
        self._call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                   "ReloadConfig")

    def pid(self):
        """None when it does not run."""
        try:
            return self._call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                              "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                              GLib.Variant("(s)", (self._identity,)))[0]
        except GLib.Error:
            return None

    def start(self, *options):
        """As a launcher or the user does; the program it gives may end at once."""
        return Program([self._binary, *options], self._environment, self.log)

    def start_in_background(self):
        self._call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                   "StartServiceByName", GLib.Variant("(su)", (self._identity, 0)))

    def close_window(self):
        """The user closes it; X only."""
        environment = self._desk.environment
        found = subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--pid", str(self.pid())], env=environment,
            check=True, capture_output=True, text=True, timeout=20).stdout
        ask_to_close(environment["DISPLAY"], int(found.split()[-1]))

    def end(self):
        pid = self.pid()
        if pid:
            os.kill(pid, signal.SIGTERM)
            wait_until("the console has ended", lambda: not self.pid())

    def window(self):
        """What its window shows; None without one."""
        pid = self.pid()
        if pid is None:
            return None
        program = AccessibleProgram(self._desk.accessibility, pid)
        try:
            screen = Screen(program.look()) if program.present() else None
        except Gone:
            return None
        return screen if screen and screen.window else None

    def press(self, role, name):
        """Presses what has the role and the name, also what must be scrolled to."""
        program = AccessibleProgram(self._desk.accessibility, self.pid())

        def probe():
            try:
                nodes = Screen(program.look()).present() if program.present() else []
                node = next((one for one in nodes if (one.role, one.name) == (role, name)), None)
                if node is None:
                    return False
                program.act(node, "Toggle" if "Toggle" in program.actions(node) else "Press")
                return True
            except Gone:
                return False  # It changed while it was looked at.

        wait_until(f"the {role} {name!r} can be pressed", probe, 20)

    def wait_for(self, what, holds):
        seen = None

        def probe():
            nonlocal seen
            seen = self.window()
            return seen if seen and holds(seen) else None

        return wait_until(what, probe, 20,
                          lambda: "\n".join(seen.lines()) if seen else self.output())

    def output(self):
        return Path(self.log).read_text(encoding="utf-8") if self.log.exists() else ""

    def _call(self, name, path, interface, method, arguments=None):
        return self._bus.call_sync(name, path, interface, method, arguments, None,
                                   Gio.DBusCallFlags.NONE, LIMIT_MS, None).unpack()
