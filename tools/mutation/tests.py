"""Knows the tests: how each is run, how long it takes, and which lines of the library it reaches."""

import json
import os
import re
import selectors
import shutil
import signal
import subprocess
import time
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

from .tree import BUILD, OUTPUT, ROOT, SOURCES, included_by, including

ROOMS = ("axes", "differential", "drawing", "faults", "flow", "fuzz", "golden", "gui", "monkey", "unit")
# The long run of random steps would take minutes of each mutant that lives.
SHORTENED = {"tst_monkey": ["--events", "3000", "--seed", "1"]}
MAP = OUTPUT / "map.json"
TIMES = OUTPUT / "times.json"
MEMORY_KIB = 3 * 1024 * 1024


class TestIsMissing(Exception):
    """A test program that cannot be run, for example because it is being linked."""


@dataclass
class Test:
    """A test program with its arguments and environment, and the seconds it usually takes."""

    name: str
    command: list
    environment: dict
    seconds: float = 60.0

    @property
    def room(self):
        """The folder of the test's sources."""
        return Path(self.command[0]).relative_to(BUILD / "tests").parts[0]

    @property
    def folder(self):
        """The folder in which the test is run."""
        return str(Path(self.command[0]).parent)


@dataclass
class TestSource:
    """The source of a test program, and the headers of the library that it includes."""

    source: Path
    includes: set


@dataclass
class Outcome:
    """How a test ended: passed, failed or out of time."""

    result: str
    seconds: float


def find_tests():
    """The tests of the library."""
    listed = subprocess.run(
        ["ctest", "--test-dir", str(BUILD), "--show-only=json-v1"], check=True, capture_output=True, text=True
    ).stdout
    found = []
    for entry in json.loads(listed)["tests"]:
        command = entry.get("command", [])
        if not command or not any(command[0].startswith(f"{BUILD}/tests/{room}/") for room in ROOMS):
            continue
        properties = {item["name"]: item["value"] for item in entry["properties"]}
        environment = dict(item.split("=", 1) for item in properties.get("ENVIRONMENT", []))
        found.append(Test(entry["name"], command + SHORTENED.get(entry["name"], []), environment))
    return found


def are_built(tests):
    """Whether the programs of tests, and so the library that they load, are newer than all they are made of."""
    programs = sorted({str(Path(test.command[0]).relative_to(BUILD)) for test in tests})
    planned = subprocess.run(
        ["ninja", "-C", str(BUILD), "-n"] + programs, check=False, capture_output=True, text=True
    ).stdout
    return "no work to do" in planned


def run(test, environment, program=None, limit=None):
    """Runs a test until it fails, within limits of memory, of time and of the processor's time, which does not
    depend on what else the machine does; the limit is in seconds."""
    work = limit or 10.0 * test.seconds + 3.0
    limit = limit or 10.0 * test.seconds + 20.0
    command = [str(program or test.command[0])] + test.command[1:]
    shell = f'ulimit -v {MEMORY_KIB}; ulimit -t {int(work)}; ulimit -c 0; exec "$@"'
    start = time.monotonic()
    with subprocess.Popen(
        ["bash", "-c", shell, "bash"] + command,
        stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL,
        stdin=subprocess.DEVNULL,
        cwd=test.folder,
        env={**os.environ, **test.environment, **environment},
        start_new_session=True,
    ) as process:
        result = _watch(process, start + limit)
        _end(process)
    if process.returncode in (126, 127):
        raise TestIsMissing(command[0])
    if result is None:
        result = "passed" if process.returncode == 0 else "failed"
        if process.returncode in (-signal.SIGXCPU, -signal.SIGKILL):
            result = "time"
    return Outcome(result, time.monotonic() - start)


def stored_times(tests):
    """How those of the tests fared in an earlier run, by names, that have not been built anew since."""
    if not TIMES.exists():
        return {}
    measured = TIMES.stat().st_mtime
    old = {test.name for test in tests if Path(test.command[0]).stat().st_mtime < measured}
    return {name: time for name, time in json.loads(TIMES.read_text()).items() if name in old}


def measure(tests, times, environment, jobs):
    """How each test fares without a mutant, by names: its result and seconds; added to what is known."""
    with ThreadPoolExecutor(jobs) as executor:
        outcomes = executor.map(lambda test: run(test, environment, limit=600), tests)
        times = {**times, **{t.name: [outcome.result, outcome.seconds] for t, outcome in zip(tests, outcomes)}}
    TIMES.write_text(json.dumps(times, indent=0))
    return times


