#!/usr/bin/env python3
"""Checks that every include between folders runs down the project's layers.

Each folder of the product is a room: a host library (host/ztutil ...), a room of the host
application (host/review ...), or a subsystem of the plug-in library (ztodpds/readers ...).
The rooms stand in one order, from the floor up, and a file may include only from its own
room and the rooms below it: no arrow runs back up, so no cycle can form. A room that is
not in the order fails the check until it is given its place. Tests, fuzz targets,
benchmarks and tools stand above everything and are not checked.
"""
import argparse
import pathlib
import re
import sys

# From the floor up. The plug-in library stands on the host's plug-in classes; the DGN
# loader and the host application stand beside it and never include it, but for the
# checker's room, which runs the library's own readers with a diagnostics sink.
LAYERS = [
    "host/ztutil",
    "host/ztlinear",
    "host/ztnav",
    "host/ztobject",
    "host/ztcore",
    "host/ztplugin",
    "ztodpds/diagnostics",
    "ztodpds/plugin",
    "ztodpds/readers",
    "ztodpds/rules",
    "ztodpds/displaysets",
    "ztodpds/tags",
    "ztodpds/loader",
    "ztodpds/module",
    "host/ztlddgn",
    "host/ztpdsdb",
    "host/check",
    "host/review",
    "host/report",
    "host/bcf",
    "host/manual",
    "host/app",
    "host/checkapp",
    "host/manuals",
]
UNCHECKED = ("tests", "fuzz", "bench", "tools")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def room_of(path):
    """The room of a source file given relative to the root, or None for an unchecked one."""
    parts = path.parts
    if len(parts) < 3 or parts[0] in UNCHECKED:
        return None
    return "/".join(parts[:2])


def included_room(include, rooms):
    """The room an include names: its first folder, under host/ or ztodpds/."""
    first = include.split("/")[0]
    for root in ("host", "ztodpds"):
        if f"{root}/{first}" in rooms:
            return f"{root}/{first}"
    return None


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("root", type=pathlib.Path)
    args = parser.parse_args()
    rank = {room: i for i, room in enumerate(LAYERS)}
    found_rooms = set()
    problems = []
    # Only the rooms' trees: a walk of the whole root would race with the tests' temporary
    # folders inside the build folders.
    sources = sorted(p for top in ("host", "ztodpds") for p in (args.root / top).rglob("*"))
    for source in sources:
        if source.suffix not in (".cpp", ".h") or not source.is_file():
            continue
        relative = source.relative_to(args.root)
        room = room_of(relative)
        if room is None:
            continue
        found_rooms.add(room)
        if room not in rank:
            problems.append(f"{relative}: its folder {room} has no place in the layers")
            continue
        for include in INCLUDE.findall(source.read_text(encoding="utf-8", errors="replace")):
            target = included_room(include, rank)
            if target and rank[target] > rank[room]:
                problems.append(f"{relative}: includes {include}, from {target}, above {room}")
    for room in LAYERS:
        if room not in found_rooms:
            problems.append(f"the layer {room} has no sources")
    for problem in problems:
        print(problem)
    print(f"{len(found_rooms)} rooms, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
