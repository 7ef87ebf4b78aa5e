"""What the readings mean: each figure with what stands beside it and what it is to reach."""
import math
import statistics
from dataclasses import dataclass, field
from typing import Callable, Optional

MEGABYTE = 1e6
SIZES = (1000, 10000, 100000)
LISTS = {  # what is opened, flicked through and held, and how large it is
    "logs": ("100,000 logs", 100000),
    "projects": ("100,000 projects", 100000),
    "one-log": ("one log of 1 MB", 1000000),
    "one-report": ("one report diff of 5 MB", 5000000),
    "messages": ("20,000 messages", 20000),
}


def p99(values):
    return sorted(values)[min(len(values) - 1, int(len(values) * 0.99))]


@dataclass
class Figure:
    """One line of the table. reading() gives its number, beside() the number it is held against."""

    group: str
    label: str
    unit: str
    ours: str  # series
    goal: str = "stated"
    holds: Optional[Callable] = None  # of our number and the one beside it
    beside_label: str = "-"
    beside: Optional[str] = None  # series
    take: Callable = statistics.median  # of several readings; what is judged
    needs: list = field(default_factory=list)  # other series

    def series(self):
        return [self.ours] + ([self.beside] if self.beside else []) + self.needs


def at_most(factor):
    return lambda ours, beside: ours <= factor * beside


def below(limit):
    return lambda ours, _: ours < limit


def figures(lists=LISTS, short=100000, long=20000, filtered=100000, questions=10000):
    """Every figure, for lists of these sizes."""
    made = []
    add = lambda *args, **kwargs: made.append(Figure(*args, **kwargs))
    for shape, count in (("short", short), ("long", long)):
        text = f"{count:,} {shape} logs"
        base = f"decode/{shape}/{count}/"
        add("decode", f"decode {text}", "ms", base + "ours", "2.5 times at most", at_most(2.5),
            "simdjson's bare parse", base + "simdjson", take=min)
        add("decode", f"decode {text}", "ms", base + "ours", "6 times faster", at_most(1 / 6),
            "QJsonDocument", base + "qt", take=min)
        add("decode", f"decode {text}", "ms", base + "ours", "stated", None,
            "nlohmann::json", base + "nlohmann", take=min)
        name = f"{shape}/{count}"
        add("decoded-memory", f"memory after decoding {text}, allocated", "MB",
            "decoded-allocated/" + name, "1.5 times at most", at_most(1.5), "the reply",
            "reply-size/" + name)
        add("decoded-memory", f"memory after decoding {text}, resident", "MB",
            "decoded-resident/" + name, "1.5 times at most", at_most(1.5), "the reply",
            "reply-size/" + name)
        base = f"encode/{shape}/{count}/"
        add("encode", f"encode {text}", "ms", base + "ours", "faster", at_most(1),
            "nlohmann's dump", base + "nlohmann", take=min)
    add("exchange", "one getDashboard, kept alive", "ms", "dashboard-call/ours",
        "1.3 times at most", at_most(1.3), "libcurl easy handle", "dashboard-call/curl", take=min)
    add("exchange", "longest stall of the user interface's thread", "ms", "stall/longest-own",
        "under 1 ms", below(1), "with waits for a core", "stall/longest")
    add("exchange", "64 calls at once from 4 threads", "ms", "calls-together",
        "less than in turn", at_most(1), "the same in turn", "calls-in-turn", take=min)
    add("start", "start to the first frame", "ms", "console-first-frame", "2 times at most",
        at_most(2), "a bare window's", "bare-first-frame", take=min)
    add("start", "start to the loaded dashboard", "ms", "console-loaded", "2 times at most",
        at_most(2), "a bare window's first frame", "bare-first-frame", take=min)
    add("start", "resident at the dashboard", "MB", "console-resident", "stated", None,
        "a bare window", "bare-resident")
    add("size", "program, stripped", "MB", "console-size", "stated", None,
        "a bare window's", "bare-size")
    add("idle", "wake-ups in 10 s of idling", "", "console-wake-ups", "none",
        lambda ours, _: ours == 0, "a bare window's", "bare-wake-ups")
    add("idle", "frames in 10 s of idling", "", "console-frames", "none",
        lambda ours, _: ours == 0, "a bare window's", "bare-frames")
    for name, (text, size) in lists.items():
        key = f"{name}/{size}"
        add("open", f"last byte to first frame: {text}", "ms", "open/" + key, "30 ms more at most",
            lambda ours, beside: ours <= beside + 30, "decoding it", "open-decode/" + key,
            take=min)
    for renderer in ("software", "opengl"):
        for name, (text, size) in lists.items():
            key = f"{renderer}/{name}/{size}"
            if renderer == "software":
                add("flick", f"flick, software, 99th percentile: {text}", "ms", "flick-" + key,
                    "under 4 ms", below(4), "an empty window's frame", "empty-" + key, take=p99)
            add("flick", f"flick, {renderer}, longest frame: {text}", "ms", "flick-" + key,
                "16 ms at most", lambda ours, _: ours <= 16, "an empty window's frame",
                "empty-" + key, take=max)
    for name, (text, size) in lists.items():
        for kind in ("allocated", "resident"):
            add("open-memory", f"{kind} more with {text} open", "MB",
                f"open-{kind}/{name}/{size}", "1.7 times at most", at_most(1.7), "the reply",
                f"open-reply/{name}/{size}", needs=[f"open-{kind}/{name}/ordinary"])
    for what, text in (("keystroke", "a letter in the search field"), ("chip", "a chip tapped")):
        for end, until in (("updated", "list up to date"), ("painted", "frame drawn")):
            add("filter", f"{text}, {filtered:,} projects, {until}", "ms",
                f"{what}-{end}/{filtered}", "under 8 ms", below(8), "std::string's search",
                f"search/std/{filtered}", take=p99)
    add("qa-pairs", f"qaPairs of {questions:,} questions", "ms", f"qa-pairs/{questions}",
        "under 10 ms", below(10))
    return made


