"""The two that are held against each other, and how one gets to a project's log in each."""

import json
import time

from chromium import ChromiumError

PATIENCE = 5.0

# Operates what the console has for screen readers.
FIND = """[...document.querySelectorAll('#spoken [data-role="%s"]')].find((one) =>
    [one.textContent, one.ariaLabel].includes(%s))"""


class Console:
    name = "ours"

    def open_log(self, phone, project, first):
        steps = (("tab", "Projects"), ("button", project["title"]), ("tab", "Logs"))
        buttons = [FIND % (role, json.dumps(name)) for role, name in steps]
        there = [*(f"Boolean({button})" for button in buttons[1:]), _shows(first)]
        for button, sign in zip(buttons, there):
            _press_until(phone, button, sign)


class Peer:
    name = "peer"

    def open_log(self, phone, project, first):
        phone.evaluate(f"location.hash = '#/projects/{project['id']}/logs'")
        phone.wait_for("the log", _shows(first))


def _shows(text):
    return f"document.body.textContent.includes({json.dumps(text)})"


def _press_until(phone, button, there):
    """What is pressed while the screen still moves may not be pressed."""
    phone.wait_for(button, f"Boolean({button})")
    for _ in range(20):
        phone.evaluate(f"{button}?.click()")
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if phone.evaluate(there):
                return
            phone.pause(0.1)
    raise ChromiumError(f"pressed in vain: {button}")
