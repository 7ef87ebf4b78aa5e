#!/usr/bin/env python3
"""Runs the benchmark programs and prints what they read as a table; see docs/performance.md."""
import argparse
import json
import os
import pathlib
import signal
import ssl
import subprocess
import sys
import tempfile
import time
import urllib.request

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import figures
import report

SOFTWARE = {"QT_QPA_PLATFORM": "offscreen", "QT_QUICK_BACKEND": "software"}
OPENGL = {"QT_QPA_PLATFORM": "xcb", "LIBGL_ALWAYS_SOFTWARE": "1", "QSG_RHI_BACKEND": "opengl"}


class Bench:
    """The programs, how often they repeat, and every series they have read so far."""

    def __init__(self, folder, effort):
        self.programs = folder / "bin"
        self.effort = effort
        self.series = {}
        self.service = None

    def apart(self):
        """One for readings that are to be kept apart."""
        other = Bench(self.programs.parent, self.effort)
        other.service = self.service
        return other

    def run(self, program, *arguments, environment=None):
        command = [str(self.programs / program), *map(str, arguments)]
        result = subprocess.run(
            command, capture_output=True, text=True, check=False,
            env={**os.environ, "LC_ALL": "C.UTF-8", "XDG_RUNTIME_DIR": str(self.service.state),
                 **(environment or {})})
        if result.returncode != 0:
            sys.exit(f"{result.stderr}\nbench: {' '.join(command)} ended with {result.returncode}")
        return result.stdout

    def add(self, name, unit, values):
        known = self.series.setdefault(name, {"unit": unit, "values": []})
        known["values"] += values

    def read(self, *command, **options):
        for line in self.run(*command, **options).splitlines():
            if line.startswith("{"):
                reading = json.loads(line)
                self.add(reading["name"], reading["unit"], reading["values"])

    def screens(self, *arguments, environment=None):
        self.read("trellisport-bench-screens", *arguments, environment=environment or SOFTWARE)

    def google(self, pattern):
        with tempfile.NamedTemporaryFile(suffix=".json") as out:
            self.run("trellisport-bench-coding", f"--benchmark_filter={pattern}",
                     f"--benchmark_repetitions={self.effort.repetitions}",
                     "--benchmark_enable_random_interleaving=true",
                     f"--benchmark_out={out.name}", "--benchmark_out_format=json")
            readings = json.load(out)["benchmarks"]
        for reading in readings:
            if reading.get("error_occurred"):
                sys.exit(f"bench: {reading['name']}: {reading['error_message']}")
            if reading["run_type"] == "iteration":
                name = reading["run_name"].split("/iterations:")[0].split("/min_time:")[0]
                self.add(name, reading["time_unit"], [reading["real_time"]])


class Effort:
    """How much is run: sizes and repetitions."""

    def __init__(self, kind):
        self.minimal = kind == "minimal"
        self.repetitions = {"minimal": 1, "quick": 5, "full": 15}[kind]
        self.frames = 60 if self.minimal else 600
        self.idle_seconds = 1 if self.minimal else 10
        self.sizes = (1000,) if self.minimal else figures.SIZES
        self.lists = {name: (text, min(size, 2000) if self.minimal else size)
                      for name, (text, size) in figures.LISTS.items()}


def list_sizes(effort, name):
    """The sizes at which growth is read, and the one of the table."""
    grows = name in ("logs", "projects")
    return sorted({effort.lists[name][1], *(effort.sizes if grows else ())})


def measure_decode(bench):
    bench.google("^decode/.*/1000/" if bench.effort.minimal else "^decode/")


def measure_encode(bench):
    bench.google("^encode/.*/1000/" if bench.effort.minimal else "^encode/")


def measure_decoded_memory(bench):
    for size in bench.effort.sizes:
        bench.read("trellisport-bench-memory", "short", size)
    bench.read("trellisport-bench-memory", "long", 1000 if bench.effort.minimal else 20000)


def measure_exchange(bench):
    bench.read("trellisport-bench-exchange", bench.effort.repetitions)


def measure_open(bench):
    for name in bench.effort.lists:
        for size in list_sizes(bench.effort, name):
            bench.screens("open", name, size, bench.effort.repetitions)


def measure_flick(bench):
    for name in bench.effort.lists:
        for each in list_sizes(bench.effort, name):
            bench.screens("flick", "software", name, each, bench.effort.frames)
    with Display() as display:
        for name, (_, size) in bench.effort.lists.items():
            bench.screens("flick", "opengl", name, size, bench.effort.frames,
                          environment={**OPENGL, "DISPLAY": display})


def measure_open_memory(bench):
    for name in bench.effort.lists:
        for size in list_sizes(bench.effort, name):
            bench.screens("memory", name, size)
    with tempfile.NamedTemporaryFile() as file:
        for name, body in bench.service.ordinary_lists().items():
            pathlib.Path(file.name).write_bytes(body)
            bench.screens("memory-of-file", name, file.name)


def measure_filter(bench):
    for size in bench.effort.sizes:
        bench.screens("filter", size, bench.effort.repetitions)
    bench.google("^search/.*/1000/" if bench.effort.minimal else "^search/")


def measure_qa_pairs(bench):
    bench.google("^qa-pairs/1000/" if bench.effort.minimal else "^qa-pairs/")


def start(bench, program, **more):
    environment = {**SOFTWARE, **bench.service.environment(), **more}
    environment["TRELLISPORT_BENCH_START"] = str(time.monotonic_ns())
    bench.read(program, environment=environment)


