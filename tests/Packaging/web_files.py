"""What the files for browsers are put together from, and what stays of the version before.

    web_files.py SOURCES
"""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

sources = Path(sys.argv[1])
page = sources / "TrellisportManager/Platform/Web/Page"


def pack(place, content):
    """Gives the hashed names of the program after a build with this content."""
    built = place / "built"
    built.mkdir(exist_ok=True)
    for name in ("trellisport-manager.wasm", "trellisport-manager.js", "qtloader.js"):
        (built / name).write_text(content * 100 + name, encoding="utf-8")
    (place / "fonts.json").write_text("[]", encoding="utf-8")
    # The compressor is not what is tried here.
    (place / "brotli").write_text("#!/bin/sh\nfor last; do :; done\n: >\"$last.br\"\n", encoding="utf-8")
    (place / "brotli").chmod(0o755)
    subprocess.run([sources / "packaging/web/pack", "--built", built, "--page", page, "--icons",
                    sources / "packaging/icons", "--fonts", place / "fonts.json", "--out", place / "web"],
                   check=True,
                   env={**os.environ, "PATH": f"{place}:{os.environ['PATH']}"})
    return set(re.findall(r"trellisport-manager\.[0-9a-f]{16}\.\w+",
                          (place / "web/index.html").read_text(encoding="utf-8")))


def there(place, names):
    return all((place / "web" / name).exists() and (place / "web" / f"{name}.br").exists()
               for name in names)


with tempfile.TemporaryDirectory() as folder:
    place = Path(folder)
    first = pack(place, "one")
    assert len(first) == 2, first
    worker = (place / "web/service-worker.js").read_text(encoding="utf-8")
    missing = [name for name in first if name not in worker]
    assert not missing, f"the service worker does not keep {missing}"
    assert "@" not in re.sub(r"//.*", "", worker), "a place in the service worker is left open"
    second = pack(place, "two")
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
