"""Puts the page together that the console in a browser is held against, as the console itself is: one
script, names that carry a hash, a service worker that keeps all of it, everything compressed."""

import gzip
import hashlib
import json
import re
import shutil
import subprocess

BUNDLED = ("main.js", "style.css")


def pack(sources, modules, worker, out):
    """sources: the page's folder; modules: where its packages are installed; worker: the console's
    service worker, which serves here too; out: the folder to make."""
    shutil.rmtree(out, ignore_errors=True)
    out.mkdir(parents=True)
    # Packages are looked for above the sources, so they stand beside them.
    place = modules / "sources"
    shutil.rmtree(place, ignore_errors=True)
    shutil.copytree(sources, place)
    page = (sources / "index.html").read_text(encoding="utf-8")
    for name in BUNDLED:
        made = modules / "made" / name
        subprocess.run([modules / "node_modules/.bin/esbuild", place / name, "--bundle", "--minify",
                        "--target=chrome111", "--format=esm", "--log-level=warning",
                        f"--outfile={made}"], check=True)
        content = made.read_bytes()
        stem, end = name.split(".")
        named = f"{stem}.{_fingerprint(content)}.{end}"
        (out / named).write_bytes(content)
        page = page.replace(f'"{name}"', f'"{named}"')
    (out / "index.html").write_text(page, encoding="utf-8")
    kept = ["./", *sorted(path.name for path in out.iterdir() if path.name != "index.html")]
    script = worker.read_text(encoding="utf-8")
    for gap, text in (("['@files@']", json.dumps(kept)), ("@version@", _fingerprint(page.encode()))):
        if gap not in script:
            raise ValueError(f"the service worker has no place for {gap}")
        script = script.replace(gap, text)
    (out / "service-worker.js").write_text(script, encoding="utf-8")
    for used in re.findall(r"^importScripts\('(.*)'\);", script, re.MULTILINE):
        shutil.copy(worker.with_name(used), out / used)
    for path in sorted(out.iterdir()):
        path.with_name(path.name + ".gz").write_bytes(gzip.compress(path.read_bytes(), 9, mtime=0))
        subprocess.run(["brotli", "--best", "--force", "--keep", path], check=True)


def _fingerprint(content):
    return hashlib.sha256(content).hexdigest()[:16]
