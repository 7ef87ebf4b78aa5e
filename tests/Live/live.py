"""Saves QML files while the console shows them.

    live.py --live PROGRAM --sources FOLDER
"""

import argparse
import os
import queue
import shutil
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--live", required=True)
parser.add_argument("--sources", required=True, type=Path)
options = parser.parse_args()
LIMIT_S = 30
MARK = '    Component.onCompleted: console.log("changed by the test")\n'


class Live(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.sources = Path(folder.name) / "TrellisportManager"
        shutil.copytree(options.sources, self.sources)
        # Nobody listens there: the screens show what they show without a service.
        environment = dict(os.environ, TRELLISPORT_BASE_URL="https://127.0.0.1:1/api/v1",
                           DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent",
                           QT_LOGGING_RULES="qml.debug=true", QT_FORCE_STDERR_LOGGING="1")
        self.program = subprocess.Popen([options.live, self.sources], env=environment, text=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.addCleanup(self.program.stdout.close)
        self.addCleanup(self.program.wait)
        self.addCleanup(self.program.kill)
        self.lines = queue.Queue()
        threading.Thread(target=self.read, daemon=True).start()

    def read(self):
        for line in self.program.stdout:
            self.lines.put(line.strip())

    def until(self, word):
        """The lines up to the first that begins with the word."""
        found = []
        while not found or not found[-1].startswith(word):
            found.append(self.lines.get(timeout=LIMIT_S))
        return found

    def test_a_saved_file_is_shown_and_a_broken_one_told(self):
        self.assertNotIn("changed by the test", "\n".join(self.until("shown after")))
        file = self.sources / "Dashboard/DashboardView.qml"
        whole = file.read_text(encoding="utf-8")
        changed = whole.replace("    screenModel: viewModel\n",
                                "    screenModel: viewModel\n" + MARK)
        self.assertNotEqual(changed, whole)

        file.write_text(changed, encoding="utf-8")
        self.assertIn("changed by the test", "\n".join(self.until("shown after")))

        window = self.sources / "Shell/AppWindow.qml"
        good = window.read_text(encoding="utf-8")
        window.write_text(good + "}", encoding="utf-8")
        self.assertIn("AppWindow.qml", "\n".join(self.until("can't be shown")))

        window.write_text(good, encoding="utf-8")
        self.until("shown after")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
