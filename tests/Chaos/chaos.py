"""The console in the hands of somebody who taps at random, while the service fails one request in
five. Prints what was done and read; fails when the console did what it must never do.

The seed decides what the person does at each step and what becomes of the Nth request of a path.
"""

import argparse
import json
import os
import random
import re
import shlex
import ssl
import statistics
import subprocess
import sys
import tempfile
import urllib.request
from collections import Counter
from pathlib import Path

ONE_OF = 5
TIME_LAPSE = 20
# So that a seed meets the same portfolio again, whatever the hour.
BEGIN = "2026-03-04T16:30:00Z"
# Longer than the console waits: a minute of its time, which passes TIME_LAPSE times as fast as ours.
SILENCE_MS = 4000
# What the toolkit says of itself and of this machine, not of the console: that a platform without a
# display lacks something, that a font lacks a script which is typed, that its timer for animations
# was told to stop when it had just stopped, that a list which goes away gives up a row that had left
# its model before it was made, and that a control which goes half made stays in a count of its
# engine's. It is counted and printed.
TOOLKIT_TALK = re.compile(
    r"after step \d+, .*: (?:This plugin does not support (?:propagateSizeHints|raise)\(\)"
    r"|  OpenType support missing for \"[^\"]*\", script \d+"
    r"|QUnifiedTimer::stopAnimationDriver: driver is not running"
    r"|DelegateModel::cancel: index out range \d+ \d+"
    r"|\"There are still \\\"\d+\\\" items in the process of being created at engine destruction.\")\n")
# The main thread's longest turn, without the time for which it was ready and had no core.
LONGEST_HELD_MS = 1000
STEPS_A_MINUTE = 780
PLACES = {"Dashboard", "Projects", "Settings", "Overview", "Questions", "Chat", "Bids", "Dev",
          "Logs", "Decisions", "Reports"}
MEGABYTE = 1 << 20


class Service:
    """The practice service, in trouble from the start."""

    def __init__(self, binary, folder, seed):
        self._errors = (folder / "service.log").open("w+b")
        self._process = subprocess.Popen(
            [binary, "--port", "0", "--data", folder / "data", "--seed", "1", "--begin", BEGIN,
             "--speed", str(TIME_LAPSE), "--control"],
            stdout=subprocess.PIPE, stderr=self._errors)
        line = self._process.stdout.readline().decode()
        found = re.match(r"listening on (\S+), authority (.*)\n", line)
        if not found:
            raise SystemExit(f"the practice service does not start: {line}")
        self.base_url, self.authority = found.groups()
        self._context = ssl.create_default_context(cafile=self.authority)
        self.control("POST", f"trouble?seed={seed}&one_of={ONE_OF}&silence_ms={SILENCE_MS}")

    def control(self, method, path):
        return self._ask(method, self.base_url.removesuffix("/api/v1") + "/control/" + path)

    def get(self, path):
        return self._ask("GET", self.base_url + path)

    def kill(self):
        self._process.kill()
        self._process.wait()

    def end(self):
        """Gives what is wrong with how it ended."""
        self._process.terminate()
        code = self._process.wait(timeout=60)
        self._errors.seek(0)
        said = self._errors.read().decode(errors="replace")
        return f"the service ended with {code}: {said}" if code or said else None

    def _ask(self, method, url):
        request = urllib.request.Request(url, method=method)
        with urllib.request.urlopen(request, context=self._context, timeout=60) as reply:
            return json.load(reply)


def wrong_writes(report, service):
    """What was sent, where and how often, from the finger to the service."""
    presses = Counter()
    for press in report["presses"]:
        if press["button"] == "saveButton":
            presses["PUT /config"] += 1
        elif press["text"]:
            presses["POST answer", press["question"], press["text"]] += 1

    questions = {(project["id"], decision["id"]): decision["question"]
                 for project in service.get("/projects")
                 for decision in service.get(f"/projects/{project['id']}/decisions")}

    def deed(method, path, body):
        found = re.fullmatch(r"/projects/([^/]+)/decisions/([^/]+)/answer", path)
        if found:
            return "POST answer", questions.get(found.groups()), json.loads(body)["answer"]
        return f"{method} {path}"

    sent = Counter()
    may_be_lost = Counter()
    for write in report["writes"]:
        what = deed(write["method"], write["url"].removeprefix(service.base_url), write["body"])
        sent[what] += 1
        may_be_lost[what] += write["may_be_lost"]
    arrived = Counter(deed(*write.split(" ", 2))
                      for write in service.control("GET", "writes").values())

    for what in presses | sent | arrived:
        name = " ".join(map(str, what)) if isinstance(what, tuple) else what
        if what != "POST /devices" and sent[what] != presses[what]:
            yield f"{name}: {presses[what]} presses, {sent[what]} requests"
        if not sent[what] - may_be_lost[what] <= arrived[what] <= sent[what]:
            yield (f"{name}: {sent[what]} requests, {arrived[what]} arrived, "
                   f"{may_be_lost[what]} may have been lost on the way")
    print(f"writes: {sum(presses.values())} presses, {sent.total()} requests "
          f"({sent['PUT /config']} settings, "
          f"{sum(count for what, count in sent.items() if isinstance(what, tuple))} answers, "
          f"{sent['POST /devices']} tokens), {arrived.total()} arrived")


