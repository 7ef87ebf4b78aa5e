"""Fonts that can't be had when they are needed."""

import dashboard_chapter
import projects_chapter
from exchange_chapter import handle
from harness.checks import chapter, check, check_equal, wait_until
from pictures_chapter import DEVANAGARI, LINE

# The first two pauses, in milliseconds, end when the test says so.
PAUSES = """{
    globalThis.pauses = [];
    const usual = setTimeout;
    globalThis.setTimeout = (act, time, ...more) => time === 10_000 || time === 20_000
        ? pauses.push({ time, act }) : usual(act, time, ...more);
}"""
REFUSED = """(address) => {
    if (!address.includes('%s')) { return null; }
    globalThis.asked = (globalThis.asked ?? 0) + 1;
    return %s;
}"""


def run(console, service, browser):
    run_later(console, service, browser)
    run_gone(console, service, browser)


def start(console, service, browser, reply):
    """Opens the projects, one of which needs the font; reply: JavaScript for the reply to its request."""
    dashboard_chapter.start(console, service)
    browser.call("evaluate", code=PAUSES)
    handle(browser, REFUSED % (DEVANAGARI, reply))
    look_at_projects(console)
    wait_until("the font is asked for", lambda: asked(browser))
    dashboard_chapter.show_tab(console, "Settings")
    look_at_projects(console)


def look_at_projects(console):
    dashboard_chapter.show_tab(console, "Projects")
    console.wait_for("the projects are there", projects_chapter.headers)
    console.look_at_rest()


def asked(browser):
    return browser.call("evaluate", code="globalThis.asked ?? 0")


def run_later(console, service, browser):
    chapter("A font that can't be had for a while")
    start(console, service, browser, "asked < 3 ? new Response('', { status: 503 }) : null")
    check_equal("how often it is asked for at first", asked(browser), 1)
    browser.call("evaluate", code="void pauses[0].act()")
    wait_until("it is asked for after a pause", lambda: asked(browser) == 2)
    wait_until("the next pause is longer", lambda: browser.call(
        "evaluate", code="pauses.map(({ time }) => time)") == [10000, 20000])
    look_at_projects(console)
    check_equal("how often it is asked for until then", asked(browser), 2)
    browser.call("evaluate", code="void dispatchEvent(new Event('online'))")
    title = next(one["title"] for one in service.get("/projects") if "\u0930" in one["title"])
    console.wait_for("with the network back the title is drawn with it", lambda seen: any(
        one.name == title and one.height < LINE for one in seen.seen()))
    check_equal("how often it was asked for in all", asked(browser), 3)


def run_gone(console, service, browser):
    chapter("A font that is not there")
    start(console, service, browser, "new Response('', { status: 404 })")
    browser.call("evaluate", code="void dispatchEvent(new Event('online'))")
    dashboard_chapter.show_tab(console, "Settings")
    look_at_projects(console)
    check_equal("how often it is asked for", asked(browser), 1)
    check("and not later either", browser.call("evaluate", code="pauses.length === 0"))
