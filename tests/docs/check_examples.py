#!/usr/bin/env python3
"""Runs the examples of a Markdown document through pdsreview and compares what they give.

The document marks its examples with HTML comments, which a reader never sees, each
right before a fenced block:

  <!-- file: NAME -->     the block is a file: it is written as NAME (UTF-8, LF line
                          ends) into the working directory, replacing an earlier one
  <!-- run -->           the block is a console session: each line "$ pdsreview ARGS"
                          is one run, and the lines up to the next "$ " line are its
                          standard output; a last line "[exit status N]" gives a status
                          other than 0. A line "..." stands for any number of lines.
  <!-- written: NAME -->  the block is what the runs before it left in NAME, exactly

The runs take place in a working directory that holds the sample review's models
(examples/plant/*.dgn) and the document's files, in the order of the document.
"""

import argparse
import glob
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

SOURCE_ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
MARKER = re.compile(r"^<!-- (file|run|written)(?:: (\S+))? -->$")
STATUS = re.compile(r"^\[exit status (\d+)\]$")


def blocks(lines):
    """Yields (kind, name, first line of the block's body, body lines) for each marked block."""
    index = 0
    while index < len(lines):
        marker = MARKER.match(lines[index])
        index += 1
        if not marker:
            continue
        if index >= len(lines) or not lines[index].startswith("```"):
            raise SystemExit("line %d: a marker must stand right before a fenced block" % index)
        fence = lines[index][: len(lines[index]) - len(lines[index].lstrip("`"))]
        start = index + 1
        end = start
        while end < len(lines) and lines[end] != fence:
            end += 1
        yield marker.group(1), marker.group(2), start, lines[start:end]
        index = end + 1


def sessions(body):
    """Splits a console block into (arguments, expected output lines, expected status)."""
    runs = []
    for line in body:
        if line.startswith("$ "):
            words = shlex.split(line[2:])
            if not words or words[0] != "pdsreview":
                raise SystemExit("only pdsreview runs: " + line)
            runs.append([words[1:], [], 0])
        elif runs:
            runs[-1][1].append(line)
    for run in runs:
        if run[1] and STATUS.match(run[1][-1]):
            run[2] = int(STATUS.match(run[1].pop()).group(1))
    return runs


def matches(expected, actual):
    """Whether the actual lines fit the expected ones, where "..." stands for any lines."""
    if not expected:
        return not actual
    if expected[0] == "...":
        return any(matches(expected[1:], actual[skip:]) for skip in range(len(actual) + 1))
    return bool(actual) and expected[0] == actual[0] and matches(expected[1:], actual[1:])


def check(document, options):
    with open(document, encoding="utf-8") as f:
        lines = f.read().split("\n")
    program = options.emulator + [
        os.path.join(os.path.abspath(options.bin), "pdsreview.exe" if options.windows else "pdsreview")
    ]
    failures = 0
    updates = {}
    with tempfile.TemporaryDirectory(prefix="pdsdocs-") as work:
        for model in glob.glob(os.path.join(SOURCE_ROOT, "examples", "plant", "*.dgn")):
            shutil.copy(model, work)
        for kind, name, start, body in blocks(lines):
            where = "%s:%d" % (os.path.basename(document), start)
            if kind == "file":
                with open(os.path.join(work, name), "w", encoding="utf-8", newline="\n") as f:
                    f.write("\n".join(body) + "\n")
            elif kind == "written":
                path = os.path.join(work, name)
                actual = open(path, encoding="utf-8").read().rstrip("\n").split("\n") if os.path.exists(path) else []
                if actual != body:
                    failures += report(where, "the file " + name, body, actual)
                    updates[start] = (len(body), actual)
            else:
                new_body = []
                for args, expected, status in sessions(body):
                    result = subprocess.run(program + args, cwd=work, stdin=subprocess.DEVNULL, capture_output=True)
                    actual = result.stdout.decode("utf-8").replace("\r\n", "\n").rstrip("\n").split("\n")
                    actual = [] if actual == [""] else actual
                    if result.returncode != status or not matches(expected, actual):
                        failures += report(
                            where,
                            "pdsreview " + shlex.join(args),
                            expected + ["[exit status %d]" % status],
                            actual + ["[exit status %d]" % result.returncode] + result.stderr.decode().splitlines(),
                        )
                    new_body.append("$ pdsreview " + shlex.join(args))
                    new_body += expected if "..." in expected else actual
                    if result.returncode:
                        new_body.append("[exit status %d]" % result.returncode)
                if new_body != body:
                    updates[start] = (len(body), new_body)
    if options.update and updates:
        for start in sorted(updates, reverse=True):
            length, new_body = updates[start]
            lines[start : start + length] = new_body
        with open(document, "w", encoding="utf-8", newline="\n") as f:
            f.write("\n".join(lines))
        print("%s: %d blocks rewritten" % (document, len(updates)))
        return 0
    print("%s: %s" % ("FAIL" if failures else "PASS", document))
    return failures


def report(where, what, expected, actual):
    print("%s: %s gave:\n  %s\nwhere the document has:\n  %s\n" % (where, what, "\n  ".join(actual), "\n  ".join(expected)))
    return 1


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", required=True, help="the folder that holds pdsreview")
    parser.add_argument("--emulator", default="", help="a command to run pdsreview with, e.g. wine")
    parser.add_argument("--windows", action="store_true", help="pdsreview is a Windows build")
    parser.add_argument("--update", action="store_true", help="rewrite the outputs and written files from this run")
    parser.add_argument("documents", nargs="+")
    options = parser.parse_args()
    options.emulator = shlex.split(options.emulator)
    return 1 if sum(check(document, options) for document in options.documents) and not options.update else 0


if __name__ == "__main__":
    sys.exit(main())
