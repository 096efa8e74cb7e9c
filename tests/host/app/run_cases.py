#!/usr/bin/env python3
"""Runs end-to-end cases of pdsreview (or, with --program, another of the project's
programs, such as pdscheck): one folder per case.

A case folder holds:
  cmd            one run of the program a line: its arguments, split as a POSIX shell
                 would (shlex); a line may end with "> FILE" and "2> FILE" to name
                 the files its output streams are compared with. Lines starting with
                 '#' are comments.
  expected.N.status   the exit status of run N (1-based); absent means 0
  expected.N.out      its standard output; absent means empty
  expected.N.err      its standard error; absent means empty
  in/...         files copied into the working directory before the first run
  files/...      files the runs must leave in the working directory, byte for byte

Placeholders in cmd and in the .dri/.tag/.dst files of in/: {src}
the source root, {case} the case folder, {tmp} the working directory. Output has those
paths written back as placeholders.

Every run runs on every platform. Where a run's output legitimately differs on Windows
(a text that comes from the system, such as the loader's reason for a missing library),
an expected.N.* file with ".windows" added (expected.4.err.windows) holds what the
Windows build must give instead; --windows selects those files and runs
pdsreview.exe.
"""

import argparse
import difflib
import os
import shlex
import shutil
import subprocess
import sys
import tempfile

SOURCE_ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", "..", ".."))


def read(path):
    with open(path, "rb") as f:
        return f.read().decode("utf-8", "replace")


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8", newline="\n") as f:
        f.write(text)


def runs_of(case_dir):
    """Yields (number, args, stdout name, stderr name) for each line of cmd."""
    number = 0
    for line in read(os.path.join(case_dir, "cmd")).splitlines():
        if not line.strip() or line.lstrip().startswith("#"):
            continue
        number += 1
        words = shlex.split(line)
        out, err = "expected.%d.out" % number, "expected.%d.err" % number
        if len(words) >= 2 and words[-2] == "2>":
            err, words = words[-1], words[:-2]
        if len(words) >= 2 and words[-2] == ">":
            out, words = words[-1], words[:-2]
        yield number, words, out, err


def substitute(text, places):
    for name, value in places.items():
        text = text.replace("{" + name + "}", value)
    return text


def normalise(text, places):
    """Writes the working directory and the source root back as placeholders."""
    text = text.replace("\r\n", "\n")
    for name in ("tmp", "case", "src"):
        text = text.replace(places[name], "{" + name + "}")
    return text


def compare(label, expected, actual):
    if expected == actual:
        return True
    sys.stdout.writelines(
        difflib.unified_diff(
            expected.splitlines(True), actual.splitlines(True), label + " (expected)", label + " (actual)"
        )
    )
    print()
    return False


def run_case(case_dir, options):
    name = os.path.basename(os.path.normpath(case_dir))
    program_name = options.program + (".exe" if options.windows else "")
    program = options.emulator + [os.path.join(os.path.abspath(options.bin), program_name)]
    ok = True
    with tempfile.TemporaryDirectory(prefix="pdscase-") as tmp:
        tmp = os.path.realpath(tmp)
        places = {"src": SOURCE_ROOT, "case": os.path.abspath(case_dir), "tmp": tmp}
        inputs = os.path.join(case_dir, "in")
        if os.path.isdir(inputs):
            shutil.copytree(inputs, tmp, dirs_exist_ok=True)
            for root, _, files in os.walk(tmp):
                for file_name in files:
                    if file_name.endswith((".dri", ".tag", ".dst")):
                        path = os.path.join(root, file_name)
                        # Rewritten only where a placeholder stands, so that a file's
                        # bytes that are not UTF-8 stay as they are.
                        text = read(path)
                        if substitute(text, places) != text:
                            write(path, substitute(text, places))
        for number, words, out_name, err_name in runs_of(case_dir):
            args = [substitute(word, places) for word in words]
            result = subprocess.run(program + args, cwd=tmp, stdin=subprocess.DEVNULL, capture_output=True)
            got = {
                "expected.%d.status" % number: "%d\n" % result.returncode,
                out_name: normalise(result.stdout.decode("utf-8", "replace"), places),
                err_name: normalise(result.stderr.decode("utf-8", "replace"), places),
            }
            for file_name, actual in got.items():
                path = os.path.join(case_dir, file_name)
                if options.windows and os.path.exists(path + ".windows"):
                    path += ".windows"
                # An absent file expects nothing: empty output, exit status 0.
                nothing = "0\n" if file_name.endswith(".status") else ""
                if options.update:
                    if os.path.exists(path) or actual != nothing:
                        write(path, actual)
                    continue
                expected = read(path) if os.path.exists(path) else nothing
                ok = compare("%s: run %d: %s" % (name, number, file_name), expected, actual) and ok
        written = os.path.join(case_dir, "files")
        if os.path.isdir(written):
            for root, _, files in os.walk(written):
                for file_name in files:
                    path = os.path.join(root, file_name)
                    relative = os.path.relpath(path, written)
                    actual_path = os.path.join(tmp, relative)
                    actual = read(actual_path) if os.path.exists(actual_path) else "(missing)\n"
                    if options.update:
                        write(path, actual)
                    else:
                        ok = compare("%s: %s" % (name, relative), read(path), actual) and ok
    print("%s: %s" % ("PASS" if ok or options.update else "FAIL", name))
    return ok


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", required=True, help="the folder that holds the program")
    parser.add_argument("--program", default="pdsreview", help="the program the cases run")
    parser.add_argument("--emulator", default="", help="a command to run pdsreview with, e.g. wine")
    parser.add_argument(
        "--windows", action="store_true", help="pdsreview is a Windows build: compare with the .windows files"
    )
    parser.add_argument("--update", action="store_true", help="write the expected outputs from this run")
    parser.add_argument("cases", nargs="+", help="case folders")
    options = parser.parse_args()
    options.emulator = shlex.split(options.emulator)
    failed = [case for case in options.cases if not run_case(case, options)]
    return 1 if failed and not options.update else 0


if __name__ == "__main__":
    sys.exit(main())
