"""The browser's way back."""

import dashboard_chapter
import projects_chapter
import workspace_chapter
from exchange_chapter import is_left
from harness.checks import chapter, check, wait_until


def run(console, service, browser):
    run_history(console, service, browser)
    run_out(console, service, browser)
    run_history_alone(console, service, browser)


def run_history(console, service, browser):
    chapter("The browser's way back")
    project = workspace_chapter.newest(service)
    dashboard_chapter.show_tab(console, "Projects")
    for _ in range(2):
        projects_chapter.open_project(console, service, project)
        browser.call("evaluate", code="history.back()")
        console.wait_for("it leads back to the list",
                         lambda seen: seen.has("text", projects_chapter.SEARCH)
                         and not seen.has("page tab", "Overview"))
        check("it leads back to the list, and the page stays",
              console.look().has("page tab", "Projects"))
    console.keys("Escape")


def run_out(console, service, browser):
    chapter("The way back out of the page")
    dashboard_chapter.start(console, service)
    dashboard_chapter.show_tab(console, "Settings")
    touch(browser)
    browser.call("back")
    wait_until("from a root tab it leads to what was there before", lambda: is_left(browser))
    check("from a root tab it leads to what was there before", True)


def touch(browser):
    """In the title's bar, where nothing is."""
    browser.call("tap", x=195, y=30)
    wait_until("a touch makes a place to go back from",
               lambda: browser.call("evaluate", code="history.state") == "console")


def run_history_alone(console, service, browser):
    """As in an installed console, where nothing lies behind the page."""
    chapter("The way back where nothing lies behind")
    project = workspace_chapter.newest(service)
    dashboard_chapter.start(console, service)
    browser.call("protocol", method="Page.resetNavigationHistory")
    dashboard_chapter.show_tab(console, "Projects")
    for _ in range(2):
        touch(browser)
        browser.call("evaluate", code="history.back()")
        wait_until("a root tab is left", lambda: browser.call("evaluate", code="history.state") is None)
    browser.call("tap", x=195, y=30)
    projects_chapter.open_project(console, service, project)
    browser.call("evaluate", code="history.back()")
    console.wait_for("the way back still leads from a project to the list",
                     lambda seen: seen.has("text", projects_chapter.SEARCH)
                     and not seen.has("page tab", "Overview"))
    check("the way back still leads from a project to the list", True)
