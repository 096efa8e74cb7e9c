"""How long headless Chromium takes to show the report page of a generated scene of
1,000,000 elements (goal: under 3 s). Builds the scene with zt_make_big_model and the
page with pdsreview from a build's bin folder, loads the page from a file URL several
times in one browser, and prints the page's size and, per load and as the median, the
time to the load event and to the page drawn, from the page's own clock.

    python3 bench/report_page_load.py [BIN_DIR] [--loads N]
"""

import argparse
import os
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "tools"))
import zt_webdriver  # noqa: E402

# The load event, and the end of the second frame after the script starts: by then the
# page has been drawn (an upper bound, as the script starts a little after the load).
TIMINGS = """
const done = arguments[arguments.length - 1];
const nav = performance.getEntriesByType('navigation')[0];
requestAnimationFrame(() => requestAnimationFrame(() => done([nav.loadEventEnd, performance.now()])));"""


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bin", nargs="?", default="build/bin")
    parser.add_argument("--loads", type=int, default=5)
    parser.add_argument("--elements", type=int, default=1000000)
    args = parser.parse_args()
    found, missing = zt_webdriver.find_browser()
    if not found:
        sys.exit("no %s; install Debian's chromium and chromium-driver" % missing)
    dst = os.path.join(os.path.dirname(__file__), "..", "examples", "plant", "plant.dst")
    with tempfile.TemporaryDirectory() as work:
        model, page = os.path.join(work, "big.dgn"), os.path.join(work, "big.html")
        subprocess.run([os.path.join(args.bin, "zt_make_big_model"), model,
                        str(args.elements)], check=True)
        start = time.monotonic()
        subprocess.run([os.path.join(args.bin, "pdsreview"), "--quiet", "model", model,
                        "import-dst", dst, "report", page], check=True,
                       stdout=subprocess.DEVNULL)
        print("elements %d: page %.2f MB, written in %.2f s"
              % (args.elements, os.path.getsize(page) / 1e6, time.monotonic() - start))
        loads, drawn = [], []
        with zt_webdriver.Browser(*found) as browser:
            for n in range(args.loads):
                # From another page, so that each load is a fresh navigation.
                browser.open("/dev/null")
                browser.open(page)
                load, frame = browser.run_async(TIMINGS)
                loads.append(load / 1000)
                drawn.append(frame / 1000)
                print("load %d: load event %.3f s, drawn by %.3f s" % (n + 1, loads[-1], drawn[-1]))
        print("median: load event %.3f s, drawn by %.3f s"
              % (statistics.median(loads), statistics.median(drawn)))


if __name__ == "__main__":
    main()
