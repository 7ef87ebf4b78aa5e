"""What only a browser has: a page that is installed, its edges, its keyboard."""

import json
import re
import shutil

import dashboard_chapter
import projects_chapter
from app_files import change
from harness.checks import chapter, check, check_equal, wait_until

FIELD = "document.querySelector('body > input')"
PROGRAM = r"trellisport-manager\.[0-9a-f]{16}\.js"


# Tells whether something was drawn on when the page's own words for its start went, and whether they had
# said that it can't start; and whether the program had come when the page asked for its service worker,
# which asks for all of it. A browser that draws nothing is one on wish.
FIRST_PICTURE = """
if (globalThis.ServiceWorkerContainer) {
    const usual = ServiceWorkerContainer.prototype.register;
    ServiceWorkerContainer.prototype.register = function (...all) {
        globalThis.hadProgram = performance.getEntriesByType('resource')
            .some(({ name, responseEnd }) => name.endsWith('.wasm') && responseEnd > 0);
        return usual.apply(this, all);
    };
}
if (location.pathname.startsWith('/app/') && localStorage.drawsNothing) {
    HTMLCanvasElement.prototype.getContext = () => null;
}
new MutationObserver((changes) => {
    if (changes.some(({ type }) => type === 'attributes')) {
        globalThis.startWentFor ??= document.querySelector('#screen > *') ? 'a picture' : 'nothing';
    }
    globalThis.saidFailure ||= Boolean(document.getElementById('start')?.textContent.includes('not be started'));
}).observe(document, { subtree: true, childList: true, attributes: true, attributeFilter: ['hidden'] });
"""


def run(console, service, browser):
    run_page(console, service, browser)
    run_sizes(console, browser)
    run_edges(console, browser)
    run_keyboard(console, browser)


def run_broken_visits(console, service, browser, app):
    """At the end: the browser complains of them."""
    console.stop()
    page = app / "index.html"
    program = re.search(PROGRAM, page.read_text(encoding="utf-8"))[0]
    chapter("A visit while a file is missing")
    check_cannot_start(service, browser, page, "trellisport-manager.fedcba9876543210.js", "is not defined")
    chapter("A program that ends")
    # With a name of its own, because browsers keep what has one for good.
    ending = app / "trellisport-manager.0123456789abcdef.js"
    shutil.copy(app / program, ending)
    change(ending, "var entryFunction=_main;", "var entryFunction=()=>3;")
    check_cannot_start(service, browser, page, ending.name, "it ended with 3")
    chapter("A browser that can't draw")
    browser.call("evaluate", code="localStorage.drawsNothing = 'yes'")
    check_cannot_start(service, browser, page, program, "; there is no WebGL")
    browser.call("leave")


def check_cannot_start(service, browser, page, program, reason):
    """Visits a page that names this program, in a browser that has nothing kept."""
    # From where no console brings back what is forgotten.
    browser.call("open", url=service.base_url + "/dashboard")
    browser.call("evaluate", code="""navigator.serviceWorker.getRegistration('/app/')
        .then((one) => one?.unregister())
        .then(() => caches.keys()).then((names) => Promise.all(names.map((name) => caches.delete(name))))""")
    change(page, PROGRAM, program)
    browser.call("open", url=service.page_url())
    said = wait_until("the page says that it can't start", lambda: browser.call("evaluate", code="""(() => {
        const start = document.getElementById('start');
        return start && !start.hidden && start.textContent.includes('could not be started') && start.textContent;
    })()"""))
    check("the page says that it can't start", reason in said, said)


def run_first_visit(console, service, browser):
    """Later starts come from what it leaves with the service worker."""
    chapter("The first visit")
    dashboard_chapter.start(console, service)
    wait_until("the service worker is there",
               lambda: browser.call("evaluate", code="navigator.serviceWorker.ready.then(() => true)"))
    check("the page has left a service worker", True)
    check("which it began when the program was there",
          browser.call("evaluate", code="globalThis.hadProgram"))
    console.stop()


def run_page(console, service, browser):
    chapter("The page")
    dashboard_chapter.start(console, service)
    errors = browser.call("protocol", method="Page.getInstallabilityErrors")
    check_equal("what keeps it from being installed", errors["installabilityErrors"], [])
    manifest = json.loads(browser.call("protocol", method="Page.getAppManifest")["data"])
    check_equal("the installed application", (manifest["name"], manifest["display"]),
                ("TrellisportManager", "standalone"))
    # Another application of the same host is another one.
    check_equal("what it is known by", browser.call("protocol", method="Page.getAppId")["appId"],
                service.page_url())
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
    check_equal("whether the page said meanwhile that it can't start",
                browser.call("evaluate", code="globalThis.saidFailure"), False)
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


def run_edges(console, browser):
    chapter("The edges that a phone keeps for itself, and a keyboard over the page")

    def places():
        screen = console.look()
        title, tabs = screen.first("heading", "Dashboard"), screen.first("page tab list")
        return [title.x, title.y, tabs.bottom] if title and tabs else None

    def keep(**edges):
        browser.call("protocol", method="Emulation.setSafeAreaInsetsOverride",
                     parameters={"insets": edges})
        # Phones give other edges when they are turned.
        browser.call("evaluate", code="void dispatchEvent(new Event('resize'))")

    x, y, bottom = places()
    for what, edges, wanted in (("above and below", {"top": 40, "bottom": 30}, [x, y + 40, bottom - 30]),
                                ("to the left", {"left": 44}, [x + 44, y, bottom]),
                                ("none", {}, [x, y, bottom])):
        keep(**edges)
        wait_until(f"the console leaves the edges: {what}", lambda all=wanted: places() == all,
                   detail=lambda all=wanted: f"{places()} in place of {all}")
        check(f"the console leaves the edges: {what}", True)
    # A browser that lays its keyboard over the page only says how much it leaves.
    leaves = """{ %s; visualViewport.dispatchEvent(new Event('resize')); }"""
    browser.call("evaluate", code=leaves % """Object.defineProperty(visualViewport, 'height',
        { configurable: true, get: () => 500 })""")
    wait_until("the console takes what a keyboard leaves", lambda: places() == [x, y, 500], detail=places)
    browser.call("evaluate", code=leaves % "delete visualViewport.height")
    wait_until("and all when it goes", lambda: places() == [x, y, bottom], detail=places)
    check("the console takes what a keyboard leaves", True)


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
