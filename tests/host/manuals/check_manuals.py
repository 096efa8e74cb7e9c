#!/usr/bin/env python3
"""Checks the built manual pages and bash completions of the installed programs.

man: each page renders with man(1) and groff's warnings on, with not one warning, and
names every step and option of its program's usage.
completion: the completion function, run in bash as the shell would run it, offers what
the usage lists and what each step and option takes.
"""
import argparse
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def usage_words(program):
    """The steps and options that the program's --help lists."""
    text = subprocess.run([program, "--help"], capture_output=True, text=True,
                          check=True).stdout
    # pdscheck has no steps: its words are files.
    steps_part = text.split("Steps, run in order on one document:\n")[-1].split("\n\n")[0]
    if "Steps, run in order" not in text:
        steps_part = ""
    options_part = text.split("Options:\n")[1].split("\n\n")[0]
    steps = re.findall(r"^  ([a-z][a-z-]*)", steps_part, re.MULTILINE)
    options = re.findall(r"^  (--[a-z-]+)", options_part, re.MULTILINE)
    return steps, options


def check_man(page, steps, options):
    env = dict(os.environ, LC_ALL="C.UTF-8", MANROFFSEQ="", MANWIDTH="80")
    run = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", str(page)],
                         capture_output=True, text=True, env=env)
    problems = []
    if run.returncode != 0 or run.stderr:
        problems.append(f"man -l {page}: exit {run.returncode}\n{run.stderr}")
    shown = subprocess.run(["man", "-l", str(page)], capture_output=True, text=True,
                           env=dict(env, MANPAGER="cat", PAGER="cat")).stdout
    shown = re.sub(".\b", "", shown)
    for word in steps + options:
        if not re.search(rf"^\s+{re.escape(word)}\b", shown, re.MULTILINE):
            problems.append(f"{page.name}: no entry for {word}")
    return problems


# Each case: the words of the line, the last one being completed, and what must be
# offered, exactly; "STEPS" and "OPTIONS" stand for the usage's lists, to which a case
# may add words the usage leaves out.
COMPLETION_CASES = [
    (["pdsreview", ""], "STEPS"),
    (["pdsreview", "--"], "OPTIONS"),
    (["pdsreview", "-"], "OPTIONS", "-h"),
    (["pdsreview", "im"], ["import-tags", "import-dst", "import-bcf"]),
    (["pdsreview", "--bcf-version", ""], ["2.1", "3.0"]),
    (["pdsreview", "--str"], ["--strict"]),
    (["pdsreview", "--json", "sel"], ["select"]),
    (["pdsreview", "--input-files", ""], ["model", "cache", "either"]),
    (["pdsreview", "--input-files", "c"], ["cache"]),
    (["pdsreview", "--next-ids", ""], []),
    (["pdsreview", "--redline-thickness", "1"], []),
    # The file of a step is a file of its kind, or a folder to look into.
    (["pdsreview", "open", ""], ["folder", "plant.dri"]),
    (["pdsreview", "import-tags", ""], ["folder", "plant.tag"]),
    (["pdsreview", "import-dst", "p"], ["plant.dst"]),
    (["pdsreview", "model", "f"], ["folder"]),
    (["pdsreview", "--plugin", "plant.t"], ["plant.tag"]),
    # A word that is a step's file is no step, however it is spelt.
    (["pdsreview", "open", "open", ""], "STEPS"),
    (["pdsreview", "open", "open", "--js"], ["--json"]),
    (["pdsreview", "--input-files", "model", "op"], ["open"]),
]

# pdscheck's words that are no option are files of any kind.
CHECK_COMPLETION_CASES = [
    (["pdscheck", "--"], "OPTIONS"),
    (["pdscheck", "--format", ""], ["text", "json", "sarif"]),
    (["pdscheck", "--as", "t"], ["tag"]),
    (["pdscheck", "pl"], ["plant.dri", "plant.tag", "plant.dst"]),
    (["pdscheck", "--format", "json", "n"], ["notes.txt"]),
]


def check_completion(script, program, steps, options, cases):
    problems = []
    with tempfile.TemporaryDirectory() as folder:
        for name in ("plant.dri", "plant.tag", "plant.dst", "notes.txt"):
            pathlib.Path(folder, name).write_text("")
        pathlib.Path(folder, "folder").mkdir()
        for words, wanted, *more in cases:
            if isinstance(wanted, str):
                wanted = (steps if wanted == "STEPS" else options) + more
            line = (f"source {quote(script)}\n"
                    f"COMP_WORDS=({' '.join(quote(w) for w in words)})\n"
                    f"COMP_CWORD={len(words) - 1}\n"
                    f"_{program.replace('-', '_')}\n"
                    "printf '%s\\n' \"${COMPREPLY[@]}\"\n")
            run = subprocess.run(["bash", "--norc", "--noprofile"], input=line, cwd=folder,
                                 capture_output=True, text=True)
            offered = [w for w in run.stdout.split("\n") if w]
            if run.returncode != 0 or run.stderr or sorted(offered) != sorted(wanted):
                problems.append(f"{' '.join(words)!r}: offered {offered}, wanted {wanted}"
                                f"{' ' + run.stderr if run.stderr else ''}")
    return problems


def quote(word):
    return "'" + word.replace("'", "'\\''") + "'"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--manuals", type=pathlib.Path, required=True)
    parser.add_argument("--check", choices=("man", "completion"), required=True)
    args = parser.parse_args()
    pages = sorted((args.manuals / "man1").glob("*.1"))
    if not pages:
        sys.exit(f"no manual pages in {args.manuals / 'man1'}")
    problems = []
    for page in pages:
        program = page.stem
        steps, options = usage_words(str(args.bin / program))
        if args.check == "man":
            problems += check_man(page, steps, options)
        else:
            completion = args.manuals / "completions" / program
            cases = COMPLETION_CASES if program == "pdsreview" else CHECK_COMPLETION_CASES
            problems += check_completion(str(completion), program, steps, options, cases)
    for problem in problems:
        print(problem)
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
