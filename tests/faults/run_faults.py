#!/usr/bin/env python3
"""Breaks the code on purpose, one fault at a time, and checks that the suite fails.

Each fault of faults.json is an exact text replacement in one source file: `find` must
occur there exactly once. For each fault the script applies it in place, rebuilds the
build folder incrementally, runs ctest until the first failure, and puts the file back
(in a finally block, so an interrupted run leaves the tree as it was). The tree must be
clean under git before it starts. Exits non-zero if any fault was not caught.

Tests excluded by default (--exclude): the install tests and the browser test, which
rebuild or start programs outside the build and take minutes each; the faults of the
list are all within reach of the other tests.

  tests/faults/run_faults.py --build build [--only 3,7] > faults.log 2>&1 &
"""

import argparse
import json
import os
import subprocess
import sys

SOURCE_ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))


def run(command, cwd, log):
    return subprocess.run(command, cwd=cwd, stdout=log, stderr=subprocess.STDOUT).returncode


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default=os.path.join(SOURCE_ROOT, "build"), help="a configured build folder")
    parser.add_argument("--faults", default=os.path.join(os.path.dirname(__file__), "faults.json"))
    parser.add_argument("--only", default="", help="comma-separated 1-based numbers of faults to apply")
    parser.add_argument("--exclude", default="^install_|Browser", help="ctest -E regex")
    parser.add_argument("--log", default=os.devnull, help="where the output of builds and tests goes")
    options = parser.parse_args()

    with open(options.faults, encoding="utf-8") as f:
        faults = json.load(f)
    for number, fault in enumerate(faults, 1):
        with open(os.path.join(SOURCE_ROOT, fault["file"]), encoding="utf-8") as f:
            count = f.read().count(fault["find"])
        if count != 1:
            sys.exit("fault %d: %s holds its text %d times, not once" % (number, fault["file"], count))
    if subprocess.run(["git", "diff", "--quiet"], cwd=SOURCE_ROOT).returncode != 0:
        sys.exit("the tree has changes: commit or stash them first")
    chosen = {int(n) for n in options.only.split(",") if n}

    missed = []
    with open(options.log, "a") as log:
        suite = ["ctest", "--test-dir", options.build, "-j2", "--stop-on-failure", "-E", options.exclude]
        if run(["cmake", "--build", options.build], SOURCE_ROOT, log) != 0 or run(suite, SOURCE_ROOT, log) != 0:
            sys.exit("the suite fails without a fault: see " + options.log)
        for number, fault in enumerate(faults, 1):
            if chosen and number not in chosen:
                continue
            path = os.path.join(SOURCE_ROOT, fault["file"])
            with open(path, encoding="utf-8", newline="") as f:
                original = f.read()
            try:
                with open(path, "w", encoding="utf-8", newline="") as f:
                    f.write(original.replace(fault["find"], fault["replace"]))
                print("== fault %d: %s" % (number, fault["why"]), file=log, flush=True)
                if run(["cmake", "--build", options.build], SOURCE_ROOT, log) != 0:
                    verdict = "caught (build)"
                elif run(suite, SOURCE_ROOT, log) != 0:
                    verdict = "caught"
                else:
                    verdict = "NOT caught"
                    missed.append(number)
            finally:
                with open(path, "w", encoding="utf-8", newline="") as f:
                    f.write(original)
            print("%2d %-14s %s: %s" % (number, verdict, fault["file"], fault["why"]), flush=True)
    # Rebuild the tree as it is, so that the build folder is left matching it.
    subprocess.run(["cmake", "--build", options.build], cwd=SOURCE_ROOT, stdout=subprocess.DEVNULL)
    tried = len(chosen) or len(faults)
    print("%d of %d faults caught" % (tried - len(missed), tried))
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
