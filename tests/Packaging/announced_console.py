"""Has a session bus of its own start a program that scripts/session.sh announced on it.

    announced_console.py ROOT SERVICE-FILE
"""

import os
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ROOT, PACKAGED = Path(sys.argv[1]), Path(sys.argv[2])
ID = PACKAGED.stem
PROGRAM = """#!/bin/sh
printf '%s\\n' "$TRELLISPORT_BASE_URL" "$TRELLISPORT_CA_FILE" "$@" >"{notes}.part"
mv "{notes}.part" "{notes}"
"""
LIMIT_S = 20


class AnnouncedConsole(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="an nounced's-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.notes = self.folder / "notes"
        self.program = self.folder / "the console"
        self.program.write_text(PROGRAM.format(notes=self.notes), encoding="utf-8")
        self.program.chmod(0o755)
        self.environment = dict(
            os.environ, XDG_RUNTIME_DIR=str(self.folder), TRELLISPORT_BASE_URL="https://a/api/v1",
            TRELLISPORT_CA_FILE="c a.pem")
        self.environment.pop("DBUS_SESSION_BUS_ADDRESS", None)
        self.announced = self.folder / "dbus-1/services" / PACKAGED.name

    def shell(self, script):
        return subprocess.run(
            ["bash", "-euc", f'. "$1"; {script}', "bash", ROOT / "scripts/session.sh", PACKAGED,
             self.program, ID], env=self.environment, cwd=self.folder, text=True,
            capture_output=True, check=False)

    def start_bus(self):
        # Before its service folder is there, as on a machine where nothing was announced before.
        bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"],
                               env=self.environment, text=True, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL)
        self.addCleanup(bus.stdout.close)
        self.addCleanup(bus.wait)
        self.addCleanup(bus.kill)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()

    def test_the_bus_starts_it_with_our_service_and_authority_and_without_a_window(self):
        self.start_bus()
        done = self.shell('announce_console "$2" "$3"; dbus-send --session --type=method_call '
                          '--dest="$4" / org.freedesktop.DBus.Peer.Ping')
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        deadline = time.monotonic() + LIMIT_S
        while not self.notes.exists() and time.monotonic() < deadline:
            time.sleep(0.02)
        self.assertEqual(self.notes.read_text(encoding="utf-8").splitlines(),
                         ["https://a/api/v1", str(self.folder / "c a.pem"), "--background"])

    def test_it_is_taken_back(self):
        self.start_bus()
        self.assertEqual(self.shell('announce_console "$2" "$3"; test -e "$announced"').returncode,
                         0)
        self.assertTrue(self.announced.exists())
        done = self.shell('announce_console "$2" "$3"; withdraw_console')
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertFalse(self.announced.exists())
        asked = self.shell('dbus-send --session --print-reply --dest=org.freedesktop.DBus '
                           '/ org.freedesktop.DBus.ListActivatableNames')
        self.assertNotIn(ID, asked.stdout)
        self.assertIn("org.freedesktop.DBus", asked.stdout)

    def test_without_a_session_bus_nothing_is_done_or_said(self):
        done = self.shell('announce_console "$2" "$3"; withdraw_console')
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertFalse(self.announced.exists())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
