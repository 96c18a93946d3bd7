#!/usr/bin/env python3
"""Names the test functions that were skipped, which ctest calls passed.

Usage: skipped_tests.py LastTest.log...

What another run of the same program has passed, on a screen of another scale for instance, is not skipped. Ends with 1 if
any is.
"""

import pathlib
import re
import sys

LINE = re.compile(r'Command: "([^"]*)"|(PASS|SKIP) *: (.*)')


def skipped_of(lines):
    """What test programs say of functions that none of their runs has passed."""
    program = ""
    passed, skipped = set(), []
    for match in filter(None, map(LINE.match, lines)):
        if match[1]:
            program = match[1]
        elif match[2] == "PASS":
            passed.add((program, match[3]))
        else:
            skipped.append((program, match[3]))
    # The reason follows the name, whose row may contain anything.
    return [said for program, said in skipped
            if not any(program == other and said.startswith(f"{name} ") for other, name in passed)]


def main():
    """Prints what was skipped; returns the status."""
    status = 0
    for log in sys.argv[1:]:
        for said in skipped_of(pathlib.Path(log).read_text(errors="replace").splitlines()):
            print(f"skipped: {said}")
            status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
