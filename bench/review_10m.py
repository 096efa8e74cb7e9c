"""A review at the scale of a whole plant: ten models of 1,000,000 elements each under one
control file, with 10,000 tags and five display sets beside it. Opens it with pdsreview,
selects the sets, exports the tags and writes the report, and prints the wall time, the
CPU time and the peak memory (the process's high-water mark) of each step, against loading the ten
models alone (on one thread, then on as many as pdsreview takes: --threads). Then loads one of
the models with GDAL (`ogr2ogr -f Memory`, from Debian's gdal-bin, installed when missing) and
with pdsreview, and prints the ratio of CPU times. After the report, it deflates the page's
images again as the page holds them and prints what zlib alone takes for it: a floor under
any report that writes the same page with zlib.

Each step's figures come from a run of pdsreview that stops after it: a step's time is
what its run takes beyond the run before, and its peak is its run's. The scene is made
in a temporary folder (about 800 MB under /tmp with the default size) and removed at
the end.

    python3 bench/review_10m.py [BIN_DIR] [--models N] [--elements N] [--threads N] [--no-gdal]
                                [--no-report]
"""

import argparse
import base64
import os
import re
import resource
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import zlib

UORS_PER_METRE = 80000  # the generated models count 80 UORs a millimetre
PITCH = 8000  # UORs between the pieces of a model's grid
SIDE = 1000  # pieces a row

SETS = [
    ("Level one", "FIND Level 1"),
    ("Odd levels up to 9", "FIND Level 3\nADD Level 5\nADD Level 7\nADD Level 9"),
    ("Model 2 in colour 3", "FIND File m02.dgn\nKEEP ONLY Color 3"),
    ("Model 4 without level 2", "FIND File m04.dgn\nTHROW AWAY Level 2"),
    ("The first two sets", "FIND Display Set Level one\nADD Display Set Odd levels up to 9"),
]


