"""Uses the console that a package installed into a Debian of its own, where nothing else is.

    installed_program.py --root FOLDER --service FILE --artifacts DIR

FOLDER is that system. Needs root, to look at it from inside. The display, the buses and the
practice service are this machine's.
"""

import shlex
import subprocess
import sys

import dashboard_chapter
import projects_chapter
import settings_chapter
from harness.accessible import AccessibleProgram
from harness.checks import chapter, check, check_equal, wait_until
from harness.console import Console
from harness.desk import Desk, Program
from harness.practice_service import PracticeService
from harness.screen import Screen
from harness.trial import carry_out, read_options

PACKAGE = "trellisport-manager"
PROGRAM = f"/usr/bin/{PACKAGE}"
PHONE = (390, 844)
# Becomes the program without a process in between, so that it is found by its number.
STARTER = """#!/bin/sh
exec unshare --mount --propagation private sh -euc '
    mount -t proc proc "$0/proc"
    mkdir -p "$0$1" "$0/tmp/.X11-unix"
    mount --bind "$1" "$0$1"
    mount --bind /tmp/.X11-unix "$0/tmp/.X11-unix"
    exec chroot "$0" {program}' {root} {desk}
"""


def inside(root, *command):
    """What the command says in there, failures included."""
    return subprocess.run(["chroot", root, *command], capture_output=True, text=True,
                          check=False).stdout


def run_files(root):
    chapter("What is installed")
    missing = [line.strip() for line in inside(root, "ldd", PROGRAM).splitlines()
               if "not found" in line]
    check_equal("libraries that are missing", missing, [])
    listed = [line for line in inside(root, "dpkg", "-L", PACKAGE).splitlines()
              if not (root / line[1:]).is_dir()]
    check("the package lists its files", len(listed) > 8, repr(listed))
    check_equal("listed files that are not there",
                [line for line in listed if not (root / line[1:]).is_file()], [])
    for place in ("share/applications/org.trellisport.manager.desktop",
                  "share/dbus-1/services/org.trellisport.manager.service",
                  "share/metainfo/org.trellisport.manager.metainfo.xml",
                  "share/icons/hicolor/scalable/apps/org.trellisport.manager.svg",
                  "share/man/man1/trellisport-manager.1.gz",
                  "share/doc/trellisport-manager/copyright"):
        check(place, f"/usr/{place}" in listed)
    return listed


def run_without_service(desk, starter, folder):
    chapter("No service is named")
    log = folder / "unnamed.log"
    program = Program([starter], dict(desk.environment, QT_QPA_PLATFORM="xcb",
                                      QT_QUICK_BACKEND="software",
                                      QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1"), log)
    try:
        console = AccessibleProgram(desk.accessibility, program.pid)
        wait_until("the window is on the accessibility bus", console.present, 20, program.output)
        told = wait_until("the window tells something", lambda: [
            node.name for node in Screen(console.look()).all("alert")])
        check_equal("standard error", program.output().splitlines()[:1],
                    [f"{PACKAGE}: {told[0]}"])
        check("it says how to name one", "TRELLISPORT_BASE_URL" in told[0]
              and "environment.d" in told[0], told[0])
    finally:
        program.stop()


def run_console(console, service):
    chapter("Its screens")
    console.start(service)
    dashboard_chapter.check_figures(console, service)
    dashboard_chapter.show_tab(console, "Projects")
    console.wait_for("the projects", projects_chapter.headers)
    check("the projects are there", True)
    dashboard_chapter.show_tab(console, "Settings")
    settings_chapter.check_shown(console, "in the settings", service.get("/config"))
    console.check_quiet()


def run_removal(root, listed):
    chapter("It is taken away")
    subprocess.run(["chroot", root, "dpkg", "--purge", PACKAGE], check=True,
                   capture_output=True)
    check_equal("files that are left", [line for line in listed if (root / line[1:]).is_file()],
                [])


def main():
    options = read_options(__doc__, "root", "service")
    folder = options.artifacts
    with Desk(*PHONE) as desk:
        starter = desk.folder / "start-console"
        starter.write_text(STARTER.format(
            program=PROGRAM, root=shlex.quote(str(options.root)),
            desk=shlex.quote(str(desk.folder))), encoding="utf-8")
        starter.chmod(0o755)
        service = PracticeService(options.service, desk.folder / "data", desk.environment,
                                  folder / "service.log")
        console = Console(starter, desk, folder / "console.log")

        def checks():
            service.start()
            listed = run_files(options.root)
            run_without_service(desk, starter, folder)
            run_console(console, service)
            console.stop()
            run_removal(options.root, listed)

        return carry_out(checks, console, service, folder)


if __name__ == "__main__":
    sys.exit(main())
