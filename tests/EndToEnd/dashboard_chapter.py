"""The dashboard: its figures, its tabs, and what it says when the service fails."""

import expected
from harness.checks import chapter, check, check_equal
from harness.walk import check_walk, check_walk_notices

TABS = ["Dashboard", "Projects", "Settings"]


def start(console, service):
    """Starts the console, again where it runs; returns when its dashboard is there."""
    console.stop()
    console.start(service)
    console.wait_for("the dashboard is there", tiles)


def tiles(screen):
    """Each tile as (label, value); a tile's panel is named after its label."""
    found = []
    for panel in screen.all("panel"):
        texts = [node.name for node in panel.children if node.role == "label"]
        if len(texts) == 2 and panel.name in texts:
            texts.remove(panel.name)
            found.append((panel.name, texts[0]))
    return found


def selected_tabs(screen):
    return [node.name for node in screen.all("page tab")
            if node.name in TABS and "checked" in node.states]


def show_tab(console, name):
    """Gives the first screen on which the tab is the selected one."""
    console.press("page tab", name)
    return wait_for_tab(console, name)


def wait_for_tab(console, name):
    return console.wait_for(f"{name} is the selected tab and has its title",
                            lambda screen: selected_tabs(screen) == [name]
                            and screen.has("heading", name))


def check_figures(console, service):
    figures = expected.dashboard(service.get("/dashboard"))
    console.wait_for(f"the dashboard shows {figures}", lambda screen: tiles(screen) == figures)
    for label, value in figures:
        check(f"{label}: {value}", True)


def run_first_load(console, service):
    """Starts the console."""
    chapter("Start")
    with service.paused():
        console.start(service)
        screen = console.wait_for("the dashboard loads", lambda seen: seen.loading())
        check("a spinner turns until the first reply, without tiles", not tiles(screen))
    console.wait_for("the tiles replace the spinner",
                     lambda seen: tiles(seen) and not seen.loading())
    check("the tiles replace the spinner", True)


def run(console, service):
    chapter("Dashboard")
    check_figures(console, service)
    screen = console.look_at_rest()
    check("the title is Dashboard", screen.has("heading", "Dashboard"))
    check_equal("the root tabs", [tab.name for tab in screen.all("page tab")], TABS)
    check_equal("the selected tab", selected_tabs(screen), ["Dashboard"])
    check_walk("dashboard", console)
    check_walk_notices(console)


def run_return(console, service):
    chapter("Back on the dashboard")
    with service.answers("GET", "/dashboard"):
        show_tab(console, "Dashboard")
    check_figures(console, service)


def run_failure(console, service):
    chapter("Dashboard while the service fails")
    service.fail("/dashboard", 503)
    with service.answers("GET", "/dashboard"):
        console.keys("F5")
    screen = console.wait_for("the failure is told", lambda seen: seen.shows("HTTP error 503"))
    check("the error text stands alone, without tiles", not tiles(screen))
    check_walk("failed dashboard", console)
    console.keys("F5")
    console.wait_for("the tiles are back", tiles)
    check_figures(console, service)
    check("the error text is gone", not console.look().shows("HTTP error 503"))


def run_failed_first_load(console, service):
    """Starts the console."""
    chapter("Start while the service fails")
    service.fail("/dashboard", 500)
    console.start(service)
    screen = console.wait_for("the failure is told", lambda seen: seen.shows("HTTP error 500"))
    check("the error text stands alone, without spinner and tiles",
          not screen.loading() and not tiles(screen))
    console.keys("F5")
    check_figures(console, service)
