#!/usr/bin/env python3
"""tools/trust: what holds, and what does not, by what the programs have said and by their exit codes."""

import importlib.machinery
import importlib.util
import json
import pathlib
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/trust"
PASSED = "Totals: 3 passed, 0 failed\n"
SKIPPED = "7: SKIP   : tst_fulldisk::keepsTheOldFile(csv) no right to mount\n"


def loaded():
    """The script as a module."""
    sys.dont_write_bytecode = True
    loader = importlib.machinery.SourceFileLoader("trust", str(TOOL))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("trust", loader))
    loader.exec_module(module)
    return module


class Trust(unittest.TestCase):
    """The measurements with the outputs of programs that are not run."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.trust = loaded()
        self.trust.ROOT = pathlib.Path(folder.name)
        self.trust.OUT, self.trust.BUILD = self.trust.ROOT / "logs", self.trust.ROOT / "trust"
        self.trust.build = lambda targets, preset="trust": None

    def rows(self, measurement, output, code=0, is_long=False):
        """The rows of a measurement whose programs all say the same, or what a function of their names gives."""
        say = output if callable(output) else lambda name, variables: output
        self.trust.run = lambda name, command, variables=None: (code, say(name, variables or {}), 1.0)
        return getattr(self.trust, measurement)(is_long)

    def check(self, held, measurement, output, code=0, is_long=False):
        """Compares whether each row holds."""
        rows = self.rows(measurement, output, code, is_long)
        self.assertEqual([row.held for row in rows], held, [str(row) for row in rows])

    def test_loudness(self):
        """Programs that pass, fail, say nothing, and skip."""
        self.check([True], "loudness", PASSED)
        self.check([False], "loudness", PASSED, 1)
        self.check([False], "loudness", "")
        self.check([False], "loudness", SKIPPED + PASSED)
        self.check([False], "loudness", lambda name, _: "" if name == "tst_loudness" else PASSED)

    def test_coverage(self):
        """A report without a sum."""
        self.check([True], "coverage", "src/plot2d   5/5   100.0 %\n")
        self.check([False], "coverage", "src/plot2d   5/5   100.0 %\n", 1)
        self.check([False], "coverage", "")

    def mutants(self, killed, equal):
        """The table of so many mutants, of which ten cannot be compiled; all are of pure functions."""
        figures = f"{killed + equal + 10} {killed + equal + 10} 10 {killed} {equal} 0 0.0%\n"
        return f"pure functions {figures}src/plot2d {figures}"

    def test_mutation(self):
        """A share of all that can be compiled, of the whole library and not of a sample."""
        self.check([True, True], "mutation", self.mutants(95, 5), is_long=True)
        self.check([True, False], "mutation", self.mutants(94, 6), is_long=True)
        self.check([True, True], "mutation", self.mutants(94, 6))
        self.check([False, False], "mutation", self.mutants(95, 5), 1)
        self.check([False, False], "mutation", self.mutants(0, 0))
        self.check([False, False], "mutation", "")
        figure = self.rows("mutation", self.mutants(94, 6))[1].figure
        self.assertEqual(figure, "94 of 100 killed, 94.0 %; 6 listed as equivalent, 0 live")

    def fuzzed(self, **other):
        """What tools/fuzz leaves, one target of two being other than good."""
        good = {"target": "cells", "executions": 10**8, "earlier": 9 * 10**7, "code": "this", "seconds": 601.0,
                "findings": 0}
        file = self.trust.ROOT / "build/fuzz/results.json"
        file.parent.mkdir(parents=True, exist_ok=True)

        def say(*_):
            file.write_text(json.dumps([good, dict(good, target="labels", **other)]))
            return ""
        return say

    def test_fuzz(self):
        """Enough inputs or seconds, of the code as it is, and no findings."""
        self.check([True, True], "fuzz", self.fuzzed(), is_long=True)
        self.check([True, False], "fuzz", self.fuzzed(executions=10**8 - 1), is_long=True)
        self.check([False, True], "fuzz", self.fuzzed(seconds=599.0), is_long=True)
        self.check([False], "fuzz", self.fuzzed(executions=0))
        self.check([False], "fuzz", self.fuzzed(findings=1))
        self.check([False], "fuzz", self.fuzzed(), 1)
        self.check([False], "fuzz", self.fuzzed(code="other"))
        figure = self.rows("fuzz", self.fuzzed(code="other"))[0].figure
        self.assertEqual(figure, "2 targets, 200,000,000 inputs, 20,000,000 of them in this call, 0 findings; "
                         "labels of other code")

    def test_fuzz_without_results(self):
        """Results of an earlier call are not those of this one."""
        self.fuzzed()()
        self.check([False], "fuzz", "The fuzzers find nothing")

    def test_differential(self):
        """As many cases as are wanted, or their share."""
        program = self.trust.BUILD / "tests/differential/tst_differential_zoom"
        program.parent.mkdir(parents=True)
        self.check([False], "differential", "")
        program.touch(0o755)
        plain = ": {} of 1000000 cases, each for 1, in 9 ms, 100000 comparisons left out"
        dear = "\n: 4000 of {} cases, each for 200, in 9 ms, 0 comparisons left out"
        self.check([True], "differential", plain.format(500000) + dear.format(5000), is_long=True)
        self.check([False], "differential", plain.format(499999) + dear.format(5000), is_long=True)
        self.check([False], "differential", plain.format(500000) + dear.format(4999), is_long=True)
        self.check([False], "differential", plain.format(500000) + dear.format(5000), 1, is_long=True)
        self.check([False], "differential", plain.replace("100000 ", "100001 ").format(500000), is_long=True)
        self.check([False], "differential", plain.replace(", 100000 comp", "").format(500000), is_long=True)
        self.check([False], "differential", plain.format(500000))
        self.check([False], "differential", PASSED)
        self.check([True], "differential", lambda _, variables:
                   f": 40000 of {variables['PLOT2D_CASES']} cases, each for 1, in 9 ms, 0 comparisons left out")

    def test_monkey(self):
        """All steps, and each kind of event among them."""
        said = ("seed 5: 5000 steps in 1.0 s; 9 pans, 8 zooms, 7 axis drags, 6 times labels thinned, 5 price intervals, "
                "4 interventions; memory")
        self.check([True], "monkey", said)
        self.check([False], "monkey", said, 1)
        self.check([False], "monkey", said.replace("5000", "4999"))
        for tally in ("9 pans", "8 zooms", "7 axis", "6 times", "5 price", "4 inter"):
            self.check([False], "monkey", said.replace(tally, "0" + tally[1:]))

    def test_cycles(self):
        """The wanted number of windows."""
        say = "{} cycles: 12 bytes\n" + PASSED
        self.check([True, True], "cycles", lambda _, variables: say.format(variables["PLOT2D_CYCLES"]))
        self.check([True, True], "cycles", say.format(1000), is_long=True)
        self.check([True, False], "cycles", say.format(1000))
        self.check([False, False], "cycles", say.format(1000), 1)
        self.check([False, False], "cycles", PASSED)

    def faults(self, orders=(100,), kills=(20, 20, 20, 20, 20), more=PASSED):
        """The output of both rooms."""
        lines = [f"3: QINFO  : tst_destroyorder::survives() {count} orders\n" for count in orders]
        told = [f"4: QINFO  : tst_killeddesk::keeps() {count} kills after 30 versions\n" for count in kills]
        return lambda name, _: "".join(told if "desk" in name else lines) + more

    def test_faults(self):
        """As many orders and kills as are wanted, and nothing skipped."""
        self.check([True, True], "faults", self.faults())
        self.check([False, False], "faults", self.faults(), 8)
        self.check([False, False], "faults", self.faults(), is_long=True)
        self.check([True, True], "faults", self.faults((5000,), (100,) * 5), is_long=True)
        self.check([False, True], "faults", self.faults(orders=()))
        self.check([True, False], "faults", self.faults(kills=(20, 20, 20, 20, 0)))
        self.check([True, False], "faults", self.faults(kills=(20, 20, 20, 20)))
        self.check([False, False], "faults", self.faults(more=PASSED + SKIPPED))
        self.check([False, False], "faults", self.faults(more=""))

    def test_exhaustion(self):
        """Allocations that have failed in each program."""
        self.check([True], "exhaustion", "4 of 9 faults have ended the call\n" + PASSED)
        self.check([False], "exhaustion", "4 of 9 faults have ended the call\n" + PASSED, 1)
        self.check([False], "exhaustion", lambda name, _: "4 faults have ended\n" + PASSED if "host" in name else PASSED)


if __name__ == "__main__":
    unittest.main()
