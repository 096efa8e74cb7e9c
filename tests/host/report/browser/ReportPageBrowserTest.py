"""The report page in a real browser. On the sample review's page: the elements are drawn
through their real vertices (counted by type); every tag's pin stands where the JSON puts
the tag and on the drawn geometry of the element its `l` block names, in the plan and in
its saved view's drawing; no two pins overlap in any drawing, zoomed or not; zoom, pan and
fit work by buttons, wheel, mouse and keys; a tag chosen by mouse or keyboard opens its
view and shows its element's data; selection sets highlight what they select; axe-core
finds no serious or critical violation. The page of a generated 1,000,000-element scene
stays under 15 MB and loads. Exits 77 (skipped) without a browser, unless
ZT_REQUIRE_BROWSER is set, under which nothing may be skipped."""

import argparse
import base64
import json
import math
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
ARROW_RIGHT, HOME = "\ue014", "\ue011"
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


# Each shown drawing's mapping (for those along an axis) and its pins' points and heads,
# in the window's pixels.
PINS = """
return [...document.querySelectorAll('svg.view')].filter(svg => svg.getClientRects().length)
  .map(svg => {
    const box = svg.getBoundingClientRect(), d = svg.dataset;
    return {id: svg.id, left: box.left + svg.clientLeft, top: box.top + svg.clientTop,
            u: +d.u, v: +d.v, scale: +d.scale, ox: +d.ox, oy: +d.oy,
            transform: svg.querySelector('.scene').getAttribute('transform'),
            pins: [...svg.querySelectorAll('.pin')].filter(p => p.style.display !== 'none')
              .map(pin => {
                const a = pin.querySelector('.anchor').getBoundingClientRect();
                const h = pin.querySelector('.head circle').getBoundingClientRect();
                return {tag: pin.dataset.tag, ax: a.left + a.width / 2, ay: a.top + a.height / 2,
                        hx: h.left + h.width / 2, hy: h.top + h.height / 2, r: h.width / 2};
              })};
  });"""

# The segments drawn for an element (its own paths, or its components'), in the window's
# pixels, and the number of vertices of each subpath.
SEGMENTS = """
const [svgId, element] = arguments;
const svg = document.getElementById(svgId);
const data = JSON.parse(document.getElementById('page-data').textContent).elements[element];
const first = +element, last = first + (data ? data[5] : 0);
const segments = [];
for (const path of svg.querySelectorAll('.shapes path')) {
  const e = +(path.dataset.c || path.dataset.e);
  if (e < first || e > last) continue;
  const m = path.getScreenCTM();
  const at = (x, y) => { const q = new DOMPoint(x, y).matrixTransform(m); return [q.x, q.y]; };
  const tokens = path.getAttribute('d').match(/[MLZ]|-?[0-9.]+/g);
  let start = null, previous = null;
  for (let i = 0; i < tokens.length;) {
    const t = tokens[i++];
    if (t === 'Z') { segments.push([previous, start]); previous = start; continue; }
    const p = at(+tokens[i++], +tokens[i++]);
    if (t === 'L') segments.push([previous, p]);
    else start = p;
    previous = p;
  }
}
return segments;"""

# Each drawn path of a drawing: its element (the part itself) and its subpaths' vertices.
PATHS = """
return [...document.getElementById(arguments[0]).querySelectorAll('.shapes path')].map(p => [
  p.dataset.c || p.dataset.e,
  p.getAttribute('d').split('M').slice(1).map(s => s.split('L').length)]);"""

DATA = "return JSON.parse(document.getElementById('page-data').textContent);"

DETAILS = """
return [...document.querySelectorAll('#details dt')].map(
    dt => [dt.textContent, dt.nextElementSibling.textContent]);"""

HIGHLIGHTS = """
return {pins: [...document.querySelectorAll('.pin.sel')].map(p => p.dataset.tag),
        items: [...document.querySelectorAll('li.tag.sel')].map(i => i.dataset.tag),
        saved: [...document.querySelectorAll('#saved figure')].filter(f => !f.hidden).map(f => f.id),
        sights: [...document.querySelectorAll('svg.view:not([data-perspective]) .sight')]
          .map(g => g.querySelectorAll('path').length)};"""

HITS = """
return [...document.querySelectorAll('svg.view')].map(svg => [...new Set(
    [...svg.querySelectorAll('.shapes .hit')].map(p => p.dataset.e))]);"""


