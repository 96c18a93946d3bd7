#!/usr/bin/env python3
"""tools/skipped_tests.py: which functions no run of a program has passed."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/skipped_tests.py"


def run_of(program, *lines):
    """What the log of ctest has of a test."""
    said = "".join(f"{line}\n" for line in lines)
    return f'1/2 Test: {program}\nCommand: "/build/{program}" "-v1"\nOutput:\n{said}Test Passed.\n'


class SkippedTests(unittest.TestCase):
    """The logs of tests, one of each room."""

    def check(self, logs, *named):
        """Compares what is named, and the exit code."""
        with tempfile.TemporaryDirectory() as folder:
            files = [pathlib.Path(folder) / f"{number}.log" for number in range(len(logs))]
            for file, text in zip(files, logs):
                file.write_text(text)
            done = subprocess.run([sys.executable, "-B", TOOL, *files], text=True, capture_output=True, check=False)
        self.assertEqual(done.stdout.splitlines(), [f"skipped: {text}" for text in named], done.stderr)
        self.assertEqual(done.returncode, 1 if named else 0)

    def test_skipped(self):
        """A function, a row of one, and one in the second room."""
        self.check([run_of("tst_a", "PASS   : tst_a::one()", "PASS   : tst_a::two(row)")])
        self.check([run_of("tst_a", "SKIP   : tst_a::one() no fonts")], "tst_a::one() no fonts")
        self.check([run_of("tst_a", "PASS   : tst_a::two(row)", "SKIP   : tst_a::two(other row) no locale")],
                   "tst_a::two(other row) no locale")
        self.check([run_of("tst_a", "PASS   : tst_a::one()"), run_of("tst_b", "SKIP   : tst_b::one() no screen")],
                   "tst_b::one() no screen")

    def test_passed_elsewhere(self):
        """Another run of the program makes up for it, before or after, but no other program and no other row."""
        skipped, passed = "SKIP   : tst_a::one(a (b)) of two pixels", "PASS   : tst_a::one(a (b))"
        self.check([run_of("tst_a", skipped) + run_of("tst_a", passed)])
        self.check([run_of("tst_a", passed) + run_of("tst_a", skipped)])
        self.check([run_of("tst_a", skipped) + run_of("tst_b", passed)], "tst_a::one(a (b)) of two pixels")
        self.check([run_of("tst_a", skipped) + run_of("tst_a", "PASS   : tst_a::one(a)")],
                   "tst_a::one(a (b)) of two pixels")


if __name__ == "__main__":
    unittest.main()
