#!/usr/bin/env python3
"""tools/fuzz: of which code the counted inputs are, and whether planted bugs are found.

Scripts that only count, or only say what they have found, stand in for the fuzzers of libFuzzer.
"""

import json
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
LINKED = """#!/bin/bash
echo src/labels.cpp
echo tests/fuzz/input.h
case $2 in *cells) echo apps/cells.cpp ;; *) echo tests/fuzz/fuzz_labels.cpp ;; esac
"""
SETUP = "build_packages=()\nneed_packages() { :; }\nconfigure_and_build() { :; }\n"
FUZZER = """#!/bin/bash
for option in "$@"; do [[ $option == -runs=* ]] && echo "stat::number_of_executed_units: ${option#-runs=}"; done
exit 0
"""
CONTROL = """#!/bin/bash
echo "deadly signal, heap-buffer-overflow, LeakSanitizer: detected, signed integer overflow"
echo "division by zero, outside the range, nobody has announced this"
exit 1
"""
CONTROLS = ("property", "memory", "leak", "overflow", "division", "cast", "library", "warning")


class Fuzz(unittest.TestCase):
    """The script in a small tree of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.state = self.root / "build/fuzz/state/fuzz-long"
        self.state.mkdir(parents=True)
        self.write("tools/setup.sh", SETUP)
        shutil.copy(ROOT / "tools/fuzz", self.root / "tools/fuzz")
        self.write("tools/linked-sources", LINKED).chmod(0o755)
        for source in ("src/labels.cpp", "apps/cells.cpp", "tests/fuzz/fuzz_labels.cpp", "tests/fuzz/input.h"):
            self.write(source, "int first;\n")
        for name in ("labels", "cells"):
            self.write(f"tests/fuzz/corpus/{name}/seed", "1")
        for name in ("labels", "cells", *(f"control_{control}" for control in CONTROLS)):
            program = self.write(f"build/fuzz-long/tests/fuzz/fuzzer_{name}", CONTROL if "control" in name else FUZZER)
            program.chmod(0o755)

    def write(self, path, text):
        """Writes a file below the root, with its folders."""
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)
        return file

    def fuzz(self, *arguments):
        """Runs the script; its exit code and the targets of its results."""
        done = subprocess.run([self.root / "tools/fuzz", *arguments], text=True, capture_output=True, check=False)
        self.said = done.stdout + done.stderr
        results = self.root / "build/fuzz/results.json"
        targets = json.loads(results.read_text()) if results.exists() else []
        return done.returncode, {target["target"]: target for target in targets}

    def check(self, call, code, **targets):
        """Runs the script and compares its exit code and, of each target, inputs, earlier inputs and their code."""
        status, results = self.fuzz(*call.split())
        found = {name: (one["executions"], one["earlier"], one["code"]) for name, one in results.items()}
        self.assertEqual((status, found), (code, targets), self.said)

    def commit(self):
        """The commit of the tree as it is."""
        git = ["git", "-c", "user.name=a", "-c", "user.email=a@b", "-c", "init.defaultBranch=main", "-C", str(self.root)]
        for command in (["init", "-q"], ["add", "src", "apps", "tests"], ["commit", "-q", "-m", "All"]):
            subprocess.run(git + command, check=True)

    def plant(self, body):
        """Puts something else in the place of the fuzzer that is to find a leak."""
        self.write("build/fuzz/tests/fuzz/fuzzer_control_leak", "#!/bin/bash\n" + body).chmod(0o755)

    def test_planted_bugs(self):
        """Each planted bug is found by one of four searches, which differ, and by the one who is to find it."""
        for control in CONTROLS:
            self.write(f"build/fuzz/tests/fuzz/fuzzer_control_{control}", CONTROL).chmod(0o755)
        self.assertEqual(self.fuzz("--self-check")[0], 0, self.said)
        self.plant('[[ " $* " == *" -seed=4 "* ]] || exit 0\necho "LeakSanitizer: detected"\nexit 1\n')
        self.assertEqual(self.fuzz("--self-check")[0], 0, self.said)
        self.plant("exit 0\n")
        self.assertEqual(self.fuzz("--self-check")[0], 1, self.said)
        self.assertIn('not even the planted bug "leak"', self.said)
        self.plant('echo "deadly signal"\nexit 1\n')
        self.assertEqual(self.fuzz("--self-check")[0], 1, self.said)

    def test_counts_go_on(self):
        """A call goes on where the one before has ended."""
        self.check("--runs 700 labels", 0, labels=(700, 0, "this"))
        self.check("--runs 1000 labels", 0, labels=(1000, 700, "this"))
        self.check("--runs 1000 labels", 0, labels=(1000, 1000, "this"))

    def test_other_code(self):
        """What was counted of other code is told and left alone, until it starts over."""
        self.fuzz("--runs", "700", "labels")
        self.write("src/labels.cpp", "int second;\n")
        self.check("--runs 1000 labels cells", 1, labels=(700, 700, "other"), cells=(1000, 0, "this"))
        self.assertIn("labels was left alone: its inputs are of other code", self.said)
        self.check("--anew --runs 1000 labels cells", 0, labels=(1000, 0, "this"), cells=(1000, 1000, "this"))

    def test_what_is_code(self):
        """A corpus is no code, a fuzzer none of others, and the desk is code of those alone that read its tables."""
        self.fuzz("--runs", "700", "labels", "cells")
        self.write("tests/fuzz/corpus/labels/found", "2")
        self.check("--runs 700 labels cells", 0, labels=(700, 700, "this"), cells=(700, 700, "this"))
        self.write("tests/fuzz/fuzz_labels.cpp", "int second;\n")
        self.check("--runs 700 labels cells", 1, labels=(700, 700, "other"), cells=(700, 700, "this"))
        self.check("--anew --runs 700 labels", 0, labels=(700, 0, "this"))
        self.write("apps/cells.cpp", "int second;\n")
        self.check("--runs 700 labels cells", 1, labels=(700, 700, "this"), cells=(700, 700, "other"))
        self.write("tests/fuzz/input.h", "int second;\n")
        self.check("--runs 700 labels", 1, labels=(700, 700, "other"))

    def test_unknown_code(self):
        """A count without its code is of unknown code until somebody tells the commit, once."""
        (self.state / "labels").write_text("700 1.5\n")
        self.check("--runs 700 labels", 1, labels=(700, 700, "unknown"))
        self.commit()
        self.assertEqual(self.fuzz("--adopt", "HEAD", "labels")[0], 0, self.said)
        self.check("--runs 1000 labels", 0, labels=(1000, 700, "this"))
        self.write("src/labels.cpp", "int second;\n")
        self.commit()
        self.assertEqual(self.fuzz("--adopt", "HEAD", "labels")[0], 0, self.said)
        self.check("--runs 1000 labels", 1, labels=(1000, 1000, "other"))

    def test_adopted_commit(self):
        """The commit that is told may be another than that of the sources; one that is not there is refused."""
        self.commit()
        self.write("src/labels.cpp", "int second;\n")
        (self.state / "labels").write_text("700 1.5\n")
        self.assertNotEqual(self.fuzz("--adopt", "nowhere")[0], 0)
        self.check("--runs 700 labels", 1, labels=(700, 700, "unknown"))
        self.assertEqual(self.fuzz("--adopt", "HEAD")[0], 0, self.said)
        self.check("--runs 700 labels", 1, labels=(700, 700, "other"))

    def test_adopted_commit_without_a_source(self):
        """A commit that lacks a source of one fuzzer cannot be what its inputs are of; those of others can."""
        self.commit()
        sources = (self.root / "tools/linked-sources").read_text()
        self.write("tools/linked-sources", sources.replace("echo apps/cells.cpp", "echo apps/cells.cpp src/new.cpp"))
        self.write("src/new.cpp", "int first;\n")
        for name in ("cells", "labels"):
            (self.state / name).write_text("700 1.5\n")
        self.assertNotEqual(self.fuzz("--adopt", "HEAD", "cells", "labels")[0], 0)
        self.assertIn("cells is made of sources that HEAD lacks", self.said)
        self.assertNotIn("cells: 700 inputs", self.said)
        self.check("--runs 700 cells labels", 1, cells=(700, 700, "unknown"), labels=(700, 700, "this"))


if __name__ == "__main__":
    unittest.main()
