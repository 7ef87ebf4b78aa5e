"""What the service worker keeps, and how a new version takes its place."""

import re

import dashboard_chapter
import push_chapter
from app_files import change, replace
from harness.checks import chapter, check, check_equal, wait_until

# Where this is wished for, the page would wait for minutes in place of 3 s until a new version takes over.
LONG_WAIT = """
if (location.pathname.startsWith('/app/') && localStorage.waitsLong) {
    const usual = setTimeout;
    globalThis.setTimeout = (act, time, ...more) => usual(act, time === 3000 ? 300_000 : time, ...more);
}
"""
# As a tap by a finger would, but not one that a script makes up, this keeps the service worker until what
# was tapped is taken.
KEPT = """void self.addEventListener('message', (event) => {
    if (event.data === 'keep') {
        event.waitUntil(new Promise((resolve) => {
            let had = false;
            setInterval(() => {
                had ||= tapped.length > 0;
                if (had && tapped.length === 0) { resolve(); }
            }, 20);
        }));
    }
})"""
TITLE = "document.title"
# What the page consists of.
FILES = re.compile(r'<(?:script src|link rel="preload" href)="([^"]+)"')


def run(console, service, browser, app):
    run_offline(console, service, browser)
    run_without_store(console, service, browser)
    run_mixed(console, service, browser, app)
    run_new_version(console, service, browser, app)
    run_tapped(console, service, browser, app)


def run_offline(console, service, browser):
    chapter("Without a network")
    check_starts_offline(console, service, browser)


def check_starts_offline(console, service, browser):
    browser.call("offline", on=True)
    try:
        browser.call("reload")
        console.wait_for_words()
        console.wait_for("the program starts from what the service worker keeps",
                         lambda seen: seen.shows("The server could not be reached."), 60)
        check("it starts, and says that the service can't be reached", True)
    finally:
        browser.call("offline", on=False)
    console.keys("F5")
    dashboard_chapter.check_figures(console, service)


def run_without_store(console, service, browser):
    chapter("A browser that lost what was kept")
    console.stop()
    browser.call("inWorker", code="""{
        self.usualOpen = CacheStorage.prototype.open;
        self.refused = 0;
        CacheStorage.prototype.open = async () => {
            ++self.refused;
            throw new Error('there is no store');
        };
    }""")
    dashboard_chapter.start(console, service)
    check("the console starts from the network", True)
    check("what is kept was asked for in vain", browser.call("inWorker", code="self.refused") > 1)
    browser.call("inWorker", code="void (CacheStorage.prototype.open = self.usualOpen)")


def offer(app, title):
    """Makes the server's files those of a version with that title."""
    for name, old, new in (("index.html", "<title>[^<]*", f"<title>{title}"),
                           ("service-worker.js", "cacheName = `[^$]*", f"cacheName = `{title}-")):
        change(app / name, old, new)


def run_mixed(console, service, browser, app):
    """A server that changes between the service worker and the page that it keeps."""
    chapter("A page that is newer than its service worker")
    page, worker = ((app / name) for name in ("index.html", "service-worker.js"))
    before = page.read_text(encoding="utf-8"), worker.read_text(encoding="utf-8")
    # The version before lies beside it.
    boot = app / re.search(r"boot\.[0-9a-f]{16}\.js", before[0])[0]
    other = boot.with_name("boot.0123456789abcdef.js")
    other.write_bytes(boot.read_bytes())
    offer(app, "Newer")
    replace(page, before[0].replace(boot.name, other.name))
    check_equal("what becomes of it", browser.call("evaluate", code="""
        navigator.serviceWorker.getRegistration().then((one) => one.update()).then(({ installing }) =>
            new Promise((resolve) => { installing.onstatechange = () => resolve(installing.state); }))"""),
        "redundant")
    replace(page, before[0])
    replace(worker, before[1])
    other.unlink()
    check_starts_offline(console, service, browser)


def run_new_version(console, service, browser, app):
    """The page that is open goes on; the next start has the new version."""
    chapter("A new version")
    offer(app, "Newer")
    browser.call("evaluate", code="navigator.serviceWorker.getRegistration().then((one) => one.update())")
    wait_until("the new version has come", lambda: browser.call("evaluate", code="""
        navigator.serviceWorker.getRegistration().then((one) => one.waiting !== null)"""))
    check_equal("the page that is open", browser.call("evaluate", code=TITLE), "TrellisportManager")
    check("it goes on", dashboard_chapter.tiles(console.look_at_rest()))
    before = len(browser.call("requests"))
    # On a busy machine 3 s may be too little, and it would be the start after this one.
    browser.call("evaluate", code="localStorage.waitsLong = 'yes'")
    browser.call("reload")
    wait_until("the next start has the new version", lambda: browser.holds(f"{TITLE} === 'Newer'"), 60)
    browser.call("evaluate", code="localStorage.clear()")
    console.wait_for_words()
    console.wait_for("the dashboard is there", dashboard_chapter.tiles)
    asked = [url for _, url in browser.call("requests")[before:]]
    page = service.page_url()
    check_equal("how often the page was loaded for it", asked.count(page), 2)
    # A request for more could keep the version before.
    check_equal("what the page asks for that is loaded anew", sorted(asked[:asked.index(page, 1)]),
                sorted([page, *(page + name for name in FILES.findall(
                    (app / "index.html").read_text(encoding="utf-8")))]))


def run_tapped(console, service, browser, app):
    """It does not take over while something that was tapped waits for the console."""
    chapter("A message is tapped while a new version waits")
    browser.call("evaluate", code="localStorage.waitsLong = 'yes'")
    title = browser.call("evaluate", code=TITLE)
    browser.call("inWorker", code=KEPT)
    browser.call("evaluate", code="navigator.serviceWorker.controller.postMessage('keep')")
    console.stop()
    push_chapter.deliver(console, service, browser,
                         push_chapter.content(service.get("/projects")[0], id="m9"))
    wait_until("it is shown", lambda: push_chapter.tagged(browser, "m9"))
    push_chapter.stub_front(browser)
    push_chapter.tap(browser, "m9")
    offer(app, "Newest")
    browser.call("inWorker", code="void self.registration.update()")
    wait_until("the new version waits", lambda: holds_in_worker(browser, "waiting !== null"))
    console.start(service)
    dashboard_chapter.wait_for_tab(console, "Projects")
    check_equal("the version that shows it without a wait", browser.call("evaluate", code=TITLE), title)
    browser.call("evaluate", code="localStorage.clear()")
    # Not before: what an open page asks for may keep the one before.
    console.stop()
    wait_until("the new one takes over when the page is closed",
               lambda: holds_in_worker(browser, "waiting === null && active.state === 'activated'"))
    dashboard_chapter.start(console, service)
    check_equal("the next start's", browser.call("evaluate", code=TITLE), "Newest")


def holds_in_worker(browser, what):
    return browser.holds(f"(({{ waiting, active }}) => {what})(self.registration)", "inWorker")