def distance_to_segment(p, a, b):
    dx, dy = b[0] - a[0], b[1] - a[1]
    length = dx * dx + dy * dy
    t = 0 if length == 0 else max(0, min(1, ((p[0] - a[0]) * dx + (p[1] - a[1]) * dy) / length))
    return math.hypot(p[0] - a[0] - t * dx, p[1] - a[1] - t * dy)


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


def page_element(data, model, index):
    """The page's number of the element of that model and index."""
    for number, entry in data["elements"].items():
        if data["models"][entry[0]] == model and entry[1] == index:
            return number
    return None


def check_no_overlap(browser, when):
    for view in browser.run(PINS):
        heads = view["pins"]
        for i, a in enumerate(heads):
            for b in heads[i + 1:]:
                gap = math.hypot(a["hx"] - b["hx"], a["hy"] - b["hy"])
                check(gap >= a["r"] + b["r"] - 0.5, "%s, %s: pins %s and %s overlap (%.1f px apart)"
                      % (view["id"], when, a["tag"], b["tag"], gap))


def check_pins_on_elements(browser, models, dri, document):
    """Each tag's pin stands where the JSON puts the tag in the drawings along axes, and on
    the drawn geometry of the element its `l` block names, within 2 px, in the plan and in
    its saved view's drawing."""
    named = named_elements(os.path.join(os.path.dirname(dri), "plant.tag"))
    check(len(named) == 6, "the sample's six tags each name an element")
    tags = {str(t["tagId"]): t["pos3d"] for t in tags_of(document["document"]["savedViews"])}
    for view in browser.run(PINS):
        if view["u"] is None:
            continue  # a saved view's drawing, below
        pins = {p["tag"]: p for p in view["pins"]}
        check(sorted(pins) == sorted(tags), "%s shows a pin for every tag" % view["id"])
        for tag, pos in tags.items():
            want = (view["left"] + view["ox"] + view["scale"] * pos[view["u"]],
                    view["top"] + view["oy"] - view["scale"] * pos[view["v"]])
            got = pins.get(tag, {"ax": math.inf, "ay": math.inf})
            check(abs(got["ax"] - want[0]) <= 1 and abs(got["ay"] - want[1]) <= 1,
                  "%s: pin %s at %s, the JSON puts it at %s" % (view["id"], tag, got, want))
    data = browser.run(DATA)
    by_dmrs = {tuple(e["dmrs"]): (m["file"], e["index"])
               for m in models for e in m["elementList"] if e["dmrs"]}
    for tag, linkage in sorted(named.items()):
        element = page_element(data, *by_dmrs.get(tuple(linkage), (None, None)))
        check(element is not None, "tag %s names an element on the page: %s" % (tag, linkage))
        browser.click('li.tag[data-tag="%s"] button' % tag)
        saved = browser.run(HIGHLIGHTS)["saved"]
        for svg in ["view-plan"] + ["view-" + s for s in saved]:
            pin = {p["tag"]: p for v in browser.run(PINS) if v["id"] == svg
                   for p in v["pins"]}.get(tag)
            segments = browser.run(SEGMENTS, svg, element) if element else []
            near = min((distance_to_segment((pin["ax"], pin["ay"]), a, b)
                        for a, b in segments), default=math.inf) if pin else math.inf
            check(near <= 2, "%s: pin %s lies %.2f px from its element %s's drawn geometry"
                  % (svg, tag, near, element))


def check_real_vertices(browser, models):
    """The plan draws each element through its vertices, one path of its own points per
    element, counted by type; none is drawn as a box."""
    data = browser.run(DATA)
    types = {(m["file"], e["index"]): e["type"] for m in models for e in m["elementList"]}
    counts = {}
    for element, subpaths in browser.run(PATHS, "view-plan"):
        entry = data["elements"][element]
        kind = types[(data["models"][entry[0]], entry[1])]
        counts[kind] = counts.get(kind, 0) + 1
        check(len(subpaths) == 1, "element %s is one run of its points, not a box: %s"
              % (element, subpaths))
        least = {3: 2, 4: 2, 6: 4}.get(kind, 1)
        check(subpaths[0] >= least and (kind != 3 or subpaths[0] == 2),
              "element %s of type %d has the vertices of its kind: %s" % (element, kind, subpaths))
    # Line strings: 9 pipes, 4 tank shell runs, 3 pump casings; shapes: 8 valve halves, 4
    # tank ends, 3 pump bases; lines: 2 nozzles, 14 beams, 2 braces (the 10 columns stand
    # on end in the plan and are pixels); texts are drawn as text.
    check(counts == {3: 18, 4: 16, 6: 15}, "the plan's paths by element type: %s" % counts)
    texts = browser.run("return document.querySelectorAll('#view-plan .texts .dt').length")
    check(texts == 3, "the plan draws the three labels as text (%d)" % texts)


