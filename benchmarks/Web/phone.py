"""A page as a phone of the middle range has it: small, touched, with a slow processor and network."""

import base64
import json
import time

from chromium import ChromiumError, resident

WIDTH, HEIGHT, SCALE = 412, 823, 1.75
SLOWER = 4
# What browsers' developer tools call fast 3G.
NETWORK = {"offline": False, "latency": 562.5, "downloadThroughput": 1.6e6 / 8 * 0.9,
           "uploadThroughput": 750e3 / 8 * 0.9, "connectionType": "cellular3g"}
FREE = {"offline": False, "latency": 0, "downloadThroughput": -1, "uploadThroughput": -1}

# What a finger does that pulls the page up and rests there, and the time between, in seconds.
FINGER = [("touchStart", 0), *(("touchMove", 40 * step) for step in range(1, 16)),
          *(("touchMove", 600 + 0.5 * (step % 2)) for step in range(6))]
FINGER_STEP = 0.016

# In every page before its own scripts: notes when all of the texts are there and have been drawn.
WATCH = """(() => {
    const wanted = %s;
    globalThis.bench = { loaded: 0 };
    const observer = new MutationObserver(() => {
        const text = document.body?.textContent ?? '';
        if (wanted.every((one) => text.includes(one))) {
            observer.disconnect();
            requestAnimationFrame(() => setTimeout(() => { bench.loaded = performance.now(); }));
        }
    });
    observer.observe(document, { subtree: true, childList: true, characterData: true });
})()"""

FIRST_PICTURE = "performance.getEntriesByName('first-contentful-paint')[0]?.paintTime ?? 0"

# Notes the time of each frame until stop is called.
FRAMES = """(() => {
    const frames = [];
    let next = 0;
    const note = (time) => { frames.push(time); next = requestAnimationFrame(note); };
    next = requestAnimationFrame(note);
    bench.stop = () => { cancelAnimationFrame(next); return frames.map((time) => Math.round(time * 100) / 100); };
})()"""


class Phone:
    """The one page of a browser. wanted: the texts by which the loaded dashboard is known."""

    def __init__(self, browser, wanted, is_throttled):
        self._browser = browser
        self._network = FREE
        self._bytes = 0
        self._received = {}
        self._under_way = set()
        self._last = time.monotonic()
        browser.listen(self._heard)
        # Service workers are stopped before they do anything, until their network is as the page's.
        browser.call("Target.setAutoAttach", autoAttach=True, waitForDebuggerOnStart=True, flatten=True,
                     filter=[{"type": "service_worker"}])
        target = next(one for one in browser.call("Target.getTargets")["targetInfos"]
                      if one["type"] == "page")
        self._session = browser.call("Target.attachToTarget", targetId=target["targetId"],
                                     flatten=True)["sessionId"]
        self._ask("Emulation.setDeviceMetricsOverride", width=WIDTH, height=HEIGHT,
                  deviceScaleFactor=SCALE, mobile=True)
        self._ask("Emulation.setTouchEmulationEnabled", enabled=True, maxTouchPoints=5)
        self._ask("Page.enable")
        self._ask("Page.addScriptToEvaluateOnNewDocument", source=WATCH % json.dumps(wanted))
        self._ask("Network.enable")
        self._ask("Emulation.setCPUThrottlingRate", rate=SLOWER if is_throttled else 1)
        self.slow_network(is_throttled)

    def slow_network(self, is_throttled):
        self._network = NETWORK if is_throttled else FREE
        self._ask("Network.emulateNetworkConditions", **self._network)

    def open(self, url):
        self._ask("Page.navigate", url=url)

    def evaluate(self, code, limit=60.0):
        answer = self._ask("Runtime.evaluate", expression=code, awaitPromise=True, returnByValue=True,
                           limit=limit)
        if "exceptionDetails" in answer:
            raise ChromiumError(answer["exceptionDetails"]["exception"].get("description", code))
        return answer["result"].get("value")

    def wait_for(self, what, code, limit=180.0):
        """The first true value of the code."""
        end = time.monotonic() + limit
        while not (value := self.evaluate(code)):
            if time.monotonic() > end:
                raise ChromiumError(f"waited {limit:g} s in vain: {what}")
            self._browser.wait(0.1)
        return value

    def pause(self, seconds):
        self._browser.wait(seconds)

    def wait_for_silence(self, seconds):
        """Until the network has been still for so long."""
        while self._under_way or time.monotonic() - self._last < seconds:
            self._browser.wait(0.1)

    def bytes_received(self):
        """Headers and bodies as they came over the network; what caches gave is not among them."""
        return self._bytes

    def drag(self, times):
        """A finger that pulls the page up by 600 points at 2,500 a second, again and again. It rests
        before it lets go: pages thrown go different ways. Gives the times of the frames that the page
        drew meanwhile, in ms."""
        self.evaluate(FRAMES)
        for _ in range(times):
            begin = time.monotonic()
            for step, (kind, distance) in enumerate(FINGER):
                # Not waiting for the page: a finger does not.
                self._browser.wait(begin + step * FINGER_STEP - time.monotonic())
                self._browser.send("Input.dispatchTouchEvent", self._session, type=kind,
                                   touchPoints=[{"x": WIDTH // 2, "y": HEIGHT - 100 - distance}])
            self._browser.wait(FINGER_STEP)
            self._ask("Input.dispatchTouchEvent", type="touchEnd", touchPoints=[])
        return self.evaluate("bench.stop()")

    def memory(self):
        """Bytes of the page's process, and of the one that draws for it."""
        self._ask("HeapProfiler.collectGarbage")
        self._browser.wait(1)
        return [sum(map(resident, self._browser.processes(kind))) for kind in ("renderer", "GPU")]

    def first_picture(self):
        """Milliseconds after the page was asked for; for a page that draws by itself, the first that it
        drew. The time that the picture then needs to the screen does not count."""
        return self.wait_for("a picture", FIRST_PICTURE)

    def loaded(self):
        """The same, of the frame in which all of the wanted texts are there."""
        return self.wait_for("the dashboard", "bench.loaded")

    def save_picture(self, path):
        path.write_bytes(base64.b64decode(self._ask("Page.captureScreenshot")["data"]))

    def _ask(self, method, limit=60.0, **parameters):
        return self._browser.call(method, self._session, limit, **parameters)

    def _heard(self, method, given, session):
        if method == "Target.attachedToTarget":
            worker = given["sessionId"]
            if given["targetInfo"]["type"] == "service_worker":
                self._browser.send("Network.enable", worker)
                self._browser.send("Network.emulateNetworkConditions", worker, **self._network)
                self._browser.send("Runtime.runIfWaitingForDebugger", worker)
        elif method.startswith("Network."):
            self._last = time.monotonic()
            request = (session, given.get("requestId"))
            if method == "Network.requestWillBeSent":
                self._under_way.add(request)
            elif method == "Network.requestServedFromCache":
                self._received[request] = False
            elif method == "Network.responseReceived":
                reply = given["response"]
                if reply.get("fromDiskCache") or reply.get("fromServiceWorker"):
                    self._received[request] = False
            elif method in ("Network.loadingFinished", "Network.loadingFailed"):
                self._under_way.discard(request)
                if self._received.pop(request, True):
                    self._bytes += int(given.get("encodedDataLength", 0))
