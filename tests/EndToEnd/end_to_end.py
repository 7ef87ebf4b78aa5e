"""Drives the real console against the real practice service, and looks at both.

    end_to_end.py --console FILE --service FILE --artifacts DIR

When a check fails, DIR holds the screen's picture, what the screen said, and both programs'
output.
"""

import sys

import dashboard_chapter
import decisions_chapter
import projects_chapter
import settings_chapter
import workspace_chapter
from harness.checks import chapter
from harness.console import Console
from harness.desk import Desk
from harness.practice_service import PracticeService
from harness.traces import check_no_traces, texts_of
from harness.trial import carry_out, read_options

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


def leave_no_traces(console, service, desk, output):
    chapter("Traces")
    console.stop()
    check_no_traces(desk, ["data"], [output], texts_of(service))


def restart(console, service):
    """Ends both and starts the service again; the console is started by who needs it."""
    console.stop()
    service.stop()
    service.start()


def main():
    options = read_options(__doc__, "console", "service")
    folder = options.artifacts
    with Desk(*PHONE) as desk:
        service = PracticeService(options.service, desk.folder / "data", desk.environment,
                                  folder / "service.log")
        console = Console(options.console, desk, folder / "console.log")

        def checks():
            run(console, service)
            leave_no_traces(console, service, desk, folder / "console.log")
            service.stop()

        return carry_out(checks, console, service, folder)


if __name__ == "__main__":
    sys.exit(main())