def _watch(process, deadline):
    """Reads what a test says, to its end or its first failure."""
    said = b""
    with selectors.DefaultSelector() as selector:
        selector.register(process.stdout, selectors.EVENT_READ)
        while True:
            if not selector.select(max(0.0, deadline - time.monotonic())):
                return "time"
            chunk = os.read(process.stdout.fileno(), 65536)
            if not chunk:
                break
            said = (said + chunk)[-70000:]
            if re.search(rb"^(FAIL!|QFATAL)", said, re.MULTILINE):
                return "failed"
    try:
        process.wait(max(0.1, deadline - time.monotonic()))
    except subprocess.TimeoutExpired:
        return "time"
    return None


def _end(process):
    """Ends a test and what it has started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


class TestMap:
    """For each line of the library the tests that reach it."""

    def __init__(self, reached):
        self.reached = reached

    @classmethod
    def stored(cls):
        """The map of an earlier run, empty if there was none."""
        return cls(json.loads(MAP.read_text()) if MAP.exists() else {})

    def add(self, tests, jobs):
        """Runs each test with the instrumented library, with counters of its own."""
        with ThreadPoolExecutor(jobs) as executor:
            found = list(executor.map(_lines_of, tests))
        for test, files in zip(tests, found):
            for file, lines in files.items():
                places = self.reached.setdefault(file, {})
                for line, is_reached in lines.items():
                    names = places.setdefault(str(line), [])
                    if is_reached:
                        names.append(test.name)
        MAP.write_text(json.dumps(self.reached))

    def knows(self, test):
        """Whether a test has been looked at since it was built."""
        known = any(test.name in names for places in self.reached.values() for names in places.values())
        return known and Path(test.command[0]).stat().st_mtime < MAP.stat().st_mtime

    def names(self, file, first, last):
        """The tests that reach one of the lines from the first to the last; None if none of them is code."""
        places = self.reached.get(file, {})
        found = None
        for line in range(first, last + 1):
            if str(line) in places:
                found = (found or set()) | set(places[str(line)])
        return found

    def names_of_file(self, file):
        """The tests that reach any line of a file."""
        return {name for names in self.reached.get(file, {}).values() for name in names}


def _lines_of(test):
    """The lines that a test reaches, by files."""
    folder = OUTPUT / "counters" / test.name
    shutil.rmtree(folder, ignore_errors=True)
    objects = folder / str(BUILD / "src/plot2d/CMakeFiles/plot2d.dir").lstrip("/")
    objects.mkdir(parents=True)
    run(test, {"GCOV_PREFIX": str(folder)}, limit=600)
    result = {}
    for counters in sorted(objects.glob("*.gcda")):
        notes = BUILD / "src/plot2d/CMakeFiles/plot2d.dir" / f"{counters.stem}.gcno"
        (objects / notes.name).symlink_to(notes)
    counted = [path.name for path in sorted(objects.glob("*.gcda"))]
    if not counted:
        return {}
    output = subprocess.run(
        ["gcov", "--json-format", "--stdout"] + counted, cwd=objects, check=True, capture_output=True, text=True
    ).stdout
    shutil.rmtree(folder)
    for document in output.splitlines():
        for file in json.loads(document)["files"] if document.strip() else []:
            # A compiler's cache makes paths relative to any build folder.
            path = Path(os.path.normpath(file["file"]))
            if path.parent.name == SOURCES.name and (SOURCES / path.name).exists():
                lines = result.setdefault(path.name, {})
                for line in file["lines"]:
                    number = line["line_number"]
                    lines[number] = lines.get(number, False) or line["count"] > 0
    return result


def programs_including(header, tests):
    """Of the tests those that have a header's inline functions in their own program, each by its source: those that
    include it themselves or by a private header, and the one that is named after it, however it includes it."""
    wanted = {header} | {name for name in including(header) if name.endswith("_p.h")}
    own = "tst_" + header.removesuffix(".h").removesuffix("_p")
    found = {}
    for test in tests:
        source = ROOT / "tests" / test.room / f"{Path(test.command[0]).name}.cpp"
        includes = included_by(source.read_text()) if source.exists() else set()
        if includes and test.name.lower() == own:
            includes.add(header)
        if includes & wanted:
            found[test.name] = TestSource(source, includes)
    return found
