#!/usr/bin/env python3
"""Builds mutants of the library and runs the tests of their room until one of them fails.

A mutant that no test notices survives and is listed; those of the list of equivalents, which change nothing that anybody
could notice, are left out. The figures come last; the result is 1 when too few were killed."""

import argparse
import concurrent.futures
import json
import os
import pathlib
import random
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

import mutations

SOURCE = pathlib.Path(__file__).resolve().parent.parent.parent
EQUIVALENTS = pathlib.Path(__file__).resolve().parent / "equivalent.txt"
ROOMS = ["store", "params", "apply", "driver", "wps", "platform"]
# What stands at the bottom is tested where it is used, too.
ALSO = {
    "store/bounded_text.h": ["constants_test"],
    "store/decimal.h": ["settings_table_test", "number_check_test"],
    "store/shell.cpp": ["shell_test", "commit_test"],
    "store/trace.cpp": ["wds_test", "settings_table_test", "probe_response_test"],
    "store/trace.h": ["wds_test", "settings_table_test"],
    "params/setting_table.cpp": ["wds_test"],
    "driver/request.cpp": ["interface_address_test"],
}
MEMORY = 1 << 30  # what the processes of a test may have together
FILE_SIZE = 1 << 28


class Failure(Exception):
    pass


def read_equivalents():
    """Names of mutants, some or one followed by an indented reason; "*" stands for any file, or for anything in a file."""
    reasons = {}
    names = []
    for line in EQUIVALENTS.read_text().splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        if line[0] != " ":
            names.append(line.strip())
        else:
            reasons.update(dict.fromkeys(names, line.strip()))
            names = []
    if names:
        raise Failure("no reason is given for " + names[0])
    return reasons


def stands_for(listed, name):
    if listed.endswith(": *"):
        return name.startswith(listed[:-1])
    return name == listed or (listed.startswith("*: ") and name.endswith(listed[1:]))


def read_sources():
    return {f"{room}/{path.name}": path.read_text() for room in ROOMS for path in sorted((SOURCE / room).iterdir())
            if path.suffix in (".cpp", ".h", ".def")}


class Build:
    """How the library of a build is made: its commands, what depends on which file, and its objects."""

    def __init__(self, folder):
        self.folder = folder
        commands = self._ninja("commands", "api_lib_wifimgr").splitlines()
        self.compile = {}
        for command in commands:
            words = shlex.split(command)
            if "-c" in words and "api_lib_wifimgr.dir" in command:
                self.compile[words[words.index("-o") + 1]] = [word for word in words if word not in ("-g", "-Werror")]
        links = [command for command in commands if "-shared" in command and "libapi_lib_wifimgr.so.1" in command]
        link = links[-1].removeprefix(": && ").removesuffix(" && :")
        self.link = [word.replace("\\$", "$") for word in shlex.split(link) if word != "-g"]
        self.dependents = {}
        target = None
        for line in self._ninja("deps").splitlines():
            if line and line[0] != " ":
                target = line.split(":")[0]
            elif target in self.compile and line.strip():
                path = os.path.normpath(folder / line.strip())
                if path.startswith(f"{SOURCE}/"):
                    self.dependents.setdefault(os.path.relpath(path, SOURCE), []).append(target)

    def _ninja(self, tool, *arguments):
        run = ["ninja", "-C", str(self.folder), "-t", tool, *arguments]
        return subprocess.run(run, check=True, capture_output=True, text=True).stdout.replace("ninja: Entering", "")

    def tests(self, room):
        shown = subprocess.run(
            ["ctest", "--test-dir", str(self.folder), "--show-only=json-v1", "-L", f"^{room}$"],
            check=True, capture_output=True, text=True)
        programs = [test["command"] for test in json.loads(shown.stdout)["tests"] if "command" in test]
        if not programs:
            raise Failure(f"{self.folder} has no tests of {room}: build them first")
        return programs


def memory_of(session):
    """The resident bytes of all processes of a session."""
    total = 0
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat") as stat:
                    fields = stat.read().rpartition(")")[2].split()
            except OSError:
                continue
            if int(fields[3]) == session:
                total += int(fields[21]) * resource.getpagesize()
    return total


