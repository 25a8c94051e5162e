#include "assets/gauge_picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "gen_res/raster.h"

namespace ub {

namespace {

constexpr int kSs = 8;  // subsamples per pixel side
constexpr double kPi = 3.14159265358979323846;

// An arc of radius r about (c, c), from angle a0 to a1 (degrees), in the big grid, with
// round ends.
void arc(gen_res::SsCanvas& cv, double c, double r, double a0, double a1, double width) {
  const int n = std::max(8, (int)std::ceil((a1 - a0) / 2));
  std::vector<gen_res::Point> pts;
  for (int i = 0; i <= n; ++i) {
    const double a = (a0 + (a1 - a0) * i / n) * kPi / 180;
    pts.push_back({(c + r * std::cos(a)) * kSs, (c + r * std::sin(a)) * kSs});
  }
  cv.line(pts, width * kSs, true);
  const double e = width * kSs / 2;
  for (const auto& p : {pts.front(), pts.back()}) cv.ellipse(p.first - e, p.second - e, p.first + e, p.second + e);
}

}  // namespace

double gauge_angle(double share) { return 135 + 270 * std::clamp(share, 0.0, 1.0); }

gen_res::Image gauge_image(const Asset& prm) {
  const int d = prm.w;
  const double sw = std::max(prm.stroke, 1), c = d / 2.0, r = (d - sw) / 2;
  gen_res::Image img(d, d);
  gen_res::SsCanvas track(d, d, kSs);
  arc(track, c, r, gauge_angle(0), gauge_angle(1), sw);
  gen_res::alpha_composite(img, track.paint(prm.fill), 0, 0);
  if (prm.value_pm > 0) {
    gen_res::SsCanvas value(d, d, kSs);
    arc(value, c, r, gauge_angle(0), gauge_angle(prm.value_pm / 1000.0), sw);
    gen_res::alpha_composite(img, value.paint(prm.color), 0, 0);
  }
  if (prm.limit_pm >= 0) {
    // A radial tick across the ring, reaching a little inside it.
    const double a = gauge_angle(prm.limit_pm / 1000.0) * kPi / 180;
    const double r0 = r - sw * 0.85, r1 = std::min(r + sw / 2, c - 0.5);
    const double tw = std::max(2.0, sw * 0.3);
    gen_res::SsCanvas tick(d, d, kSs);
    tick.line({{(c + r0 * std::cos(a)) * kSs, (c + r0 * std::sin(a)) * kSs},
               {(c + r1 * std::cos(a)) * kSs, (c + r1 * std::sin(a)) * kSs}},
              tw * kSs, false);
    gen_res::alpha_composite(img, tick.paint(prm.mark_color.value_or(prm.color)), 0, 0);
  }
  return img;
}

}  // namespace ub
