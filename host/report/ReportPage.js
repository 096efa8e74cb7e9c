// The page's behaviour: selection sets highlight what they select, and a tag, clicked in
// the list or as a pin, shows its pins and its view's eye and line of sight. SETS, the
// places of each set's elements among the drawn shapes, is written before this script.
const views = [...document.querySelectorAll('svg.view')];
const NS = 'http://www.w3.org/2000/svg';

// A scene point in a view's pixels, by the mapping the view's <svg> carries.
function toPx(svg, p) {
  const d = svg.dataset;
  return [+d.ox + +d.scale * p[+d.u], +d.oy - +d.scale * p[+d.v]];
}

function showSets() {
  for (const svg of views) {
    const shapes = svg.querySelector('.shapes').children;
    for (const r of svg.querySelectorAll('.shapes .hit')) r.classList.remove('hit');
    for (const box of document.querySelectorAll('input.set')) {
      const s = +box.dataset.set;
      for (const k of box.checked ? SETS[s] : []) shapes[k].classList.add('hit');
      for (const o of svg.querySelectorAll('image.overlay[data-set="' + s + '"]'))
        o.setAttribute('visibility', box.checked ? 'visible' : 'hidden');
    }
  }
}

function line(g, a, b) {
  const l = document.createElementNS(NS, 'line');
  l.setAttribute('x1', a[0]);
  l.setAttribute('y1', a[1]);
  l.setAttribute('x2', b[0]);
  l.setAttribute('y2', b[1]);
  g.appendChild(l);
}

function selectTag(item) {
  for (const e of document.querySelectorAll('.sel')) e.classList.remove('sel');
  item.classList.add('sel');
  const id = item.dataset.tag;
  const eye = item.parentElement.dataset.eye.split(' ').map(Number);
  const pos = item.dataset.pos ? item.dataset.pos.split(' ').map(Number) : null;
  for (const svg of views) {
    const g = svg.querySelector('.sight');
    g.replaceChildren();
    const e = toPx(svg, eye);
    const c = document.createElementNS(NS, 'circle');
    c.setAttribute('cx', e[0]);
    c.setAttribute('cy', e[1]);
    c.setAttribute('r', 5);
    g.appendChild(c);
    if (pos) line(g, e, toPx(svg, pos));
    for (const pin of svg.querySelectorAll('.pin[data-tag="' + id + '"]')) pin.classList.add('sel');
  }
}

for (const item of document.querySelectorAll('li.tag'))
  item.addEventListener('click', () => selectTag(item));
for (const pin of document.querySelectorAll('.pin'))
  pin.addEventListener('click', () => {
    const item = document.querySelector('li.tag[data-tag="' + pin.dataset.tag + '"]');
    if (item) {
      selectTag(item);
      item.scrollIntoView({block: 'nearest'});
    }
  });
for (const box of document.querySelectorAll('input.set')) box.addEventListener('change', showSets);
for (const radio of document.querySelectorAll('input[name=key]'))
  radio.addEventListener('change', () => { document.body.className = 'by-' + radio.value; });
