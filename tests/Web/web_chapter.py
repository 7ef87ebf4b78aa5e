"""What only a browser has: a page that is installed and starts by itself, its history, its keyboard."""

import json

import dashboard_chapter
import projects_chapter
import workspace_chapter
from browser import BrowserError
from harness.checks import chapter, check, check_equal, wait_until

FIELD = "document.querySelector('body > input')"


# Tells whether something was drawn on when the page's own words for its start went.
FIRST_PICTURE = """
new MutationObserver(() => {
    globalThis.startWentFor ??= document.querySelector('#screen > *') ? 'a picture' : 'nothing';
}).observe(document, { subtree: true, attributes: true, attributeFilter: ['hidden'] });
"""


def run(console, service, browser, app):
    run_page(console, service, browser)
    run_sizes(console, browser)
    run_keyboard(console, browser)
    run_history(console, service, browser)
    run_history_alone(console, service, browser)
    run_offline(console, service, browser)
    run_without_store(console, service, browser)
    run_new_version(console, service, browser, app)


def run_broken_visit(console, service, browser, app):
    """At the end: the browser complains of it."""
    chapter("A visit while a file is missing")
    browser.call("evaluate", code="navigator.serviceWorker.getRegistration().then((one) => one.unregister())")
    console.stop()
    program = next(app.glob("trellisport-manager.*.js"))
    program.rename(app / ".away")
    try:
        browser.call("open", url=service.base_url.removesuffix("/api/v1") + "/app/")
        wait_until("the page says that it can't start", lambda: "could not be started" in
                   browser.call("evaluate", code="document.getElementById('start')?.textContent ?? ''"))
        check("the page says that it can't start", True)
    finally:
        (app / ".away").rename(program)
        browser.call("leave")


def run_first_visit(console, service, browser):
    """Later starts come from what it leaves with the service worker."""
    chapter("The first visit")
    console.start(service)
    console.wait_for("the dashboard is there", dashboard_chapter.tiles)
    wait_until("the service worker is there",
               lambda: browser.call("evaluate", code="navigator.serviceWorker.ready.then(() => true)"))
    check("the page has left a service worker", True)
    console.stop()


def run_page(console, service, browser):
    chapter("The page")
    console.start(service)
    console.wait_for("the dashboard is there", dashboard_chapter.tiles)
    errors = browser.call("protocol", method="Page.getInstallabilityErrors")
    check_equal("what keeps it from being installed", errors["installabilityErrors"], [])
    manifest = json.loads(browser.call("protocol", method="Page.getAppManifest")["data"])
    check_equal("the installed application", (manifest["name"], manifest["display"]),
                ("TrellisportManager", "standalone"))
    policy = browser.call("evaluate", code="""
        fetch('./').then((reply) => reply.headers.get('content-security-policy'))""")
    check("its policy lets no foreign or made-up code run", "script-src 'self' 'wasm-unsafe-eval'"
          in policy and "unsafe-eval'" not in policy.replace("'wasm-unsafe-eval'", ""), policy)
    kept = browser.call("evaluate", code="""
        caches.keys().then((names) => Promise.all(names.map((name) => caches.open(name))))
            .then((all) => Promise.all(all.map((cache) => cache.keys())))
            .then((keys) => keys.flat().map((request) => new URL(request.url).pathname))""")
    check("the service worker keeps the program's own files alone",
          len(kept) > 5 and all(path.startswith("/app/") for path in kept), kept)
    size = browser.call("evaluate", code="""(() => {
        const { x, y, width, height } = document.getElementById('screen').getBoundingClientRect();
        return [x, y, width, height, innerWidth, innerHeight]; })()""")
    check_equal("the place that the console takes", size[:4], [0, 0, size[4], size[5]])


    check_equal("what the page's own words for its start go for",
                browser.call("evaluate", code="globalThis.startWentFor"), "a picture")
    check("what is for browsers that are too old is gone",
          browser.call("evaluate", code="document.getElementById('old') === null"))


def run_sizes(console, browser):
    chapter("Larger texts, and a larger page")

    def title_height():
        return console.look().all("heading", "Dashboard")[0].height

    before = title_height()
    browser.call("evaluate", code="void (document.documentElement.style.fontSize = '24px')")
    wait_until("the console follows the size of texts", lambda: title_height() > before)
    browser.call("evaluate", code="void (document.documentElement.style.fontSize = '')")
    wait_until("it follows back", lambda: title_height() == before)
    check("the console follows the size of texts", True)
    kept = """Math.abs(parseFloat(document.documentElement.style.getPropertyValue('--height'))
        - document.documentElement.clientHeight) <= 2"""
    for scale in (2, 1):
        browser.call("protocol", method="Emulation.setPageScaleFactor",
                     parameters={"pageScaleFactor": scale})
        wait_until("the page is enlarged",
                   lambda wanted=scale: browser.call("evaluate", code="visualViewport.scale") == wanted)
        wait_until(f"the console keeps its height in a page of {scale} times its size",
                   lambda: browser.call("evaluate", code=kept))
    check("the console keeps its height in an enlarged page", True)


def input_mode(browser):
    return browser.call("evaluate", code=f"{FIELD}.inputMode")


