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

    def mark(self):
        """Stands for this moment."""
        return len(self._shown())

    def shown_since(self, mark):
        """What it was given since, oldest first; all of it since 0."""
        return self._shown()[mark:]

    def _shown(self):
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

    def dismiss(self):
        """The user wipes all away."""
        self._run("close-all")
        wait_until("nothing is on the screen", lambda: self.on_screen() == 0)

    def _run(self, *words):
        run = subprocess.run(["dunstctl", *words], env=self._environment, capture_output=True,
                             text=True, timeout=20, check=False)
        return run.stdout.strip()


# The output is named because the compositor has no seat to choose one by; the rest notes what this
# version of mako does not list.
MAKO_CONFIGURATION = """output=HEADLESS-1
""" + "".join(f"""[urgency={word}]
on-notify=exec echo "$id {word}" >>"{{notes}}"
""" for word in ("low", "normal", "critical"))


class Mako:
    """Runs under a Wayland compositor."""

    def __init__(self, desk, environment, log):
        self._environment = environment
        self._urgencies = log.with_suffix(".urgencies")
        configuration = desk.folder / "mako.conf"
        configuration.write_text(MAKO_CONFIGURATION.format(notes=self._urgencies),
                                 encoding="utf-8")
        self._program = Program(["mako", "--config", configuration], environment, log)
        wait_until("mako has begun", lambda: self._list() is not None,
                   detail=self._program.output)

    def stop(self):
        self._program.stop()

    def mark(self):
        """Stands for this moment."""
        return max((entry["id"] for entry in self._list() or []), default=0)

    def shown_since(self, mark):
        """What is on the screen and was not then, oldest first; all of it since 0."""
        return [Shown(entry["app-name"], entry["summary"], entry["body"],
                      self._urgency(entry["id"]), entry["category"], tuple(entry["actions"]))
                for entry in reversed(self._list() or []) if entry["id"] > mark]

    def _urgency(self, identifier):
        def noted():
            notes = self._urgencies.read_text(encoding="utf-8") \
                if self._urgencies.exists() else ""
            return dict(line.split() for line in notes.splitlines()).get(str(identifier))

        return wait_until("the urgency is noted", noted)

    def on_screen(self):
        return len(self._list() or [])

    def tap(self):
        """The user taps the latest."""
        self._run("invoke")

    def dismiss(self):
        """The user wipes all away."""
        self._run("dismiss", "--all")
        wait_until("nothing is on the screen", lambda: self.on_screen() == 0)

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
