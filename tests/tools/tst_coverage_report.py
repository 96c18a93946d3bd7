#!/usr/bin/env python3
"""tools/coverage_report.py: which gaps its list excuses."""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/coverage_report.py"
SOURCE = "if (a || b)\n    c();\nd();\n"


class CoverageReport(unittest.TestCase):
    """The report of a source with a condition, of whose ways some are missing, among many that are not."""

    def check(self, exceptions, code, *said, reached=(1, 0, 0, 4), last=1, name="plotcanvas.cpp"):
        """Compares the exit code and looks for what is to be said."""
        with tempfile.TemporaryDirectory() as folder:
            source, counts, listed = (pathlib.Path(folder) / file for file in (name, "counts.json", "exceptions.txt"))
            source.write_text(SOURCE)
            listed.write_text(exceptions)
            lines = [{"line_number": 1, "count": 5, "branches": [{"count": count} for count in reached]},
                     {"line_number": 2, "count": 5, "branches": [{"count": 1}] * 400},
                     {"line_number": 3, "count": last, "branches": []}]
            # A line without an exception would fall below the least share.
            lines += [dict(lines[1], branches=[])] * 400
            counts.write_text(json.dumps({"files": [{"file": str(source), "lines": lines}]}))
            done = subprocess.run([sys.executable, "-B", TOOL, counts, listed], text=True, capture_output=True, check=False)
        output = done.stdout + done.stderr
        self.assertEqual(done.returncode, code, output)
        for text in said:
            self.assertIn(text, output)

    def test_number_of_ways(self):
        """An entry excuses as many ways as it says."""
        place = f"plotcanvas.cpp: {SOURCE.splitlines()[0]}\n"
        self.check(place + "    branch 2: a reason\n", 0, "branch 1, 2 of 4: listed: if")
        self.check(place + "    branch: a reason\n", 1, "branch 1, 2 of 4: LISTED AS 1: if")
        self.check(place + "    branch 3: a reason\n", 1, "branch 1, 2 of 4: LISTED AS 3: if")
        self.check(place + "    branch: a reason\n", 0, reached=(1, 0, 1, 4))
        self.check("", 1, "branch 1, 2 of 4: NOT LISTED: if")

    def test_kinds_add_up(self):
        """The ways of a line may have reasons of several kinds."""
        place = f"plotcanvas.cpp: {SOURCE.splitlines()[0]}\n"
        self.check(place + "    branch: a reason\n    artefact: another\n", 0)
        self.check(place + "    branch 2: a reason\n    artefact: another\n", 1, "LISTED AS 3")

    def test_pure_functions(self):
        """Of pure functions only what cannot be reached is excused."""
        place = f"valuerange.cpp: {SOURCE.splitlines()[0]}\n"
        self.check(place + "    impossible 2: a proof\n", 0, name="valuerange.cpp")
        self.check(place + "    branch 2: a reason\n", 1, "NOT LISTED", name="valuerange.cpp")

    def test_lines(self):
        """A line is one way; what is reached is not to be listed."""
        everything = (1, 1, 1, 1)
        self.check("plotcanvas.cpp: d();\n    line: a reason\n", 0, reached=everything, last=0)
        self.check("plotcanvas.cpp: d();\n    line: a reason\n", 1, "listed, but reached", reached=everything)
        self.check("", 1, "line : NOT LISTED: d();", reached=everything, last=0)

    def test_malformed_lists(self):
        """A kind that does not exist, a number that is none, and an entry without a reason."""
        place = f"plotcanvas.cpp: {SOURCE.splitlines()[0]}\n"
        for entry in ("way 2: a reason", "branch 0: a reason", "branch two: a reason", "branch 2:", "branch 2"):
            self.check(place + f"    {entry}\n", 1, "neither a place nor a kind")


if __name__ == "__main__":
    unittest.main()
