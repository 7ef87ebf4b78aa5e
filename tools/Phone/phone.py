"""Uses the console in a phone's shell, without a screen, and takes pictures.

    phone.py SHELL ORIENTATION --console FILE --service FILE --packaged FOLDER --pictures DIR

SHELL is phoc, the bare compositor, or phosh, the whole shell with its keyboard. --packaged holds
the files that an installation adds, so that the shell's launcher knows the console.
"""

import argparse
import sys
from pathlib import Path

import projects_chapter
import workspace_chapter
from harness.accessible import AccessibleProgram, Gone
from harness.checks import CheckFailed, wait_until
from harness.desk import Desk
from harness.practice_service import PracticeService
from harness.screen import Screen
from harness.session import InstalledConsole
from phone_shell import PhoneShell

# In the launcher's grid; the shell shows only what is made for phones.
FIRST_ICON = (45, 190)
TABS = [("Questions", "questions"), ("Chat", "chat"), ("Bids", "bids"), ("Dev", "development"),
        ("Logs", "logs"), ("Decisions", "decisions"), ("Reports", "reports")]


class Phone:
    """The console in the shell, operated through the accessibility bus."""

    def __init__(self, shell, console, pictures):
        self._shell = shell
        self._pictures = pictures
        self._console = console
        self.taken = 0

    def look(self):
        for _ in range(20):
            try:
                return Screen(self._console.look())
            except Gone:
                continue
        raise CheckFailed("the console changes faster than it can be read")

    def wait_for(self, what, holds):
        def probe():
            screen = self.look()
            return screen if holds(screen) else None

        return wait_until(what, probe, 20, lambda: "\n".join(self.look().lines()))

    def act(self, role, name, action=None, index=0):
        """Presses it, or does the named action; what must be scrolled to counts as well."""
        def probe():
            found = [node for node in self.look().present()
                     if (node.role, node.name) == (role, name)]
            if len(found) <= index:
                return False
            try:
                offered = self._console.actions(found[index])
                wanted = action or ("Toggle" if "Toggle" in offered else "Press")
                self._console.act(found[index], wanted)
                return True
            except (Gone, ValueError):
                return False

        wait_until(f"the {role} {name!r} can be used", probe, 20)

    def picture(self, name):
        """Taken once two in a row are the same."""
        self._shell.picture(self._pictures / f"{name}.png")
        self.taken += 1
        print(f"  {name}", flush=True)


def asking_project(phone, service):
    """The title of one with a pending decision. The list has it when it is near what is seen: on a
    low screen it is gone down from row to row until it comes."""
    projects = service.get("/projects?status=awarded")
    titles = {project["title"] for project in projects}
    asking = {project["title"] for project in projects
              if any(one["status"] == "pending"
                     for one in service.project_part(project, "decisions"))}

    def probe():
        rows = [node.name for node in phone.look().present()
                if node.role == "button" and node.name in titles]
        found = next((name for name in rows if name in asking), None)
        if rows and not found:
            phone.act("button", rows[-1], "SetFocus")
        return found

    return wait_until("a project that asks something", probe, 60,
                      lambda: "\n".join(phone.look().lines()))


def tap_icon(desk, shell, service, options):
    """Starts the console as a person does; gives its process id."""
    packaged = next(options.packaged.glob("share/dbus-1/services/*.service"))
    console = InstalledConsole(options.console, packaged, desk, service, shell.environment)
    console.install()
    shell.tap(*FIRST_ICON)
    return wait_until("the launcher starts the console", console.pid, 30, console.output)


def walk(phone, service):
    """Through every screen."""
    phone.wait_for("the dashboard", lambda seen: any(
        node.name == "Total Earned" for node in seen.window.walk()))
    phone.picture("dashboard")
    phone.act("page tab", "Projects")
    phone.wait_for("the projects", projects_chapter.headers)
    phone.picture("projects")
    phone.act("text", projects_chapter.SEARCH, "SetFocus")
    phone.picture("projects-search")
    # As by a finger beside the field: the keyboard goes.
    phone.act("check box", "Awarded", "SetFocus")
    phone.act("check box", "Awarded")
    phone.act("button", asking_project(phone, service))
    phone.wait_for("the workspace", lambda seen: seen.has("page tab", "Overview"))
    phone.picture("workspace-overview")
    for tab, name in TABS:
        phone.act("page tab", tab)
        phone.wait_for(tab, lambda seen, tab=tab: not seen.loading()
                       and workspace_chapter.selected_tab(seen) == [tab])
        phone.picture(f"workspace-{name}")
        if tab == "Decisions":
            phone.act("text", "Type your answer...", "SetFocus")
            phone.picture("workspace-decisions-typing")
            # On its side the phone has no tabs above its keyboard.
            phone.act("button", "Submit Answer", "SetFocus")
    phone.act("page tab", "Settings")
    phone.wait_for("the settings", lambda seen: seen.has("text", "Max Daily Bids"))
    phone.picture("settings")
    phone.act("text", "Max Daily Bids", "SetFocus")
    phone.picture("settings-typing")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("shell", choices=("phoc", "phosh"))
    parser.add_argument("orientation", choices=("portrait", "landscape"))
    for name in ("console", "service", "packaged", "pictures"):
        parser.add_argument(f"--{name}", required=True, type=Path)
    options = parser.parse_args()
    options.pictures.mkdir(parents=True, exist_ok=True)
    # A screen of 360 x 720 points.
    with Desk(720, 1440) as desk:
        service = PracticeService(options.service, desk.folder / "data", desk.environment,
                                  options.pictures / "service.log")
        shell = PhoneShell(desk, options.orientation, options.packaged,
                           options.pictures / "shell.log")
        try:
            service.start()
            shell.start(options.shell)
            if options.shell == "phosh" and options.orientation == "portrait":
                shell.picture(options.pictures / "launcher.png")
                pid = tap_icon(desk, shell, service, options)
            else:
                pid = shell.start_console(options.console, service,
                                          options.pictures / "console.log")
            console = AccessibleProgram(desk.accessibility, pid)
            wait_until("the console is on the accessibility bus", console.present, 30)
            phone = Phone(shell, console, options.pictures)
            walk(phone, service)
            print(f"{phone.taken} pictures are in {options.pictures}")
        except CheckFailed as failure:
            shell.picture(options.pictures / "failure.png")
            print(f"FAILED  {failure}")
            return 1
        finally:
            shell.stop()
            service.stop()
    return 0


if __name__ == "__main__":
    sys.exit(main())
