"""Uses the real console with a service that a public mock server makes of the description alone.

    against_mock.py --console FILE --mock-server FILE --description FILE --artifacts DIR

Whoever builds a service from the description gets one that the console works with. What the mock
server can't do is left out: it keeps nothing, fails never and pushes no messages.
"""

import os
import sys

import dashboard_chapter
import decisions_chapter
import projects_chapter
import settings_chapter
import workspace_chapter
from harness.checks import chapter, check_equal
from harness.console import Console
from harness.desk import Desk
from harness.trial import carry_out, read_options
from mock_service import MockService

PHONE = (390, 844)
ANSWER = "Yes, keep it."


def run(console, service):
    chapter("Dashboard")
    console.start(service)
    dashboard_chapter.check_figures(console, service)

    chapter("Projects")
    dashboard_chapter.show_tab(console, "Projects")
    projects_chapter.check_list(console, "the projects by stage", service.get("/projects"))

    chapter("A project's workspace")
    project = service.get("/projects")[0]
    projects_chapter.home(console)
    projects_chapter.open_project(console, service, project)
    workspace_chapter.check_header(console.look_at_rest(),
                                   service.get(f"/projects/{project['id']}"))
    for tab in workspace_chapter.TABS:
        workspace_chapter.check_tab(console, service, project, tab)
    run_answer(console, service, project)
    workspace_chapter.go_back(console)
    run_settings(console, service)
    check_equal("requests that were refused",
                [request for request in service.requests() if request[2] != 200], [])
    console.check_quiet()


def run_answer(console, service, project):
    chapter("A decision is answered")
    pending = decisions_chapter.pending_in(service, project)[0]
    workspace_chapter.open_tab(console, "Decisions")
    console.type_text(decisions_chapter.FIELD, ANSWER)
    with service.answers("GET", f"/projects/{project['id']}/decisions"):
        console.press("button", decisions_chapter.SUBMIT)
    check_equal("what was sent for it", service.writes(),
                [("POST", decisions_chapter.answer_path(project, pending), 200)])


def run_settings(console, service):
    chapter("Settings")
    dashboard_chapter.show_tab(console, "Settings")
    settings_chapter.check_shown(console, "as the service has them", service.get("/config"))
    console.type_text("Max Daily Bids", "7")
    settings_chapter.save(console)
    console.wait_for("Saved is shown", lambda seen: seen.has("button", "Saved"))
    check_equal("what was sent for it", service.writes()[1:], [("PUT", "/config", 200)])


def main():
    options = read_options(__doc__, "console", "mock-server", "description")
    folder = options.artifacts
    with Desk(*PHONE) as desk:
        service = MockService(options.mock_server, options.description, desk.folder / "mock",
                              dict(os.environ, NO_COLOR="1"))
        console = Console(options.console, desk, folder / "console.log")

        def checks():
            service.start()
            run(console, service)
            console.stop()

        return carry_out(checks, console, service, folder)


if __name__ == "__main__":
    sys.exit(main())
