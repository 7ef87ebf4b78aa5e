"""A browser without a window, driven by its own developer protocol.

Not through Playwright: that turns the browser's cache off as soon as it looks at requests, and reaches
no service worker's network.
"""

import fcntl
import json
import os
import select
import subprocess
import time

FLAGS = ("--headless=new", "--no-sandbox", "--no-first-run", "--no-default-browser-check",
         "--disable-background-networking", "--disable-component-update", "--disable-sync",
         "--disable-extensions", "--disable-default-apps", "--metrics-recording-only",
         "--disable-field-trial-config", "--mute-audio", "--hide-scrollbars",
         # No process in stock for the next page: it would be counted along.
         "--disable-features=SpareRendererForSitePerProcess",
         "--use-gl=angle", "--use-angle=swiftshader", "--enable-unsafe-swiftshader")
LIMIT = 60.0


class ChromiumError(Exception):
    """The browser could not do it, or did not in time."""


class Chromium:
    """A process of its own. profile: its folder; home: one whose certificate store names whom it
    trusts. Use it in a with statement."""

    def __init__(self, program, home, profile, log):
        self._number = 0
        self._rest = b""
        self._answers = {}
        self._listeners = []
        commands, self._commands = os.pipe()
        self._messages, messages = os.pipe()
        # The browser reads from descriptor 3 and writes to 4; the shell moves them there.
        inner = [fcntl.fcntl(one, fcntl.F_DUPFD, 10) for one in (commands, messages)]
        with open(log, "ab") as output:
            self._process = subprocess.Popen(
                ["bash", "-c", f'exec 3<&{inner[0]} 4>&{inner[1]}; exec "$@"', "bash", program,
                 *FLAGS, f"--user-data-dir={profile}", "--remote-debugging-pipe", "about:blank"],
                pass_fds=inner, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                env={**os.environ, "HOME": str(home)})
        for one in (commands, messages, *inner):
            os.close(one)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self.call("Browser.close")
            self._process.wait(20)
        except (ChromiumError, OSError, subprocess.TimeoutExpired):
            self._process.terminate()
            self._process.wait(20)
        finally:
            os.close(self._commands)
            os.close(self._messages)

    def listen(self, heard):
        """heard(method, parameters, session) for each event, from within what waits. It may send, but
        not call."""
        self._listeners.append(heard)

    def send(self, method, session=None, **parameters):
        """Gives the call's number, whose answer may never be asked for."""
        self._number += 1
        message = {"id": self._number, "method": method, "params": parameters}
        if session:
            message["sessionId"] = session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self._commands, data):]
        return self._number

    def call(self, method, session=None, limit=LIMIT, **parameters):
        """The answer. Raises ChromiumError."""
        number = self.send(method, session, **parameters)
        end = time.monotonic() + limit
        while number not in self._answers:
            if not self._hear(end - time.monotonic()):
                raise ChromiumError(f"{method}: no answer in {limit:g} s")
        answer = self._answers.pop(number)
        if "error" in answer:
            raise ChromiumError(f"{method}: {answer['error']['message']}")
        return answer["result"]

    def wait(self, seconds):
        """Hears what comes meanwhile."""
        end = time.monotonic() + seconds
        while self._hear(end - time.monotonic()):
            pass

    def _hear(self, seconds):
        """False when nothing came in that time."""
        ready, _, _ = select.select([self._messages], [], [], max(0.0, seconds))
        if not ready:
            return False
        data = os.read(self._messages, 1 << 20)
        if not data:
            raise ChromiumError("the browser has ended")
        *whole, self._rest = (self._rest + data).split(b"\0")
        for message in map(json.loads, whole):
            if "id" in message:
                self._answers[message["id"]] = message
            else:
                for heard in self._listeners:
                    heard(message["method"], message["params"], message.get("sessionId"))
        return True

    def processes(self, kind):
        """The numbers of its processes of a kind, such as renderer or GPU."""
        return [one["id"] for one in self.call("SystemInfo.getProcessInfo")["processInfo"]
                if one["type"] == kind]


def resident(process):
    """Bytes of memory that a process holds and shares with no other: what it wrote, not the browser's
    own program."""
    with open(f"/proc/{process}/smaps_rollup", encoding="ascii") as lines:
        return 1024 * sum(int(line.split()[1]) for line in lines
                          if line.startswith(("Private_Clean:", "Private_Dirty:")))
