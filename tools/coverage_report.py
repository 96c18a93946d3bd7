#!/usr/bin/env python3
"""Prints what gcovr counted in src/plot2d and holds what no test reaches against the list of exceptions.

Usage: coverage_report.py COUNTS.json EXCEPTIONS.txt

The list names a file and the text of a line, with #2 behind it for the second of equal lines and so on, and below it,
indented, what is not reached there, and why:
    line: ...       the line itself
    function: ...   a function that begins there
    branch: ...     one of its ways on
    artefact: ...   a way on that only the compiler sees
    impossible: ... a line or a way on that no caller can reach, with the proof
A number before the colon ("branch 2: ...") says how many ways these are where it is not one, no more and no less.
In files of pure functions no branch may be left but those of the last two kinds.
"""

import json
import pathlib
import re
import sys

from mutation.purity import is_pure

LEAST = {"functions": 100.0, "lines": 99.0, "branches": 97.0}
KINDS = ("line", "function", "branch", "artefact", "impossible")


def listed_exceptions(path):
    """What may stay without a test, by files and texts of lines: how many of each kind."""
    listed = {}
    place = None
    for number, line in enumerate(path.read_text().splitlines() if path.exists() else [], 1):
        if not line.strip() or line.startswith("#"):
            continue
        if not line[0].isspace():
            file, _, text = line.partition(": ")
            place = listed.setdefault((file, text), {})
            continue
        entry = re.fullmatch(rf"({'|'.join(KINDS)})(?: ([1-9]\d*))?: .+", line.strip())
        if place is None or not entry:
            sys.exit(f"{path}:{number}: neither a place nor a kind with its reason")
        place[entry[1]] = int(entry[2] or 1)
    return listed


class File:
    """What was counted in a source file."""

    def __init__(self, counted):
        path = pathlib.Path(counted["file"])
        self.path = path
        self.texts = path.read_text().split("\n")
        self.counts = {"functions": [0, 0], "lines": [0, 0], "branches": [0, 0]}
        self.gaps = []
        for line in counted["lines"]:
            if not line.get("gcovr/noncode"):
                self._count_line(line)
        for function in counted.get("functions", []):
            if not self._count("functions", function["execution_count"]):
                self.gaps.append((function["lineno"], "function", function["name"], 1))

    def _count(self, kind, count):
        self.counts[kind][0] += count > 0
        self.counts[kind][1] += 1
        return count > 0

    def _count_line(self, line):
        number = line["line_number"]
        if not self._count("lines", line["count"]):
            self.gaps.append((number, "line", "", 1))
        reached = [self._count("branches", branch["count"]) for branch in line["branches"]]
        if line["count"] and not all(reached):
            missing = [str(i) for i, is_reached in enumerate(reached) if not is_reached]
            self.gaps.append((number, "branch", f"{', '.join(missing)} of {len(reached)}", len(missing)))

    def text(self, number):
        """The text of a line, without indentation; of equal lines with the place among them, but for the first."""
        text = self.texts[number - 1].strip()
        place = sum(other.strip() == text for other in self.texts[:number])
        return text if place == 1 else f"{text} #{place}"

    def listed(self, gap, listed, used):
        """How many ways the list has for a gap; its entries then are used."""
        number, kind, _, _ = gap
        place = (self.path.name, self.text(number))
        kinds = listed.get(place, {})
        accepted = [kind, "impossible"]
        if kind == "branch":
            accepted = ["artefact", "impossible"] + ([] if is_pure(self.path.name) else ["branch"])
        found = [name for name in accepted if name in kinds]
        used.update((place, name) for name in found)
        return sum(kinds[name] for name in found)


def share(counts):
    """Reached ones in percent; all of none."""
    return 100.0 * counts[0] / counts[1] if counts[1] else 100.0


def print_row(name, counts):
    """A row of the table."""
    cells = [f"{reached:6}/{every:<6}{share((reached, every)):6.1f} %" for reached, every in counts.values()]
    print(f"{name:40}" + "".join(cells))


def main():
    """Prints the table, the gaps, and what is wrong with them; returns the status."""
    files = [File(counted) for counted in json.loads(pathlib.Path(sys.argv[1]).read_text())["files"]]
    listed = listed_exceptions(pathlib.Path(sys.argv[2]))
    print(f"{'':40}" + "".join(f"{kind:>21}" for kind in LEAST))
    totals = {kind: [0, 0] for kind in LEAST}
    for file in files:
        print_row(file.path.name, file.counts)
        for kind, counts in file.counts.items():
            totals[kind] = [a + b for a, b in zip(totals[kind], counts)]
    print_row("src/plot2d", totals)

    used = set()
    status = 0
    for file in files:
        for gap in file.gaps:
            number, kind, what, ways = gap
            allowed = file.listed(gap, listed, used)
            known = "listed" if allowed == ways else f"LISTED AS {allowed}" if allowed else "NOT LISTED"
            status = status if allowed == ways else 1
            print(f"{file.path}:{number}: {kind} {what}: {known}: {file.text(number)}")
    for place, kinds in listed.items():
        for kind in kinds:
            if (place, kind) not in used:
                print(f"listed, but reached: {place[0]}: {place[1]}: {kind}")
                status = 1
    for kind, least in LEAST.items():
        if share(totals[kind]) < least:
            print(f"{share(totals[kind]):.2f} % of the {kind} are less than {least} %")
            status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
