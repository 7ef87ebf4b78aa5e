"""Notification services that others wrote, and the user's finger on them."""

import json
import re
import subprocess
from dataclasses import dataclass

from .checks import wait_until
from .desk import Program

NOTIFICATION = re.compile(r"^\{$(.*?)^\}$", re.MULTILINE | re.DOTALL)


@dataclass(frozen=True)
class Shown:
    """One notification as its service understood it."""

    application: str
    summary: str
    body: str
    urgency: str  # "low", "normal", "critical"
    category: str
    actions: tuple  # their names


class Dunst:
    """Runs under X."""

    def __init__(self, desk, log):
        self._environment = desk.environment
        self._program = Program(["dunst", "-print"], desk.environment, log)
        wait_until("dunst has begun", lambda: self._run("is-paused") == "false",
                   detail=self._program.output)

    def stop(self):
        self._program.stop()

    def shown(self):
        """All that it was given so far, oldest first."""
        found = []
        for text in NOTIFICATION.findall(self._program.output()):
            fields = dict(re.findall(r"^\t(\w+): '?(.*?)'?$", text, re.MULTILINE))
            actions = re.findall(r'^\t\t"(.*?)"', text.partition("actions:")[2], re.MULTILINE)
            found.append(Shown(fields["appname"], fields["summary"], fields["body"],
                               fields["urgency"].lower(), fields["category"],
                               tuple(actions[0::2])))
        return found

    def on_screen(self):
        return int(self._run("count", "displayed"))

    def tap(self):
        """The user taps the latest."""
        self._run("action", "0")

    def _run(self, *words):
        run = subprocess.run(["dunstctl", *words], env=self._environment, capture_output=True,
                             text=True, timeout=20, check=False)
        return run.stdout.strip()


class Mako:
    """Runs under a Wayland compositor."""

    def __init__(self, environment, log):
        self._environment = environment
        self._program = Program(["mako"], environment, log)
        wait_until("mako has begun", lambda: self._list() is not None,
                   detail=self._program.output)

    def stop(self):
        self._program.stop()

    def shown(self):
        """What is on the screen now, oldest first."""
        return [Shown(entry["app-name"], entry["summary"], entry["body"],
                      ("low", "normal", "critical")[entry["urgency"]], entry["category"],
                      tuple(entry["actions"]))
                for entry in reversed(self._list() or [])]

    def on_screen(self):
        return len(self.shown())

    def tap(self):
        self._run("invoke")

    def _list(self):
        try:
            data = json.loads(self._run("list"))["data"][0]
        except (json.JSONDecodeError, KeyError, IndexError):
            return None
        return [{key: value["data"] for key, value in entry.items()} for entry in data]

    def _run(self, *words):
        run = subprocess.run(["makoctl", *words], env=self._environment, capture_output=True,
                             text=True, timeout=20, check=False)
        return run.stdout.strip()
