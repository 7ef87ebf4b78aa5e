"""A project's workspace: its header and its eight tabs, and the answer to a decision."""

import expected
import projects_chapter
from harness import reading
from harness.checks import CheckFailed, chapter, check, check_equal, check_texts
from harness.walk import check_walk

TABS = ["Overview", "Questions", "Chat", "Bids", "Dev", "Logs", "Decisions", "Reports"]
LISTS = {"Chat": "messages", "Bids": "bids", "Dev": "timeline", "Logs": "logs",
         "Decisions": "decisions", "Reports": "reports"}
EMPTY = {"Chat": "No messages yet", "Bids": "No competing bids yet",
         "Dev": "No development activity yet", "Logs": "No development logs yet",
         "Decisions": "No decisions requested", "Reports": "No daily reports yet"}
TEXTS = {"label", "heading"}


def tab_buttons(screen):
    return [node for node in screen.present() if node.role == "page tab" and node.name in TABS]


def region(screen):
    strip = max(node.bottom for node in tab_buttons(screen))
    root_tabs = [node for node in screen.all("page tab") if node.name == "Settings"]
    return reading.Region(strip + 1, root_tabs[0].y if root_tabs else screen.window.bottom)


def selected_tab(screen):
    return [node.name for node in tab_buttons(screen) if "checked" in node.states]


def tab_texts(service, project, tab):
    """What the tab should show, as the service says now."""
    detail = service.get(f"/projects/{project['id']}")
    part = LISTS.get(tab)
    records = service.project_part(project, part) if part else None
    return {"Overview": lambda: expected.overview(detail),
            "Questions": lambda: expected.questions(detail),
            "Chat": lambda: expected.chat(records),
            "Bids": lambda: expected.bids(detail, records),
            "Dev": lambda: expected.development(records),
            "Logs": lambda: expected.logs(records),
            "Decisions": lambda: expected.decisions(records),
            "Reports": lambda: expected.reports(records)}[tab]()


def texts_below_strip(screen):
    below = region(screen)
    return [node.name for node in screen.seen() if node.role in TEXTS and below.holds(node)]


def open_tab(console, tab):
    console.press("page tab", tab)
    return console.wait_for(
        f"{tab} is open and loaded",
        lambda seen: selected_tab(seen) == [tab] and not seen.loading())


def check_tab(console, service, project, tab):
    wanted = tab_texts(service, project, tab)
    screen = open_tab(console, tab)
    pieces = reading.read_scrolled(console, region(screen), TEXTS,
                                   lambda found: len(found) >= len(wanted))
    check_texts(f"{tab} of {project['title']!r}", reading.names(pieces), wanted)


def check_header(screen, detail):
    strip = min(node.y for node in tab_buttons(screen))
    header = [node for node in screen.seen()
              if node.role in ("label", "link") and projects_chapter.TITLE_BAR <= node.y < strip]
    check_equal("the header", reading.names(reading.in_reading_order(header)),
                expected.header(detail))
    check_equal("the title", [node.name for node in screen.all("heading")
                              if node.y < projects_chapter.TITLE_BAR], [detail["title"]])


def go_back(console):
    console.press("button", "Projects")
    console.wait_for("the list is back",
                     lambda seen: seen.has("text", projects_chapter.SEARCH))


def fullest(service):
    """A project with something on every tab, and one pending decision among it; the one that is
    read the soonest."""
    candidates = []
    for project in service.get("/projects"):
        lists = {part: service.project_part(project, part) for part in LISTS.values()}
        pending = [one for one in lists["decisions"] if one["status"] == "pending"]
        if (all(lists.values()) and len(pending) == 1 and project.get("github_repo_url")
                and projects_chapter.typeable(project)):
            candidates.append((len(lists["logs"]), project["id"], project))
    if not candidates:
        raise CheckFailed("no project of the practice service has something on every tab")
    return min(candidates)[2]


def newest(service):
    """A project that has nothing yet but its description."""
    return next(project for project in service.get("/projects")
                if project.get("bid_status") == "discovered"
                and projects_chapter.typeable(project)
                and not service.project_part(project, "messages"))


def run(console, service, project):
    """From the projects list; leaves the workspace open."""
    chapter("A project's workspace")
    detail = service.get(f"/projects/{project['id']}")
    screen = projects_chapter.open_project(console, service, project)
    check_equal("the tabs", [node.name for node in tab_buttons(screen)], TABS)
    check_equal("the selected tab", selected_tab(screen), ["Overview"])
    check_header(console.look_at_rest(), detail)
    check_equal("the repository's link", console.opened_by("link", "GitHub"),
                detail["github_repo_url"])
    for tab in TABS:
        check_tab(console, service, project, tab)
        check_walk(f"{tab} where the reading ended", console)


def run_back(console, project):
    console.swipe_back()
    console.wait_for("a swipe from the edge leads back to the list",
                     lambda seen: seen.has("text", projects_chapter.SEARCH))
    console.look_at_rest()
    check_equal("the search after going back", console.field_text(projects_chapter.SEARCH),
                project["title"][:20])
    check_equal("the project after going back", [
        node.name for node in console.look_at_rest().all("button", project["title"])],
        [project["title"]])


def run_empty(console, service):
    """A project of which little is known; from and to the projects list."""
    chapter("A new project's workspace")
    project = newest(service)
    screen = projects_chapter.open_project(console, service, project)
    check_header(screen, service.get(f"/projects/{project['id']}"))
    for tab in TABS:
        check_tab(console, service, project, tab)
    go_back(console)


def run_failures(console, service, project):
    """Failed loads, which are not told; from and to the projects list."""
    chapter("A workspace while the service fails")
    service.fail(f"/projects/{project['id']}", 500)
    console.type_text(projects_chapter.SEARCH, project["title"][:20])
    with service.answers("GET", f"/projects/{project['id']}"):
        console.press("button", project["title"])
    console.wait_for("the empty workspace", lambda seen: not seen.loading()
                     and seen.has("heading", "Project"))
    screen = console.look_at_rest()
    check("a project that can't be loaded shows its title bar alone",
          not tab_buttons(screen) and not screen.all("label") and not screen.all("alert"))
    go_back(console)

    projects_chapter.open_project(console, service, project)
    for tab, empty in EMPTY.items():
        path = f"/projects/{project['id']}/{LISTS[tab]}"
        service.fail(path, 500)
        with service.answers("GET", path):
            open_tab(console, tab)
        screen = console.wait_for(f"{tab} that can't be loaded says {empty!r}",
                                  lambda seen, text=empty: seen.shows(text))
        check(f"{tab} that can't be loaded says {empty!r}", not screen.all("alert"))
    go_back(console)
