"""A Wayland compositor as phones run it, without a screen."""

from .checks import wait_until
from .desk import Program

CONFIGURATION = """[core]
xwayland=false
[output:HEADLESS-1]
mode = 720x1440
scale = 2
"""


class Compositor:
    """environment: what a Wayland program needs to run in it."""

    def __init__(self, desk, log):
        configuration = desk.folder / "phoc.ini"
        configuration.write_text(CONFIGURATION, encoding="utf-8")
        environment = {name: value for name, value in desk.environment.items()
                       if name != "DISPLAY"}
        self._program = Program(
            ["phoc", "-C", configuration],
            dict(environment, WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1",
                 WLR_RENDERER="pixman"), log)
        socket = desk.folder / "wayland-0"
        wait_until("the compositor listens", socket.is_socket, detail=self._program.output)
        self.environment = dict(environment, WAYLAND_DISPLAY="wayland-0")

    def stop(self):
        self._program.stop()
