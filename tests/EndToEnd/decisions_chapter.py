"""Answers to the agent's questions: one that is taken, and two that go wrong on the way."""

import expected
import projects_chapter
import workspace_chapter
from harness import reading
from harness.checks import CheckFailed, chapter, check, check_equal, check_texts

FIELD = "Type your answer..."
SUBMIT = "Submit Answer"


def pending_in(service, project):
    return [one for one in service.project_part(project, "decisions")
            if one["status"] == "pending"]


def decision(service, project, identifier):
    return next(one for one in service.project_part(project, "decisions")
                if one["id"] == identifier)


def answer_path(project, pending):
    return f"/projects/{project['id']}/decisions/{pending['id']}/answer"


def check_answered(console, service, project, pending, answer):
    held = decision(service, project, pending["id"])
    check_equal("what the service holds", (held["status"], held.get("answer")),
                ("answered", answer))
    wanted = expected.decisions(service.project_part(project, "decisions"))
    screen = console.wait_for("the answer is shown in place of the field",
                              lambda seen: seen.shows(answer) and not seen.has("button", SUBMIT))
    pieces = reading.read_scrolled(console, workspace_chapter.region(screen),
                                   workspace_chapter.TEXTS,
                                   lambda found: len(found) >= len(wanted))
    check_texts("the decisions after the answer", reading.names(pieces), wanted)


def run(console, service, project):
    """In the open workspace of a project with one pending decision."""
    chapter("A decision is answered")
    answer = "Once a day is enough, and tell them why."
    pending = pending_in(service, project)[0]
    path = answer_path(project, pending)
    before = len(service.writes())
    workspace_chapter.open_tab(console, "Decisions")
    console.press("button", SUBMIT)  # Nothing is typed yet, so nothing may be sent.
    console.type_text(FIELD, answer)
    with service.answers("GET", f"/projects/{project['id']}/decisions"):
        console.press("button", SUBMIT)
    check_answered(console, service, project, pending, answer)
    check_equal("everything that was sent for it", service.writes()[before:],
                [("POST", path, 200)])


def run_failures(console, service):
    """In the projects list."""
    chapter("A decision is answered while the service fails")
    answer = "Take it   "
    project = next((one for one in service.get("/projects")
                    if projects_chapter.typeable(one)
                    and len(pending_in(service, one)) == 1), None)
    if project is None:
        raise CheckFailed("the practice service has no pending decision left")
    pending = pending_in(service, project)[0]
    path, listing = answer_path(project, pending), f"/projects/{project['id']}/decisions"
    before = len(service.writes())
    projects_chapter.open_project(console, service, project)
    workspace_chapter.open_tab(console, "Decisions")

    console.type_text(FIELD, answer)
    shown = console.look_at_rest().texts()
    service.fail(path, 500)
    with service.answers("POST", path):
        console.press("button", SUBMIT)
    check_unanswered(console, "a refused answer", shown, answer)
    check_equal("what the service holds", decision(service, project, pending["id"]), pending)

    service.fail(listing, 500)
    with service.answers("GET", listing):
        console.press("button", SUBMIT)
    check_unanswered(console, "an answer whose result can't be loaded", shown, answer)
    check_equal("what the service holds",
                decision(service, project, pending["id"])["answer"], answer)

    workspace_chapter.open_tab(console, "Overview")
    workspace_chapter.open_tab(console, "Decisions")
    check_answered(console, service, project, pending, answer)
    check_equal("everything that was sent for it", service.writes()[before:],
                [("POST", path, 500), ("POST", path, 200)])
    workspace_chapter.go_back(console)


def check_unanswered(console, what, shown, answer):
    """shown: the texts before the answer was sent."""
    screen = console.look_at_rest()
    check_equal(f"{what}: the texts, without a word of it", screen.texts(), shown)
    check(f"{what}: the decision waits, and the answer can be sent again",
          screen.has("button", SUBMIT) and screen.shows("Pending") and not screen.all("alert"))
    check_equal(f"{what}: the typed text", console.field_text(FIELD), answer)