def measure_start(bench):
    # The first of each pair warms the files up and is not counted.
    for program in ("trellisport-bench-start", "trellisport-bench-bare-window"):
        start(bench.apart(), program)
    for _ in range(bench.effort.repetitions):
        start(bench, "trellisport-bench-start")
        start(bench, "trellisport-bench-bare-window")


def measure_idle(bench):
    apart = bench.apart()
    for program in ("trellisport-bench-start", "trellisport-bench-bare-window"):
        start(apart, program, TRELLISPORT_BENCH_IDLE=str(bench.effort.idle_seconds))
    for name, series in apart.series.items():
        if name.endswith(("-wake-ups", "-frames")):
            bench.add(name, series["unit"], series["values"])


def measure_size(bench):
    with tempfile.NamedTemporaryFile() as stripped:
        for name, program in (("console", "trellisport-manager"),
                              ("bare", "trellisport-bench-bare-window")):
            subprocess.run(["strip", "-o", stripped.name, str(bench.programs / program)], check=True)
            bench.add(f"{name}-size", "B", [os.path.getsize(stripped.name)])


STEPS = {
    "decode": measure_decode,
    "encode": measure_encode,
    "decoded-memory": measure_decoded_memory,
    "exchange": measure_exchange,
    "start": measure_start,
    "idle": measure_idle,
    "size": measure_size,
    "open": measure_open,
    "flick": measure_flick,
    "open-memory": measure_open_memory,
    "filter": measure_filter,
    "qa-pairs": measure_qa_pairs,
}


class Display:
    """A display of its own, for OpenGL."""

    def __enter__(self):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "800x1000x24"],
            pass_fds=(write_end,), stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        if not number:
            sys.exit("bench: Xvfb did not start")
        return ":" + number

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()


BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class Service:
    """A practice service, and a session bus, for the programs that run whole."""

    def __init__(self, programs, state):
        self.state = pathlib.Path(state)
        # A bus that starts no services: they would be measured along.
        configuration = self.state / "bus.conf"
        configuration.write_text(BUS)
        self.bus = subprocess.Popen(
            ["dbus-daemon", f"--config-file={configuration}", "--nofork", "--print-address=1"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.bus_address = self.bus.stdout.readline().strip()
        self.process = subprocess.Popen(
            [str(programs / "trellisport-practice-service"), "--port", "0", "--data", state,
             "--seed", "1", "--speed", "0"], stdout=subprocess.PIPE, text=True)
        line = self.process.stdout.readline()
        if not line.startswith("listening on "):
            sys.exit("bench: the practice service did not start")
        self.address = line.removeprefix("listening on ").split(",")[0].strip()

    def environment(self):
        return {"TRELLISPORT_BASE_URL": self.address,
                "TRELLISPORT_CA_FILE": str(self.state / "ca.pem"),
                "XDG_RUNTIME_DIR": str(self.state), "XDG_STATE_HOME": str(self.state),
                "DBUS_SESSION_BUS_ADDRESS": self.bus_address}

    def get(self, path):
        context = ssl.create_default_context(cafile=self.state / "ca.pem")
        with urllib.request.urlopen(self.address + path, context=context) as reply:
            return reply.read()

    def ordinary_lists(self):
        """What the service has for each list that is opened: the longest of each kind."""
        projects = self.get("/projects")
        longest = {}
        for part in ("logs", "reports", "messages"):
            longest[part] = max((self.get(f"/projects/{project['id']}/{part}")
                                 for project in json.loads(projects)), key=len)
        return {"projects": projects, "logs": longest["logs"], "one-log": longest["logs"],
                "one-report": longest["reports"], "messages": longest["messages"]}

    def stop(self):
        for process in (self.process, self.bus):
            process.send_signal(signal.SIGTERM)
            process.wait()


def main():
    parser = argparse.ArgumentParser(prog="bench", description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, default=pathlib.Path("build-release"),
                        help="the build folder")
    parser.add_argument("--quick", action="store_true", help="fewer repetitions")
    parser.add_argument("--minimal", action="store_true",
                        help="small sizes, once each: shows only that the programs work")
    parser.add_argument("--only", action="append", choices=STEPS, metavar="NAME",
                        help="only this, may be repeated: " + ", ".join(STEPS))
    options = parser.parse_args()
    kind = "minimal" if options.minimal else "quick" if options.quick else "full"
    bench = Bench(options.build.resolve(), Effort(kind))
    with tempfile.TemporaryDirectory() as state:
        bench.service = Service(bench.programs, state)
        try:
            for name, step in STEPS.items():
                if not options.only or name in options.only:
                    print(f"measuring: {name}", file=sys.stderr, flush=True)
                    step(bench)
        finally:
            bench.service.stop()
    wanted = figures.figures(bench.effort.lists, 1000, 1000, 1000, 1000) \
        if options.minimal else figures.figures()
    missing = {name for each in wanted for name in each.series()} - bench.series.keys()
    if missing and not options.only:
        sys.exit(f"bench: nothing was read of {', '.join(sorted(missing))}")
    if options.minimal:
        print(f"{len(bench.series)} series were read; none is a measurement")
        return
    result = report.make(bench.series)
    print(report.text(result))
    out = options.build / "bench.json"
    out.write_text(json.dumps({**result, "series": bench.series}, indent=1) + "\n")
    print(f"\nAll of it, with every reading, is in {out}.")


if __name__ == "__main__":
    main()
