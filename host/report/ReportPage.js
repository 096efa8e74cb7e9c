// The page's behaviour: each drawing zooms and pans with its overlay laid out again at
// every change (pins of one size fanned out, labels that fit, the scale bar); selection
// sets highlight what they select; a tag, chosen in the list or as a pin, is highlighted,
// opens its saved view and shows its element's data, as does a click on an element.
const DATA = JSON.parse(document.getElementById('page-data').textContent);
const NS = 'http://www.w3.org/2000/svg';
const views = [...document.querySelectorAll('svg.view')];
const controls = new Map();
// For each drawing, the shapes and texts of each element, by the element itself and by
// the outermost element that holds it.
const byElement = new Map(), byTop = new Map();
let selectedTag = null;

const pair = text => text.split(' ').map(Number);
const visible = svg => svg.getClientRects().length > 0;

function indexDrawing(svg) {
  const own = new Map(), top = new Map();
  const add = (map, key, node) => { if (!map.has(key)) map.set(key, []); map.get(key).push(node); };
  for (const node of svg.querySelectorAll('.shapes path, .texts .dt')) {
    add(own, node.dataset.c || node.dataset.e, node);
    add(top, node.dataset.e, node);
  }
  byElement.set(svg, own);
  byTop.set(svg, top);
}

function layPins(svg, st) {
  const shown = [];
  for (const pin of svg.querySelectorAll('.pins .pin')) {
    const [ax, ay] = pair(pin.dataset.anchor), [hx, hy] = pair(pin.dataset.head);
    const anchor = {x: st.k * ax + st.tx, y: st.k * ay + st.ty};
    const inside = anchor.x >= 0 && anchor.y >= 0 && anchor.x <= svg.viewBox.baseVal.width &&
                   anchor.y <= svg.viewBox.baseVal.height;
    pin.style.display = inside ? '' : 'none';
    if (inside) shown.push({pin, anchor, head: {x: st.k * hx + st.tx, y: st.k * hy + st.ty}});
  }
  // The radius the page drew its pins with.
  const radius = shown.length ? +shown[0].pin.querySelector('.head circle').getAttribute('r') : 0;
  const heads = fanOut(shown.map(s => s.head), radius);
  shown.forEach(({pin, anchor}, i) => {
    const h = heads[i];
    pin.querySelector('.anchor').setAttribute('transform', `translate(${anchor.x} ${anchor.y})`);
    pin.querySelector('.head').setAttribute('transform', `translate(${h.x} ${h.y})`);
    pin.querySelector('.leader').setAttribute('d', `M${anchor.x} ${anchor.y}L${h.x} ${h.y}`);
  });
  return heads.map(h => ({x0: h.x - radius, y0: h.y - radius, x1: h.x + radius, y1: h.y + radius}));
}

const widths = new Map();
function measure(text, node) {
  if (!widths.has(text)) {
    node.textContent = text;
    widths.set(text, node.getComputedTextLength());
  }
  return widths.get(text);
}

function layLabels(svg, st, obstacles) {
  const nodes = [...svg.querySelectorAll('.labels text')];
  if (!nodes.length) return;
  const labels = nodes.map(node => {
    node.dataset.name = node.dataset.name || node.textContent;
    const forms = labelForms(node.dataset.name);
    return {forms, x: st.k * +node.dataset.x + st.tx, y: st.k * +node.dataset.y + st.ty - 4,
            height: 11, widths: forms.map(f => measure(f, node))};
  });
  const bounds = {width: svg.viewBox.baseVal.width, height: svg.viewBox.baseVal.height};
  placeLabels(labels, obstacles, bounds).forEach(({form, x}, i) => {
    const node = nodes[i];
    node.style.display = form < 0 ? 'none' : '';
    node.textContent = labels[i].forms[Math.max(form, 0)];
    node.setAttribute('x', x);
    node.setAttribute('y', labels[i].y);
  });
}

function layScaleBar(svg, st) {
  const bar = svg.querySelector('.scalebar');
  if (!bar) return;
  const perUnit = +svg.dataset.scale * st.k, length = scaleBarLength(perUnit, 150);
  const y = svg.viewBox.baseVal.height - 10;
  bar.querySelector('path').setAttribute('d', `M10 ${y}h${length * perUnit}`);
  const text = bar.querySelector('text');
  text.setAttribute('x', 10);
  text.setAttribute('y', y - 5);
  text.textContent = `${+length.toPrecision(12)} ${svg.dataset.units}`;
}

// A scene point in a drawing along an axis, as its <svg> maps it.
function toDrawing(svg, p, st) {
  const d = svg.dataset;
  return [st.k * (+d.ox + +d.scale * p[+d.u]) + st.tx, st.k * (+d.oy - +d.scale * p[+d.v]) + st.ty];
}

// The eye of the selected tag's view and its line of sight to the tag.
function laySight(svg, st) {
  const g = svg.querySelector('.sight');
  g.replaceChildren();
  if (!selectedTag || svg.dataset.perspective) return;
  const e = toDrawing(svg, pair(selectedTag.closest('ul.tags').dataset.eye), st);
  const eye = document.createElementNS(NS, 'circle');
  eye.setAttribute('cx', e[0]);
  eye.setAttribute('cy', e[1]);
  eye.setAttribute('r', 5);
  g.appendChild(eye);
  if (selectedTag.dataset.pos) {
    const p = toDrawing(svg, pair(selectedTag.dataset.pos), st);
    const line = document.createElementNS(NS, 'path');
    line.setAttribute('d', `M${e[0]} ${e[1]}L${p[0]} ${p[1]}`);
    g.appendChild(line);
  }
}

