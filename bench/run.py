#!/usr/bin/env python3
"""Runs the benchmarks and prints what each work costs beside what it cannot do without.

usage: run.py [--short] [--out FOLDER] [--readme] BUILD [BASE-BUILD [BASE-NAME]]

BUILD is a build folder with the benchmarks. With BASE-BUILD its library is measured by the same programs in turn with
this one's. Writes bench.json and growth.svg into FOLDER (BUILD by default); --readme puts the table between the markers
of the page beside this script. All is the least of many interleaved repetitions, as the machine may be busy; where
processes fight for a lock it is the middle one.
"""
import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}

# A row of the table: what is measured, the works it is made of, and what it is to be with a free switch.
RATIOS = [
    ("getter, first of 256 keys", "get first", "lock cycle", 1.2),
    ("getter, middle key", "get middle", "lock cycle", 1.4),
    ("getter, last key", "get last", "lock cycle", 1.6),
    ("getter of an SSID", "get of an SSID", "two lock cycles", 1.25),
    ("setter, middle key", "set middle", "lock cycle", 1.5),
    ("load of 260 lines", "load", "load limit", 1.4),
    ("save of 256 keys", "save", "save limit", 3),
    ("get and set by 8 processes", "processes", "processes limit", 1.6),
]
KEYS = [50, 250, 1000, 4000]
UP_TO_8 = [1, 2, 3, 4, 5, 6, 7, 8]


# Who gets a lock next is the scheduler's choice: the least of these would be its luckiest.
FOUGHT_FOR = ["processes", "processes limit"]


class Times(dict):
    """The time of each work, in nanoseconds: the least of its repetitions, or the middle one where many fight."""

    def __init__(self):
        super().__init__()
        self.repetitions = {}

    def take(self, output):
        for run in json.loads(output)["benchmarks"]:
            if run["run_type"] != "iteration":
                continue
            name = run["run_name"].split("/")[0]
            times = self.repetitions.setdefault(name, [])
            times.append(run["real_time"] * NANOSECONDS[run["time_unit"]])
            self[name] = statistics.median(times) if name in FOUGHT_FOR else min(times)


def measure(build, taken, program, repetitions, works=".", library=None, **sizes):
    environment = dict(os.environ)
    if library is not None:
        environment["LD_LIBRARY_PATH"] = str(library / "lib")
    command = [
        str(build / "bin" / f"wifimgr_bench_{program}"),
        f"--benchmark_filter={works}",
        f"--benchmark_repetitions={repetitions}",
        "--benchmark_min_time=0.002",
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_format=json",
    ] + [f"--{name}={number}" for name, number in sizes.items()]
    done = subprocess.run(command, env=environment, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)}\n{done.stderr}")
    taken.take(done.stdout)


# In a store that is in force but for these; a whole band is compared.
TOOL_SET_UP = "{tool} apply >/dev/null 2>&1 && {tool} set 2.4g Channel=11 HideSSID:1=1 BeaconPeriod=200 >/dev/null"
TOOL_WORKS = {"empty program": "{bin}/wifimgr_bench_empty", "wlanctl get": "{tool} get 2.4g Channel",
              "wlanctl diff": "{tool} diff 2.4g"}


def measure_tool(build, taken, times, folder):
    """wlanctl of a build, beside an empty program; a build may lack it."""
    tool = folder / "bin" / "wlanctl"
    if not (build / "bin" / "wifimgr_bench_tool").exists() or not tool.exists():
        return
    names = {"tool": tool.resolve(), "bin": (build / "bin").resolve()}
    works = " ".join(f"'{name}={command.format(**names)}'" for name, command in TOOL_WORKS.items())
    script = TOOL_SET_UP.format(**names) + f" && {names['bin']}/wifimgr_bench_tool {times} {works}"
    command = [str(build / "bin" / "gateway-sim"), "--", "sh", "-c", script]
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)}\n{done.stderr}")
    taken.take(done.stdout)


# What happens beside a monitor. At rest a gateway has stations and neighbours, and nothing of them changes.
MONITORS = {
    "monitor at rest": "",
    "monitor, an event a second": "while sleep 1; do simctl channel 2.4g 11; sleep 1; simctl channel 2.4g 6; done & ",
}
MONITOR_SET_UP = "{tool} apply >/dev/null 2>&1; "


