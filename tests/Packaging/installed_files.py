"""Installs into a folder of its own and looks at what the desktop and the bus will find there.

    installed_files.py BUILD-FOLDER ID
"""

import configparser
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD, ID = sys.argv[1:]
PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"


class InstalledFiles(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        subprocess.run(["cmake", "--install", BUILD], check=True, stdout=subprocess.DEVNULL,
                       env=dict(os.environ, DESTDIR=cls.folder.name))
        root = Path(cls.folder.name)
        desktop = next(root.rglob(f"share/applications/{ID}.desktop"))
        cls.share = desktop.parent.parent
        cls.desktop = cls.entries(desktop, "Desktop Entry")
        cls.service = cls.entries(cls.share / f"dbus-1/services/{ID}.service", "D-BUS Service")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @staticmethod
    def entries(file, group):
        parser = configparser.ConfigParser(interpolation=None, delimiters="=")
        parser.optionxform = str
        parser.read_string(file.read_text(encoding="utf-8"))
        return parser[group]

    def test_the_bus_starts_the_installed_program_without_a_window(self):
        self.assertEqual(self.service["Name"], ID)
        program, *options = self.service["Exec"].split()
        self.assertTrue(os.path.isabs(program), program)
        self.assertTrue(os.access(self.folder.name + program, os.X_OK), program)
        self.assertEqual(options, ["--background"])

    def test_launchers_start_it_over_the_bus_and_give_it_a_token(self):
        self.assertEqual(self.desktop["DBusActivatable"], "true")
        self.assertEqual(self.desktop["StartupNotify"], "true")

    def test_phones_list_it(self):
        # Their filter looks for the word with the semicolon.
        self.assertIn("Mobile;", self.desktop["X-Purism-FormFactor"])
        self.assertIn("handset;", self.desktop["X-KDE-FormFactor"])

    def test_its_icon_is_there_in_every_size(self):
        name = self.desktop["Icon"]
        self.assertEqual(name, ID)
        icons = self.share / "icons/hicolor"
        self.assertIn("<svg", (icons / f"scalable/apps/{name}.svg").read_text(encoding="utf-8"))
        for size in (48, 64, 128, 256):
            content = (icons / f"{size}x{size}/apps/{name}.png").read_bytes()
            self.assertEqual(content[:8], PNG_SIGNATURE)
            self.assertEqual(int.from_bytes(content[16:20], "big"), size)
            self.assertEqual(int.from_bytes(content[20:24], "big"), size)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
