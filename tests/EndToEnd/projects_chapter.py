"""The projects list: its groups, chips and search field, and the way into a project."""

import expected
from dashboard_chapter import show_tab
from harness import reading
from harness.checks import chapter, check, check_equal, check_texts
from harness.screen import reading_order
from harness.walk import check_walk

CHIPS = ["All", *map(expected.words, expected.STAGES)]
SEARCH = "Search projects"
# Where the title bar ends.
TITLE_BAR = 44


def region(screen):
    return reading.Region(TITLE_BAR, screen.first("page tab list").y)


def chips(screen):
    return [node for node in screen.present() if node.name in CHIPS
            and node.role == "check box"]


def selected_chips(screen):
    return [node.name for node in chips(screen) if "checked" in node.states]


def headers(screen):
    return [node.name for node in sorted(screen.all("heading"), key=reading_order)
            if node.name != "Projects"]


def list_texts(groups):
    return [text for title, projects in groups
            for text in (title, *(part for project in projects
                                  for part in expected.project_row(project)))]


def check_list(console, what, projects, status=None, search=""):
    """Reads the whole list from where it stands."""
    wanted = list_texts(expected.stages(projects, status, search))
    first = wanted[0] if wanted else None
    screen = console.wait_for(f"{what}: the list begins with {first!r}",
                              lambda seen: next(iter(headers(seen)), None) == first)
    pieces = reading.read_scrolled(console, region(screen), {"heading", "label"},
                                   lambda found: len(_of_rows(found)) >= len(wanted))
    check_texts(what, reading.names(_of_rows(pieces)), wanted)


def _of_rows(pieces):
    """Without the screen's title and what else is above the first group."""
    for index, piece in enumerate(pieces):
        if piece.role == "heading" and piece.name != "Projects":
            return [piece for piece in pieces[index:]
                    if (piece.role, piece.name) != ("heading", "Projects")]
    return []


def home(console):
    """Back to where the search field is."""
    reading.scroll_home(console, region(console.look()), "text", SEARCH)


def press_chip(console, name):
    console.press("check box", name)


def typeable(project):
    """Whether the keyboard of the test can type what the project is searched by."""
    return project["title"][:20].isascii()


def open_project(console, service, project):
    """Finds it by its title, and opens it; gives the first screen of it."""
    console.type_text(SEARCH, project["title"][:20])
    with service.answers("GET", f"/projects/{project['id']}"):
        console.press("button", project["title"])
    return console.wait_for(f"{project['title']!r} is open",
                            lambda seen: seen.has("page tab", "Overview"))


def run(console, service):
    chapter("Projects")
    projects = service.get("/projects")
    with service.paused():
        show_tab(console, "Projects")
        screen = console.wait_for("the projects load", lambda seen: seen.loading())
        check("a spinner turns until the first reply, without chips and groups",
              not chips(screen) and not headers(screen))
    screen = console.wait_for("the list replaces the spinner",
                              lambda seen: headers(seen) and not seen.loading())
    check_equal("the chips", [node.name for node in chips(screen)], CHIPS)
    check_equal("the selected chips", selected_chips(screen), ["All"])
    check_walk("projects", console)
    check_list(console, "the portfolio by stage, read by scrolling", projects)

    run_chips(console, projects)
    run_search(console, projects)
    run_silent_failure(console, service)


def run_chips(console, projects):
    for stage in ("awarded", "questions_sent"):
        press_chip(console, expected.words(stage))
        header = stage.replace("_", " ").upper()
        screen = console.wait_for(f"only {header} remains",
                                  lambda seen, only=header: set(headers(seen)) == {only})
        check_equal("the selected chips", selected_chips(screen), [expected.words(stage)])
        check_list(console, f"the projects under the chip {expected.words(stage)}", projects,
                   status=stage)
    press_chip(console, "Questions Sent")
    screen = console.wait_for("the chip is off again",
                              lambda seen: selected_chips(seen) == ["All"])
    check("a second press turns the chip off", True)


def run_search(console, projects):
    home(console)
    for search in ("FOR A", "zzqx", projects[1]["ref_number"]):
        console.type_text(SEARCH, search)
        found = expected.stages(projects, search=search)
        if found:
            check_list(console, f"the projects with {search!r} in their title", projects,
                       search=search)
        else:
            screen = console.wait_for(f"nothing is found for {search!r}",
                                      lambda seen: not headers(seen) and chips(seen))
            check(f"a search for {search!r} leaves the chips and no groups",
                  not screen.all("button", projects[1]["title"]))
        home(console)
    console.press("button", "Clear text")
    console.wait_for("all are there again", lambda seen: len(headers(seen)) > 1)
    check_equal("the search field's text", console.field_text(SEARCH), "")


def run_silent_failure(console, service):
    before = headers(console.look_at_rest())
    for _ in range(2):
        service.fail("/projects", 500)
        with service.answers("GET", "/projects"):
            console.keys("F5")
        # While one is under way, another is not begun.
        screen = console.look_at_rest()
    check_equal("the groups after failed reloads", headers(screen), before)
    check("a failed reload is not told", not screen.all("alert")
          and not any("error" in text.lower() for text in screen.texts()))
    show_tab(console, "Dashboard")
    service.fail("/projects", 500)
    with service.answers("GET", "/projects"):
        show_tab(console, "Projects")
    check_equal("the groups after a failed return", headers(console.look_at_rest()), before)


def run_after_restart(console, service):
    """With a console that has not shown its projects yet."""
    chapter("Projects after the restart")
    service.fail("/projects", 500)
    with service.answers("GET", "/projects"):
        show_tab(console, "Projects")
    screen = console.wait_for("the first load has ended", lambda seen: chips(seen))
    check("a failed first load leaves the chips alone, and is not told",
          not headers(screen) and not screen.loading() and not screen.all("alert"))
    console.keys("F5")
    first = expected.stages(service.get("/projects"))[0][0]
    console.wait_for("the projects", lambda seen: headers(seen)[:1] == [first])
    check("the next load shows the projects", True)