def measure_monitor(build, takers, seconds, folder):
    """The processor's time that wlanctl monitor takes of each second, its start included."""
    tool = folder / "bin" / "wlanctl"
    if not (build / "bin" / "wifimgr_bench_tool").exists() or not tool.exists():
        return
    for name, beside in MONITORS.items():
        work = f"'{name}={tool.resolve()} monitor --for {seconds}'"
        script = (MONITOR_SET_UP.format(tool=tool.resolve()) + f"PATH=$PATH:'{(build / 'bin').resolve()}'; " + beside
                  + f"{(build / 'bin').resolve()}/wifimgr_bench_tool 1 {work} 2>/dev/null")
        command = [str(build / "bin" / "gateway-sim"), "--", "sh", "-c", script]
        done = subprocess.run(command, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"{' '.join(command)}\n{done.stderr}")
        run = json.loads(done.stdout)["benchmarks"][0]
        for taken in takers:
            taken[name] = NANOSECONDS["s"] * run["cpu_time"] / run["real_time"]


def figures(taken):
    """The table's numbers of one library with one switch, by row."""
    rows = {name: taken[work] / taken[limit] for name, work, limit, _ in RATIOS}
    rows["commit, of its command lines' time"] = 100 * taken["commit"] / taken["commands of a commit"]
    rows["a trace point beyond the switch"] = (taken["two trace points"] - taken["two calls of the switch"]) / 2
    rows["a call of the switch"] = taken["two calls of the switch"] / 2
    if "wlanctl get" in taken:
        rows["wlanctl get"] = taken["wlanctl get"] / taken["empty program"]
        rows["wlanctl diff of 280 lines"] = taken["wlanctl diff"] / 1e6
    for name in MONITORS:
        if name in taken:
            rows["wlanctl " + name] = 100 * taken[name] / NANOSECONDS["s"]
    return rows


GOALS = {name: goal for name, _, _, goal in RATIOS}
GOALS["commit, of its command lines' time"] = 1
GOALS["a trace point beyond the switch"] = 3.4
GOALS["wlanctl get"] = 1.5
GOALS["wlanctl diff of 280 lines"] = 3
GOALS.update({"wlanctl " + name: 1 for name in MONITORS})
# Of the shipped stand-in; a free one answers at once.
SWITCH_GOAL = 12
UNITS = {"commit, of its command lines' time": " %", "a trace point beyond the switch": " ns",
         "a call of the switch": " ns", "wlanctl diff of 280 lines": " ms",
         **{"wlanctl " + name: " %" for name in MONITORS}}


def table(results):
    """Rows of text from {library: {switch: figures}}."""
    libraries = list(results)
    head = ["Work"] + [switch if len(libraries) == 1 else f"{library}, {switch}"
                       for library in libraries for switch in results[library]] + ["to be"]
    lines = [head, ["---"] * len(head)]
    for name in results["now"]["free"]:
        unit = UNITS.get(name, "")
        cells = [f"{results[library][switch][name]:.2f}{unit}" if name in results[library][switch] else "-"
                 for library in libraries for switch in results[library]]
        goal = f"{GOALS[name]}{unit}" if name in GOALS else f"{SWITCH_GOAL} ns, trace stand-in"
        lines.append([name] + cells + [goal])
    widths = [max(len(line[column]) for line in lines) for column in range(len(head))]
    return ["| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |" for line in lines]


def growth(build, repetitions):
    """Microseconds of a work by a number: {title: {work: [(number, microseconds)]}}."""
    curves = {}
    for title, numbers, works, size in [
            ("keys", KEYS, ["get last", "load", "save"], "keys"),
            ("SSIDs", UP_TO_8, ["get of an SSID", "save", "commit"], "ssids"),
            ("processes", UP_TO_8, ["processes", "processes limit"], "processes")]:
        curves[title] = {work: [] for work in works}
        for number in numbers:
            taken = Times()
            measure(build, taken, "free", repetitions, "^(" + "|".join(works) + ")/", **{size: number})
            for work in works:
                curves[title][work].append((number, taken[work] / 1e3))
    return curves


