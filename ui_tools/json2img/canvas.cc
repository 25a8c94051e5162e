#include "json2img/canvas.h"

#include <algorithm>

namespace j2i {

Canvas::Canvas(int w, int h, Rgba ground) : img_(w, h, ground) {}

// Straight-alpha source-over, the same arithmetic as the shared composite.
void Canvas::blend(int x, int y, int r, int g, int b, int a) {
  if (a <= 0) return;
  uint8_t* d = img_.at(x, y);
  if (a >= 255) {
    d[0] = (uint8_t)r, d[1] = (uint8_t)g, d[2] = (uint8_t)b, d[3] = 255;
    return;
  }
  double as = a / 255.0, ad = d[3] / 255.0;
  double ao = as + ad * (1 - as);
  const int src[3] = {r, g, b};
  for (int c = 0; c < 3; ++c) d[c] = (uint8_t)((src[c] * as + d[c] * ad * (1 - as)) / ao + 0.5);
  d[3] = (uint8_t)(ao * 255 + 0.5);
}

void Canvas::fill(const Rect& r, Rgba c, const Rect& clip) {
  Rect k = r.intersect(clip).intersect(bounds());
  for (int y = k.t; y < k.b; ++y)
    for (int x = k.l; x < k.r; ++x) blend(x, y, c.r, c.g, c.b, c.a);
}

void Canvas::frame(const Rect& r, Rgba c, const Rect& clip) {
  if (r.empty()) return;
  fill({r.l, r.t, r.r, r.t + 1}, c, clip);
  if (r.h() > 1) fill({r.l, r.b - 1, r.r, r.b}, c, clip);
  fill({r.l, r.t + 1, r.l + 1, r.b - 1}, c, clip);
  if (r.w() > 1) fill({r.r - 1, r.t + 1, r.r, r.b - 1}, c, clip);
}

void Canvas::draw_image(const gen_res::Image& src, int x, int y, const Rect& clip) {
  Rect k = Rect{x, y, x + src.w, y + src.h}.intersect(clip).intersect(bounds());
  for (int ty = k.t; ty < k.b; ++ty)
    for (int tx = k.l; tx < k.r; ++tx) {
      const uint8_t* s = src.at(tx - x, ty - y);
      blend(tx, ty, s[0], s[1], s[2], s[3]);
    }
}

void Canvas::draw_coverage(const uint8_t* cov, int w, int h, int pitch, int x, int y, Rgba c,
                           const Rect& clip) {
  Rect k = Rect{x, y, x + w, y + h}.intersect(clip).intersect(bounds());
  for (int ty = k.t; ty < k.b; ++ty)
    for (int tx = k.l; tx < k.r; ++tx) {
      int a = cov[(ty - y) * pitch + (tx - x)] * c.a / 255;
      blend(tx, ty, c.r, c.g, c.b, a);
    }
}

}  // namespace j2i
