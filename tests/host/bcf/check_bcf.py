#!/usr/bin/env python3
"""Checks pdsreview's BCF against what others wrote: the sample exported as BCF 2.1 and
3.0 validates against buildingSMART's schemas and is the same bytes twice; every BCF
2.1 test case imports with its topics, comments and viewpoints; the sample's tags come
back from BCF with their texts, cameras (to 1 UOR) and linkages; and an independent
reader from npm, where installed, finds every topic and comment."""
import argparse
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile
import xml.etree.ElementTree as ET
from pathlib import Path

SCHEMAS = {  # entry name pattern -> schema file, by version folder
    r"bcf\.version$": "version.xsd",
    r"extensions\.xml$": "extensions.xsd",
    r"/markup\.bcf$": "markup.xsd",
    r"\.bcfv$": "visinfo.xsd",
}


def run(bin_dir, args, env=None):
    result = subprocess.run([str(bin_dir / "pdsreview"), "--quiet", "--json"] + args,
                            capture_output=True, text=True, env=env)
    return result


# Even, as zip dates count in two-second steps.
SOURCE_DATE_EPOCH = 1700000000


def export(bin_dir, sample, out, version):
    env = dict(os.environ, SOURCE_DATE_EPOCH=str(SOURCE_DATE_EPOCH))
    result = run(bin_dir, ["--author", "reviewer", "--bcf-version", version, "open", str(sample),
                           "export-bcf", str(out)], env)
    assert result.returncode == 0, result.stderr


def validate(archive, schemas, work):
    """Every XML entry of the archive against its schema; returns the problems."""
    problems = []
    with zipfile.ZipFile(archive) as z:
        for name in z.namelist():
            schema = next((s for p, s in SCHEMAS.items() if re.search(p, name)), None)
            if not schema:
                continue
            entry = work / "entry.xml"
            entry.write_bytes(z.read(name))
            check = subprocess.run(["xmllint", "--noout", "--schema", str(schemas / schema),
                                    str(entry)], capture_output=True, text=True)
            if check.returncode != 0:
                problems.append(f"{archive.name}:{name}: {check.stderr.strip()}")
    return problems


def local(tag):
    return tag.rsplit("}", 1)[-1]


def expected_counts(folder):
    """Topics, comments and viewpoints of an unzipped test case, as its markup says."""
    topics = comments = viewpoints = 0
    for markup in sorted(folder.glob("*/markup.bcf")):
        topics += 1
        root = ET.parse(markup).getroot()
        comments += sum(1 for e in root.iter() if local(e.tag) == "Comment" and len(e))
        refs = sum(1 for e in root.iter() if local(e.tag) in ("Viewpoints", "ViewPoint")
                   and e.get("Guid"))
        if refs == 0 and (markup.parent / "viewpoint.bcfv").exists():
            refs = 1
        viewpoints += refs
    return topics, comments, viewpoints


def tag_records(text):
    """The records of a tag file by text: camera numbers, point and linkage."""
    records, state = {}, {}
    for m in re.finditer(r"^(target|eye|clip_far|clip_near|persp_ang)\{([^}]*)\}|"
                         r"^tag\{\d+ 1 0 [0-9.]+ ([-\d ]+)\n(?:p\{[^}]*\}\n)?(?:l\{([^}]*)\}\n)?"
                         r"text\{\d+\n(.*?)\}\}\n", text, re.M | re.S):
        if m.group(1):
            state[m.group(1)] = [int(v) for v in m.group(2).split()]
        else:
            records[m.group(5)] = (dict(state), m.group(4))
    return records


def round_trip(bin_dir, root, work, version):
    sample = root / "examples/plant/plant.dri"
    direct, back, archive = work / "direct.tag", work / f"back{version}.tag", work / "rt.bcfzip"
    assert run(bin_dir, ["--no-tags", "open", str(sample), "import-tags",
                         str(root / "examples/plant/plant.tag"), "export-tags",
                         str(direct)]).returncode == 0
    export(bin_dir, sample, archive, version)
    result = run(bin_dir, ["--no-tags", "open", str(sample), "import-bcf", str(archive),
                           "export-tags", str(back)])
    assert result.returncode == 0, result.stderr
    want = tag_records(direct.read_text(encoding="utf-8"))
    got = tag_records(back.read_text(encoding="utf-8"))
    problems = []
    if sorted(want) != sorted(got):
        problems.append(f"{version}: texts differ: {sorted(set(want) ^ set(got))}")
    for text, (camera, linkage) in want.items():
        if text not in got:
            continue
        camera2, linkage2 = got[text]
        if linkage != linkage2:
            problems.append(f"{version}: linkage {linkage2} for {text[:20]!r}, not {linkage}")
        for key in ("target", "eye", "clip_far", "clip_near"):
            a, b = camera.get(key, []), camera2.get(key, [])
            if len(a) != len(b) or any(abs(x - y) > 1 for x, y in zip(a, b)):
                problems.append(f"{version}: {key} {b} for {text[:20]!r}, not {a}")
        # BCF 2.1 holds fields of view from 45 to 60 degrees only.
        if version == "3.0" and camera.get("persp_ang") != camera2.get("persp_ang"):
            problems.append(f"{version}: persp_ang {camera2.get('persp_ang')} for {text[:20]!r}")
    return problems