def write_scene(work, bin_dir, models, elements, tags):
    """The models, the control file, the tag file and the display sets; gives the
    control file's path and the first model's."""
    names = ["m%02d.dgn" % k for k in range(models)]
    for name in names:
        subprocess.run([os.path.join(bin_dir, "zt_make_big_model"), os.path.join(work, name),
                        str(elements)], check=True)
    control = os.path.join(work, "plant.dri")
    with open(control, "w", encoding="utf-8") as f:
        f.write("DesignReview_Control{\nmaster_unit{m}\n")
        for name in names:
            f.write("dgn{name{%s}}\n" % name)
        f.write("}\n")
    # Ten tags a view, each a little above a piece of the grid, seen from 20 m above.
    with open(os.path.join(work, "plant.tag"), "w", encoding="utf-8", newline="\n") as f:
        f.write("file{0n{%s}}\n" % names[0])
        rows = max(1, min(SIDE, elements // SIDE))
        for t in range(tags):
            piece = (t * 7919) % (rows * SIDE)
            x, y = (piece % SIDE) * PITCH + 3000, (piece // SIDE) * PITCH + 1000
            if t % 10 == 0:
                f.write("target{%d %d 0}\neye{%d %d %d}\npersp_ang{40}\n"
                        % (x, y, x, y + 1, 20 * UORS_PER_METRE))
            body = "Check the support at piece %d.\nSee the line list." % piece
            f.write("tag{%d 1 0 0.000000 %d %d 1600\np{%d %d 1600}\ntext{%d\n%s}}\n"
                    % (t + 1, x, y, x, y, len(body) + 2, body))
    with open(os.path.join(work, "plant.dst"), "w", encoding="utf-8") as f:
        f.write("[DEFINITION SECTION]\n")
        for number, (name, rules) in enumerate(SETS, 1):
            f.write("<Display Set>\n%d %s\n<Definition>\n%s\nEND FIND\n" % (number, name, rules))
    return control, os.path.join(work, names[0])


def timed(command):
    """Runs `command`; gives its wall time and CPU time in seconds and its peak memory in
    MiB. On a shared machine the CPU time is the steadier figure."""
    start = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.monotonic() - start
    if os.waitstatus_to_exitcode(status) != 0:
        sys.exit("failed: %s" % " ".join(command))
    return seconds, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024.0


def line(what, wall, cpu, peak, elements):
    print("%-16s wall %8.2f s  CPU %8.2f s  peak %7.0f MiB  %6.1f B/element"
          % (what, wall, cpu, peak, peak * 2**20 / elements))


def deflate_floor(page):
    """The page's images, deflated again as the page holds them: gives their count, the
    megabytes of their rows and the CPU seconds that zlib alone takes over them, or None
    where a deflate comes out other than the page's. A report that writes the same page
    with zlib takes at least this, however it draws its pictures."""
    with open(page, "rb") as f:
        text = f.read()
    rows, seconds = 0, 0.0
    uris = re.findall(rb"data:image/png;base64,([A-Za-z0-9+/=]+)", text)
    for uri in uris:
        png, at, idat = base64.b64decode(uri), 8, b""
        while at + 8 <= len(png):
            size, kind = struct.unpack(">I4s", png[at:at + 8])
            if kind == b"IDAT":
                idat += png[at + 8:at + 8 + size]
            at += 12 + size
        raw = zlib.decompress(idat)
        rows += len(raw)
        start = time.process_time()
        again = zlib.compress(raw, 3)  # the level the host's PNGs are written at
        seconds += time.process_time() - start
        if again != idat:
            return None
    return len(uris), rows / 1e6, seconds


def ensure_gdal():
    if shutil.which("ogr2ogr"):
        return True
    print("installing gdal-bin for the comparison")
    for command in (["apt-get", "update"], ["apt-get", "install", "-y", "gdal-bin"]):
        if subprocess.run(command, stdout=subprocess.DEVNULL).returncode != 0:
            return False
    return shutil.which("ogr2ogr") is not None


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bin", nargs="?", default="build/bin")
    parser.add_argument("--models", type=int, default=10)
    parser.add_argument("--elements", type=int, default=1000000, help="elements a model")
    parser.add_argument("--tags", type=int, default=10000)
    parser.add_argument("--no-gdal", action="store_true")
    parser.add_argument("--no-report", action="store_true",
                        help="stop after the export: the report draws every saved view")
    parser.add_argument("--work", default=tempfile.gettempdir(), help="where the scene goes")
    parser.add_argument("--threads", type=int, help="pdsreview's --threads (default: one a core)")
    args = parser.parse_args()
    review = os.path.join(args.bin, "pdsreview")
    total = args.models * args.elements
    with tempfile.TemporaryDirectory(dir=args.work) as work:
        start = time.monotonic()
        control, first = write_scene(work, args.bin, args.models, args.elements, args.tags)
        print("scene: %d models, %d elements, %.0f MB of DGN, made in %.1f s"
              % (args.models, total,
                 sum(os.path.getsize(os.path.join(work, n)) for n in os.listdir(work)) / 1e6,
                 time.monotonic() - start))
        base = [review, "--quiet"] + (["--threads", str(args.threads)] if args.threads else [])
        alone = ["--no-tags", "--no-display-sets", "--no-attributes", "open", control]
        timed(base + alone)  # once to warm the file cache, then measured
        line("load, 1 thread", *timed([review, "--quiet", "--threads", "1"] + alone), total)
        load_wall, load_cpu, load_peak = timed(base + alone)
        line("load the models", load_wall, load_cpu, load_peak, total)
        # Beside the control file, the exported tags would be read by the next open.
        out = os.path.join(work, "out")
        os.mkdir(out)
        steps = [["open", control], ["select"],
                 ["export-tags", os.path.join(out, "out.tag")],
                 ["report", os.path.join(out, "review.html")]][:3 if args.no_report else 4]
        wall_before, cpu_before, command = 0.0, 0.0, list(base)
        for step in steps:
            command += step
            wall, cpu, peak = timed(command)
            line(step[0], wall - wall_before, cpu - cpu_before, peak, total)
            wall_before, cpu_before = wall, cpu
        print("whole run: wall %.2f s, %.2fx loading the models alone; CPU %.2f s, %.2fx"
              % (wall_before, wall_before / load_wall, cpu_before, cpu_before / load_cpu))
        if not args.no_report:
            floor = deflate_floor(steps[-1][1])
            if floor is None:
                print("the page's images are not deflated at zlib's level 3: no floor")
            else:
                images, megabytes, seconds = floor
                threads = args.threads or os.cpu_count() or 1
                print("the page's %d images, %.0f MB of rows, take %.2f s of CPU to deflate "
                      "alone: %.2f s on %d threads, %.2fx loading the models"
                      % (images, megabytes, seconds, seconds / threads, threads,
                         seconds / threads / load_wall))

        if args.no_gdal:
            return
        if not ensure_gdal():
            print("no ogr2ogr: the comparison with GDAL is left out")
            return
        timed(base + ["model", first])  # once first, as the memory of the run before is given back
        _, ours, _ = timed(base + ["model", first])
        _, theirs, _ = timed(["ogr2ogr", "-f", "Memory", os.path.join(work, "mem"), first])
        print("one model of %d elements, CPU: pdsreview %.2f s, ogr2ogr -f Memory %.2f s (%.1fx)"
              % (args.elements, ours, theirs, theirs / ours))


if __name__ == "__main__":
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    main()
