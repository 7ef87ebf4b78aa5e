"""Whether a program has left behind what it was shown: in files or in its output."""

import os
import stat
from pathlib import Path

from .checks import check, check_equal

# Shorter ones stand in files of other people, too.
SHORTEST = 10
LISTS = ("messages", "decisions", "bids", "timeline", "logs", "reports")


def texts_in(value):
    """Every text of a decoded JSON value that is long enough to be recognised."""
    if isinstance(value, str):
        return {line for line in value.splitlines() if len(line) >= SHORTEST}
    if isinstance(value, dict):
        value = list(value.values())
    return set().union(*map(texts_in, value)) if isinstance(value, list) else set()


def texts_of(service):
    """Everything that the service has to say."""
    found = texts_in(service.get("/config"))
    for project in service.get("/projects"):
        found |= texts_in(service.get(f"/projects/{project['id']}"))
        for part in LISTS:
            found |= texts_in(service.project_part(project, part))
    return found


# What a desk's other programs write there: the display's picture, and the links that were opened.
OF_THE_DESK = ("Xvfb_screen0", "opened")


def files_below(folder, but=()):
    """The regular files, with what they hold. but: files and folders right in it to leave out."""
    found = {}
    for parent, folders, names in os.walk(folder):
        if os.path.samefile(parent, folder):
            folders[:] = [name for name in folders if name not in but]
            names = [name for name in names if name not in but]
        for name in names:
            path = os.path.join(parent, name)
            if os.path.isfile(path) and not os.path.islink(path):
                with open(path, "rb") as file:
                    found[path] = file.read()
    return found


def find_in(contents, texts):
    """Which texts stand in which contents, in the encodings that programs keep texts in."""
    return [(name, text) for name, content in contents.items() for text in texts
            if text.encode() in content or text.encode("utf-16-le") in content]


def check_no_traces(desk, others, outputs, texts):
    """desk: its folder holds all that the program may write to: its home and the folders for what
    runs and for what is temporary. others: names there of what other programs keep. outputs: files
    with what the program said. texts: what must be in none of them."""
    contents = files_below(desk.folder, (*OF_THE_DESK, *others))
    written = len(contents)
    for place in ("HOME", "TMPDIR", "XDG_RUNTIME_DIR"):
        check(f"{place} is searched", desk.folder in (Path(desk.environment[place]) / "x").parents,
              desk.environment[place])
    for output in outputs:
        contents[str(output)] = output.read_bytes()
    some = next(iter(texts))
    check("a text in a file would be noticed", find_in({"a": b"-" + some.encode() + b"-"}, texts))
    check("enough was shown for this to mean anything", len(texts) > 500, len(texts))
    check_equal(f"which of {len(texts)} texts stand in {written} files and "
                f"{len(outputs)} outputs", find_in(contents, texts)[:5], [])


def check_private(home, kept):
    """The program's own files are the named ones alone, and nobody else can read them."""
    files = [path for path in files_below(home) if "trellisport" in path]
    check_equal("the program's own files", sorted(map(os.path.basename, files)), sorted(kept))
    for path in files:
        for one in (path, os.path.dirname(path)):
            others = stat.S_IMODE(os.stat(one).st_mode) & 0o077
            check_equal(f"what others may do with {os.path.basename(one)}", others, 0)