def own_topics(archive):
    """Title, comments and cameras of each topic, from the archive's XML."""
    topics = {}
    with zipfile.ZipFile(archive) as z:
        for name in z.namelist():
            if not name.endswith("/markup.bcf"):
                continue
            markup = ET.fromstring(z.read(name))
            title = next(e.text for e in markup.iter() if local(e.tag) == "Title")
            comments = sorted(e.text for e in markup.iter()
                              if local(e.tag) == "Comment" and not len(e))
            info = ET.fromstring(z.read(name.replace("markup.bcf", "viewpoint.bcfv")))
            point = next(e for e in info.iter() if local(e.tag) == "CameraViewPoint")
            fov = next(e for e in info.iter() if local(e.tag) == "FieldOfView")
            topics[title] = (comments, [float(e.text) for e in point], float(fov.text))
    return topics


def independent_reader(archive, version):
    """What the npm reader finds wrong with the archive against its own XML: a list of
    problems, or None without the reader."""
    reader = os.environ.get("ZT_BCF_READER")
    if not reader or not Path(reader).is_dir() or not shutil.which("node"):
        return None
    script = Path(__file__).with_name("read_with_bcf_js.js")
    result = subprocess.run(["node", str(script), reader, version, str(archive)],
                            capture_output=True, text=True)
    if result.returncode != 0:
        return [f"{version}: the npm reader failed: {result.stderr.strip()}"]
    found = {}
    for topic in json.loads(result.stdout):
        cameras = topic["cameras"]
        camera = cameras[0] if cameras else {"camera_view_point": {}, "field_of_view": None}
        found[topic["title"]] = (sorted(topic["comments"]),
                                 [camera["camera_view_point"].get(k) for k in "xyz"],
                                 camera["field_of_view"])
    want = own_topics(archive)
    if found != want:
        return [f"{version}: the npm reader finds {found}, not {want}"]
    return []


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--bin", type=Path, required=True)
    parser.add_argument("--root", type=Path, required=True)
    parser.add_argument("--data", type=Path, required=True)
    args = parser.parse_args()
    problems = []
    sample = args.root / "examples/plant/plant.dri"
    with tempfile.TemporaryDirectory() as temp:
        work = Path(temp)
        for version in ("2.1", "3.0"):
            first, second = work / f"a{version}.bcfzip", work / f"b{version}.bcfzip"
            export(args.bin, sample, first, version)
            export(args.bin, sample, second, version)
            if first.read_bytes() != second.read_bytes():
                problems.append(f"{version}: two exports of the same document differ")
            problems += validate(first, args.data / f"schemas-{version}", work)
            with zipfile.ZipFile(first) as z:
                if sum(n.endswith("/markup.bcf") for n in z.namelist()) != 6:
                    problems.append(f"{version}: the sample's 6 tags are not 6 topics")
                # Two exports within one second agree whatever dates the entries: each
                # entry must carry SOURCE_DATE_EPOCH's time (local, as zip dates are).
                epoch = time.localtime(SOURCE_DATE_EPOCH)[:6]
                for info in z.infolist():
                    if info.date_time != epoch:
                        problems.append(f"{version}: {info.filename} is dated {info.date_time}, "
                                        f"not SOURCE_DATE_EPOCH's {epoch}")
            found = independent_reader(first, version)
            if found is None:
                if os.environ.get("ZT_REQUIRE_BCF_READER") == "1":
                    problems.append("no npm BCF reader (ZT_BCF_READER) under ZT_REQUIRE_BCF_READER=1")
                else:
                    print("skipped: no npm BCF reader; set ZT_BCF_READER to its folder")
            else:
                problems += found
            problems += round_trip(args.bin, args.root, work, version)
        cases = sorted((args.data / "testcases-2.1").glob("*/*/*.bcf"))
        for case in cases:
            want = expected_counts(case.parent / "unzipped")
            result = run(args.bin, ["--uors-per-master", "1000", "import-bcf", str(case)])
            if result.returncode != 0:
                problems.append(f"{case}: status {result.returncode}: {result.stderr.strip()}")
                continue
            counts = json.loads(result.stdout)["steps"][0]["counts"]
            got = (counts["topics"], counts["bcfComments"], counts["bcfViewpoints"])
            if got != want or counts["views"] != want[0]:
                problems.append(f"{case}: counts {counts}, want topics, comments, viewpoints {want}")
        print(f"{len(cases)} test cases of BCF 2.1 imported")
    for problem in problems:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
