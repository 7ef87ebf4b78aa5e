"""A private place to run graphical programs in: display, session bus and accessibility bus.

Nothing is shared with the machine's own session or with another test: the display and the sockets
are free ones, the home folder is new, and all of it goes away in the end.
"""

import ctypes
import os
import shutil
import signal
import subprocess
import tempfile
from pathlib import Path

from gi.repository import Gio

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
ACCESSIBILITY_SERVICE = Path("/usr/share/dbus-1/services/org.a11y.Bus.service")
# What a program may inherit from whoever runs the test.
INHERITED = ("LD_LIBRARY_PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS")
PR_SET_PDEATHSIG = 1
STOP_LIMIT = 10
# Stands in for what opens links: it only notes them.
BROWSER = """#!/bin/sh
echo "$1" >>"{folder}/opened"
"""


def _die_with_parent():
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def connect(address):
    """A connection to the bus at the address."""
    flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
             | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


class Program:
    """A running program whose output goes to a file."""

    def __init__(self, command, environment, log, pass_fds=()):
        self.name = Path(command[0]).name
        self.log = Path(log)
        with open(self.log, "ab") as output:
            self._process = subprocess.Popen(
                [str(word) for word in command], env=environment, stdin=subprocess.DEVNULL,
                stdout=output, stderr=output, pass_fds=pass_fds, preexec_fn=_die_with_parent)

    @property
    def pid(self):
        return self._process.pid

    def exit_code(self):
        """None while it runs."""
        return self._process.poll()

    def output(self):
        return self.log.read_text(encoding="utf-8", errors="replace")

    def stop(self):
        """Asks it to end, and gives its exit code; a negative one is the signal that ended it."""
        if self.exit_code() is None:
            self._process.terminate()
        try:
            return self._process.wait(STOP_LIMIT)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()
            raise


class Desk:
    """Use it in a with statement. environment: what a program needs to run here."""

    def __init__(self, width, height):
        self.width = width
        self.height = height
        self._programs = []

    def __enter__(self):
        # A short path: sockets lie in it.
        self.folder = Path(tempfile.mkdtemp(prefix="desk-", dir="/tmp"))
        try:
            self._begin()
        except BaseException:
            self._end()
            raise
        return self

    def __exit__(self, *_):
        self._end()

    def _begin(self):
        home = self.folder / "home"
        home.mkdir()
        temporary = self.folder / "tmp"
        temporary.mkdir()
        tools = self.folder / "bin"
        tools.mkdir()
        browser = tools / "xdg-open"
        browser.write_text(BROWSER.format(folder=self.folder), encoding="utf-8")
        browser.chmod(0o755)
        self.environment = {name: os.environ[name] for name in INHERITED if name in os.environ}
        self.environment.update(
            PATH=f"{tools}:{os.environ['PATH']}", HOME=str(home), LC_ALL="C.UTF-8",
            TMPDIR=str(temporary), XDG_RUNTIME_DIR=str(self.folder), DISPLAY=self._start_display(),
            DBUS_SESSION_BUS_ADDRESS=self._bus_address())
        self._start_session_bus()
        self.accessibility = connect(self._accessibility_address())

    def opened_links(self):
        """What programs have given to the browser so far."""
        notes = self.folder / "opened"
        return notes.read_text(encoding="utf-8").splitlines() if notes.exists() else []

    def _start_display(self):
        command = ["Xvfb", "-displayfd", "{}", "-screen", 0,
                   f"{self.width}x{self.height}x24", "-nolisten", "tcp", "-noreset", "-nocursor",
                   "-fbdir", self.folder]
        display = self._run_until_ready(command, dict(os.environ))
        self.framebuffer = self.folder / "Xvfb_screen0"
        return f":{display}"

    def _bus_address(self):
        return f"unix:path={self.folder}/bus"

    def _start_session_bus(self):
        services = self.folder / "services"
        services.mkdir()
        shutil.copy(ACCESSIBILITY_SERVICE, services)
        configuration = self.folder / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(folder=self.folder), encoding="utf-8")
        self._run_until_ready(
            ["dbus-daemon", "--nofork", "--nopidfile", f"--config-file={configuration}",
             "--print-address={}"], self.environment)

    def _accessibility_address(self):
        session = connect(self._bus_address())
        reply = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                  None, None, Gio.DBusCallFlags.NONE, 20_000, None)
        session.close_sync(None)
        return reply.unpack()[0]

    def _run_until_ready(self, command, environment):
        """Gives the line that the program writes to the descriptor {} once it is ready."""
        reader, writer = os.pipe()
        program = Program([str(word).format(writer) for word in command], environment,
                          self.folder / f"{command[0]}.log", (writer,))
        self._programs.append(program)
        os.close(writer)
        with os.fdopen(reader) as lines:
            line = lines.readline().strip()
        if not line:
            raise RuntimeError(f"{command[0]} does not start:\n{program.output()}")
        return line

    def _end(self):
        # The bus first: what it started ends with it, and needs the display no more.
        for program in reversed(self._programs):
            program.stop()
        shutil.rmtree(self.folder, ignore_errors=True)
