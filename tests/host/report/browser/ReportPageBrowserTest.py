"""The report page in a real browser: the sample review's page shows every tag's pin where
the JSON document puts the tag, on the drawn box of the element that the tag's `l` block
names, its tag list and selection sets answer clicks, and it draws something; the page of a generated 1,000,000-element scene stays under 15 MB and
loads. Exits 77 (skipped) without a browser, unless ZT_REQUIRE_BROWSER is set."""

import argparse
import base64
import json
import os
import re
import struct
import subprocess
import sys
import tempfile
import zlib

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "..", "..", "tools"))
import zt_webdriver  # noqa: E402

SKIPPED = 77
failures = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print("FAILED: " + what)


def run(*args):
    done = subprocess.run(args, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit("%s failed (%d): %s" % (args[0], done.returncode, done.stderr))
    return done.stdout


def tags_of(items):
    for item in items:
        if item["kind"] == "folder":
            yield from tags_of(item["children"])
        elif item["kind"] == "view":
            for redline in item["redlines"]:
                if redline["type"] == "tag" and redline["pos3dValid"]:
                    yield redline


PIN_PLACES = """
return [...document.querySelectorAll('svg.view')].map(svg => {
  const box = svg.getBoundingClientRect();
  return {id: svg.id, left: box.left + svg.clientLeft, top: box.top + svg.clientTop,
          u: +svg.dataset.u, v: +svg.dataset.v, scale: +svg.dataset.scale,
          ox: +svg.dataset.ox, oy: +svg.dataset.oy,
          pins: [...svg.querySelectorAll('.pin')].map(pin => {
            const c = pin.querySelector('circle').getBoundingClientRect();
            return [pin.dataset.tag, c.left + c.width / 2, c.top + c.height / 2];
          })};
});"""

SHAPES = """
return Object.fromEntries([...document.querySelectorAll('svg.view')].map(svg => [svg.id,
    [...svg.querySelectorAll('.shapes rect')].map(r => {
      const b = r.getBoundingClientRect();
      return [b.left, b.top, b.right, b.bottom];
    })]));"""

META = """
return Object.fromEntries([...document.querySelectorAll('li.tag')].map(
    li => [li.dataset.tag, li.querySelector('.meta').textContent]));"""

HIGHLIGHTS = """
return {pins: [...document.querySelectorAll('.pin.sel')].map(p => p.dataset.tag),
        items: [...document.querySelectorAll('li.tag.sel')].map(i => i.dataset.tag),
        sights: [...document.querySelectorAll('.sight')].map(g => g.querySelectorAll('line').length),
        hits: [...document.querySelectorAll('svg.view')].map(
            svg => svg.querySelectorAll('.shapes .hit').length)};"""


def named_elements(tag_file):
    """The `l` block of each tag of a tag file, by tag id, as four numbers."""
    named, tag = {}, None
    with open(tag_file, encoding="utf-8") as text:
        for line in text:
            if line.startswith("tag{"):
                tag = line[4:].split()[0]
            elif line.startswith("l{") and tag:
                named[tag] = [int(word) for word in line[2:line.index("}")].split()]
    return named


def check_pins_on_elements(browser, pdsreview, dri, views):
    """Each tag's pin lies, in every view, on the drawn box of the element that the tag's `l`
    block names: the box the JSON's sceneBox of that element gives, which the page draws."""
    named = named_elements(os.path.join(os.path.dirname(dri), "plant.tag"))
    check(len(named) == 6, "the sample's six tags each name an element")
    models = json.loads(run(pdsreview, "--quiet", "--json", "--elements", "open", dri))["models"]
    boxes = {tuple(e["dmrs"]): e["sceneBox"] for m in models for e in m["elementList"] if e["dmrs"]}
    shapes = browser.run(SHAPES)
    meta = browser.run(META)
    for tag, linkage in sorted(named.items()):
        check("DMRS " + " ".join(map(str, linkage)) in meta.get(tag, ""),
              "tag %s's entry names the element of its l block (%s)" % (tag, meta.get(tag)))
        box = boxes.get(tuple(linkage))
        check(box is not None, "tag %s names an element of the sample: %s" % (tag, linkage))
        for view in views:
            if box is None:
                continue
            u, v, scale = view["u"], view["v"], view["scale"]
            left = view["left"] + view["ox"] + scale * box[0][u]
            right = view["left"] + view["ox"] + scale * box[1][u]
            top = view["top"] + view["oy"] - scale * box[1][v]
            bottom = view["top"] + view["oy"] - scale * box[0][v]
            drawn = [r for r in shapes[view["id"]]
                     if abs(r[0] - left) <= 1 and abs(r[1] - top) <= 1
                     and abs(r[2] - max(right, left + 0.5)) <= 1
                     and abs(r[3] - max(bottom, top + 0.5)) <= 1]
            check(drawn, "%s draws the box of tag %s's element" % (view["id"], tag))
            x, y = {t: (px, py) for t, px, py in view["pins"]}.get(tag, (None, None))
            check(x is not None and left - 1 <= x <= right + 1 and top - 1 <= y <= bottom + 1,
                  "%s: pin %s at %s lies on its element's box %s" %
                  (view["id"], tag, (x, y), (left, top, right, bottom)))


def check_sample(browser, pdsreview, dri, work):
    page = os.path.join(work, "plant.html")
    document = json.loads(run(pdsreview, "--quiet", "--json", "open", dri, "select",
                              "report", page))
    browser.open(page)
    tags = {str(t["tagId"]): t["pos3d"] for t in tags_of(document["document"]["savedViews"])}
    check(len(tags) == 6, "the sample has its six placed tags")
    views = browser.run(PIN_PLACES)
    for view in views:
        pins = {tag: (x, y) for tag, x, y in view["pins"]}
        check(sorted(pins) == sorted(tags), "%s shows a pin for every tag" % view["id"])
        for tag, pos in tags.items():
            want = (view["left"] + view["ox"] + view["scale"] * pos[view["u"]],
                    view["top"] + view["oy"] - view["scale"] * pos[view["v"]])
            got = pins.get(tag, (float("inf"), float("inf")))
            check(abs(got[0] - want[0]) <= 1 and abs(got[1] - want[1]) <= 1,
                  "%s: pin %s at %s, the JSON puts it at %s" % (view["id"], tag, got, want))
    check_pins_on_elements(browser, pdsreview, dri, views)

    browser.click('li.tag[data-tag="103"]')
    state = browser.run(HIGHLIGHTS)
    check(state["pins"] == ["103"] * 3, "a clicked tag highlights its pin in each view")
    check(state["items"] == ["103"], "a clicked tag is selected in the list")
    check(state["sights"] == [1, 1, 1], "a clicked tag draws its view's line of sight")
    browser.click('#view-plan .pin[data-tag="105"]')
    state = browser.run(HIGHLIGHTS)
    check(state["items"] == ["105"] and state["pins"] == ["105"] * 3,
          "a clicked pin selects its tag in the list")

    selections = document["selections"]

    def union(*places):
        return len({(e["model"], e["index"]) for p in places for e in selections[p]["elements"]})

    for clicked, on in ((0, (0,)), (3, (0, 3)), (0, (3,))):
        browser.click('input.set[data-set="%d"]' % clicked)
        check(browser.run(HIGHLIGHTS)["hits"] == [union(*on)] * 3,
              "with sets %s on, their %d elements are highlighted" % (on, union(*on)))

    shot = browser.screenshot()
    with open(os.path.join(work, "plant.png"), "wb") as out:
        out.write(shot)
    width, height, bpp, rows = zt_webdriver.png_pixels(shot)
    colours, drawn = set(), 0
    for row in rows[::4]:
        for x in range(0, width * bpp, 4 * bpp):
            pixel = row[x:x + 3]
            colours.add(pixel)
            drawn += pixel != b"\xff\xff\xff"
    check(len(colours) > 20 and drawn > len(rows) // 4 * width // 4 // 20,
          "the screenshot is not blank (%d colours, %d drawn pixels)" % (len(colours), drawn))


def check_big(browser, pdsreview, make_big_model, dst, work):
    model = os.path.join(work, "big.dgn")
    page = os.path.join(work, "big.html")
    run(make_big_model, model)
    run(pdsreview, "--quiet", "model", model, "import-dst", dst, "report", page)
    size = os.path.getsize(page)
    print("page of 1,000,000 elements: %d bytes" % size)
    check(size < 15 * 1024 * 1024, "the big scene's page is under 15 MB (%d bytes)" % size)
    with open(page, encoding="utf-8") as text:
        images = re.findall(r'data:image/png;base64,([^"]*)', text.read())
    for image in images:
        png = base64.b64decode(image)
        width, height = struct.unpack(">II", png[16:24])
        start = png.index(b"IDAT") + 4
        rows = zlib.decompress(png[start:start + struct.unpack(">I", png[start - 8:start - 4])[0]])
        check(len(rows) == (width + 1) * height, "a raster inflates to its %dx%d pixels" % (width, height))
    browser.open(page)
    loaded = browser.run("return [document.readyState, document.querySelectorAll("
                         "'svg.view image').length, document.querySelectorAll('input.set').length]")
    check(loaded[0] == "complete" and loaded[1] >= 6 and loaded[2] == 9,
          "the big scene's page loads with its rasters and sets (%s)" % loaded)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--pdsreview", required=True)
    parser.add_argument("--make-big-model", required=True)
    parser.add_argument("--sample", required=True, help="the sample review's folder")
    parser.add_argument("--out", help="keep the pages and the screenshot here")
    args = parser.parse_args()
    found, missing = zt_webdriver.find_browser()
    if not found:
        print("SKIPPED: no %s; install Debian's chromium and chromium-driver" % missing)
        return 1 if os.environ.get("ZT_REQUIRE_BROWSER") else SKIPPED
    with tempfile.TemporaryDirectory() as scratch:
        work = args.out or scratch
        os.makedirs(work, exist_ok=True)
        with zt_webdriver.Browser(*found) as browser:
            check_sample(browser, args.pdsreview, os.path.join(args.sample, "plant.dri"), work)
            check_big(browser, args.pdsreview, args.make_big_model,
                      os.path.join(args.sample, "plant.dst"), work)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