function relayout(svg, st) {
  if (!visible(svg)) return;
  svg.querySelector('.scene').setAttribute('transform', `translate(${st.tx} ${st.ty}) scale(${st.k})`);
  for (const text of svg.querySelectorAll('.texts .dt'))
    text.classList.toggle('legible', +text.dataset.h * st.k >= 4);
  const heads = layPins(svg, st);
  layLabels(svg, st, heads);
  layScaleBar(svg, st);
  laySight(svg, st);
}

function showSets() {
  for (const svg of views) {
    for (const node of svg.querySelectorAll('.hit')) node.classList.remove('hit');
    for (const box of document.querySelectorAll('input.set')) {
      const s = +box.dataset.set;
      if (box.checked)
        for (const element of DATA.sets[s])
          for (const node of byElement.get(svg).get(String(element)) || []) node.classList.add('hit');
      for (const image of svg.querySelectorAll(`image.overlay[data-set="${s}"]`))
        image.setAttribute('visibility', box.checked ? 'visible' : 'hidden');
    }
  }
}

function row(list, name, value) {
  const dt = document.createElement('dt'), dd = document.createElement('dd');
  dt.textContent = name;
  dd.textContent = value;
  list.append(dt, dd);
}

// What the page knows of an element, in the details box; with none, `none` says why.
function showDetails(element, none) {
  for (const node of document.querySelectorAll('.picked')) node.classList.remove('picked');
  const box = document.getElementById('details');
  const heading = document.createElement('h2');
  heading.textContent = 'Selected element';
  const data = DATA.elements[element];
  if (!data) {
    const p = document.createElement('p');
    p.className = 'meta';
    p.textContent = none;
    box.replaceChildren(heading, p);
    return;
  }
  const [model, index, level, colour, type, components, dmrs, attributes] = data;
  const list = document.createElement('dl');
  row(list, 'Model', DATA.models[model]);
  row(list, 'Element', `${DATA.types[type]}, element ${index} of the file` +
      (components ? `, with ${components} components` : ''));
  row(list, 'Level', level);
  row(list, 'Colour', colour);
  row(list, 'DMRS', dmrs || 'none');
  const more = document.createElement('h3');
  more.textContent = 'Attributes';
  box.replaceChildren(heading, list, more);
  if (attributes < 0) {
    const p = document.createElement('p');
    p.className = 'meta';
    p.textContent = 'None from a project database.';
    box.append(p);
  } else {
    const table = document.createElement('dl');
    table.className = 'attributes';
    for (const [name, value] of DATA.attributes[attributes]) row(table, name, value);
    box.append(table);
  }
  for (const svg of views)
    for (const node of byTop.get(svg).get(String(element)) || []) node.classList.add('picked');
}

function showSaved(view) {
  for (const figure of document.querySelectorAll('#saved figure'))
    figure.hidden = figure.id !== `saved-${view}`;
  const svg = document.getElementById(`view-saved-${view}`);
  if (svg) relayout(svg, controls.get(svg).state);
  for (const button of document.querySelectorAll('.open-view'))
    button.setAttribute('aria-expanded', String(button.dataset.view === String(view)));
}

function selectTag(item) {
  for (const node of document.querySelectorAll('.sel')) node.classList.remove('sel');
  selectedTag = item;
  item.classList.add('sel');
  showSaved(item.closest('ul.tags').dataset.view);
  for (const pin of document.querySelectorAll(`.pin[data-tag="${item.dataset.tag}"]`))
    pin.classList.add('sel');
  for (const svg of views) relayout(svg, controls.get(svg).state);
  showDetails(item.dataset.e, 'No element lies under this tag.');
}

// The element drawn nearest the pointer, within a few pixels of it.
function pick(svg, clientX, clientY) {
  for (let r = 0; r <= 6; r += 2)
    for (let a = 0; a < (r ? 8 : 1); ++a) {
      const x = clientX + r * Math.cos(a * Math.PI / 4), y = clientY + r * Math.sin(a * Math.PI / 4);
      const hit = document.elementFromPoint(x, y);
      const node = hit && svg.contains(hit) && hit.closest('[data-e]');
      if (node) return node.dataset.e;
    }
  return null;
}

for (const svg of views) {
  indexDrawing(svg);
  controls.set(svg, makeNavigable(svg, relayout, (svg, x, y) => {
    const element = pick(svg, x, y);
    if (element !== null) showDetails(element);
  }));
  relayout(svg, controls.get(svg).state);
}
for (const item of document.querySelectorAll('li.tag'))
  item.querySelector('button').addEventListener('click', () => selectTag(item));
for (const pin of document.querySelectorAll('.pin'))
  pin.addEventListener('click', () => {
    const item = document.querySelector(`li.tag[data-tag="${pin.dataset.tag}"]`);
    if (item) {
      selectTag(item);
      item.scrollIntoView({block: 'nearest'});
    }
  });
for (const button of document.querySelectorAll('.open-view'))
  button.addEventListener('click', () => showSaved(button.dataset.view));
for (const box of document.querySelectorAll('input.set')) box.addEventListener('change', showSets);
for (const radio of document.querySelectorAll('input[name=key]'))
  radio.addEventListener('change', () => { document.body.className = 'by-' + radio.value; });
