"""Has the gallery draw its pages, and looks for pieces that it lacks.

    gallery.py --gallery PROGRAM --root REPOSITORY
"""

import argparse
import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib
from pathlib import Path

# They have no look of their own: they hold, move or watch other pieces, or come when asked for. The
# tests of Presentation and Screens and the tour of the screens show what they do.
WITHOUT_LOOK = {"Announcer", "CardList", "CopyKeys", "CopyMenu", "ItemHolder", "KeptInView",
                "KeyboardAvoidance", "ListScreen", "NavigationStack", "PressableParts", "PullToRefresh", "Screen",
                "ScrollKeys", "ScrollMark"}
PAGES = ["bars", "cards", "colors", "controls", "rows", "text"]
# How many lines of a page differ from the one above them, at least.
FEWEST_LINES = 40

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--gallery", required=True)
parser.add_argument("--root", required=True, type=Path)
options = parser.parse_args()


def lines_of(file):
    """The picture's lines as they are stored: equal lines next to each other stay equal only where
    nothing is drawn."""
    data = file.read_bytes()
    packed, place, size = b"", 8, (0, 0)
    while place < len(data):
        length, kind = struct.unpack(">I4s", data[place:place + 8])
        body = data[place + 8:place + 8 + length]
        if kind == b"IHDR":
            size = struct.unpack(">II", body[:8])
        elif kind == b"IDAT":
            packed += body
        place += 12 + length
    raw = zlib.decompress(packed)
    step = len(raw) // size[1]
    return size, [raw[index * step:(index + 1) * step] for index in range(size[1])]


class Gallery(unittest.TestCase):
    def test_draws_every_page_without_a_complaint(self):
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
                (width, _), lines = lines_of(file)
                self.assertEqual(width % 390, 0, file.name)
                self.assertGreater(len(set(lines)), FEWEST_LINES, file.name)

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
