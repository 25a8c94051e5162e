#include "assets/recipes.h"

#include <algorithm>
#include <stdexcept>

#include "gen_res/glyphs.h"
#include "gen_res/raster.h"
#include "gen_res/shapes.h"
#include "base/values.h"

namespace ub {

using gen_res::Image;

gen_res::Image chevron_image(int w, int h, Rgba color, int ss) {
  ss = std::max(ss, 8);
  // About 12% of the width and at least 2 px, so small boxes keep a smooth stroke.
  int stroke = (int)std::max<long long>(half_even(w * 0.12), 2);
  int span = std::max(std::min(w - stroke, h - stroke), 4);
  gen_res::SsCanvas big(w, h, ss);
  long long x0 = floordiv(w - span, 2), cy = floordiv(h, 2);
  long long y0 = cy - floordiv(span, 2), y1 = cy + floordiv(span, 2);
  std::vector<gen_res::Point> pts = {{(double)(x0 * ss), (double)(y0 * ss)},
                                     {(double)((x0 + span) * ss), (double)(cy * ss)},
                                     {(double)(x0 * ss), (double)(y1 * ss)}};
  big.line(pts, stroke * ss, true);
  double r = stroke * ss / 2.0;
  for (auto& [x, y] : pts) big.ellipse(x - r, y - r, x + r, y + r);
  return big.paint(color);
}

gen_res::Image mark_image(const Asset& prm, const iconlib::Index& icons, bool* fell_back) {
  int w = prm.w, h = prm.h;
  Image img = prm.border ? gen_res::bordered_cov(w, h, prm.radius, prm.fill, *prm.border, prm.border_w, 8)
                         : gen_res::rounded_rect_cov(w, h, prm.radius, prm.fill, 8);
  Rgba mc = prm.mark_color.value_or(Rgba{255, 255, 255, 255});
  if (prm.mark == "check") {
    int ms = prm.mark_size;
    // A record counts only when it is a true value: an empty one falls back too.
    const Json* rec = icons.find("check");
    const bool library = rec && truthy(*rec);
    if (!library && fell_back) *fell_back = true;
    Image g = library ? icons.produce("check", ms, mc, std::string("on")).first : gen_res::glyph_image("check", ms, mc);
    gen_res::alpha_composite(img, g, (int)floordiv(w - g.w, 2), (int)floordiv(h - g.h, 2));
  } else if (prm.mark == "dot") {
    int ms = prm.mark_size;
    Image dot = gen_res::rounded_rect_cov(ms, ms, (double)floordiv(ms, 2), mc, 8);
    gen_res::alpha_composite(img, dot, (int)floordiv(w - ms, 2), (int)floordiv(h - ms, 2));
  }
  return img;
}

gen_res::Image chart_image(const Asset& prm) {
  int w = prm.w, h = prm.h;
  const std::vector<double>& data = prm.data;
  if (data.empty()) throw std::runtime_error("chart_image: no data values");
  int base_h = std::max(prm.base_h, 1);
  double dmax = *std::max_element(data.begin(), data.end());
  double dmin = *std::min_element(data.begin(), data.end());
  // Bars of values that are none of them negative stand on zero, so their heights compare.
  const bool from_zero = prm.chart_kind == "bar" && dmin >= 0;
  if (from_zero) dmin = 0;
  // The limit line stays inside the picture: the scale reaches it.
  if (prm.limit) {
    dmax = std::max(dmax, *prm.limit);
    dmin = std::min(dmin, *prm.limit);
  }
  double span = dmax - dmin;
  if (span == 0) span = 1.0;
  int n = (int)data.size();
  int top_pad = (int)std::max<long long>(half_even(h * 0.12), base_h + 2);
  int plot_h = std::max(h - base_h - top_pad, 1);

  Image img(w, h);
  gen_res::alpha_composite(img, gen_res::rounded_rect_cov(w, base_h, 0, prm.axis, 8), 0, h - base_h);
  auto y_of = [&](double v) { return h - base_h - (int)half_even((v - dmin) / span * plot_h); };
  auto draw_limit = [&] {
    if (!prm.limit) return;
    const int lt = std::max<int>(half_even(h * 0.02), 1);
    const int ly = std::clamp(y_of(*prm.limit) - lt / 2, 0, std::max(h - lt, 0));
    gen_res::alpha_composite(img, gen_res::rounded_rect_cov(w, lt, 0, prm.limit_color, 8), 0, ly);
  };

  if (prm.chart_kind == "bar") {
    double slot = (double)w / n;
    int bw = (int)std::max<long long>(half_even(slot * 0.56), 2);
    for (int i = 0; i < n; ++i) {
      // A zero bar on a zero baseline is no bar; every other value keeps a visible stub
      // standing on the axis.
      if (from_zero && data[i] == 0) continue;
      int bh = std::max(h - base_h - y_of(data[i]), kMinBarPx);
      int top = h - base_h - bh;
      if (!from_zero) {  // the old low-anchored scale: the stub covers the axis row
        top = y_of(data[i]);
        bh = std::max(h - base_h - top, 2);
      }
      int r = std::min<int>(std::max<long long>(floordiv(bw, 4), 1), 6);
      long long cx = half_even(i * slot + (slot - bw) / 2.0);
      cx = std::max<long long>(std::min<long long>(cx, w - bw), 0);
      gen_res::alpha_composite(img, gen_res::rounded_rect_cov(bw, bh, r, prm.color, 8), (int)cx, top);
    }
    draw_limit();
    return img;
  }

  const int ss = 8;
  gen_res::SsCanvas big(w, h, ss);
  // At least 3 px: thinner lines step visibly.
  int stroke = (int)std::max<long long>(half_even(h * 0.05), 3);
  std::vector<gen_res::Point> pts;
  for (int i = 0; i < n; ++i) {
    double x = n > 1 ? w * (i + 0.5) / n : w / 2.0;
    pts.push_back({x * ss, (double)y_of(data[i]) * ss});
  }
  big.line(pts, stroke * ss, true);
  double r = stroke * ss / 2.0;
  for (auto& [x, y] : pts) big.ellipse(x - r, y - r, x + r, y + r);
  gen_res::alpha_composite(img, big.paint(prm.color), 0, 0);
  draw_limit();
  return img;
}

}  // namespace ub
