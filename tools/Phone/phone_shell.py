"""The compositor and the shell of a phone, drawn into memory."""

import subprocess
import time
from pathlib import Path

from harness.checks import wait_until
from harness.desk import Program

CONFIGURATION = """[core]
xwayland=false
[output:X11-1]
mode = {width}x{height}
scale = 2
rotate = {rotate}
"""
SHELL = "/usr/libexec/phosh"
# Of a picture that grim writes without packing it.
HEADER = 16
BRIGHT = 150


class PhoneShell:
    """Fills the desk's display, two pixels a point."""

    def __init__(self, desk, orientation, packaged, log):
        self._configuration = desk.folder / "phoc.ini"
        self._configuration.write_text(CONFIGURATION.format(
            width=desk.width, height=desk.height,
            rotate="90" if orientation == "landscape" else "normal"), encoding="utf-8")
        self._desk = desk
        self._log = log
        self._programs = []
        self._moves = 0
        self.environment = {key: value for key, value in desk.environment.items()
                            if key != "DISPLAY"}
        self.environment.update(
            # The launcher shows only what it finds on the path.
            PATH=f"{packaged}/bin:{desk.environment['PATH']}",
            XDG_DATA_DIRS=f"{packaged}/share:/usr/local/share:/usr/share",
            GSETTINGS_BACKEND="memory", XDG_CURRENT_DESKTOP="Phosh:GNOME",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QUICK_BACKEND="software")

    def start(self, name):
        """name: phoc or phosh."""
        compositor = ["phoc", "-C", self._configuration]
        if name == "phosh":
            compositor += ["-S", "-E", f"{SHELL} -U"]
        # On a display in memory and not without one: only so it has a pointer and a keyboard,
        # without which the shell does not start.
        self._run(compositor, WLR_BACKENDS="x11", WLR_RENDERER="pixman", GDK_BACKEND="wayland",
                  DISPLAY=self._desk.environment["DISPLAY"])
        socket = self._desk.folder / "wayland-0"
        wait_until("the compositor listens", socket.is_socket, 20, self._log.read_text)
        self.environment["WAYLAND_DISPLAY"] = "wayland-0"
        if name == "phosh":
            self._run(["squeekboard"], GDK_BACKEND="wayland")
            wait_until("the launcher unfolds", self._shows_launcher, 60, self._log.read_text)
            # What nothing moved by may not be drawn yet: another scale and back draws it all.
            for scale in ("1", "2"):
                subprocess.run(["wlr-randr", "--output", "X11-1", "--scale", scale], check=True,
                               env=self.environment, timeout=20)
                time.sleep(1)

    def _shows_launcher(self):
        """Below the panel everything is black before. It is drawn where something moves, so the
        pointer goes all over the screen."""
        self._moves += 1
        subprocess.run(["xdotool", "mousemove", str(self._moves * 173 % self._desk.width),
                        str(self._moves * 311 % self._desk.height)], check=True,
                       env=self._desk.environment, timeout=20)
        time.sleep(0.3)
        pixels = self._grim("-t", "ppm", "-").stdout[HEADER:]
        return max(pixels[len(pixels) // 4:], default=0) > BRIGHT

    def start_console(self, binary, service, log):
        """Gives its process id."""
        program = Program([binary], dict(
            self.environment, TRELLISPORT_BASE_URL=service.base_url,
            TRELLISPORT_CA_FILE=str(service.authority)), log)
        self._programs.append(program)
        return program.pid

    def tap(self, x, y):
        """At a place of the screen in points, counted from its upper left corner; not on a turned
        screen."""
        subprocess.run(["xdotool", "mousemove", str(2 * x), str(2 * y), "click", "1"], check=True,
                       env=self._desk.environment, timeout=20)

    def picture(self, file):
        """Of the whole screen, once it stays the same."""
        before, now = b"", None
        end = time.monotonic() + 15
        while now != before and time.monotonic() < end:
            before = now
            time.sleep(0.7)
            self._grim(file)
            now = Path(file).read_bytes()

    def stop(self):
        for program in reversed(self._programs):
            program.stop()

    def _grim(self, *options):
        return subprocess.run(["grim", *options], env=self.environment, check=False,
                              capture_output=True, timeout=20)

    def _run(self, command, **more):
        self._programs.append(Program(command, dict(self.environment, **more), self._log))
