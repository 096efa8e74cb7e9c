"""How fast and how compactly the host attaches a project database's attributes to a
model: the big generated scene with four attributes on each of 1,000,000 linked pieces,
against the sqlite3 shell reading the same rows (goals: at most 2x its time, at most 48
bytes an attribute beyond the distinct texts). Makes the model and its database with
zt_make_big_model and zt_make_big_database from a build's bin folder, times the shell,
runs the attach benchmark of ztodpds_bench on the same files, and prints the figures.
Installs Debian's sqlite3 when the shell is missing and it can.

    python3 bench/attach_attributes.py [BIN_DIR] [--runs N]
"""

import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

QUERY = "SELECT entity, occurrence, name, value FROM element_attributes"


def timed(command, env=None):
    """Runs `command` with its output thrown away; gives (wall, CPU) seconds."""
    start = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, env=env)
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit("%s failed" % command[0])
    return time.monotonic() - start, usage.ru_utime + usage.ru_stime


def sqlite3_shell():
    found = shutil.which("sqlite3")
    if not found and os.geteuid() == 0:
        subprocess.run(["apt-get", "install", "-y", "sqlite3"], check=True,
                       stdout=subprocess.DEVNULL)
        found = shutil.which("sqlite3")
    if not found:
        sys.exit("no sqlite3 shell; install Debian's sqlite3")
    return found


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bin", nargs="?", default="build/bin")
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--elements", type=int, default=1020000)
    args = parser.parse_args()
    shell = sqlite3_shell()
    with tempfile.TemporaryDirectory() as work:
        model, database = os.path.join(work, "big.dgn"), os.path.join(work, "big.db")
        subprocess.run([os.path.join(args.bin, "zt_make_big_model"), model, str(args.elements)],
                       check=True)
        subprocess.run([os.path.join(args.bin, "zt_make_big_database"), database,
                        str(args.elements)], check=True)
        print("model %.1f MB, database %.1f MB" % (os.path.getsize(model) / 1e6,
                                                   os.path.getsize(database) / 1e6))
        runs = [timed([shell, database, QUERY]) for _ in range(args.runs)]
        shell_wall = min(wall for wall, _ in runs)
        shell_cpu = min(cpu for _, cpu in runs)
        print("sqlite3 shell, best of %d: %.3f s, CPU %.3f s" % (args.runs, shell_wall, shell_cpu))

        env = dict(os.environ, ZT_BENCH_MODEL=model, ZT_BENCH_DATABASE=database)
        result = subprocess.run([os.path.join(args.bin, "ztodpds_bench"),
                                 "--benchmark_filter=BM_AttachAttributes",
                                 "--benchmark_format=json"], env=env, check=True,
                                capture_output=True, text=True)
        bench = json.loads(result.stdout)["benchmarks"][0]
        attach_wall = bench["real_time"] / 1000
        attach_cpu = bench["cpu_time"] / 1000
        print("attach, mean of %d: %.3f s, CPU %.3f s; %d attributes on %d elements, "
              "%.1f MB of distinct texts" % (bench["iterations"], attach_wall, attach_cpu,
                                             bench["attributes"], bench["elements"],
                                             bench["text_bytes"] / 1e6))
        print("time against the shell: %.2fx (CPU %.2fx); goal at most 2x"
              % (attach_wall / shell_wall, attach_cpu / shell_cpu))
        print("memory beyond the distinct texts: %.1f bytes an attribute as the heap grew, "
              "%.1f as the store counts it; goal at most 48"
              % (bench["heap_B_per_attribute"], bench["store_B_per_attribute"]))


if __name__ == "__main__":
    main()
