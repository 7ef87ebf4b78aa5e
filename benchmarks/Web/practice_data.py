"""What the practice service has to show: the usual, and one project with a long log."""

import random
import shutil
import sqlite3

WORDS = ("the report client invoice scan payment build tests passed parser schedule route catalog fixed "
         "delivery größe for with small mobile shop deploy error retry naïve queue of").split()
KINDS = ("tool_call", "tool_result", "claude_response", "error", "info")


def lengthen_log(data, project, count):
    """data: the folder of a service that does not run. Entries of 100 to 300 letters, the same each
    time."""
    draw = random.Random(20260301)
    with sqlite3.connect(data / "state.sqlite") as database:
        row, = database.execute("SELECT row FROM projects WHERE id = ?", (project,)).fetchone()
        database.execute("DELETE FROM logs WHERE project = ?", (row,))
        for number in range(count):
            text, length = f"{number}", draw.randint(100, 300)
            while len(text) < length:
                text += " " + draw.choice(WORDS)
            minutes, seconds = divmod(number * 7, 60)
            time = f"2026-03-01T{minutes // 60 % 24:02}:{minutes % 60:02}:{seconds:02}.123456Z"
            database.execute(
                "INSERT INTO logs (project, id, log_type, content, created_at) VALUES (?, ?, ?, ?, ?)",
                (row, f"log-{number}", KINDS[number % len(KINDS)], text, time))
    database.close()


def copy(data, other):
    """The same for a second service, authority included."""
    shutil.copytree(data, other, ignore=shutil.ignore_patterns("lock"))