@dataclass
class Growth:
    """How a figure grows with the size, as the exponent of a power of it."""

    group: str
    label: str
    unit: str
    ours: str  # series, less its size
    limit: float
    minus: Optional[str] = None  # series to be taken off, less its size
    take: Callable = statistics.median

    def series(self):
        return [f"{base}{size}{self.tail()}" for base in filter(None, (self.base(), self.minus))
                for size in SIZES]

    def base(self):
        return self.ours.split("*")[0]

    def tail(self):
        return self.ours.split("*")[1] if "*" in self.ours else ""


LINEAR = 1.1  # what readings of something linear may give on a noisy machine
FLAT = 0.1

GROWTHS = [
    Growth("decode", "decode short logs", "ms", "decode/short/*/ours", LINEAR, take=min),
    Growth("decoded-memory", "allocated after it", "MB", "decoded-allocated/short/*", LINEAR),
    Growth("open", "open logs", "ms", "open/logs/*", LINEAR, take=min),
    Growth("open", "open projects", "ms", "open/projects/*", LINEAR, take=min),
    Growth("open", "first frame of logs, decoding taken off", "ms", "open/logs/*", FLAT,
           "open-decode/logs/", take=min),
    Growth("open", "first frame of projects, decoding taken off", "ms", "open/projects/*", FLAT,
           "open-decode/projects/", take=min),
    Growth("flick", "a frame of logs, software", "ms", "flick-software/logs/*", FLAT),
    Growth("flick", "a frame of projects, software", "ms", "flick-software/projects/*", FLAT),
    Growth("open-memory", "allocated with logs open", "MB", "open-allocated/logs/*", LINEAR),
    Growth("open-memory", "allocated with projects open", "MB", "open-allocated/projects/*", LINEAR),
    Growth("filter", "a letter in the search field", "ms", "keystroke-updated/*", LINEAR),
    Growth("search", "the search alone", "ms", "search/ours/*", LINEAR, take=min),
    Growth("qa-pairs", "qaPairs", "ms", "qa-pairs/*", LINEAR, take=min),
]


def exponent(sizes, values):
    """Of the power of the size that fits the values best."""
    x = [math.log(size) for size in sizes]
    y = [math.log(max(value, 1e-9)) for value in values]
    middle_x, middle_y = statistics.mean(x), statistics.mean(y)
    return sum((a - middle_x) * (b - middle_y) for a, b in zip(x, y)) / sum(
        (a - middle_x) ** 2 for a in x)