def check_navigation(browser):
    """Buttons, wheel, mouse and keys move the plan; its pins keep their size; fit restores
    it; zoomed out, no pins overlap."""
    def plan():
        return next(v for v in browser.run(PINS) if v["id"] == "view-plan")

    start = plan()
    check(start["transform"] == "translate(0 0) scale(1)", "the plan starts fitted")
    browser.click("#plan button[data-act=in]")
    zoomed = plan()
    check("scale(1.25)" in zoomed["transform"], "the + button zooms in: %s" % zoomed["transform"])
    moved = [(a, b) for a in start["pins"] for b in zoomed["pins"] if a["tag"] == b["tag"]]
    check(any(abs(a["ax"] - b["ax"]) > 1 for a, b in moved), "zooming moves the pins apart")
    check(all(abs(a["r"] - b["r"]) < 0.01 for a, b in moved), "pins keep their size on screen")
    browser.wheel("#view-plan", -300)
    wheeled = plan()["transform"]
    check(wheeled != zoomed["transform"], "the wheel zooms: %s" % wheeled)
    browser.drag("#view-plan", 40, 30)
    dragged = plan()["transform"]
    check(dragged != wheeled, "dragging pans: %s" % dragged)
    browser.run("document.getElementById('view-plan').focus()")
    browser.press(ARROW_RIGHT)
    keyed = plan()["transform"]
    check(keyed != dragged, "the arrow keys pan: %s" % keyed)
    browser.press("-", "-", "-", "-", "-", "-", "-", "-")
    check_no_overlap(browser, "zoomed out")
    browser.press(HOME)
    check(plan()["transform"] == "translate(0 0) scale(1)", "Home fits the plan")
    browser.click("#plan button[data-act=out]")
    browser.click("#plan button[data-act=fit]")
    fitted = plan()
    check(fitted["transform"] == "translate(0 0) scale(1)" and
          [(p["ax"], p["ay"]) for p in fitted["pins"]] == [(p["ax"], p["ay"]) for p in start["pins"]],
          "Fit puts the plan and its pins back")


def check_tags_and_details(browser, document):
    browser.click('li.tag[data-tag="103"] button')
    state = browser.run(HIGHLIGHTS)
    check(state["pins"] == ["103"] * 4, "a chosen tag highlights its pin in each drawing: %s"
          % state["pins"])
    check(state["items"] == ["103"], "a chosen tag is selected in the list")
    check(state["saved"] == ["saved-1"], "a chosen tag opens its saved view: %s" % state["saved"])
    check(state["sights"] == [1, 1, 1], "a chosen tag draws its view's line of sight")
    details = dict(browser.run(DETAILS))
    check(details.get("Model") == "pipes.dgn" and details.get("DMRS") == "0 13 302 0" and
          details.get("Level") == "12", "a chosen tag shows its element's data: %s" % details)
    # ... and its attributes from the project database beside the control file.
    check(details.get("tag_number") == "V-302" and details.get("type") == "globe" and
          details.get("inspection_date") == "2024-11-02",
          "a chosen tag shows its element's attributes from plant.db: %s" % details)
    # By keyboard: the tag's button takes the focus visibly, and Enter chooses it.
    browser.run("document.querySelector('li.tag[data-tag=\"105\"] button').focus()")
    browser.press("\ue007")
    state = browser.run(HIGHLIGHTS)
    check(state["items"] == ["105"] and state["saved"] == ["saved-2"],
          "Enter on a focused tag chooses it: %s" % state)
    outline = browser.run("return getComputedStyle(document.activeElement).outlineStyle")
    check(outline not in ("", "none"), "the focused tag shows its focus (%s)" % outline)
    browser.click('#view-plan .pin[data-tag="101"] .head')
    state = browser.run(HIGHLIGHTS)
    check(state["items"] == ["101"] and state["pins"] == ["101"] * 4,
          "a clicked pin selects its tag in the list: %s" % state)
    # An element clicked in a drawing shows its data: the middle of process line 103's
    # first run, away from the valves.
    segment = browser.run(SEGMENTS, "view-plan", "2")[0]
    x, y = (segment[0][0] + segment[1][0]) / 2, (segment[0][1] + segment[1][1]) / 2
    browser.perform({"type": "pointer", "id": "mouse", "parameters": {"pointerType": "mouse"},
                     "actions": [{"type": "pointerMove", "origin": "viewport", "x": round(x),
                                  "y": round(y)},
                                 {"type": "pointerDown", "button": 0},
                                 {"type": "pointerUp", "button": 0}]})
    details = dict(browser.run(DETAILS))
    check(details.get("DMRS") == "0 12 103 0", "a clicked element shows its data: %s" % details)


