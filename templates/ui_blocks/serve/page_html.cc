#include "serve/page_html.h"

namespace serve {

namespace {

// The page polls /state?after=<version> in a loop (long polling) and redraws on every answer.
const char* const kPage = R"HTML(<!doctype html>
<html lang="en"><head><meta charset="utf-8"><title>compose serve</title>
<style>
body{font:13px sans-serif;margin:0;background:#f3f3f3;color:#222}
header{padding:6px 12px;background:#263238;color:#fff;display:flex;gap:16px;align-items:center}
header b{font-size:15px}
main{display:flex;gap:12px;padding:12px;align-items:flex-start}
#previews{display:flex;gap:16px;flex-wrap:wrap;flex:1}
.size h3{margin:0 0 4px;font-size:12px;color:#555}
.frame{position:relative;display:inline-block;background:#fff;box-shadow:0 0 0 1px #999;cursor:crosshair}
.frame img{display:block;image-rendering:pixelated}
.box{position:absolute;pointer-events:none;outline:2px solid #e91e63;background:rgba(233,30,99,.12)}
.stop{position:absolute;left:0;right:0;top:0;background:rgba(183,28,28,.92);color:#fff;padding:8px;white-space:pre-wrap;font-family:monospace}
aside{width:340px;flex:none;display:flex;flex-direction:column;gap:10px}
section{background:#fff;padding:8px;box-shadow:0 0 0 1px #ccc}
section h4{margin:0 0 6px}
#inspector dl{display:grid;grid-template-columns:80px 1fr;margin:0;gap:2px 6px}
#inspector dt{color:#777}#inspector dd{margin:0;word-break:break-all}
#inspector img{max-width:100%;background:repeating-conic-gradient(#ddd 0 25%,#fff 0 50%) 0 0/10px 10px}
#notes li,#insp-notes li{font-family:monospace;font-size:11px;white-space:pre-wrap}
#list{max-height:40vh;overflow:auto;margin:4px 0 0;padding:0;list-style:none;font-size:12px}
#list li{padding:2px 4px;cursor:pointer}#list li:hover,#list li.on{background:#fce4ec}
#list .t{color:#777}
</style></head><body>
<header><b>compose serve</b>
<label>zoom <select id="zoom"><option>0.5</option><option selected>1</option><option>2</option><option>3</option><option>4</option></select></label>
<span id="status">connecting…</span></header>
<main><div id="previews"></div>
<aside>
<section id="inspector"><h4>Inspector</h4><div id="insp">Hover a control; click copies its caption.</div></section>
<section><h4>Controls</h4><input id="filter" placeholder="filter" style="width:95%"><ul id="list"></ul></section>
<section><h4>Notes</h4><ul id="notes"></ul></section>
</aside></main>
<script>
let st = null, zoom = 1, hover = null;
const $ = id => document.getElementById(id);
const esc = s => String(s).replace(/[&<>"]/g, c => ({'&':'&amp;','<':'&lt;','>':'&gt;','"':'&quot;'}[c]));
$('zoom').onchange = e => { zoom = +e.target.value; draw(); };
$('filter').oninput = () => drawList();

function pick(s, x, y) {  // the smallest control under the point
  let best = null;
  for (const c of s.controls)
    if (c.visible && x >= c.left && y >= c.top && x < c.left + c.width && y < c.top + c.height &&
        (!best || c.width * c.height <= best.width * best.height)) best = c;
  return best;
}
function copy(text) {
  if (navigator.clipboard) navigator.clipboard.writeText(text).catch(() => {});
  $('status').textContent = 'copied ' + text;
}
function inspect(s, c) {
  hover = c ? {s, c} : null;
  document.querySelectorAll('.box').forEach(b => b.remove());
  if (!c) return;
  const f = document.querySelector(`.frame[data-i="${st.sizes.indexOf(s)}"]`);
  if (f) {
    const b = document.createElement('div');
    b.className = 'box';
    Object.assign(b.style, {left: c.left * zoom + 'px', top: c.top * zoom + 'px',
      width: c.width * zoom + 'px', height: c.height * zoom + 'px'});
    f.appendChild(b);
  }
  const pic = c.pictures[0];
  $('insp').innerHTML = `<dl><dt>caption</dt><dd>${esc(c.caption)}</dd><dt>type</dt><dd>${esc(c.type)}</dd>
<dt>box</dt><dd>${c.left},${c.top} ${c.width}×${c.height}</dd><dt>text</dt><dd>${esc(c.text)}</dd>
<dt>font size</dt><dd>${c.fontSize ?? ''}</dd><dt>picture</dt><dd>${esc(c.pictures.join(' '))}</dd></dl>` +
    (pic ? `<img src="/images/${encodeURIComponent(pic)}" alt="${esc(pic)}">` : '') +
    `<ul id="insp-notes">${c.notes.map(i => `<li>${esc(s.notes[i] ?? '')}</li>`).join('')}</ul>`;
}
function draw() {
  const box = $('previews');
  box.innerHTML = '';
  st.sizes.forEach((s, i) => {
    const d = document.createElement('div');
    d.className = 'size';
    d.innerHTML = `<h3>${esc(s.label)} ${s.width}×${s.height}</h3>`;
    const f = document.createElement('div');
    f.className = 'frame';
    f.dataset.i = i;
    if (s.png) {
      const img = new Image();
      img.src = s.png;
      img.id = 'preview' + i;
      img.width = s.width * zoom;
      img.height = s.height * zoom;
      f.appendChild(img);
    } else f.style.cssText = 'width:320px;height:60px';
    if (s.stop) {
      const m = document.createElement('div');
      m.className = 'stop';
      m.textContent = s.stop;
      f.appendChild(m);
    }
    const at = e => { const r = f.getBoundingClientRect(); return pick(s, (e.clientX - r.left) / zoom, (e.clientY - r.top) / zoom); };
    f.onmousemove = e => { const c = at(e); if (!hover || hover.c !== c) inspect(s, c); };
    f.onmouseleave = () => inspect(s, null);
    f.onclick = e => { const c = at(e); if (c) copy(c.caption); };
    d.appendChild(f);
    box.appendChild(d);
  });
  $('notes').innerHTML = st.sizes.flatMap(s => s.notes.map(n => `<li>${esc(n)}</li>`)).join('');
  const stops = st.sizes.filter(s => s.stop).length;
  $('status').textContent = stops ? 'refused; showing the last good preview' : 'composed (version ' + st.version + ')';
  drawList();
}
function drawList() {
  if (!st) return;
  const q = $('filter').value.toLowerCase(), ul = $('list');
  ul.innerHTML = '';
  st.sizes.forEach(s => s.controls.forEach(c => {
    if (q && !(c.caption + ' ' + c.type + ' ' + c.text).toLowerCase().includes(q)) return;
    const li = document.createElement('li');
    li.innerHTML = `${esc(c.caption)} <span class="t">${esc(c.type)}${c.text ? ' “' + esc(c.text) + '”' : ''}</span>`;
    li.onmouseenter = () => inspect(s, c);
    li.onclick = () => copy(c.caption);
    ul.appendChild(li);
  }));
}
async function poll() {
  let v = -1;
  for (;;) {
    try {
      const r = await fetch('/state?after=' + v);
      st = await r.json();
      v = st.version;
      draw();
    } catch (e) {
      $('status').textContent = 'disconnected';
      await new Promise(r => setTimeout(r, 1000));
    }
  }
}
poll();
</script></body></html>
)HTML";

}  // namespace

const std::string& page_html() {
  static const std::string page = kPage;
  return page;
}

}  // namespace serve
