"""The practice service as a program, and as what the test compares the console with."""

import contextlib
import json
import os
import re
import signal
import ssl
import urllib.parse
import urllib.request
from pathlib import Path

from .checks import CheckFailed, check_equal, wait_until
from .desk import Program

# Every run has the same portfolio, whatever the hour.
BEGIN = "2026-03-04T16:30:00Z"
REQUEST = re.compile(r"^([A-Z]+) (/\S*) (\d{3})$")


class PracticeService:
    """Runs with its agent's time standing still, so that nothing changes by itself."""

    def __init__(self, binary, data, environment, log, more=()):
        """more: what else the command line says."""
        self._more = more
        self._port = 0
        self._binary = binary
        self._data = data
        self._environment = environment
        self._log = log
        self._program = None

    def start(self):
        already = self._log.read_text(encoding="utf-8").count("listening on") \
            if self._log.exists() else 0
        self._program = Program(
            [self._binary, "--port", self._port, "--data", self._data, "--seed", 1, "--begin", BEGIN,
             "--speed", 0, "--control", "--verbose", *self._more], self._environment, self._log)
        addresses = wait_until("the practice service listens", lambda: self._addresses(already))
        self.base_url = addresses[-1]
        # Started again, it is where it was.
        self._port = urllib.parse.urlsplit(self.base_url).port
        self.authority = self._data / "ca.pem"
        self.context = ssl.create_default_context(cafile=self.authority)

    def stop(self):
        if self._program is None:
            return
        code = self._program.stop()
        self._program = None
        if code != 0:
            raise CheckFailed(f"the practice service ended with {code}")

    def origin(self):
        return self.base_url.removesuffix("/api/v1")

    def page_url(self):
        """Where browsers find the console."""
        return f"{self.origin()}/app/"

    @contextlib.contextmanager
    def paused(self):
        """Within it every request waits, however long that is."""
        os.kill(self._program.pid, signal.SIGSTOP)
        status = Path(f"/proc/{self._program.pid}/stat")
        wait_until("the practice service pauses",
                   lambda: status.read_text(encoding="utf-8").rpartition(")")[2].split()[0] == "T")
        try:
            yield
        finally:
            os.kill(self._program.pid, signal.SIGCONT)

    def get(self, path):
        """The service's answer, decoded. path: below the base path."""
        return self._ask("GET", self.base_url + path)

    def project_part(self, project, part):
        return self.get(f"/projects/{project['id']}/{part}")

    def fail(self, path, status, times=1):
        """The next replies to the path fail with the status."""
        self._control("fault", path=path, status=status, times=times)

    def spoil(self, path, kind):
        """The next reply to the path is spoiled: "cut", "garbage" and so on."""
        self._control("fault", path=path, kind=kind, times=1)

    def devices(self):
        """The device tokens that it was told."""
        return list(self._ask("GET", self.origin() + "/control/devices").values())

    def push_key(self):
        """What browsers are to know it by when they are asked for an address."""
        with urllib.request.urlopen(self.origin() + "/app/push-key", context=self.context,
                                    timeout=20) as reply:
            return reply.read().decode()

    def happen(self, event, project):
        """The agent does it now."""
        return self._control("tick", event=event, project=project["id"])

    def requests(self):
        """Every request so far, the test's own included: method, path below the base, status."""
        found = []
        for line in self._program.output().splitlines():
            match = REQUEST.match(line)
            if match and match[2].startswith("/api/v1"):
                found.append((match[1], match[2].removeprefix("/api/v1"), int(match[3])))
        return found

    def count(self, method, path):
        """How often this has been answered so far, well or badly."""
        return sum(request[:2] == (method, path) for request in self.requests())

    @contextlib.contextmanager
    def answers(self, method, path):
        """What is done within it must lead to one such request; waits for its answer."""
        before = self.count(method, path)
        yield
        wait_until(f"the console asks for {method} {path}",
                   lambda: self.count(method, path) > before)
        check_equal(f"number of requests for {method} {path}", self.count(method, path) - before, 1)

    def writes(self):
        """The requests that change something."""
        return [request for request in self.requests() if request[0] not in ("GET", "HEAD")]

    def _addresses(self, already):
        if self._program.exit_code() is not None:
            raise CheckFailed("the practice service does not start:\n" + self._program.output())
        found = re.findall(r"^listening on (\S+),", self._program.output(), re.MULTILINE)
        return found if len(found) > already else None

    def _control(self, what, **query):
        return self._ask("POST", f"{self.origin()}/control/{what}?{urllib.parse.urlencode(query)}")

    def _ask(self, method, url):
        request = urllib.request.Request(url, method=method)
        with urllib.request.urlopen(request, context=self.context, timeout=20) as reply:
            return json.load(reply)
