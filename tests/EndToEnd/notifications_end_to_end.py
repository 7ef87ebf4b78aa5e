"""From the agent's question to the console's screen, through a real push and a notification service
that others wrote.

    notifications_end_to_end.py --console FILE --service FILE --push FILE --id ID --artifacts DIR
                                [--wayland]
"""

import argparse
import shutil
import sys
import traceback
from pathlib import Path

from harness.checks import CheckFailed, chapter, check, check_equal, wait_until
from harness.compositor import Compositor
from harness.daemons import Dunst, Mako
from harness.desk import Desk
from harness.session import InstalledConsole, PushingService, PushService

PHONE = (390, 844)


def selected_tab(screen):
    """The root tab that is shown; tabs of a project come before them."""
    tabs = [tab.name for tab in screen.all("page tab") if "checked" in tab.states
            or "selected" in tab.states]
    return tabs[-1] if tabs else None


class Story:
    """What happens again and again: something happens, it is shown, the user taps."""

    def __init__(self, service, daemon, console):
        self.service = service
        self.daemon = daemon
        self.console = console
        self.seen = 0

    def device_is_known(self):
        wait_until("the service knows the console's device token", self.service.devices, 20,
                   self.console.output)

    def happens(self, event):
        """The agent does something; gives what the notification service shows for it."""
        before = self.seen
        self.service.happen_somewhere(event)

        def news():
            shown = self.daemon.shown()
            return shown[-1] if len(shown) > before else None

        shown = wait_until(f"the notification service shows the {event}", news, 20,
                           self.console.output)
        self.seen = len(self.daemon.shown()) if isinstance(self.daemon, Dunst) else 0
        return shown

    def tap(self):
        self.daemon.tap()
        wait_until("the opened notification goes off the screen",
                   lambda: self.daemon.on_screen() == 0)
        self.seen = len(self.daemon.shown()) if isinstance(self.daemon, Dunst) else 0


def check_decision(shown):
    check_equal("the decision's application", shown.application, "TrellisportManager")
    check_equal("the decision's title", shown.summary, "Decision needed")
    check("the decision's question is shown", shown.body != "")
    check_equal("the decision's urgency", shown.urgency, "critical")
    check_equal("the decision's category", shown.category, "im.received")
    check_equal("the decision's actions", shown.actions, ("default",))


def with_the_console_open(story):
    chapter("With the console open")
    program = story.console.start()
    story.console.wait_for("the console shows its dashboard",
                           lambda screen: selected_tab(screen) == "Dashboard")
    story.device_is_known()
    shown = story.happens("decision")
    check_decision(shown)
    check_equal("the tab while the notification is only shown",
                selected_tab(story.console.window()), "Dashboard")
    story.tap()
    story.console.wait_for("the tap leads to the projects",
                           lambda screen: selected_tab(screen) == "Projects")
    check("a second start ends at once and well",
          wait_until("the second start ends",
                     lambda other=story.console.start(): (other.exit_code(),))[0] in (0, None))
    check_equal("the running console is still the one", story.console.pid(), program.pid)
    story.console.end()


def in_the_background(story):
    chapter("In the background")
    story.console.start_in_background()
    pid = story.console.pid()
    check("the console runs without a window", pid and story.console.window() is None)
    shown = story.happens("error")
    check_equal("the error's urgency", shown.urgency, "normal")
    story.tap()
    story.console.wait_for("the tap brings up the window on the projects",
                           lambda screen: selected_tab(screen) == "Projects")
    check_equal("it is the same program", story.console.pid(), pid)
    story.console.end()


def while_it_does_not_run(story):
    chapter("Not running")
    check("the console does not run", story.console.pid() is None)
    shown = story.happens("decision")
    check_decision(shown)
    check("the message started it, without a window",
          story.console.pid() and story.console.window() is None)
    story.tap()
    story.console.wait_for("the tap brings up the window on the projects",
                           lambda screen: selected_tab(screen) == "Projects")
    story.console.end()


def run(options, desk, folder):
    service = PushingService(options.service, desk.folder / "data", desk.environment,
                             folder / "service.log")
    service.start()
    push = PushService(options.push, desk.folder / "data", desk.environment, folder / "push.log")
    stops = [service, push]
    environment = dict(desk.environment)
    try:
        if options.wayland:
            compositor = Compositor(desk, folder / "compositor.log")
            stops.append(compositor)
            daemon = Mako(compositor.environment, folder / "daemon.log")
            # As on a phone where a message comes first of all: nothing names the display.
            del environment["DISPLAY"]
        else:
            daemon = Dunst(desk, folder / "daemon.log")
            environment["QT_QPA_PLATFORM"] = "xcb"
        stops.append(daemon)
        console = InstalledConsole(options.console, options.id, desk, service, environment)
        console.install()
        story = Story(service, daemon, console)
        with_the_console_open(story)
        in_the_background(story)
        while_it_does_not_run(story)
    finally:
        log = desk.folder / "installed-console.log"
        if log.exists():
            shutil.copy(log, folder / "console.log")
        for program in reversed(stops):
            program.stop()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("console", "service", "push", "artifacts"):
        parser.add_argument(f"--{name}", required=True, type=Path)
    parser.add_argument("--id", required=True)
    parser.add_argument("--wayland", action="store_true")
    options = parser.parse_args()
    folder = options.artifacts
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    with Desk(*PHONE) as desk:
        try:
            run(options, desk, folder)
        except Exception as error:
            if isinstance(error, CheckFailed):
                print(f"FAILED  {error}")
            else:
                traceback.print_exc(file=sys.stdout)
            print(f"The programs' output is in {folder}")
            return 1
    print("All checks hold.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
