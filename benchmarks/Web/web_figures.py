"""What the readings in the browser are put together to."""

import statistics

from figures import Figure, p99

VISITS = (("first", "first visit"), ("again", "later visit"))


def figures():
    made = []
    for visit, text in VISITS:
        for series, label, unit, take in (
                ("bytes", "bytes over the network", "kB", statistics.median),
                ("picture", "first picture", "ms", min),
                ("loaded", "loaded dashboard", "ms", min)):
            made.append(_figure(f"{visit}-{series}", f"{label}, {text}", unit, take))
    for place, text in (("dashboard", "at the dashboard"), ("log", "with the long log")):
        for process, label in (("page", "memory of the page's process"),
                               ("graphics", "memory of the graphics process")):
            made.append(_figure(f"{place}-{process}", f"{label} {text}", "MB", statistics.median))
    for take, label in ((statistics.median, "median"), (p99, "99th percentile"), (max, "longest")):
        made.append(_figure("frame", f"frame while dragging, {label}", "ms", take))
    made.append(_figure("passed", "entries dragged past", "", statistics.median))
    return made


def _figure(series, label, unit, take):
    return Figure("web", label, unit, f"ours-{series}", beside_label="the page",
                  beside=f"peer-{series}", take=take)
