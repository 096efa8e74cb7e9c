// The page's overlay layout, run by node outside a browser: pins that fan out, labels
// that give way, the scale bar's length. Exits 1 on the first failure.
'use strict';
const assert = require('node:assert/strict');
const path = require('node:path');
const {fanOut, placeLabels, labelForms, scaleBarLength} =
    require(path.join(__dirname, '..', '..', '..', 'host', 'report', 'ReportPageOverlay.js'));

const cases = {
  'free pins keep their places'() {
    const wanted = [{x: 0, y: 0}, {x: 30, y: 0}, {x: 0, y: 30}];
    assert.deepEqual(fanOut(wanted, 10), wanted);
  },
  'pins on one spot fan out, the first staying, none overlapping'() {
    const wanted = Array.from({length: 40}, (_, i) => ({x: 100, y: i < 10 ? 100 : 100.5}));
    const heads = fanOut(wanted, 10);
    assert.deepEqual(heads[0], wanted[0]);
    for (let i = 0; i < heads.length; ++i)
      for (let j = i + 1; j < heads.length; ++j)
        assert.ok(Math.hypot(heads[i].x - heads[j].x, heads[i].y - heads[j].y) >= 20,
                  `pins ${i} and ${j} overlap`);
    // The second goes to the nearest ring, straight above: two radii and a gap.
    assert.ok(Math.abs(heads[1].x - 100) < 1e-9 && Math.abs(heads[1].y - 78) < 1e-9);
    assert.deepEqual(fanOut(wanted, 10), heads);
  },
  'labels give way: a shorter form, or none'() {
    const bounds = {width: 200, height: 100};
    const label = (x, y, widths) => ({x, y, height: 10, widths});
    const placed = placeLabels([label(10, 50, [80, 40]), label(100, 50, [80, 30, 10]),
                                label(0, 50, [15]), label(190, 20, [30]), label(50, 5, [10])],
                               [{x0: 140, y0: 40, x1: 160, y1: 60}], bounds);
    assert.deepEqual(placed.map(p => p.form), [0, 1, -1, 0, -1]);
    assert.equal(placed[1].x, 100);
    assert.equal(placed[3].x, 170); // moved left to end inside
  },
  'label forms shorten the name'() {
    assert.deepEqual(labelForms('equipment.dgn'), ['equipment.dgn', 'equipment', 'equip\u2026']);
    assert.deepEqual(labelForms('a.dgn'), ['a.dgn', 'a']);
    assert.deepEqual(labelForms('.profile'), ['.profile', '.prof\u2026']);
  },
  'the scale bar is 1, 2 or 5 times a power of ten'() {
    for (const [perUnit, length] of [[1, 100], [0.5, 200], [0.2, 500], [7.3, 20], [1500, 0.1],
                                     [1e-3, 1e5]]) {
      assert.ok(Math.abs(scaleBarLength(perUnit, 150) - length) < length * 1e-12, `${perUnit}`);
      assert.ok(scaleBarLength(perUnit, 150) * perUnit <= 150);
    }
  },
};

let failed = 0;
for (const [name, test] of Object.entries(cases)) {
  try {
    test();
    console.log(`ok: ${name}`);
  } catch (error) {
    failed = 1;
    console.log(`FAILED: ${name}: ${error.message}`);
  }
}
process.exit(failed);
