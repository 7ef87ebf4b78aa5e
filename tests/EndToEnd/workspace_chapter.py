"""A project's workspace: its header and its eight tabs, and the answer to a decision."""

import expected
import projects_chapter
from harness import reading
from harness.checks import CheckFailed, chapter, check, check_equal, check_texts
from harness.walk import check_walk

TABS = ["Overview", "Questions", "Chat", "Bids", "Dev", "Logs", "Decisions", "Reports"]
LISTS = {"Chat": "messages", "Bids": "bids", "Dev": "timeline", "Logs": "logs",
         "Decisions": "decisions", "Reports": "reports"}
TEXTS = {"label", "heading"}
ANSWER = "Once a day is enough, and tell them why."


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
    """A project with something on every tab, and a pending decision among it; the one that is
    read the soonest."""
    candidates = []
    for project in service.get("/projects"):
        lists = {part: service.project_part(project, part) for part in LISTS.values()}
        pending = [one for one in lists["decisions"] if one["status"] == "pending"]
        if all(lists.values()) and len(pending) == 1:
            candidates.append((len(lists["logs"]), project["id"], project, pending[0]))
    if not candidates:
        raise CheckFailed("no project of the practice service has something on every tab")
    return min(candidates)[2:]


def run(console, service):
    chapter("A project's workspace")
    project, pending = fullest(service)
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
    answer(console, service, project, pending)
    go_back(console)
    check_equal("the search after going back", console.field_text(projects_chapter.SEARCH),
                project["title"][:20])
