// Where the review page's overlay goes, worked out from numbers alone so that it can be
// tried outside a browser: pin heads that would overlap moved apart, the model labels that
// fit, and the scale bar's length.
'use strict';

// Heads for pins that want to stand at `wanted` ([{x, y}], in their order), no two closer
// than two radii and a gap. Each keeps its wanted place where that is free, or else takes
// the first free place on rings around it, ring after ring, each ring starting above it.
function fanOut(wanted, radius) {
  const step = 2 * radius + 2;
  const placed = [];
  const free = (x, y) => placed.every(p => (p.x - x) ** 2 + (p.y - y) ** 2 >= step * step - 1e-6);
  for (const pin of wanted) {
    let at = free(pin.x, pin.y) ? {x: pin.x, y: pin.y} : null;
    for (let ring = 1; !at; ++ring) {
      const places = 6 * ring;
      for (let k = 0; k < places && !at; ++k) {
        const angle = -Math.PI / 2 + 2 * Math.PI * k / places;
        const x = pin.x + ring * step * Math.cos(angle), y = pin.y + ring * step * Math.sin(angle);
        if (free(x, y)) at = {x, y};
      }
    }
    placed.push(at);
  }
  return placed;
}

function overlaps(a, b) {
  return a.x0 < b.x1 && b.x0 < a.x1 && a.y0 < b.y1 && b.y0 < a.y1;
}

// Which form of each label fits. A label ({x, y, height, widths}) stands with its left end
// at x and its baseline at y, in the first of its forms (widths, longest first) whose box
// meets no label placed before it and no obstacle ({x0, y0, x1, y1}), and lies within
// `bounds` ({width, height}), moved left as far as need be to end inside. Gives the form
// taken, or -1 for a label left out, and the left end, for each label.
function placeLabels(labels, obstacles, bounds) {
  const taken = [];
  return labels.map(label => {
    for (let form = 0; form < label.widths.length; ++form) {
      const width = label.widths[form];
      const x = Math.max(0, Math.min(label.x, bounds.width - width));
      const box = {x0: x, y0: label.y - label.height, x1: x + width, y1: label.y};
      if (box.x1 > bounds.width || box.y0 < 0 || box.y1 > bounds.height) continue;
      if (taken.some(t => overlaps(t, box)) || obstacles.some(o => overlaps(o, box))) continue;
      taken.push(box);
      return {form, x};
    }
    return {form: -1, x: label.x};
  });
}

// The forms of a label, longest first: the whole name, the name without its extension,
// and its first few characters with an ellipsis.
function labelForms(name) {
  const forms = [name];
  const dot = name.lastIndexOf('.');
  if (dot > 0) forms.push(name.slice(0, dot));
  if (forms[forms.length - 1].length > 6) forms.push(forms[forms.length - 1].slice(0, 5) + '\u2026');
  return forms;
}

// The longest of 1, 2 or 5 times a power of ten, in scene units, that spans at most
// `maxPixels` at `pixelsPerUnit`.
function scaleBarLength(pixelsPerUnit, maxPixels) {
  const length = Math.pow(10, Math.floor(Math.log10(maxPixels / pixelsPerUnit)));
  for (const times of [5, 2])
    if (length * times * pixelsPerUnit <= maxPixels) return length * times;
  return length;
}

if (typeof module !== 'undefined') module.exports = {fanOut, placeLabels, labelForms, scaleBarLength};
