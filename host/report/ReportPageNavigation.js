// Zoom and pan of the page's drawings. Each drawing's scene group is shown at
// screen = k * point + (tx, ty) in the drawing's own units; a change calls `changed` with
// the drawing and its state, which lays the overlay out again. A click that did not drag
// goes to `clicked` with the drawing's point under it.
const ZOOM_LIMITS = [0.25, 256];
const KEY_PAN = 50;

function makeNavigable(svg, changed, clicked) {
  const state = {k: 1, tx: 0, ty: 0};
  const width = svg.viewBox.baseVal.width, height = svg.viewBox.baseVal.height;
  const apply = () => changed(svg, state);
  const toDrawing = (clientX, clientY) => {
    const m = svg.getScreenCTM();
    return m ? new DOMPoint(clientX, clientY).matrixTransform(m.inverse()) : {x: 0, y: 0};
  };
  const zoomAt = (factor, x, y) => {
    const k = Math.min(ZOOM_LIMITS[1], Math.max(ZOOM_LIMITS[0], state.k * factor));
    state.tx = x - (x - state.tx) * k / state.k;
    state.ty = y - (y - state.ty) * k / state.k;
    state.k = k;
    apply();
  };
  const control = {
    state,
    zoom: factor => zoomAt(factor, width / 2, height / 2),
    pan: (dx, dy) => { state.tx += dx; state.ty += dy; apply(); },
    fit: () => { state.k = 1; state.tx = 0; state.ty = 0; apply(); },
  };

  svg.addEventListener('wheel', e => {
    e.preventDefault();
    const p = toDrawing(e.clientX, e.clientY);
    zoomAt(Math.exp(-e.deltaY * 0.002), p.x, p.y);
  }, {passive: false});

  let drag = null;
  svg.addEventListener('pointerdown', e => {
    if (e.button !== 0 || e.target.closest('.pin')) return;
    drag = {id: e.pointerId, x: e.clientX, y: e.clientY, moved: false, from: toDrawing(e.clientX, e.clientY)};
  });
  svg.addEventListener('pointermove', e => {
    if (!drag || e.pointerId !== drag.id) return;
    if (!drag.moved && Math.hypot(e.clientX - drag.x, e.clientY - drag.y) < 3) return;
    if (!drag.moved) {
      drag.moved = true;
      svg.setPointerCapture(e.pointerId);
      svg.classList.add('dragging');
    }
    const p = toDrawing(e.clientX, e.clientY);
    control.pan(p.x - drag.from.x, p.y - drag.from.y);
    drag.from = p;
  });
  const end = e => {
    if (!drag || e.pointerId !== drag.id) return;
    const wasClick = !drag.moved && e.type === 'pointerup';
    drag = null;
    svg.classList.remove('dragging');
    if (wasClick) clicked(svg, e.clientX, e.clientY);
  };
  svg.addEventListener('pointerup', end);
  svg.addEventListener('pointercancel', end);

  svg.addEventListener('keydown', e => {
    const moves = {ArrowLeft: [KEY_PAN, 0], ArrowRight: [-KEY_PAN, 0],
                   ArrowUp: [0, KEY_PAN], ArrowDown: [0, -KEY_PAN]};
    if (moves[e.key]) control.pan(...moves[e.key]);
    else if (e.key === '+' || e.key === '=') control.zoom(1.25);
    else if (e.key === '-' || e.key === '\u2212') control.zoom(0.8);
    else if (e.key === '0' || e.key === 'Home') control.fit();
    else return;
    e.preventDefault();
  });

  for (const button of svg.closest('figure').querySelectorAll('.zoom button'))
    button.addEventListener('click', () => {
      const act = button.dataset.act;
      if (act === 'in') control.zoom(1.25);
      else if (act === 'out') control.zoom(0.8);
      else control.fit();
    });
  return control;
}