def growth(readings, is_long):
    """Flat: what is held in the last third of the run, beside the third before it. In a short run
    screens and sizes of text are still seen for the first time then, and caches fill: it shows a
    great leak only."""
    third = len(readings) // 3
    before, after = readings[third:-third], readings[-third:]
    megabytes = {"allocated": 1.5, "resident": 12} if is_long else {"allocated": 12, "resident": 24}
    for what, slack in (("allocated", megabytes["allocated"] * MEGABYTE),
                        ("resident", megabytes["resident"] * MEGABYTE),
                        ("files", 24), ("threads", 4)):
        middle, last = (statistics.median(reading[what] for reading in part)
                        for part in (before, after))
        first = readings[0][what]
        if what in ("allocated", "resident"):
            print(f"{what}: {first / MEGABYTE:.1f} MB at the start, {middle / MEGABYTE:.1f} MB in "
                  f"the second third, {last / MEGABYTE:.1f} MB in the last")
        else:
            print(f"{what}: {first} at the start, {middle:g} in the second third, {last:g} in the "
                  "last")
        if last > middle + slack:
            yield f"{what} grew from {middle} to {last}"


def unseen(report, is_long):
    """What a run must have met to mean anything: in its last round, which goes everywhere by plan
    while the service is well, and, when it is long, also by chance before that."""
    before, after = report["in_trouble"], report["last_round"]
    parts = {"in trouble": (before["places"], report["writes"][:before["writes"]], before["opened"],
                            is_long),
             "in the last round": (after["places"], report["writes"][before["writes"]:],
                                   after["opened"] - before["opened"], True)}
    for name, (places, writes, opened, is_asked) in parts.items():
        taken = Counter("settings" if write["method"] == "PUT" else "answers"
                        for write in writes if write["outcome"] == "status 200"
                        and not write["url"].endswith("/devices"))
        met = Counter(places) + taken + Counter({"opened notifications": opened})
        print(f"{name}: " + ", ".join(f"{count} x {what}" for what, count in sorted(met.items())))
        for what in sorted(PLACES | {"settings", "answers", "opened notifications"}):
            if is_asked and not met[what]:
                yield f"{name} there was no {what}"


def live(arguments, seed, service, folder):
    """Runs the console to its end; gives what was wrong."""
    environment = dict(
        os.environ, HOME=folder, XDG_CONFIG_HOME=folder, XDG_CACHE_HOME=folder,
        XDG_DATA_HOME=folder, XDG_RUNTIME_DIR=folder, LC_ALL="C.UTF-8",
        QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software",
        TRELLISPORT_BASE_URL=service.base_url, TRELLISPORT_CA_FILE=service.authority)
    checkpoints = max(6, arguments.steps * 3 // STEPS_A_MINUTE)
    is_long = arguments.steps >= 5 * STEPS_A_MINUTE
    try:
        console = subprocess.run(
            [arguments.program, "--seed", str(seed), "--steps", str(arguments.steps),
             "--checkpoints", str(checkpoints)],
            env=environment, capture_output=True, timeout=arguments.steps / 4 + 700, check=False)
    except subprocess.TimeoutExpired:
        yield "the console does not end"
        return
    output = console.stderr.decode(errors="replace")
    said, talk = TOOLKIT_TALK.subn("", output)
    print(f"lines on standard error: {len(output.splitlines())}, of which the toolkit said {talk} "
          "of itself")
    if said:
        yield f"error output:\n{said}"
    if console.returncode != 0:
        yield f"the console ended with {console.returncode}"
        return
    report = json.loads(console.stdout)
    if report["time_lapse"] != TIME_LAPSE:
        yield "the console's time passes at another speed than the service's"
    tell(report)
    troubles = json.loads(report["troubles"])
    print("troubles: " + ", ".join(f"{count} {kind}" for kind, count in sorted(troubles.items())))
    failed = sum(int(count) for kind, count in troubles.items() if kind != "requests")
    if failed * ONE_OF * 2 < int(troubles["requests"]):
        yield "there was too little trouble to show anything"
    if report["longest_held_ms"] > LONGEST_HELD_MS:
        yield f"the main thread took {report['longest_held_ms']} ms for one turn"
    yield from report["complaints"]
    yield from unseen(report, is_long)
    yield from wrong_writes(report, service)
    grown = list(growth(report["readings"], is_long))
    yield from [] if arguments.sanitized else grown


def tell(report):
    print(f"{report['seconds']} s, in which the console's clock went on by "
          f"{report['seconds'] * TIME_LAPSE / 60:.0f} min: {report['steps']} steps, "
          f"{report['exchanges']} exchanges, {report['happenings']} happenings, "
          f"{report['notifications']} notifications, {report['opened']} opened")
    print("deeds: " + ", ".join(f"{count} x {deed}"
                                for deed, count in sorted(report["deeds"].items())))
    print(f"event loop: {report['turns']} turns, the longest {report['longest_turn_ms']} ms; "
          f"less the wait for a core {report['longest_held_ms']} ms at most")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True)
    parser.add_argument("--service", required=True)
    parser.add_argument("--steps", type=int, default=520,
                        help="of the person; about thirteen a second")
    parser.add_argument("--seed", type=int, default=None)
    parser.add_argument("--sanitized", action="store_true",
                        help="the program's memory is a sanitizer's: it is printed, not judged")
    arguments = parser.parse_args()
    seed = arguments.seed if arguments.seed is not None else random.randrange(1, 1_000_000_000)
    print(f"seed {seed}", flush=True)

    with tempfile.TemporaryDirectory(prefix="chaos-") as name:
        service = Service(arguments.service, Path(name), seed)
        try:
            wrong = list(live(arguments, seed, service, name))
            wrong += filter(None, [service.end()])
        finally:
            service.kill()
    for complaint in wrong:
        print(f"WRONG: {complaint}")
    if wrong:
        again = [sys.executable, "-B", *sys.argv]
        print("again with: "
              + shlex.join(again if arguments.seed is not None else [*again, "--seed", str(seed)]))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
