"""A service that is made of the description alone.

A public mock server answers as the description's examples have it, and a web server in front of it
gives it TLS and the base path.
"""

import json
import re
import socket
import ssl
import subprocess
import urllib.request
from contextlib import contextmanager

from harness.checks import CheckFailed, check_equal, wait_until
from harness.desk import Program

REQUEST = re.compile(r"^([A-Z]+) (/\S*) (\d{3})$")
MODULES = ("mpm_event", "authz_core", "ssl", "proxy", "proxy_http")
PROXY = """ServerRoot "{folder}"
ServerName 127.0.0.1
PidFile "{folder}/proxy.pid"
Listen 127.0.0.1:{port}
{modules}
LogFormat "%m %U%q %>s" request
CustomLog "{folder}/requests" request
ErrorLog "{folder}/proxy-errors"
SSLEngine on
SSLCertificateFile "{folder}/certificate.pem"
SSLCertificateKeyFile "{folder}/key.pem"
ProxyPass "/api/v1/" "http://127.0.0.1:{mock}/"
"""


def free_ports(count):
    """Ports of this machine that nobody listens on now."""
    sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(count)]
    ports = [one.getsockname()[1] for one in sockets]
    for one in sockets:
        one.close()
    return ports


class MockService:
    """Can be asked like the practice service, as far as it goes: it remembers nothing."""

    def __init__(self, mock_server, description, folder, environment):
        self._mock_server = mock_server
        self._description = description
        self._folder = folder
        self._environment = environment
        self._programs = []
        self._tries = 0

    def start(self):
        self._folder.mkdir()
        self.authority = self._folder / "certificate.pem"
        self._make_certificate()
        port, mock = free_ports(2)
        modules = "\n".join(f"LoadModule {name}_module /usr/lib/apache2/modules/mod_{name}.so"
                            for name in MODULES)
        configuration = self._folder / "proxy.conf"
        configuration.write_text(PROXY.format(folder=self._folder, port=port, mock=mock,
                                              modules=modules), encoding="utf-8")
        self._run([self._mock_server, "mock", self._description, "--port", mock], "mock.log")
        self._run(["/usr/sbin/apache2", "-f", configuration, "-D", "FOREGROUND"], "proxy.log")
        self.base_url = f"https://127.0.0.1:{port}/api/v1"
        self.context = ssl.create_default_context(cafile=self.authority)
        wait_until("the mock server answers", self._answers, 60, self._outputs)
        self._tries = len(self._logged())

    def stop(self):
        for program in reversed(self._programs):
            program.stop()
        self._programs = []

    def get(self, path):
        """The reply, decoded. path: below the base path."""
        with urllib.request.urlopen(self.base_url + path, context=self.context,
                                    timeout=20) as reply:
            return json.load(reply)

    def project_part(self, project, part):
        return self.get(f"/projects/{project['id']}/{part}")

    def requests(self):
        """Every request since the start, the test's own included: method, path below the base,
        status."""
        return self._logged()[self._tries:]

    def _logged(self):
        found = []
        for line in (self._folder / "requests").read_text(encoding="utf-8").splitlines():
            match = REQUEST.match(line)
            if match:
                found.append((match[1], match[2].removeprefix("/api/v1"), int(match[3])))
        return found

    def writes(self):
        """The requests that change something."""
        return [request for request in self.requests() if request[0] not in ("GET", "HEAD")]

    @contextmanager
    def answers(self, method, path):
        """What is done within it must lead to one such request; waits for its answer."""
        def count():
            return sum(request[:2] == (method, path) for request in self.requests())

        before = count()
        yield
        wait_until(f"the console asks for {method} {path}", lambda: count() > before)
        check_equal(f"number of requests for {method} {path}", count() - before, 1)

    def _make_certificate(self):
        """One that is its own authority."""
        subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
             "-nodes", "-days", "2", "-subj", "/CN=Mock service",
             "-addext", "subjectAltName=IP:127.0.0.1",
             "-keyout", self._folder / "key.pem", "-out", self.authority],
            check=True, capture_output=True)

    def _run(self, command, log):
        self._programs.append(Program(command, self._environment, self._folder / log))

    def _answers(self):
        if any(program.exit_code() is not None for program in self._programs):
            raise CheckFailed("the mock service does not start:\n" + self._outputs())
        try:
            return self.get("/dashboard")
        except OSError:
            return None

    def _outputs(self):
        return "\n".join(program.output() for program in self._programs)
