#!/usr/bin/env python3
"""Checks pdsreview's reading of the shared DGN corpus against the independent readings.

The corpus folder holds design files written by an independent program, each with that
program's readings: NAME.tcb.json (the control block and one row per element) and
NAME.expected.json (the features, with symbology and user linkages). For every file,
`pdsreview --json --elements model NAME.dgn` must give the same units, every element
that is drawn and not deleted (and nothing else) with its offset, type, level, complex
bit, range and box, and each feature's symbology and DMRS words.

  check_corpus.py --bin build/bin --corpus ../shared/data/dgn [--windows --emulator wine]

Exits 0 when every file agrees, 1 with the differences listed otherwise; a missing
corpus is reported and passes, since the shared data may be absent.
"""

import argparse
import json
import os
import shlex
import subprocess
import sys

FILES = ["basic2d", "levels2d", "complex2d", "pipes3d", "extent3d", "dmrs3d"]
NOT_DRAWN = {8, 9, 10, 66}  # digitiser setup, view info, level symbology, application
USER_DATA_BIT = 0x1000


def expected_dmrs(ulinks):
    """The first four-word linkage without the user-data bit whose words are not all 0."""
    for link in ulinks or []:
        words = [int(word, 16) for word in link.split()]
        if len(words) == 4 and not words[0] & USER_DATA_BIT and any(words):
            return words
    return None


def check(name, options, problems):
    def expect(what, ours, theirs):
        if ours != theirs:
            problems.append("%s: %s: pdsreview %r, independent %r" % (name, what, ours, theirs))

    with open(os.path.join(options.corpus, name + ".tcb.json"), encoding="utf-8") as f:
        tcb = json.load(f)
    with open(os.path.join(options.corpus, name + ".expected.json"), encoding="utf-8") as f:
        expected = json.load(f)
    program = "pdsreview.exe" if options.windows else "pdsreview"
    command = options.emulator + [os.path.join(options.bin, program),
                                  "--json", "--elements", "--quiet", "model",
                                  os.path.join(options.corpus, name + ".dgn")]
    run = subprocess.run(command, capture_output=True)
    if run.returncode != 0:
        problems.append("%s: exit status %d: %s" % (name, run.returncode, run.stderr.decode(errors="replace")))
        return
    (model,) = json.loads(run.stdout)["models"]
    block, derived = tcb["tcb"], tcb["derived"]
    expect("file", model["file"], name + ".dgn")
    expect("UORs per master unit", model["uorsPerMaster"], derived["uor_per_master"])
    expect("dimension", model["dimension"], block["dimension"])
    expect("subunits per master unit", model["subunitsPerMaster"], block["subunits_per_master_1112"])
    expect("UORs per subunit", model["uorsPerSubunit"], block["uor_per_subunit_1116"])
    expect("master unit", model["masterUnit"], block["master_unit_name_1120"])
    expect("subunit", model["subUnit"], block["sub_unit_name_1122"])
    expect("global origin", model["globalOrigin"], block["global_origin_uor_1240"])
    expect("warnings", model["warnings"], [])
    expect("elements in the file", model["fileElements"], len(tcb["elements"]))

    ours = {e["index"]: e for e in model["elementList"]}
    expect("elements", model["elements"], len(ours))
    wanted = set()
    for index, offset, kind, level, complex_bit, deleted, _, rng, *_ in tcb["elements"]:
        if kind in NOT_DRAWN or deleted:
            continue
        wanted.add(index)
        e = ours.get(index)
        if e is None:
            problems.append("%s: element %d is missing" % (name, index))
            continue
        at = "element %d " % index
        expect(at + "offset", e["offset"], offset)
        expect(at + "type", e["type"], kind)
        expect(at + "level", e["level"], level)
        expect(at + "complex", e["complex"], complex_bit != 0)
        # The independent reading gives a range as six numbers, low corner first.
        expect(at + "range", e["range"], [rng[:3], rng[3:]])
        expect(at + "box", e["box"], [[v / derived["uor_per_master"] for v in rng[:3]],
                                      [v / derived["uor_per_master"] for v in rng[3:]]])
    expect("drawn elements", sorted(ours), sorted(wanted))

    column = {key: i for i, key in enumerate(expected["feature_columns"])}
    if not expected["features"]:
        problems.append("%s: the independent reading has no features" % name)
    for feature in expected["features"]:
        fid = feature[column["fid"]]
        e = ours.get(fid)
        if e is None:
            problems.append("%s: feature %d is missing" % (name, fid))
            continue
        at = "feature %d " % fid
        expect(at + "colour", e["colour"], feature[column["color"]])
        expect(at + "weight", e["weight"], feature[column["weight"]])
        expect(at + "style", e["style"], feature[column["style"]])
        expect(at + "graphic group", e["graphicGroup"], feature[column["graphic_group"]])
        expect(at + "DMRS", e["dmrs"], expected_dmrs(feature[column["ulink"]]))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", required=True, help="the folder of the built pdsreview")
    parser.add_argument("--corpus", required=True, help="the shared corpus folder")
    parser.add_argument("--emulator", default="", help="a command to run pdsreview with, e.g. wine")
    parser.add_argument("--windows", action="store_true", help="pdsreview is a Windows build")
    options = parser.parse_args()
    options.emulator = shlex.split(options.emulator)
    if not os.path.isdir(options.corpus):
        print("the shared corpus %s is absent: nothing to check" % options.corpus)
        return 0
    problems = []
    for name in FILES:
        check(name, options, problems)
    for problem in problems:
        print(problem)
    print("%d files, %d differences" % (len(FILES), len(problems)))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
