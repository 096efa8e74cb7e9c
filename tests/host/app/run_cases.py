#!/usr/bin/env python3
"""Runs pdsreview end-to-end cases, each a folder of data.

A case folder holds:
  cmd            one run a line, a shell command line in which `pdsreview` is the program
                 under test; lines starting with # are comments. `%plant` is the bundled
                 sample review, `%src` the source root, `%bin` the folder of pdsreview.
  expect/N.out   what run N (from 1) prints on standard output;
  expect/N.err   what it prints on standard error (without the file: nothing);
  expect/N.status  its exit status (without the file: 0);
  expect/files/  files that the runs must have left in the working folder, byte for byte;
  anything else  input files, copied into a fresh working folder where the runs start.

Outputs are compared after the working folder's path becomes `%t`, the program's folder
`%bin` and the source root `%src`. With --emulator (for example `wine`) the program is run through it, with
--exe-suffix appended to its name, and backslashes in the output read as slashes.
With --update the expected outputs are written from what the runs gave.
"""
import argparse
import difflib
import os
import shutil
import stat
import subprocess
import sys
import tempfile


def write_program_wrapper(folder, program, emulator):
    """A `pdsreview` on the PATH that runs the program under test."""
    wrapper = os.path.join(folder, "pdsreview")
    with open(wrapper, "w") as script:
        script.write('#!/bin/sh\nexec %s "%s" "$@"\n' % (emulator, program))
    os.chmod(wrapper, os.stat(wrapper).st_mode | stat.S_IXUSR)


def read_bytes(path):
    if not os.path.exists(path):
        return b"(no such file)\n"
    with open(path, "rb") as file:
        return file.read()


def normalise(text, places, emulated):
    """`places` are (path, placeholder) pairs, a path before any folder that holds it."""
    if emulated:
        text = text.replace("\\", "/")
    for path, placeholder in places:
        text = text.replace(path, placeholder)
    return text


def compare(name, expected_path, actual, update, failures):
    if update:
        if actual or name.endswith(".out"):
            os.makedirs(os.path.dirname(expected_path), exist_ok=True)
            with open(expected_path, "wb") as out:
                out.write(actual)
        elif os.path.exists(expected_path):
            os.remove(expected_path)
        return
    expected = read_bytes(expected_path) if os.path.exists(expected_path) else b""
    if expected == actual:
        return
    diff = difflib.unified_diff(
        expected.decode("utf-8", "replace").splitlines(True),
        actual.decode("utf-8", "replace").splitlines(True),
        "expected " + name, "actual " + name)
    failures.append("".join(diff)[:20000])


def run_case(case, args):
    source = os.path.realpath(args.src)
    bin_path = os.path.realpath(args.bin)
    program = os.path.join(bin_path, "pdsreview" + args.exe_suffix)
    with open(os.path.join(case, "cmd")) as file:
        runs = [line.strip() for line in file if line.strip() and not line.startswith("#")]
    failures = []
    with tempfile.TemporaryDirectory() as scratch:
        work = os.path.join(scratch, "work")
        places = [(work, "%t"), (bin_path, "%bin"), (source, "%src")]
        bin_folder = os.path.join(scratch, "bin")
        os.makedirs(bin_folder)
        shutil.copytree(case, work, ignore=shutil.ignore_patterns("cmd", "expect"))
        write_program_wrapper(bin_folder, program, args.emulator)
        environment = dict(os.environ, PATH=bin_folder + os.pathsep + os.environ["PATH"])
        expect = os.path.join(case, "expect")
        for number, command in enumerate(runs, 1):
            command = command.replace("%plant", os.path.join(source, "examples", "plant"))
            command = command.replace("%src", source).replace("%bin", bin_path)
            done = subprocess.run(["/bin/sh", "-c", command], cwd=work, env=environment,
                                  stdin=subprocess.DEVNULL, capture_output=True)
            for suffix, data in ((".out", done.stdout), (".err", done.stderr)):
                text = normalise(data.decode("utf-8", "surrogateescape"), places,
                                 bool(args.emulator))
                compare(str(number) + suffix, os.path.join(expect, str(number) + suffix),
                        text.encode("utf-8", "surrogateescape"), args.update, failures)
            status = b"" if done.returncode == 0 else b"%d\n" % done.returncode
            compare(str(number) + ".status", os.path.join(expect, str(number) + ".status"),
                    status, args.update, failures)
        expected_files = os.path.join(expect, "files")
        names = sorted(os.listdir(expected_files)) if os.path.isdir(expected_files) else []
        for name in names:
            compare("files/" + name, os.path.join(expected_files, name),
                    read_bytes(os.path.join(work, name)), args.update, failures)
    return failures


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--bin", required=True, help="the folder of pdsreview")
    parser.add_argument("--src", required=True, help="the source root")
    parser.add_argument("--emulator", default="", help="a command to run the program with")
    parser.add_argument("--exe-suffix", default="", help="the program's file name suffix")
    parser.add_argument("--update", action="store_true", help="write the expected outputs")
    parser.add_argument("cases", nargs="+", help="case folders")
    args = parser.parse_args()
    failed = 0
    for case in args.cases:
        failures = run_case(case, args)
        print("%s: %s" % (os.path.basename(os.path.normpath(case)),
                          "FAILED" if failures else "passed"))
        for failure in failures:
            print(failure)
        failed += bool(failures)
    print("%d passed, %d failed" % (len(args.cases) - failed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