def check_sets(browser, document):
    data = browser.run(DATA)
    selections = document["selections"]
    for clicked, on in ((0, (0,)), (3, (0, 3)), (0, (3,))):
        browser.click('input.set[data-set="%d"]' % clicked)
        wanted = {(e["model"], e["index"]) for p in on for e in selections[p]["elements"]}
        for hits in browser.run(HITS):
            found = {(data["models"][data["elements"][e][0]], data["elements"][e][1]) for e in hits}
            check(found and found <= wanted, "with sets %s on, what is highlighted (%d) is "
                  "selected (%d)" % (on, len(found), len(wanted)))


def check_axe(browser, axe):
    """axe-core, put into the loaded page, finds no serious or critical violation."""
    if not axe or not os.path.exists(axe):
        print("SKIPPED: axe-core is not at %s; .ci/run fetches it with npm" % axe)
        check(not os.environ.get("ZT_REQUIRE_BROWSER"), "axe-core is there to run")
        return
    with open(axe, encoding="utf-8") as script:
        browser.run(script.read())
    found = browser.run_async(
        "const done = arguments[arguments.length - 1];"
        "axe.run(document, {resultTypes: ['violations']}).then(r => done(r.violations.map(v =>"
        " ({id: v.id, impact: v.impact, help: v.help, nodes: v.nodes.slice(0, 3).map("
        " n => n.target.join(' '))})))).catch(e => done(String(e)));")
    check(isinstance(found, list), "axe-core runs: %s" % found)
    print("axe-core: %d violations" % len(found) if isinstance(found, list) else "")
    for violation in found if isinstance(found, list) else []:
        print("axe: %s" % violation)
        check(violation["impact"] not in ("serious", "critical"),
              "axe-core: %s (%s): %s" % (violation["id"], violation["impact"], violation["nodes"]))


def check_sample(browser, pdsreview, dri, work, axe):
    page = os.path.join(work, "plant.html")
    document = json.loads(run(pdsreview, "--quiet", "--json", "open", dri, "select",
                              "report", page))
    models = json.loads(run(pdsreview, "--quiet", "--json", "--elements", "open", dri))["models"]
    browser.open(page)
    check_axe(browser, axe)
    check_real_vertices(browser, models)
    check_no_overlap(browser, "fitted")
    check_pins_on_elements(browser, models, dri, document)
    for saved in range(3):
        browser.click('.open-view[data-view="%d"]' % saved)
        check_no_overlap(browser, "saved view %d" % saved)
    check_navigation(browser)
    check_tags_and_details(browser, document)
    check_sets(browser, document)
    shot = browser.screenshot()
    with open(os.path.join(work, "plant.png"), "wb") as out:
        out.write(shot)


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
        width, height, bpp, rows = zt_webdriver.png_pixels(base64.b64decode(image))
        check(len(rows) == height and len(rows[0]) == width * bpp,
              "a raster holds its %dx%d pixels" % (width, height))
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
    parser.add_argument("--axe", help="axe.min.js of axe-core (ZT_AXE_CORE overrides it)")
    parser.add_argument("--out", help="keep the pages and the screenshot here")
    args = parser.parse_args()
    found, missing = zt_webdriver.find_browser()
    if not found:
        print("SKIPPED: no %s; install Debian's chromium and chromium-driver" % missing)
        return 1 if os.environ.get("ZT_REQUIRE_BROWSER") else SKIPPED
    axe = os.environ.get("ZT_AXE_CORE") or args.axe
    with tempfile.TemporaryDirectory() as scratch:
        work = args.out or scratch
        os.makedirs(work, exist_ok=True)
        with zt_webdriver.Browser(*found) as browser:
            check_sample(browser, args.pdsreview, os.path.join(args.sample, "plant.dri"), work,
                         axe)
            check_big(browser, args.pdsreview, args.make_big_model,
                      os.path.join(args.sample, "plant.dst"), work)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
