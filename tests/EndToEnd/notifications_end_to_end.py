"""From the agent's question to the console's screen, through a real push and a notification service
that others wrote.

    notifications_end_to_end.py --console FILE --service FILE --push FILE --packaged FILE
                                --artifacts DIR [--wayland]

--packaged is the file by which an installed console is started over the session bus. When a check
fails, DIR holds the programs' output.
"""

import argparse
import html
import json
import shutil
import sys
import time
import traceback
from pathlib import Path

from harness.checks import CheckFailed, chapter, check, check_equal, wait_until
from harness.compositor import Compositor
from harness.daemons import Dunst, Mako
from harness.desk import Desk
from harness.session import InstalledConsole, PushingService, PushService
from harness.traces import check_no_traces, check_private, texts_of

PHONE = (390, 844)
SAVE = "Save Changes"


def tabs(screen):
    """The tabs that are selected, those of a project first."""
    return [node.name for node in screen.present() if node.role == "page tab"
            and node.states & {"checked", "selected"}]


def is_on(*names):
    return lambda screen: tabs(screen) == list(names)


class Story:
    """What happens again and again: something happens, it is shown, the user taps."""

    def __init__(self, service, start_daemon, console):
        self.service = service
        self.console = console
        self.start_daemon = start_daemon
        self.daemon = start_daemon()
        # In these the agent may always ask.
        self.bidding = iter(service.get("/projects?status=bid_placed"))

    def stop(self):
        self.daemon.stop()

    def decision(self, project=None):
        """The agent asks something; gives the question and checks what the service shows of it."""
        mark = self.daemon.mark()
        event = self.service.happen("decision", project or next(self.bidding))
        shown = self.next_shown("the decision", mark)
        question = next(one["question"] for one in self.service.get(
            f"/projects/{event['project_id']}/decisions") if one["id"] == event["decision_id"])
        self.check_decision(shown, question)
        return question

    def error(self):
        """Something goes wrong; gives the project, and checks what the service shows of it."""
        mark = self.daemon.mark()
        event = self.service.happen_somewhere("error")
        shown = self.next_shown("the error", mark)
        project = self.service.get(f"/projects/{event['project_id']}")
        check_equal("the error's title", shown.summary, "Error in development")
        check("its body names the project",
              html.unescape(shown.body).startswith(project["title"] + ": "), shown.body)
        check_equal("its urgency", shown.urgency, "normal")
        return project

    def next_shown(self, what, mark):
        return wait_until(f"{what} is shown", lambda: self.daemon.shown_since(mark), 20,
                          self.console.output)[0]

    @staticmethod
    def check_decision(shown, question):
        check_equal("the decision's application", shown.application, "TrellisportManager")
        check_equal("its title", shown.summary, "Decision needed")
        check_equal("its body is the question", html.unescape(shown.body), question)
        check_equal("its urgency", shown.urgency, "critical")
        check_equal("its category", shown.category, "im.received")
        check_equal("its actions", shown.actions, ("default",))

    def tap(self, what, *expected_tabs):
        """The user taps the notification; gives the screen that it leads to."""
        self.daemon.tap()
        screen = self.console.wait_for(f"the tap {what}", is_on(*expected_tabs))
        wait_until("the opened notification goes off the screen",
                   lambda: self.daemon.on_screen() == 0)
        check(f"the tap {what}", True)
        return screen

    def check_windowless(self, what):
        check(what, self.console.pid() is not None and self.console.window() is None)


def with_the_console_open(story):
    chapter("With the console open")
    console = story.console
    program = console.start()
    console.wait_for("the console shows its dashboard", is_on("Dashboard"))
    wait_until("the service knows the console's device token", story.service.devices, 20,
               console.output)
    story.decision()
    check_equal("the tab while the notification is only shown", tabs(console.window()),
                ["Dashboard"])
    story.tap("leads to the projects", "Projects")
    other = console.start()
    wait_until("a second start ends", lambda: other.exit_code() is not None)
    check_equal("the second start's exit code", other.exit_code(), 0)
    check_equal("the running console is still the one", console.pid(), program.pid)


def with_a_project_open(story):
    chapter("With a project open")
    console = story.console
    # One that is being worked on: its error says which.
    project = story.error()
    story.daemon.dismiss()
    console.press("check box", "Awarded")
    console.press("button", project["title"])
    console.wait_for(f"{project['title']!r} is open", is_on("Overview", "Projects"))
    # Before the decision: no project was open for the last one, so that its wish for a tab is still
    # there, and the same wish again would be none.
    story.error()
    story.tap("leads to the open project's logs", "Logs", "Projects")
    question = story.decision(project)
    check_equal("the tab while the notification is only shown", tabs(console.window()),
                ["Logs", "Projects"])
    story.tap("leads to the open project's decisions", "Decisions", "Projects")
    console.wait_for("the question is there to be answered", lambda seen: any(
        node.name == question for node in seen.present()))
    check("the question is there to be answered", True)
    console.end()


