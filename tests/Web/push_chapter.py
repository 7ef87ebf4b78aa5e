"""Messages of the service in a browser: how they are asked for, shown, and opened.

The browser's own push service is elsewhere; messages are handed to the service worker as the browser
would, by what its developers can ask of it.
"""

import json

import dashboard_chapter
import workspace_chapter
from harness.checks import chapter, check, check_equal, wait_until

# In place of the browser's push service, which needs the network: an address, and keys.
PUSH_SERVICE = """(() => {
    if (!('PushManager' in globalThis)) { return; }
    const bytes = (size, first) => Uint8Array.from({ length: size }, (_, index) => index ? index : first);
    const text = (array) => btoa(String.fromCharCode(...array)).replaceAll('+', '-').replaceAll('/', '_')
        .replaceAll('=', '');
    PushManager.prototype.subscribe = async function (options) {
        globalThis.askedFor = { visible: options.userVisibleOnly, key: text(options.applicationServerKey) };
        return { toJSON: () => ({ endpoint: 'https://push.example/a-phone',
            keys: { p256dh: text(bytes(65, 4)), auth: text(bytes(16, 1)) } }) };
    };
    // A browser that asks only when something was touched.
    if (location.pathname.startsWith('/app/') && globalThis.localStorage?.asksWhenTouched) {
        let [permission, touched] = ['default', false];
        addEventListener('pointerup', () => {
            touched = true;
            setTimeout(() => { touched = false; });
        }, true);
        Object.defineProperty(Notification, 'permission', { get: () => permission });
        Notification.requestPermission = async () => {
            permission = touched ? 'granted' : permission;
            return permission;
        };
    }
})()"""


# In place of what only a real finger may ask a browser for: the page is opened from outside, and the
# service worker is not told which it is, as some browsers have it.
OPENING = """Clients.prototype.openWindow = async (url) => {
    self.askedToOpen = url;
    return null;
}"""


def run(console, service, browser):
    run_first_touch(console, service, browser)
    run_registration(console, service, browser)
    project = next(one for one in service.get("/projects?status=awarded")
                   if workspace_chapter.projects_chapter.typeable(one))
    run_shown(console, service, browser, project)
    run_tapped(console, service, browser, project)
    run_closed(console, service, browser, project)
    run_damaged(console, browser)
    run_badge(console, service, browser)
    run_other_address(console, service, browser)


def content(project, kind="decision_needed", **more):
    return json.dumps({"aps": {"alert": {"title": "Decision needed", "body": "Which colour?"}},
                       "type": kind, "project_id": project["id"], **more})


def notifications(browser):
    return browser.call("inWorker", code="""self.registration.getNotifications().then((all) => all.map(
        ({ title, body, tag, requireInteraction, silent }) =>
            ({ title, body, tag, requireInteraction, silent })))""")


def deliver(console, service, browser, data):
    origin = service.base_url.removesuffix("/api/v1")
    registration = wait_until("the service worker's number",
                              lambda: browser.call("registration", origin=origin))
    browser.call("deliver", origin=origin, registration=registration, data=data)


def run_first_touch(console, service, browser):
    chapter("A browser that asks for permission only when something was touched")
    browser.call("evaluate", code="localStorage.asksWhenTouched = 'yes'")
    console.stop()
    before = service.count("POST", "/devices")
    console.start(service)
    console.wait_for("the dashboard is there", dashboard_chapter.tiles)
    console.look_at_rest()
    check_equal("what the service is told before", service.count("POST", "/devices"), before)
    browser.call("tap", x=195, y=30)
    wait_until("the first touch asks", lambda: service.count("POST", "/devices") > before)
    check("the first touch asks", True)
    browser.call("evaluate", code="localStorage.clear()")


def run_registration(console, service, browser):
    chapter("The address for messages")
    before = service.count("POST", "/devices")
    console.stop()
    console.start(service)
    wait_until("the service is told", lambda: service.count("POST", "/devices") > before)
    token = json.loads(bytes.fromhex(service.devices()[-1]))
    check_equal("what it is told", sorted(token), ["auth", "endpoint", "p256dh"])
    check_equal("the address", token["endpoint"], "https://push.example/a-phone")
    asked = browser.call("evaluate", code="askedFor")
    check_equal("how it was asked for", asked, {"visible": True, "key": service.push_key()})


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
    browser.call("inWorker", code=f"""self.registration.getNotifications({{ tag: '{tag}' }}).then(([one]) =>
        {{ self.dispatchEvent(new NotificationEvent('notificationclick', {{ notification: one }})); }})""")


def run_tapped(console, service, browser, project):
    chapter("A message is tapped")
    dashboard_chapter.show_tab(console, "Settings")
    tap(browser, "m1")
    dashboard_chapter.wait_for_tab(console, "Projects")
    check("it leads to the projects", True)
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


def run_closed(console, service, browser, project):
    chapter("A message is tapped while no console is open")
    console.stop()
    deliver(console, service, browser, content(project, kind="dev_error", id="m3"))
    wait_until("it is shown", lambda: tagged(browser, "m3"))
    browser.call("inWorker", code=OPENING)
    tap(browser, "m3")
    wait_until("a page is asked for", lambda: browser.call("inWorker", code="self.askedToOpen"))
    check_equal("the page that is asked for", browser.call("inWorker", code="self.askedToOpen"),
                service.base_url.removesuffix("/api/v1") + "/app/")
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


def run_badge(console, service, browser):
    chapter("The badge")
    # Notifications that the system takes away tell nobody.
    browser.call("inWorker", code="""self.registration.getNotifications().then((all) => {
        self.navigator.setAppBadge = async (count) => {
            self.badge = count;
            throw new Error('there is no place for it');
        };
        all.forEach((one) => one.close());
    })""")
    check_equal("the badge before", browser.call("inWorker", code="self.badge"), None)
    console.start(service)
    wait_until("it is counted again when the console starts",
               lambda: browser.call("inWorker", code="self.badge") == 0)
    check("it is counted again when the console starts", True)


def run_other_address(console, service, browser):
    chapter("The browser gives another address")
    browser.call("inWorker", code=PUSH_SERVICE)

    def change():
        browser.call("inWorker", code="""void self.dispatchEvent(
            new ExtendableEvent('pushsubscriptionchange'))""")

    for where, prepare in (("an open console tells the service", lambda: None),
                           ("without one the service worker does", console.stop)):
        prepare()
        before = service.count("POST", "/devices")
        change()
        wait_until(where, lambda known=before: service.count("POST", "/devices") > known)
        check_equal(f"{where}: the address", json.loads(bytes.fromhex(service.devices()[-1]))["endpoint"],
                    "https://push.example/a-phone")
    check_equal("the addresses that the service has then", len(service.devices()), 1)
