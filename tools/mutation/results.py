"""Keeps what became of each mutant, and tells of those that live."""

import json
import os

from .purity import is_pure
from .tree import OUTPUT, ROOT

RESULTS = OUTPUT / "results.json"
SURVIVORS = ROOT / "tests/mutation-survivors.txt"
KILLED = ("killed", "killed by time")
LIVE = ("survived", "not reached")

class Results:
    """The fates of mutants by their keys."""

    def __init__(self, resume):
        self.fates = {}
        if resume and RESULTS.exists():
            self.fates = json.loads(RESULTS.read_text())

    def _keep(self):
        new = RESULTS.with_suffix(".new")
        new.write_text(json.dumps(self.fates, indent=0))
        os.replace(new, RESULTS)

    def add(self, mutant, fate, test=""):
        """Notes a fate, and keeps it."""
        self.fates[mutant.key] = {"fate": fate, "test": test}
        self._keep()

    def killers(self):
        """The tests that have killed, by name, each with a file whose mutants it has killed."""
        return {(fate["test"], key.split("\t")[0]) for key, fate in self.fates.items() if fate["fate"] in KILLED}

    def forget(self, tests):
        """Drops what tests have killed that cannot be trusted."""
        self.fates = {key: fate for key, fate in self.fates.items() if fate["test"] not in tests}
        self._keep()

    def fate(self, mutant):
        """What became of a mutant: empty if it was not tried."""
        return self.fates.get(mutant.key, {}).get("fate", "")


def equivalents():
    """The listed mutants that nothing can notice, with the reasons: a line of a file, then indented its changes."""
    listed = {}
    place = ""
    for line in SURVIVORS.read_text().splitlines() if SURVIVORS.exists() else []:
        if line.startswith("#") or not line.strip():
            continue
        if line[0].isspace():
            change, _, reason = line.strip().partition(": ")
            listed[f"{place}\t{change}"] = reason
        else:
            file, _, text = line.partition(": ")
            place = f"{file}\t{text}"
    return listed


def report(mutants, results, known):
    """Prints the scores and the mutants that live without a reason; returns how many these are.

    What was not tried counts as well, and what is listed but is not among the known keys, those of all mutants of these
    files.
    """
    listed = equivalents()
    files = {}
    living = []
    for mutant in mutants:
        fate = results.fate(mutant)
        row = files.setdefault(mutant.file, dict.fromkeys(("all", "run", "killed", "equal", "open", "invalid"), 0))
        row["all"] += 1
        if not fate:
            continue
        row["run"] += 1
        if fate in KILLED:
            row["killed"] += 1
        elif fate == "invalid":
            row["invalid"] += 1
        elif mutant.key in listed:
            row["equal"] += 1
        else:
            row["open"] += 1
            living.append((mutant, fate))
    _print_table(files)
    for mutant, fate in living:
        print(f"{mutant.file}:{mutant.number}: {fate}: {mutant.change}: {mutant.line}")
    stale = [key for key in listed if key not in known and key.split("\t")[0] in files]
    stale += [m.key for m in mutants if m.key in listed and results.fate(m) in KILLED]
    for key in stale:
        print("listed as equivalent, but not so: " + key.replace("\t", ": "))
    untried = sum(row["all"] - row["run"] for row in files.values())
    if untried:
        print(f"{untried} mutants were not tried")
    return len(living) + len(stale) + untried


def _print_table(files):
    heads = ("all", "run", "invalid", "killed", "equal", "open")
    print(f"{'':40}" + "".join(f"{head:>9}" for head in heads) + f"{'score':>9}")
    sums = {"pure functions": {}, "src/plot2d": {}}
    for file, row in sorted(files.items()):
        _print_row(file, row, heads)
        for name in ["src/plot2d"] + (["pure functions"] if is_pure(file) else []):
            for head in heads:
                sums[name][head] = sums[name].get(head, 0) + row[head]
    for name, row in sums.items():
        if row:
            _print_row(name, row, heads)


def _print_row(name, row, heads):
    counted = row["run"] - row["invalid"]
    score = f"{100.0 * row['killed'] / counted:8.1f}%" if counted else f"{'-':>9}"
    print(f"{name:40}" + "".join(f"{row[head]:9}" for head in heads) + score)
