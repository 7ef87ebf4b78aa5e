"""Exchanges by the browser's fetch: replies that are too large, addresses that a browser would change,
and answers whose page goes away."""

import dashboard_chapter
import decisions_chapter
import projects_chapter
import workspace_chapter
from harness.checks import chapter, check, check_equal, wait_until

TOO_LARGE = "The server's reply is too large."
# The page's fetch, but for what a test says itself: handle(address, request) gives a reply, or null.
HANDLED = """{
    globalThis.usualFetch ??= fetch;
    const handle = %s;
    globalThis.fetch = async (address, request) =>
        await handle(String(address), request ?? {}) ?? usualFetch(address, request);
}"""


def run(console, service, browser):
    dashboard_chapter.start(console, service)
    run_faults(console, service, browser)
    run_too_large(console, service, browser)
    run_changed_address(console, service, browser)
    run_left(console, service, browser)


def handle(browser, code):
    browser.call("evaluate", code=HANDLED % code)


def handle_as_usual(browser):
    browser.call("evaluate", code="void (globalThis.fetch = globalThis.usualFetch ?? fetch)")


# Silence counts after a minute, which here goes by in a moment.
SHORT_MINUTE = """void (() => {
    const usual = setTimeout;
    globalThis.setTimeout = (act, time, ...more) => usual(act, time === 60000 ? 300 : time, ...more);
    globalThis.usualTimeout = usual;
})()"""


def run_faults(console, service, browser):
    """What the browser leaves of a fault: whether it was a reply, and little more."""
    chapter("Faults of the network")
    service.spoil("/dashboard", "cut")
    check_refusal(console, service, browser, "a reply that is cut off",
                  "The connection to the server was lost.")
    service.spoil("/dashboard", "garbage")
    check_refusal(console, service, browser, "a reply that is no JSON",
                  "The service's reply is not valid JSON.")
    # Where to is not told, nor by which status.
    handle(browser, """(address) => address.endsWith('/dashboard')
        ? usualFetch('/app', { redirect: 'manual' }) : null""")
    check_refusal(console, service, browser, "a redirect", "HTTP error 0")
    browser.call("evaluate", code=SHORT_MINUTE)
    handle(browser, """(address, request) => address.endsWith('/dashboard')
        ? new Promise((_, fail) => { request.signal.onabort = () => fail(request.signal.reason); }) : null""")
    check_refusal(console, service, browser, "silence", "The server took too long to answer.")
    browser.call("evaluate", code="void (globalThis.setTimeout = globalThis.usualTimeout)")


def check_refusal(console, service, browser, what, sentence):
    console.keys("F5")
    console.wait_for(f"{what}: {sentence}", lambda seen: seen.shows(sentence))
    check(f"{what}: {sentence}", True)
    load_as_usual(console, service, browser)


def run_too_large(console, service, browser):
    chapter("A reply that is too large")
    handle(browser, """(address) => {
        globalThis.given = 0;
        const piece = new Uint8Array(1 << 20).fill(0x20);
        const body = new ReadableStream({ pull: (stream) => {
            stream.enqueue(piece);
            if (++given === 300) { stream.close(); }
        } });
        return address.endsWith('/dashboard') ? new Response(body) : null;
    }""")
    console.keys("F5")
    console.wait_for("it is refused", lambda seen: seen.shows(TOO_LARGE), 60)
    check("it is refused", True)
    given = browser.call("evaluate", code="given")
    check("what comes after the bound is not taken", given <= 260, given)
    load_as_usual(console, service, browser)
    handle(browser, """(address) => address.endsWith('/dashboard') ? new Response(new ReadableStream(),
        { headers: { 'Content-Length': '300000000' } }) : null""")
    console.keys("F5")
    console.wait_for("one that says so is refused before it comes", lambda seen: seen.shows(TOO_LARGE))
    check("one that says so is refused before it comes", True)
    load_as_usual(console, service, browser)


def load_as_usual(console, service, browser):
    handle_as_usual(browser)
    console.keys("F5")
    dashboard_chapter.check_figures(console, service)


def open_decisions(console, service):
    """Gives the project and its pending decision."""
    dashboard_chapter.show_tab(console, "Projects")
    project = next(one for one in service.get("/projects") if projects_chapter.typeable(one)
                   and len(decisions_chapter.pending_in(service, one)) == 1)
    projects_chapter.open_project(console, service, project)
    return project, decisions_chapter.pending_in(service, project)[0]


def run_changed_address(console, service, browser):
    """A browser takes the dots out of an address, which would lead to another place."""
    chapter("An address that the browser would change")
    dashboard_chapter.show_tab(console, "Projects")
    handle(browser, """async (address, request) => {
        if (request.method === 'POST') {
            (globalThis.written ??= []).push(address);
        } else if (address.endsWith('/decisions')) {
            const all = await (await usualFetch(address, request)).json();
            return new Response(JSON.stringify(all.map((one) =>
                one.status === 'pending' ? { ...one, id: '..' } : one)));
        }
        return null;
    }""")
    before = service.writes()
    open_decisions(console, service)
    workspace_chapter.open_tab(console, "Decisions")
    console.type_text(decisions_chapter.FIELD, "Go ahead.")
    shown = console.look_at_rest().texts()
    console.press("button", decisions_chapter.SUBMIT)
    decisions_chapter.check_unanswered(console, "an answer to it", shown, "Go ahead.")
    check_equal("what was sent", (browser.call("evaluate", code="globalThis.written ?? []"),
                                  service.writes()), ([], before))
    handle_as_usual(browser)
    workspace_chapter.go_back(console)


def run_left(console, service, browser):
    chapter("An answer whose page goes away at once")
    project, pending = open_decisions(console, service)
    workspace_chapter.open_tab(console, "Decisions")
    path = decisions_chapter.answer_path(project, pending)
    console.type_text(decisions_chapter.FIELD, "Go ahead.")
    handle(browser, """(address, request) => {
        if (request.method !== 'POST') { return null; }
        const reply = usualFetch(address, request);
        location.href = 'about:blank';
        return reply;
    }""")
    # Without a connection that is there already, the answer is not under way yet when the page goes.
    service.stop()
    service.start()
    before = service.count("POST", path)
    with service.paused():
        console.press("button", decisions_chapter.SUBMIT)
        wait_until("the page is left", lambda: is_left(browser))
    wait_until("the answer arrives", lambda: service.count("POST", path) > before)
    dashboard_chapter.start(console, service)
    check_equal("how often it arrived", service.count("POST", path) - before, 1)
    check_equal("what the service holds",
                decisions_chapter.decision(service, project, pending["id"])["answer"], "Go ahead.")


def is_left(browser):
    return browser.holds("location.href === 'about:blank'")