def run_keyboard(console, browser):
    chapter("A phone's keyboard")
    dashboard_chapter.show_tab(console, "Settings")
    console.wait_for("the settings are there", lambda seen: seen.has("button", "Save Changes"))
    check_equal("without a field there is none", input_mode(browser), "none")
    for label, kind in (("Max Daily Bids", "numeric"), ("Revenue Target ($)", "decimal"),
                        ("Max Concurrent", "numeric")):
        console.focus(label)
        wait_until(f"{label}: {kind} keys", lambda wanted=kind: input_mode(browser) == wanted,
                   detail=lambda: input_mode(browser))
        check_equal(f"{label}: what says its name where one types",
                    browser.call("evaluate", code=f"{FIELD}.getAttribute('aria-label')"), label)
    console.type_text("Revenue Target ($)", "1250.50")
    check_equal("where the console stands once something is typed", browser.call("evaluate", code="""
        (({ x, y }) => [x, y])(document.getElementById('screen').getBoundingClientRect())"""), [0, 0])
    dashboard_chapter.show_tab(console, "Projects")
    console.focus(projects_chapter.SEARCH)
    wait_until("the search has letters", lambda: input_mode(browser) == "text",
               detail=lambda: input_mode(browser))
    dashboard_chapter.show_tab(console, "Dashboard")
    wait_until("no keyboard stays", lambda: input_mode(browser) == "none",
               detail=lambda: input_mode(browser))
    check("the page's field asks for the keys that the console's field takes", True)


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


def run_history_alone(console, service, browser):
    """As in an installed console, where nothing lies behind the page."""
    chapter("The way back where nothing lies behind")
    project = workspace_chapter.newest(service)
    console.stop()
    console.start(service)
    console.wait_for("the dashboard is there", dashboard_chapter.tiles)
    browser.call("protocol", method="Page.resetNavigationHistory")
    dashboard_chapter.show_tab(console, "Projects")
    for _ in range(2):
        browser.call("tap", x=195, y=30)
        wait_until("a touch makes a place to go back from",
                   lambda: browser.call("evaluate", code="history.state") == "console")
        browser.call("evaluate", code="history.back()")
        wait_until("a root tab is left", lambda: browser.call("evaluate", code="history.state") is None)
    browser.call("tap", x=195, y=30)
    projects_chapter.open_project(console, service, project)
    browser.call("evaluate", code="history.back()")
    console.wait_for("the way back still leads from a project to the list",
                     lambda seen: seen.has("text", projects_chapter.SEARCH)
                     and not seen.has("page tab", "Overview"))
    check("the way back still leads from a project to the list", True)


def run_offline(console, service, browser):
    chapter("Without a network")
    browser.call("offline", on=True)
    try:
        browser.call("reload")
        console.wait_for_words()
        console.wait_for("the program starts from what the service worker keeps",
                         lambda seen: seen.shows("The server could not be reached."), 60)
        check("it says that the service can't be reached", True)
    finally:
        browser.call("offline", on=False)
    console.keys("F5")
    dashboard_chapter.check_figures(console, service)


def run_without_store(console, service, browser):
    chapter("A browser that lost what was kept")
    console.stop()
    browser.call("inWorker", code="""{
        self.usualOpen = CacheStorage.prototype.open;
        CacheStorage.prototype.open = async () => { throw new Error('there is no store'); };
    }""")
    console.start(service)
    console.wait_for("the console starts from the network", dashboard_chapter.tiles)
    check("the console starts from the network", True)
    browser.call("inWorker", code="void (CacheStorage.prototype.open = self.usualOpen)")


def run_new_version(console, service, browser, app):
    """The page that is open goes on; the next start has the new version."""
    chapter("A new version")
    for name, old, new in (("index.html", "<title>TrellisportManager<", "<title>Newer<"),
                           ("service-worker.js", "cacheName = `", "cacheName = `newer-")):
        content = (app / name).read_text(encoding="utf-8")
        check(f"{name} can be made newer", old in content)
        (app / name).write_text(content.replace(old, new), encoding="utf-8")
        for packed in app.glob(f"{name}.*"):
            packed.unlink()
    title = "document.title"
    browser.call("evaluate", code="navigator.serviceWorker.getRegistration().then((one) => one.update())")
    wait_until("the new version has come", lambda: browser.call("evaluate", code="""
        navigator.serviceWorker.getRegistration().then((one) => one.waiting !== null)"""))
    check_equal("the page that is open", browser.call("evaluate", code=title), "TrellisportManager")
    check("it goes on", dashboard_chapter.tiles(console.look_at_rest()))
    place = ["GET", service.base_url.removesuffix("/api/v1") + "/app/"]
    before = browser.call("requests").count(place)
    browser.call("reload")

    def is_new():
        try:
            return browser.call("evaluate", code=title) == "Newer"
        except BrowserError:
            return False  # The page just changes.

    wait_until("the next start has the new version", is_new)
    console.wait_for_words()
    console.wait_for("the dashboard is there", dashboard_chapter.tiles)
    check_equal("how often the page was loaded for it",
                browser.call("requests").count(place) - before, 2)
