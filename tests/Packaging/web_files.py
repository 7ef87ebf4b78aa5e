"""What the files for browsers are put together from, and what stays of the version before.

    web_files.py SOURCES
"""

import hashlib
import html
import io
import itertools
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import TTFont

sources = Path(sys.argv[1])
page = sources / "TrellisportManager/Platform/Web/Page"
times = itertools.count(1_000_000_000)


def make_font(path, characters):
    """A font of squares, of another size for each character."""
    path.parent.mkdir(exist_ok=True)
    names = {ord(character): f"letter{ord(character)}" for character in characters}
    font = FontBuilder(1000, isTTF=True)
    font.setupGlyphOrder([".notdef", *names.values()])
    font.setupCharacterMap(names)
    font.setupGlyf({name: square(size) for size, name in enumerate(font.font.getGlyphOrder())})
    font.setupHorizontalMetrics({name: (600, 0) for name in font.font.getGlyphOrder()})
    font.setupHorizontalHeader(ascent=800, descent=-200)
    font.setupNameTable({"familyName": path.stem, "styleName": "Regular"})
    font.setupOS2()
    font.setupPost()
    font.save(path)
    return path


def square(size):
    pen = TTGlyphPen(None)
    pen.moveTo((0, 0))
    for corner in ((0, 10 + size), (10 + size, 10 + size), (10 + size, 0)):
        pen.lineTo(corner)
    pen.closePath()
    return pen.glyph()


def offered(place):
    """The fonts that the page offers: family, what of its own characters, and its expression."""
    page_text = (place / "web/index.html").read_text(encoding="utf-8")
    found = json.loads(html.unescape(re.search('data-fonts="([^"]*)"', page_text)[1]))
    fonts = []
    for one in found:
        content = (place / "web" / one["file"]).read_bytes()
        assert hashlib.sha256(content).hexdigest()[:16] in one["file"], one
        fonts.append((one["family"], "".join(map(chr, TTFont(io.BytesIO(content)).getBestCmap())),
                      one["characters"]))
    return fonts, {one["file"] for one in found}


def pack(place, content, fonts=()):
    """Gives the hashed names of the program after a build with this content."""
    built = place / "built"
    built.mkdir(exist_ok=True)
    for name in ("trellisport-manager.wasm", "trellisport-manager.js", "qtloader.js"):
        (built / name).write_text(content * 100 + name, encoding="utf-8")
    (place / "fonts.json").write_text(json.dumps(fonts), encoding="utf-8")
    # The compressor is not what is tried here.
    (place / "brotli").write_text("#!/bin/sh\nfor last; do :; done\n: >\"$last.br\"\n", encoding="utf-8")
    (place / "brotli").chmod(0o755)
    subprocess.run([sys.executable, "-B", sources / "packaging/web/pack", "--built", built,
                    "--page", page, "--icons", sources / "packaging/icons",
                    "--fonts", place / "fonts.json", "--built-in", place / "builtin",
                    "--out", place / "web"],
                   check=True,
                   # Each at another time, for who writes it into files.
                   env={**os.environ, "PATH": f"{place}:{os.environ['PATH']}",
                        "SOURCE_DATE_EPOCH": str(next(times))})
    return set(re.findall(r"trellisport-manager\.[0-9a-f]{16}\.\w+",
                          (place / "web/index.html").read_text(encoding="utf-8")))


def there(place, names):
    return all((place / "web" / name).exists() and (place / "web" / f"{name}.br").exists()
               for name in names)


def try_program(place):
    first = pack(place, "one")
    assert len(first) == 2, first
    worker = (place / "web/service-worker.js").read_text(encoding="utf-8")
    missing = [name for name in first if name not in worker]
    assert not missing, f"the service worker does not keep {missing}"
    assert "@" not in re.sub(r"//.*", "", worker), "a place in the service worker is left open"
    # A compressed form that is older than its file counts as stale.
    for name in first:
        for form in (name, f"{name}.gz", f"{name}.br"):
            os.utime(place / "web" / form, (1_000_000_000, 1_000_000_000))
    assert "64.png" not in (place / "web/index.html").read_text(encoding="utf-8"), "the page asks for its icon"
    second = pack(place, "two")
    assert {(place / "web" / f"{name}{end}").stat().st_mtime for name in first
            for end in ("", ".gz", ".br")} == {1_000_000_000}, "what stays keeps its time"
    assert not first & second
    assert there(place, second), "the new version's files"
    assert there(place, first), "the files of the version before stay"
    worker = (place / "web/service-worker.js").read_text(encoding="utf-8")
    assert not [name for name in first if name in worker], "the service worker keeps the old ones"
    third = pack(place, "three")
    assert there(place, second | third)
    assert not [name for name in first if (place / "web" / name).exists()], \
        "the version before the last goes"
    pack(place, "three")
    assert there(place, third), "the same version once more"


def try_fonts(place):
    wide = make_font(place / "fonts/Wide.ttf", "abcdegh\U0001f44d")
    names = {"file": str(wide)}
    fonts = [{"family": "Whole", **names, "characters": "x"}, {"family": "Rest", **names, "where": "(?!e)"},
             {"family": "Some", **names, "letters": "[e-g]"},
             {"family": "Cut", **names, "where": "(?=.)", "pieces": 3}]
    pack(place, "one", fonts)
    found, first = offered(place)
    # What only one of the built-in ones has is lacking where the other is drawn with.
    wanted = [("Whole", "abcdegh\U0001f44d", "x"),
              ("Rest", "abcdegh\U0001f44d", r"(?!e)[\u0063-\u0065\u0067-\u0068\u{1f44d}]"),
              ("Some", "eg", r"[\u0065\u0067]"),
              ("Cut 1", "cde", r"(?=.)[\u0063-\u0065]"),
              ("Cut 2", "gh\U0001f44d", r"(?=.)[\u0067-\u0068\u{1f44d}]")]
    assert found == wanted, found
    families = {str(TTFont(place / "web" / name)["name"].getName(1, 3, 1, 0x409)) for name in first}
    assert families == {"Wide", "Some", "Cut 1", "Cut 2"}, families
    worker = (place / "web/service-worker.js").read_text(encoding="utf-8")
    assert not [name for name in first if name in worker], "the service worker keeps fonts"
    pack(place, "two", fonts)
    assert offered(place)[1] == first, "the same fonts have the same names in a later build"
    assert there(place, first)
    # Each character in another form.
    make_font(wide, "gfedcba\U0001f44d")
    pack(place, "two", fonts)
    second = offered(place)[1]
    assert not first & second
    assert there(place, first | second), "the fonts of the version before stay"
    pack(place, "three", fonts)
    assert there(place, second)
    assert not [name for name in first if (place / "web" / name).exists()], \
        "the fonts of the version before the last go"


for trial in (try_program, try_fonts):
    with tempfile.TemporaryDirectory() as folder:
        place = Path(folder)
        make_font(place / "builtin/Small.ttf", "ab")
        make_font(place / "builtin/Large.ttf", "abc")
        trial(place)
