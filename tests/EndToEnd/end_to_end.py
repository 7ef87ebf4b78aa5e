"""Drives the real console against the real practice service, and looks at both.

    end_to_end.py --console FILE --service FILE --artifacts DIR

When a check fails, DIR holds the screen's picture, what the screen said, and both programs'
output.
"""

import argparse
import shutil
import sys
import time
import traceback
from pathlib import Path

import dashboard_chapter
import decisions_chapter
import projects_chapter
import settings_chapter
import workspace_chapter
from harness.checks import CheckFailed, chapter
from harness.console import Console
from harness.desk import Desk
from harness.picture import Picture
from harness.practice_service import PracticeService
from harness.traces import check_no_traces, texts_of

PHONE = (390, 844)


def run(console, service):
    service.start()
    dashboard_chapter.run_first_load(console, service)
    dashboard_chapter.run(console, service)
    dashboard_chapter.run_failure(console, service)
    projects_chapter.run(console, service)
    project = workspace_chapter.fullest(service)
    workspace_chapter.run(console, service, project)
    decisions_chapter.run(console, service, project)
    workspace_chapter.run_back(console, project)
    workspace_chapter.run_empty(console, service)
    workspace_chapter.run_failures(console, service, project)
    decisions_chapter.run_failures(console, service)
    config = settings_chapter.run(console, service)
    restart(console, service)
    dashboard_chapter.run_failed_first_load(console, service)
    projects_chapter.run_after_restart(console, service)
    settings_chapter.run_after_restart(console, service, config)
    restart(console, service)
    dashboard_chapter.run_first_load(console, service)
    settings_chapter.run_failed_first_load(console, service)
    console.check_quiet()


def leave_no_traces(console, service, home, output):
    chapter("Traces")
    console.stop()
    check_no_traces(home, [output], texts_of(service))


def restart(console, service):
    """Ends both and starts the service again; the console is started by who needs it."""
    console.stop()
    service.stop()
    service.start()


def keep_evidence(folder, desk, console):
    """Whatever can still be had."""
    try:
        Picture(desk.framebuffer).save(folder / "screen.png")
        if console.running():
            (folder / "screen.txt").write_text("\n".join(console.look().lines()),
                                               encoding="utf-8")
    except Exception as error:  # The failure that is being kept matters more.
        print(f"not everything could be kept: {error}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("console", "service", "artifacts"):
        parser.add_argument(f"--{name}", required=True, type=Path)
    options = parser.parse_args()
    folder = options.artifacts
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)

    begin = time.monotonic()
    with Desk(*PHONE) as desk:
        service = PracticeService(options.service, desk.folder / "data", desk.environment,
                                  folder / "service.log")
        console = Console(options.console, desk, folder / "console.log")
        try:
            run(console, service)
            leave_no_traces(console, service, desk.folder / "home", folder / "console.log")
            service.stop()
        except Exception as error:
            keep_evidence(folder, desk, console)
            if isinstance(error, CheckFailed):
                print(f"FAILED  {error}")
            else:
                traceback.print_exc(file=sys.stdout)
            print(f"The picture, the tree and the programs' output are in {folder}")
            return 1
        finally:
            # After a failure both still run; they end with the test at the latest.
            for program in (console, service):
                try:
                    program.stop()
                except Exception as error:
                    print(f"at the end: {error}")
    print(f"All checks hold, in {time.monotonic() - begin:.0f} s.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
