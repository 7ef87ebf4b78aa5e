"""Messages of the service in a browser: how they are shown, and opened.

The browser's own push service is elsewhere; messages are handed to the service worker as the browser
would, by what its developers can ask of it.
"""

import json

import dashboard_chapter
import workspace_chapter
from harness.checks import chapter, check, check_equal, wait_until

# In place of what only a real finger may ask a browser for: bringing a page to the front, which not every
# system does, and opening one, of which the service worker is not told which it is, as some have it.
FRONT = """{
    self.broughtToFront = [];
    WindowClient.prototype.focus = async function () {
        self.broughtToFront.push(this.url);
        if (%s) { throw new DOMException('not here', 'InvalidAccessError'); }
        return this;
    };
    Clients.prototype.openWindow = async (url) => {
        self.broughtToFront.push(`a new ${url}`);
        return null;
    };
}"""
# No page of a browser that is driven from outside is ever behind: it is said to be, and stands still as
# those that are behind for long.
SEEN_BY_WORKER = """void Object.defineProperty(WindowClient.prototype, 'visibilityState',
    { configurable: true, get: () => '%s' })"""
SEEN_BY_PAGE = """{
    Object.defineProperty(document, 'visibilityState', { configurable: true, get: () => '%s' });
    document.dispatchEvent(new Event('visibilitychange'));
}"""

# Not while the service worker shows one: browsers forget some then.
LISTED = "inTurn(() => self.registration.getNotifications())"


def run(console, service, browser):
    dashboard_chapter.start(console, service)
    project = next(one for one in service.get("/projects?status=awarded")
                   if workspace_chapter.projects_chapter.typeable(one))
    run_shown(console, service, browser, project)
    run_tapped(console, service, browser, project)
    run_behind(console, service, browser, project)
    run_closed(console, service, browser, project)
    run_damaged(console, browser)
    run_together(console, service, browser)
    run_badge(console, service, browser)


def content(project, kind="decision_needed", **more):
    return json.dumps({"aps": {"alert": {"title": "Decision needed", "body": "Which colour?"}},
                       "type": kind, "project_id": project["id"], **more})


def notifications(browser):
    return browser.call("inWorker", code=LISTED + """.then((all) => all.map(
        ({ title, body, tag, requireInteraction, silent }) =>
            ({ title, body, tag, requireInteraction, silent })))""")


def deliver(console, service, browser, data):
    origin = service.origin()
    registration = wait_until("the service worker's number",
                              lambda: browser.call("registration", origin=origin))
    browser.call("deliver", origin=origin, registration=registration, data=data)


def run_shown(console, service, browser, project):
    chapter("A message is shown")
    deliver(console, service, browser, content(project, id="m1"))
    wait_until("it is shown", lambda: notifications(browser))
    check_equal("what is shown", notifications(browser), [
        {"title": "Decision needed", "body": "Which colour?", "tag": "m1",
         "requireInteraction": True, "silent": False}])
    deliver(console, service, browser, content(project, id="m1"))
    deliver(console, service, browser, "A line of text")
    wait_until("the other is shown too", lambda: len(notifications(browser)) == 2,
               detail=lambda: notifications(browser))
    check("one that comes twice is shown once, and one without a shape as its text",
          {one["body"] for one in notifications(browser)} == {"Which colour?", "A line of text"})


def tap(browser, tag):
    """What the browser does when a notification is tapped."""
    browser.call("inWorker", code=LISTED + f""".then((all) => void self.dispatchEvent(
        new NotificationEvent('notificationclick',
            {{ notification: all.find((one) => one.tag === '{tag}') }})))""")


def run_tapped(console, service, browser, project):
    chapter("A message is tapped")
    dashboard_chapter.show_tab(console, "Settings")
    stub_front(browser, refuses=True)
    tap(browser, "m1")
    dashboard_chapter.wait_for_tab(console, "Projects")
    check("it leads to the projects", True)
    check_equal("what is asked to the front, in vain", brought_to_front(browser), [service.page_url()])
    check_equal("the notification is gone", [one for one in notifications(browser) if one["tag"]], [])
    workspace_chapter.projects_chapter.open_project(console, service, project)
    # The first tap's tab still waits, since no project was open; the same once more changes nothing.
    deliver(console, service, browser, content(project, kind="dev_error", id="m2"))
    wait_until("the next is shown", lambda: tagged(browser, "m2"))
    tap(browser, "m2")
    console.wait_for("the open project shows its logs",
                     lambda seen: workspace_chapter.selected_tab(seen) == ["Logs"])
    check("with the project open it leads to its logs", True)
    deliver(console, service, browser, content(project, id="m4"))
    wait_until("one more is shown", lambda: tagged(browser, "m4"))
    tap(browser, "m4")
    console.wait_for("the open project shows its decisions",
                     lambda seen: workspace_chapter.selected_tab(seen) == ["Decisions"])
    check("and then to its decisions", True)


