"""Has the gallery draw its pages, and looks for pieces that it lacks.

    gallery.py --gallery PROGRAM --root REPOSITORY
"""

import argparse
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

# They have no look of their own: they hold, move or watch other pieces. The tests of Presentation and
# Screens and the tour of the screens show what they do.
WITHOUT_LOOK = {"Announcer", "ItemHolder", "KeptInView", "KeyboardAvoidance", "ListScreen",
                "NavigationStack", "PressableParts", "Screen", "ScrollKeys"}
PAGES = ["bars", "cards", "colors", "controls", "keyboard", "rows", "text"]
PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--gallery", required=True)
parser.add_argument("--root", required=True, type=Path)
options = parser.parse_args()


class Gallery(unittest.TestCase):
    def test_draws_every_page_without_a_complaint(self):
        # It complains of specimens of which nothing is seen (EmptySpecimensTest).
        with tempfile.TemporaryDirectory() as folder:
            done = subprocess.run([options.gallery, "--draw", folder], capture_output=True,
                                  text=True, check=False, timeout=100,
                                  env=dict(os.environ, XDG_RUNTIME_DIR=folder))
            complaints = [line for line in done.stderr.splitlines()
                          if not line.strip().startswith("OpenType support missing")]
            self.assertEqual((done.returncode, complaints), (0, []))
            drawn = sorted(Path(folder).glob("*.png"))
            self.assertEqual([file.stem for file in drawn], PAGES)
            for file in drawn:
                content = file.read_bytes()
                self.assertEqual(content[:8], PNG_SIGNATURE, file.name)
                self.assertEqual(int.from_bytes(content[16:20], "big") % 390, 0, file.name)

    def test_shows_every_piece_that_has_a_look(self):
        pieces = {file.stem for file in
                  (options.root / "TrellisportManager/Presentation").glob("*.qml")} - {"Metrics"}
        shown = set()
        for page in (options.root / "tools/Gallery").glob("*.qml"):
            shown |= set(re.findall(r"^\s*(?:\w+: )?(\w+) \{", page.read_text(encoding="utf-8"),
                                    re.MULTILINE))
        self.assertEqual(sorted(pieces - shown - WITHOUT_LOOK), [])
        self.assertEqual(sorted(WITHOUT_LOOK - pieces), [], "these are gone")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