def in_the_background(story):
    chapter("In the background")
    console = story.console
    console.start_in_background()
    pid = console.pid()
    story.check_windowless("the console runs without a window")
    story.error()
    story.check_windowless("showing it needed no window")
    story.daemon.dismiss()
    story.decision()
    story.check_windowless("showing the decision needed no window")
    story.tap("brings up the window on the projects", "Projects")
    check_equal("it is the same program", console.pid(), pid)
    console.end()


def while_it_does_not_run(story):
    chapter("Not running")
    console = story.console
    check("the console does not run", console.pid() is None)
    question = story.decision()
    story.check_windowless("the message started it, without a window")
    pid = console.pid()
    story.daemon.stop()
    story.daemon = story.start_daemon()
    story.check_decision(story.next_shown("the decision, by a notification service that was "
                                          "started again,", 0), question)
    story.tap("brings up the window on the projects", "Projects")
    check_equal("it is the same program", console.pid(), pid)
    console.end()


def closed_while_saving(story):
    chapter("Closed while the settings are being saved")
    console, service = story.console, story.service
    program = console.start()
    console.wait_for("the console shows its dashboard", is_on("Dashboard"))
    console.press("page tab", "Settings")
    console.wait_for("the settings are there", lambda seen: any(
        (node.role, node.name) == ("button", SAVE) for node in seen.present()))
    before = len(service.writes())
    with service.paused():
        console.press("button", SAVE)
        console.close_window()
        wait_until("the name on the bus is free again", lambda: console.pid() is None)
        # Long enough for a program that does not wait.
        end = time.monotonic() + 2
        while program.exit_code() is None and time.monotonic() < end:
            time.sleep(0.02)
        check_equal("exit code while the service has not answered", program.exit_code(), None)
    wait_until("the console ends", lambda: program.exit_code() is not None)
    check_equal("exit code", program.exit_code(), 0)
    check("the settings have arrived", ("PUT", "/config", 200) in service.writes()[before:],
          service.writes()[before:])


def leave_no_traces(story, desk, home):
    chapter("Traces")
    console, service = story.console, story.service
    console.end()
    tokens = service.devices()
    check("the service knows a device token", tokens)
    endpoints = [json.loads(bytes.fromhex(token))["endpoint"] for token in tokens]
    bodies = [html.unescape(shown.body) for shown in story.daemon.shown_since(0)]
    check_no_traces(desk, ["data", "home"], [console.log],
                    texts_of(service).union(tokens, endpoints, bodies))
    # What a message is opened with when the program does not run, and which were shown.
    check_private(home, ["push-registration.json", "push-seen"])


def run(options, desk, folder):
    service = PushingService(options.service, desk.folder / "data", desk.environment,
                             folder / "service.log")
    service.start()
    stops = [service]
    # What the console writes lies apart from what others do.
    environment = dict(desk.environment, HOME=str(desk.folder / "owner"))
    try:
        stops.append(PushService(options.push, desk.folder / "data", desk.environment,
                                 folder / "push.log"))
        if options.wayland:
            compositor = Compositor(desk, folder / "compositor.log")
            stops.append(compositor)
            # As on a phone where a message comes first of all: nothing names the display.
            del environment["DISPLAY"]
        else:
            environment["QT_QPA_PLATFORM"] = "xcb"
        logs = iter(folder / f"daemon-{number}.log" for number in range(1, 10))
        console = InstalledConsole(options.console, options.packaged, desk, service, environment)
        console.install()
        story = Story(service, (lambda: Mako(desk, compositor.environment, next(logs)))
                      if options.wayland else (lambda: Dunst(desk, next(logs))), console)
        stops.append(story)
        with_the_console_open(story)
        with_a_project_open(story)
        in_the_background(story)
        while_it_does_not_run(story)
        if not options.wayland:
            closed_while_saving(story)
        leave_no_traces(story, desk, Path(environment["HOME"]))
    finally:
        log = desk.folder / "installed-console.log"
        if log.exists():
            shutil.copy(log, folder / "console.log")
        for program in reversed(stops):
            program.stop()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("console", "service", "push", "packaged", "artifacts"):
        parser.add_argument(f"--{name}", required=True, type=Path)
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
