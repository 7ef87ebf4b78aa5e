"""Pictures of every screen in the browser, for the eye."""

import dashboard_chapter
import projects_chapter
import workspace_chapter
from harness.checks import chapter, check, check_equal

# Without its font each of its characters is a square, and they need two lines.
DEVANAGARI = "NotoSansDevanagari-Regular"
LINE = 25


def check_fonts(console, service, browser, before):
    """What the console's own fonts lack is fetched, once it is shown. before: how many requests there
    were before this visit."""
    title = next(one["title"] for one in service.get("/projects") if "\u0930" in one["title"])
    console.wait_for("a title in another script is drawn with its font",
                     lambda seen: any(one.name == title and one.height < LINE
                                      for one in seen.seen()))
    asked = [address for _, address in browser.call("requests")[before:] if DEVANAGARI in address]
    check_equal("how often its font was asked for in one visit", len(asked), 1)


def run(console, service, browser, folder):
    chapter("Pictures")
    place = folder / "pictures"
    place.mkdir()
    taken = []

    def take(name):
        console.look_at_rest()
        taken.append(place / f"{name}.png")
        browser.call("picture", file=str(taken[-1]))

    console.stop()
    before = len(browser.call("requests"))
    dashboard_chapter.start(console, service)
    take("dashboard")
    dashboard_chapter.show_tab(console, "Settings")
    console.wait_for("the settings are there", lambda seen: seen.has("button", "Save Changes"))
    take("settings")
    dashboard_chapter.show_tab(console, "Projects")
    console.wait_for("the projects are there", projects_chapter.headers)
    check_fonts(console, service, browser, before)
    take("projects")
    project = next(one for one in service.get("/projects?status=awarded")
                   if projects_chapter.typeable(one))
    projects_chapter.open_project(console, service, project)
    for tab in workspace_chapter.TABS:
        workspace_chapter.open_tab(console, tab)
        take(f"project-{tab.lower()}")
    check(f"{len(taken)} pictures are in {place.name}/", all(one.stat().st_size > 5000 for one in taken))