def passes(command, libraries, seconds):
    """Whether a test program ends well; one that hangs or eats the memory does not."""
    environment = dict(os.environ, LD_LIBRARY_PATH=":".join(map(str, libraries)), GTEST_FAIL_FAST="1")
    process = subprocess.Popen(
        command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        start_new_session=True,
        preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, resource.RLIM_INFINITY)))
    started = time.monotonic()
    while True:
        try:
            return process.wait(0.3) == 0
        except subprocess.TimeoutExpired:
            if time.monotonic() - started > seconds or memory_of(process.pid) > MEMORY:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                return False


class Hunt:
    def __init__(self, build, sources, work):
        self.build = build
        self.sources = sources
        self.work = work
        self.lock = threading.Lock()
        self.programs = {}
        self.seconds = {}
        self.order = {}
        self.objects = work / "objects"
        # Without debug information they are linked in a tenth of the time.
        for object_file in build.compile:
            to = self.objects / object_file
            to.parent.mkdir(parents=True, exist_ok=True)
            subprocess.run(["objcopy", "--strip-debug", str(build.folder / object_file), str(to)], check=True)

    def link(self, changed, to):
        words = []
        for word in self.build.link:
            if word in self.build.compile:
                word = str(changed.get(word, self.objects / word))
            elif word == "lib/libapi_lib_wifimgr.so.1":
                word = str(to)
            words.append(word)
        subprocess.run(words, cwd=self.build.folder, check=True, capture_output=True)

    def prepare(self, rooms):
        """The tests must pass as they are; what they take then is the measure for what hangs."""
        library = self.work / "unchanged"
        library.mkdir()
        self.link({}, library / "libapi_lib_wifimgr.so.1")
        for room in rooms:
            self.programs[room] = self.build.tests(room)
            for command in self.programs[room]:
                started = time.monotonic()
                if not passes(command, [library, self.build.folder / "lib"], 300):
                    raise Failure("fails without any mutant: " + shlex.join(command))
                self.seconds[command[0]] = time.monotonic() - started

    def in_order(self, mutant):
        """Those first that killed others of the file, then those named like it, then the quick ones."""
        room, _, name = mutant.file.partition("/")
        subjects = set(re.split(r"[_.]", name)) - {"cpp", "h", "def"}
        with self.lock:
            kills = dict(self.order.get(mutant.file, {}))
        beside = [command for programs in self.programs.values() for command in programs
                  if pathlib.Path(command[0]).name in ALSO.get(mutant.file, [])]
        return sorted(self.programs[room] + beside, key=lambda command: (
            -kills.get(command[0], 0), -len(subjects & set(pathlib.Path(command[0]).name.split("_"))),
            self.seconds[command[0]]))

    def compile(self, mutant, folder):
        """The objects that the mutant changes; None when it is no program."""
        overlay = folder / "source"
        path = overlay / mutant.file
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(mutations.apply(mutant, self.sources[mutant.file]))
        changed = {}
        for number, object_file in enumerate(self.build.dependents.get(mutant.file, [])):
            words = list(self.build.compile[object_file])
            to = folder / f"{number}.o"
            words[words.index("-o") + 1] = str(to)
            words[words.index("-MF") + 1] = str(folder / "depends")
            if words[-1] == str(SOURCE / mutant.file):
                words[-1] = str(path)
            # First of all folders; what starts the compiler may be more than one word.
            words.insert(next(at for at, word in enumerate(words) if word.startswith("-")), f"-I{overlay}")
            words.append("-w")
            if subprocess.run(words, cwd=self.build.folder, capture_output=True).returncode != 0:
                return None
            changed[object_file] = to
        return changed

    def fate(self, mutant):
        """'killed', 'survived' or 'no program'."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.work))
        try:
            changed = self.compile(mutant, folder)
            if not changed:
                return "no program"
            self.link(changed, folder / "libapi_lib_wifimgr.so.1")
            for command in self.in_order(mutant):
                if not passes(command, [folder, self.build.folder / "lib"], 10 + 10 * self.seconds[command[0]]):
                    with self.lock:
                        kills = self.order.setdefault(mutant.file, {})
                        kills[command[0]] = kills.get(command[0], 0) + 1
                    return "killed"
            return "survived"
        except subprocess.CalledProcessError:
            return "no program"
        finally:
            shutil.rmtree(folder)


def chosen(mutants, options):
    if options.room:
        mutants = [mutant for mutant in mutants if mutant.file.startswith(options.room + "/")]
    if options.file:
        mutants = [mutant for mutant in mutants if mutant.file in options.file]
    if options.name:
        mutants = [mutant for mutant in mutants if options.name in mutant.name]
    if options.again:
        again = set(options.again.read_text().splitlines())
        mutants = [mutant for mutant in mutants if mutant.name in again]
    if options.sample and options.sample < len(mutants):
        mutants = random.Random(options.seed).sample(mutants, options.sample)
    return mutants


def run(options):
    sources = read_sources()
    mutants = [mutant for file, text in sources.items() for mutant in mutations.mutants_of(file, text)]
    names = [mutant.name for mutant in mutants]
    equivalents = read_equivalents()
    # Of most listed names there is one; only those with a star are looked for.
    exact = {name for name in equivalents if "*: " not in name and not name.endswith(": *")}
    starred = [name for name in equivalents if name not in exact]
    known = {name for name in names if name in exact or any(stands_for(star, name) for star in starred)}
    strangers = sorted(exact - set(names)) + [star for star in starred if not any(stands_for(star, n) for n in known)]
    if strangers:
        raise Failure("is listed as equivalent, but is no mutant any more:\n  " + "\n  ".join(strangers))
    if options.list:
        print("\n".join(mutant.name for mutant in chosen(mutants, options)))
        return 0

    wanted = [mutant for mutant in chosen(mutants, options) if mutant.name not in known]
    rooms = [room for room in ROOMS if any(mutant.file.startswith(room + "/") for mutant in wanted)]
    if any(mutant.file in ALSO for mutant in wanted):
        rooms = ROOMS
    counts = {"killed": 0, "survived": 0, "no program": 0}
    survivors = []
    started = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="mutants.", dir=options.build) as work:
        hunt = Hunt(Build(options.build), sources, pathlib.Path(work))
        hunt.prepare(rooms)
        with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
            futures = {pool.submit(hunt.fate, mutant): mutant for mutant in wanted}
            for done in concurrent.futures.as_completed(futures):
                mutant = futures[done]
                counts[done.result()] += 1
                if done.result() == "survived":
                    survivors.append(mutant)
                    print(f"survived: line {mutant.line} of {mutant.name}", flush=True)
                if sum(counts.values()) % 100 == 0:
                    print(f"{sum(counts.values())} of {len(wanted)}", flush=True)

    if options.names:
        options.names.write_text("".join(mutant.name + "\n" for mutant in survivors))
    tried = counts["killed"] + counts["survived"]
    if wanted and not tried:
        raise Failure(f"none of {len(wanted)} mutants could be built")
    share = 100.0 * counts["killed"] / tried if tried else 100.0
    print(f"mutants: {len(mutants)} in {len(ROOMS)} rooms, {len(known)} of them known as equivalent; "
          f"tried {tried} (seed {options.seed}), {counts['no program']} more do not compile")
    print(f"mutants: {counts['killed']} killed, {counts['survived']} survived: {share:.1f} % killed, "
          f"at least {options.least:g} % wanted; {time.monotonic() - started:.0f} seconds")
    return 0 if share >= options.least else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, default=SOURCE / "build/dev", help="a build with its tests")
    parser.add_argument("--room", choices=ROOMS)
    parser.add_argument("--file", action="append", help="such as store/lock.cpp")
    parser.add_argument("--name", help="only mutants whose name has this text")
    parser.add_argument("--sample", type=int, default=0, help="so many at random; 0: all")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--least", type=float, default=97.0, help="the share to be killed, in percent")
    parser.add_argument("--list", action="store_true", help="print the names of the mutants")
    parser.add_argument("--again", type=pathlib.Path, help="only those whose names are in the file")
    parser.add_argument("--names", type=pathlib.Path, help="a file for the survivors' names")
    options = parser.parse_args()
    options.build = options.build.resolve()
    try:
        return run(options)
    except Failure as failure:
        print("mutants:", failure, file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