def bars(curves):
    lines = []
    for title, works in curves.items():
        for work, points in works.items():
            lines.append(f"{work}, by {title}")
            most = max(time for _, time in points)
            for number, time in points:
                lines.append(f"  {number:5d} {time:12.2f} us  " + "#" * max(1, round(50 * time / most)))
    return lines


def svg(curves):
    """A panel for each number that grows, a line for each work, each as a share of its own highest point."""
    width, height, margin = 300, 200, 40
    colours = ["#1f77b4", "#d62728", "#2ca02c"]
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{3 * (width + margin) + margin}" '
             f'height="{height + 3 * margin}" font-family="sans-serif" font-size="11">']
    for panel, (title, works) in enumerate(curves.items()):
        left = margin + panel * (width + margin)
        parts.append(f'<rect x="{left}" y="{margin}" width="{width}" height="{height}" fill="none" stroke="#888"/>')
        parts.append(f'<text x="{left}" y="{margin - 24}">by {title}; full height is the last figure</text>')
        for index, (work, points) in enumerate(works.items()):
            furthest = max(number for number, _ in points)
            most = max(time for _, time in points)
            places = " ".join(f"{left + width * number / furthest:.1f},{margin + height - height * time / most:.1f}"
                              for number, time in points)
            parts.append(f'<polyline points="{places}" fill="none" stroke="{colours[index]}"/>')
            parts.append(f'<text x="{left}" y="{margin + height + 16 * (index + 2)}" fill="{colours[index]}">{work}: '
                         f'{points[0][1]:.2f} us at {points[0][0]}, {most:.2f} us at most</text>')
        parts.append(f'<text x="{left + width}" y="{margin + height + 14}" text-anchor="end">{furthest}</text>')
    return "\n".join(parts + ["</svg>", ""])


def put_into_page(lines):
    page = pathlib.Path(__file__).with_name("README.md")
    begin, end = "<!-- the table -->\n", "<!-- the end of the table -->\n"
    before, rest = page.read_text().split(begin)
    page.write_text(before + begin + "\n".join(lines) + "\n" + end + rest.split(end)[1])


def main():
    parser = argparse.ArgumentParser(usage=__doc__.split("\n\n")[1])
    parser.add_argument("--short", action="store_true", help="a few repetitions: whether it works at all")
    parser.add_argument("--readme", action="store_true")
    parser.add_argument("--out", type=pathlib.Path)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("base", type=pathlib.Path, nargs="?")
    parser.add_argument("base_name", nargs="?", default="base")
    options = parser.parse_args()
    out = options.out or options.build
    out.mkdir(parents=True, exist_ok=True)

    rounds, repetitions = (1, 2) if options.short else (4, 30)
    libraries = {"now": None}
    if options.base is not None:
        libraries = {options.base_name: options.base, "now": options.build}
    switches = {"free": "free", "trace stand-in": "standin"}
    taken = {library: {switch: Times() for switch in switches} for library in libraries}
    for _ in range(rounds):
        for switch, program in switches.items():
            for library, folder in libraries.items():
                measure(options.build, taken[library][switch], program, repetitions, library=folder)
                measure_tool(options.build, taken[library][switch], 2 * repetitions, folder or options.build)
    for library, folder in libraries.items():
        measure_monitor(options.build, taken[library].values(), 2 if options.short else 10, folder or options.build)
    results = {library: {switch: figures(taken[library][switch]) for switch in switches} for library in libraries}
    curves = growth(options.build, 2 if options.short else 20)

    print("\n".join(bars(curves)))
    (out / "growth.svg").write_text(svg(curves))
    (out / "bench.json").write_text(json.dumps({"nanoseconds": taken, "table": results, "growth": curves}, indent=1))
    print(f"\nTimes the limit, but where there is a unit (in {out}: bench.json, growth.svg)")
    lines = table(results)
    print("\n".join(lines))
    if options.readme:
        put_into_page(lines)


if __name__ == "__main__":
    sys.exit(main())
