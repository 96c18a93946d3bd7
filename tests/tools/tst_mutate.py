#!/usr/bin/env python3
"""tools/mutate: on which programs it works, and which of its results it trusts in the end."""

import importlib.machinery
import importlib.util
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
from types import SimpleNamespace

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
sys.dont_write_bytecode = True
sys.path.insert(0, str(TOOLS))

from mutation import results, tests  # pylint: disable=wrong-import-position


def loaded():
    """The script as a module."""
    loader = importlib.machinery.SourceFileLoader("mutate", str(TOOLS / "mutate"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutate", loader))
    loader.exec_module(module)
    return module


class Tree:
    """A tree that notes what it is asked for."""

    folder = temporary = pathlib.Path("worker0")

    def __init__(self):
        self.built = []
        self.is_changed = True

    def link_unchanged(self):
        """The library as it is."""
        self.is_changed = False

    def built_program(self, program, source):
        """A program of its own for the tests of a header."""
        self.built.append(source)
        return f"new {program}"


class Mutate(unittest.TestCase):
    """The script with tests that are not run."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for module, name, value in ((results, "RESULTS", self.root / "results.json"), (tests, "BUILD", self.root)):
            self.addCleanup(setattr, module, name, getattr(module, name))
            setattr(module, name, value)
        self.mutate = loaded()

    def confirmed(self, fates, broken):
        """The keys of the fates that are kept where programs are broken, and the sources that were built anew."""
        hunt = self.mutate.Hunt.__new__(self.mutate.Hunt)
        hunt.tests = {name: tests.Test(name, [name], {}) for name in ("tst_zoom", "tst_zoom_scaled", "tst_plot")}
        hunt.results = results.Results(False)
        hunt.results.fates = {f"{file}\tline\tchange": {"fate": fate, "test": test} for file, fate, test in fates}
        self.mutate.tell = lambda text: None
        self.mutate.programs_including = lambda header, all_tests: {
            test.name: SimpleNamespace(source="tst_zoom.cpp")
            for test in all_tests if header == "zoom.h" and test.name.startswith("tst_zoom")}
        tree = Tree()

        def run(test, _, program=None):
            self.assertFalse(tree.is_changed)
            return tests.Outcome("failed" if (program or test.command[0]) in broken else "passed", 1.0)
        self.mutate.run = run
        hunt._confirm(tree)
        return {key.split("\t")[0] for key in hunt.results.fates}, tree.built

    def test_confirmation(self):
        """Of sources by the program of the build, of headers by one that is built as it was for their mutants."""
        fates = [("zoom.cpp", "killed", "tst_zoom"), ("pan.h", "killed", "tst_plot"), ("pan.cpp", "survived", "")]
        everything = {"zoom.cpp", "pan.h", "pan.cpp"}
        self.assertEqual(self.confirmed(fates, ["new tst_zoom", "new tst_plot"]), (everything, []))
        self.assertEqual(self.confirmed(fates, ["tst_plot"]), (everything - {"pan.h"}, []))
        fates.append(("zoom.h", "killed by time", "tst_zoom_scaled"))
        everything.add("zoom.h")
        self.assertEqual(self.confirmed(fates, ["tst_zoom_scaled"]), (everything, ["tst_zoom.cpp"]))
        self.assertEqual(self.confirmed(fates, ["new tst_zoom_scaled"]), (everything - {"zoom.h"}, ["tst_zoom.cpp"]))

    def test_confirmation_of_both(self):
        """A test that has killed in both ways is run in both, and is of no use where one of them fails."""
        fates = [("zoom.cpp", "killed", "tst_zoom"), ("zoom.h", "killed", "tst_zoom"), ("pan.h", "killed", "gone")]
        for broken, kept in (([], {"zoom.cpp", "zoom.h", "pan.h"}), (["tst_zoom"], {"pan.h"}), (["new tst_zoom"], {"pan.h"})):
            self.assertEqual(self.confirmed(fates, broken), (kept, ["tst_zoom.cpp"]))

    def test_old_programs(self):
        """Programs that the build would make anew are told from those that are newer than their sources."""
        (self.root / "build.ninja").write_text(
            "rule copy\n  command = cp $in $out\nbuild tst_a: copy a.cpp\nbuild tst_b: copy b.cpp\n")
        for name in ("a.cpp", "b.cpp"):
            (self.root / name).write_text("first")
        first, second = (tests.Test(name, [str(self.root / name)], {}) for name in ("tst_a", "tst_b"))
        self.assertFalse(tests.are_built([first]))
        subprocess.run(["ninja", "-C", str(self.root)], check=True, capture_output=True)
        self.assertTrue(tests.are_built([first, second]))
        os.utime(self.root / "b.cpp", (4e9, 4e9))
        self.assertTrue(tests.are_built([first]))
        self.assertFalse(tests.are_built([first, second]))
        (self.root / "a.cpp").unlink()
        self.assertFalse(tests.are_built([first]))

    def test_start_with_old_programs(self):
        """Nothing is measured then."""
        self.mutate.OUTPUT, self.mutate.find_tests = self.root, lambda: []
        self.mutate.are_built = lambda all_tests: False
        arguments = SimpleNamespace(resume=False, listed=False, again=False, tests="", map=False, jobs=1)
        mutant = SimpleNamespace(key="zoom.cpp\tline\tchange")
        with self.assertRaises(SystemExit) as ended:
            self.mutate.Hunt(arguments, {}, [mutant])
        self.assertIn("tools/coverage", ended.exception.code)


if __name__ == "__main__":
    unittest.main()
