#!/usr/bin/env python3
"""Reads how fast the console is in a phone's browser, beside a page written by hand, and prints a
table; see docs/performance.md.

Each reading has a browser of its own with a new profile: a first visit, then, with the browser started
anew, a later one, from which a project's long log is opened and dragged through.
"""

import argparse
import json
import shutil
import sys
import tempfile
from pathlib import Path

import expected
import practice_data
import report
import web_figures
from browser import trust
from chromium import Chromium
from harness.practice_service import PracticeService
from pack_peer import pack
from phone import Phone
from sides import Console, Peer

SOURCES = Path(__file__).resolve().parent
WORKER = SOURCES.parents[1] / "TrellisportManager/Platform/Web/Page/service-worker.js"


class Bench:
    """The place it happens in, and every series read so far."""

    def __init__(self, options, place):
        self.options = options
        self.place = place
        self.home = place / "home"
        self.home.mkdir()
        self.project = None
        self.wanted = []  # the texts of the loaded dashboard
        self.texts = []  # of the log, as it is shown
        self.series = {}
        self.count = 0

    def add(self, name, *values):
        self.series.setdefault(name, {"unit": "", "values": []})["values"] += values

    def service(self, name, app):
        return PracticeService(self.options.service.resolve(), self.place / name, None,
                               self.options.artifacts / f"{name}.log",
                               ("--app", app.resolve()))

    def prepare(self):
        """Starts a service for either side, with the same data."""
        first = self.service("ours", self.options.app)
        first.start()
        self.project = expected.stages(first.get("/projects"))[0][1][0]
        self.wanted = [text for tile in expected.dashboard(first.get("/dashboard")) for text in tile]
        trust(self.home, first.authority)
        first.stop()
        practice_data.lengthen_log(self.place / "ours", self.project["id"], self.options.entries)
        practice_data.copy(self.place / "ours", self.place / "peer")
        peer = self.options.modules / "web-peer"
        pack(SOURCES / "Peer", self.options.modules.resolve(), WORKER, peer)
        return [(Console(), self.service("ours", self.options.app)), (Peer(), self.service("peer", peer))]

    def read(self, side, service):
        self.count += 1
        profile = self.place / f"profile-{self.count}"
        for visit, _ in web_figures.VISITS:
            with Chromium("/usr/bin/chromium", self.home, profile,
                          self.options.artifacts / "browser.log") as browser:
                phone = Phone(browser, self.wanted, not self.options.minimal)
                phone.open(service.page_url())
                add = lambda name, *values: self.add(f"{side.name}-{name}", *values)
                add(f"{visit}-loaded", phone.loaded())
                add(f"{visit}-picture", phone.first_picture())
                # With what the service worker fetches for later.
                phone.wait_for("the service worker", "navigator.serviceWorker.ready.then(() => true)")
                phone.wait_for_silence(1.5)
                add(f"{visit}-bytes", phone.bytes_received() / 1000)
                if visit == "again":
                    try:
                        self.read_log(side, phone, add)
                    finally:
                        phone.save_picture(self.options.artifacts / f"log-{side.name}.png")
        shutil.rmtree(profile)

    def read_log(self, side, phone, add):
        for process, size in zip(("page", "graphics"), phone.memory()):
            add(f"dashboard-{process}", size)
        # Over the slow network its 30 MB would take minutes.
        phone.slow_network(False)
        side.open_log(phone, self.project, self.texts[0])
        phone.wait_for_silence(1)
        frames = phone.drag(self.options.drags)
        add("frame", *(after - before for before, after in zip(frames, frames[1:])))
        phone.pause(2)
        seen = phone.evaluate("document.body.textContent")
        passed = [number for number, text in enumerate(self.texts) if text in seen]
        if not passed or passed[0] == 0:
            sys.exit(f"bench: dragging did not move the log ({side.name})")
        add("passed", passed[0])
        for process, size in zip(("page", "graphics"), phone.memory()):
            add(f"log-{process}", size)


def read_options():
    parser = argparse.ArgumentParser(prog="web --bench", description=__doc__)
    for name in ("service", "app", "modules", "artifacts"):
        parser.add_argument(f"--{name}", required=True, type=Path, help=argparse.SUPPRESS)
    parser.add_argument("--repetitions", type=int, default=5, metavar="N", help="of each; 5 without it")
    parser.add_argument("--minimal", action="store_true",
                        help="once each, short, nothing slowed down: shows only that it works")
    options = parser.parse_args()
    if options.minimal:
        options.repetitions = 1
    options.entries, options.drags = (2000, 2) if options.minimal else (100000, 30)
    return options


def main():
    options = read_options()
    if not options.minimal and not list(options.app.glob("*.wasm.br")):
        sys.exit(f"bench: {options.app} is not as it is shipped; build it with ./web.")
    shutil.rmtree(options.artifacts, ignore_errors=True)
    options.artifacts.mkdir(parents=True)
    with tempfile.TemporaryDirectory(prefix="web-bench-", dir="/tmp") as place:
        bench = Bench(options, Path(place))
        sides = bench.prepare()
        try:
            for _, service in sides:
                service.start()
            bench.texts = [entry["content"]
                           for entry in sides[0][1].project_part(bench.project, "logs")]
            for number in range(options.repetitions):
                for side, service in sides:
                    print(f"measuring: {side.name}, {number + 1} of {options.repetitions}",
                          file=sys.stderr, flush=True)
                    bench.read(side, service)
        finally:
            for _, service in sides:
                service.stop()
    figures = web_figures.figures()
    missing = {name for each in figures for name in each.series()} - bench.series.keys()
    if missing:
        sys.exit(f"bench: nothing was read of {', '.join(sorted(missing))}")
    if options.minimal:
        print(f"{len(bench.series)} series were read; none is a measurement")
        return
    result = {"machine": report.machine(), "growth": [],
              "figures": [report.line_of(each, bench.series) for each in figures]}
    print(report.text(result))
    out = options.artifacts / "bench.json"
    out.write_text(json.dumps({**result, "series": bench.series}, indent=1) + "\n", encoding="utf-8")
    print(f"\nAll of it, with every reading, is in {out}.")


if __name__ == "__main__":
    main()
