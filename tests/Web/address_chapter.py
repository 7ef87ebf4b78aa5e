"""How a browser is asked whether it may notify, and for the address to which messages are sent."""

import json

import dashboard_chapter
from harness.checks import chapter, check, check_equal, wait_until

# In place of the browser's push service, which needs the network: an address, and keys. The page and the
# service worker get different addresses, to tell who told the service.
PUSH_SERVICE = """(() => {
    if (!('PushManager' in globalThis)) { return; }
    const bytes = (size, first) => Uint8Array.from({ length: size }, (_, index) => index ? index : first);
    const text = (array) => btoa(String.fromCharCode(...array)).replaceAll('+', '-').replaceAll('/', '_')
        .replaceAll('=', '');
    const isConsole = location.pathname.startsWith('/app/') && 'document' in globalThis;
    const wishes = isConsole ? localStorage : {};
    // One that the browser has for another key of the service.
    let old = wishes.hasOldKey ? { unsubscribe: async () => {
        old = null;
        globalThis.unsubscribed = true;
        return true;
    } } : null;
    PushManager.prototype.getSubscription = async () => old;
    PushManager.prototype.subscribe = async function (options) {
        globalThis.askedFor = { visible: options.userVisibleOnly, key: text(options.applicationServerKey) };
        if (old) { throw new DOMException('there is one with another key', 'InvalidStateError'); }
        return { toJSON: () => ({ endpoint: `https://push.example/a-${isConsole ? 'page' : 'worker'}`,
            keys: { p256dh: text(bytes(65, 4)), auth: text(bytes(16, 1)) } }) };
    };
    // A browser that asks only when something was touched.
    if (wishes.asksWhenTouched) {
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
    // One whose user closes the question without an answer.
    if (wishes.leavesQuestion) {
        globalThis.questions = { asked: 0, left: 0 };
        Object.defineProperty(Notification, 'permission', { get: () => 'default' });
        Notification.requestPermission = async () => {
            ++questions.asked;
            await new Promise((resolve) => { globalThis.leaveQuestion = resolve; });
            ++questions.left;
            return 'default';
        };
    }
})();"""

PAGE = "https://push.example/a-page"
WORKER = "https://push.example/a-worker"


def run(console, service, browser):
    run_first_touch(console, service, browser)
    run_left_question(console, service, browser)
    run_registration(console, service, browser)
    run_other_key(console, service, browser)
    run_other_address(console, service, browser)


def start_where(console, service, browser, wish):
    """Starts the console in a browser with this peculiarity (see PUSH_SERVICE)."""
    browser.call("evaluate", code=f"localStorage.{wish} = 'yes'")
    dashboard_chapter.start(console, service)
    browser.call("evaluate", code="localStorage.clear()")


def addresses(service):
    return {json.loads(bytes.fromhex(one))["endpoint"] for one in service.devices()}


def run_first_touch(console, service, browser):
    chapter("A browser that asks for permission only when something was touched")
    before = service.count("POST", "/devices")
    start_where(console, service, browser, "asksWhenTouched")
    console.look_at_rest()
    check_equal("what the service is told before", service.count("POST", "/devices"), before)
    browser.call("tap", x=195, y=30)
    wait_until("the first touch asks", lambda: service.count("POST", "/devices") > before)
    check("the first touch asks", True)


def run_left_question(console, service, browser):
    chapter("The question for permission is closed without an answer")
    before = service.count("POST", "/devices")
    start_where(console, service, browser, "leavesQuestion")
    wait_until("it is asked", lambda: browser.call("evaluate", code="questions.asked"))
    # Nobody reads it in less than that.
    browser.call("evaluate", code="""new Promise((resolve) => {
        let steps = 0;
        const step = () => (++steps < 40 ? setTimeout(step, 50) : resolve(leaveQuestion()));
        step();
    })""")
    wait_until("it is left", lambda: browser.call("evaluate", code="questions.left"))
    console.look_at_rest()
    browser.call("tap", x=195, y=30)
    console.look_at_rest()
    check_equal("how often it was asked", browser.call("evaluate", code="questions.asked"), 1)
    check_equal("what the service is told", service.count("POST", "/devices"), before)


def run_registration(console, service, browser):
    chapter("The address for messages")
    before = service.count("POST", "/devices")
    console.stop()
    console.start(service)
    wait_until("the service is told", lambda: service.count("POST", "/devices") > before)
    token = json.loads(bytes.fromhex(service.devices()[-1]))
    check_equal("what it is told", sorted(token), ["auth", "endpoint", "p256dh"])
    check_equal("the address", token["endpoint"], PAGE)
    asked = browser.call("evaluate", code="askedFor")
    check_equal("how it was asked for", asked, {"visible": True, "key": service.push_key()})


def run_other_key(console, service, browser):
    chapter("The service has another key than before")
    before = service.count("POST", "/devices")
    start_where(console, service, browser, "hasOldKey")
    wait_until("the service is told", lambda: service.count("POST", "/devices") > before)
    check_equal("the address for the key before, and the key of the next", browser.call(
        "evaluate", code="[globalThis.unsubscribed ? 'given up' : 'kept', askedFor.key]"),
        ["given up", service.push_key()])


def run_other_address(console, service, browser):
    chapter("The browser gives another address")
    browser.call("inWorker", code=PUSH_SERVICE)

    def change():
        browser.call("inWorker", code="""void self.dispatchEvent(
            new ExtendableEvent('pushsubscriptionchange'))""")

    before = service.count("POST", "/devices")
    change()
    wait_until("an open console tells the service", lambda: service.count("POST", "/devices") > before)
    check_equal("an open console tells the service: its address alone", addresses(service), {PAGE})
    console.stop()
    before = service.count("POST", "/devices")
    change()
    wait_until("without one the service worker does", lambda: service.count("POST", "/devices") > before)
    check_equal("without one the service worker does: its address, too", addresses(service), {PAGE, WORKER})