def tagged(browser, tag):
    return [one for one in notifications(browser) if one["tag"] == tag]


def stub_front(browser, refuses=False):
    browser.call("inWorker", code=FRONT % ("true" if refuses else "false"))


def brought_to_front(browser):
    return browser.call("inWorker", code="self.broughtToFront")


def put_behind(browser, is_behind):
    seen, state = ("hidden", "frozen") if is_behind else ("visible", "active")
    browser.call("inWorker", code=SEEN_BY_WORKER % seen)
    browser.call("protocol", method="Page.setWebLifecycleState", parameters={"state": state})
    browser.call("evaluate", code=SEEN_BY_PAGE % seen)


def run_behind(console, service, browser, project):
    chapter("A message is tapped while the console is behind")
    put_behind(browser, True)
    stub_front(browser)
    deliver(console, service, browser, content(project, kind="dev_error", id="m5"))
    wait_until("it is shown", lambda: tagged(browser, "m5"))
    tap(browser, "m5")
    wait_until("the console is brought to the front", lambda: brought_to_front(browser))
    put_behind(browser, False)
    console.wait_for("the open project shows its logs",
                     lambda seen: workspace_chapter.selected_tab(seen) == ["Logs"])
    check("the console that comes to the front shows the project's logs", True)
    check_equal("what was brought to the front", brought_to_front(browser), [service.page_url()])


def run_closed(console, service, browser, project):
    chapter("A message is tapped while no console is open")
    console.stop()
    deliver(console, service, browser, content(project, kind="dev_error", id="m3"))
    wait_until("it is shown", lambda: tagged(browser, "m3"))
    stub_front(browser)
    tap(browser, "m3")
    wait_until("a page is asked for", lambda: brought_to_front(browser))
    check_equal("the page that is asked for", brought_to_front(browser), [f"a new {service.page_url()}"])
    console.start(service)
    dashboard_chapter.wait_for_tab(console, "Projects")
    check("the console that opens for it shows the projects", True)


def run_damaged(console, browser):
    chapter("A message that is no text")
    browser.call("inWorker", code="""void self.dispatchEvent(
        new PushEvent('push', { data: Uint8Array.of(0x68, 0x69, 0xff) }))""")
    wait_until("it is shown as what it is", lambda: "A message that can't be shown" in
               {one["body"] for one in notifications(browser)}, detail=lambda: notifications(browser))
    check("it is shown as what it is", True)
    console.stop()


def run_together(console, service, browser):
    chapter("Messages that come together")
    before = len(notifications(browser))
    for number in range(40):
        deliver(console, service, browser, f"Message {number}")
    wait_until("all of them stay", lambda: len(notifications(browser)) == before + 40,
               detail=lambda: len(notifications(browser)))
    check("all of them stay", True)


def run_badge(console, service, browser):
    chapter("The badge")
    # Notifications that the system takes away tell nobody.
    browser.call("inWorker", code=LISTED + """.then((all) => {
        self.navigator.setAppBadge = async (count) => {
            self.badge = count;
            throw new Error('there is no place for it');
        };
        all.forEach((one) => one.close());
    })""")
    check_equal("the badge before", browser.call("inWorker", code="self.badge"), None)

    def counts(number):
        wait_until(f"the badge says {number}",
                   lambda: browser.call("inWorker", code="self.badge") == number,
                   detail=lambda: (browser.call("inWorker", code="self.badge"), notifications(browser)))

    console.start(service)
    counts(0)
    check("it is counted again when the console starts", True)
    console.stop()
    for data in ("One", "Another"):
        deliver(console, service, browser, data)
    counts(2)
    check("it counts what is shown", True)
    # What a browser does when somebody wipes one away.
    browser.call("inWorker", code=LISTED + """.then(([one]) => {
        one.close();
        self.dispatchEvent(new NotificationEvent('notificationclose', { notification: one }));
    })""")
    counts(1)
    check("and what is left of it", True)
