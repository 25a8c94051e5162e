#include "gen_res/raster.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace gen_res {

SsCanvas::SsCanvas(int w, int h, int ss)
    : w_(std::max(w, 0)), h_(std::max(h, 0)), ss_(std::max(ss, 1)), words_((ss_ * ss_ + 63) / 64) {
  bits_.assign((size_t)w_ * h_ * words_, 0);
}

void SsCanvas::span(int j, double xl, double xr) {
  if (j < 0 || j >= h_ * ss_) return;
  // Subsample i is covered when its centre i + 0.5 lies in [xl, xr].
  long i0 = (long)std::ceil(xl - 0.5), i1 = (long)std::floor(xr - 0.5);
  i0 = std::max(i0, 0L);
  i1 = std::min(i1, (long)w_ * ss_ - 1);
  if (i1 < i0) return;
  int py = j / ss_, sub_row = j % ss_;
  for (long px = i0 / ss_; px <= i1 / ss_; ++px) {
    int a = px == i0 / ss_ ? (int)(i0 % ss_) : 0;
    int b = px == i1 / ss_ ? (int)(i1 % ss_) : ss_ - 1;
    uint64_t* cell = &bits_[((size_t)py * w_ + px) * words_];
    if (words_ == 1) {
      int n = b - a + 1;
      uint64_t mask = n >= 64 ? ~0ULL : ((1ULL << n) - 1);
      cell[0] |= mask << (sub_row * ss_ + a);
    } else {
      for (int k = a; k <= b; ++k) {
        int bit = sub_row * ss_ + k;
        cell[bit / 64] |= 1ULL << (bit % 64);
      }
    }
  }
}

void SsCanvas::polygon(const std::vector<Point>& pts) {
  if (pts.size() < 3) return;
  double ymin = pts[0].second, ymax = ymin;
  for (auto& p : pts) ymin = std::min(ymin, p.second), ymax = std::max(ymax, p.second);
  int j0 = std::max(0, (int)std::ceil(ymin - 0.5)), j1 = std::min(h_ * ss_ - 1, (int)std::floor(ymax - 0.5));
  size_t n = pts.size();
  for (int j = j0; j <= j1; ++j) {
    double y = j + 0.5, xl = 1e300, xr = -1e300;
    for (size_t k = 0; k < n; ++k) {
      const Point& p = pts[k];
      const Point& q = pts[(k + 1) % n];
      double ya = p.second, yb = q.second;
      if ((y < std::min(ya, yb)) || (y > std::max(ya, yb))) continue;
      if (ya == yb) {
        xl = std::min({xl, p.first, q.first});
        xr = std::max({xr, p.first, q.first});
        continue;
      }
      double x = p.first + (y - ya) * (q.first - p.first) / (yb - ya);
      xl = std::min(xl, x);
      xr = std::max(xr, x);
    }
    if (xl <= xr) span(j, xl, xr);
  }
}

void SsCanvas::ellipse(double x0, double y0, double x1, double y1) {
  double cx = (x0 + x1) / 2, cy = (y0 + y1) / 2, rx = std::abs(x1 - x0) / 2, ry = std::abs(y1 - y0) / 2;
  if (rx <= 0 || ry <= 0) return;
  int j0 = std::max(0, (int)std::ceil(cy - ry - 0.5)), j1 = std::min(h_ * ss_ - 1, (int)std::floor(cy + ry - 0.5));
  for (int j = j0; j <= j1; ++j) {
    double dy = (j + 0.5 - cy) / ry;
    double t = 1 - dy * dy;
    if (t < 0) continue;
    double hw = rx * std::sqrt(t);
    span(j, cx - hw, cx + hw);
  }
}

void SsCanvas::ring(double cx, double cy, double r_out, double r_in) {
  if (r_out <= 0) return;
  int j0 = std::max(0, (int)std::ceil(cy - r_out - 0.5));
  int j1 = std::min(h_ * ss_ - 1, (int)std::floor(cy + r_out - 0.5));
  for (int j = j0; j <= j1; ++j) {
    double dy = j + 0.5 - cy;
    double t = r_out * r_out - dy * dy;
    if (t < 0) continue;
    double ho = std::sqrt(t);
    double ti = r_in * r_in - dy * dy;
    if (r_in <= 0 || ti <= 0) {
      span(j, cx - ho, cx + ho);
      continue;
    }
    double hi = std::sqrt(ti);
    span(j, cx - ho, cx - hi);
    span(j, cx + hi, cx + ho);
  }
}

void SsCanvas::line(const std::vector<Point>& pts, double width, bool round_joints) {
  if (pts.empty() || width <= 0) return;
  double hw = width / 2;
  for (size_t k = 0; k + 1 < pts.size(); ++k) {
    auto [ax, ay] = pts[k];
    auto [bx, by] = pts[k + 1];
    double dx = bx - ax, dy = by - ay, len = std::hypot(dx, dy);
    if (len <= 0) continue;
    double nx = -dy / len * hw, ny = dx / len * hw;
    polygon({{ax + nx, ay + ny}, {bx + nx, by + ny}, {bx - nx, by - ny}, {ax - nx, ay - ny}});
  }
  if (round_joints)
    for (size_t k = 1; k + 1 < pts.size(); ++k)
      ellipse(pts[k].first - hw, pts[k].second - hw, pts[k].first + hw, pts[k].second + hw);
}

Mask SsCanvas::coverage() const {
  Mask m(w_, h_);
  int total = ss_ * ss_;
  for (size_t i = 0; i < m.v.size(); ++i) {
    int n = 0;
    for (int k = 0; k < words_; ++k) n += std::popcount(bits_[i * words_ + k]);
    m.v[i] = (uint8_t)((n * 255 + total / 2) / total);
  }
  return m;
}

Image SsCanvas::paint(Rgba color) const {
  Image img(w_, h_, {color.r, color.g, color.b, 0});
  int total = ss_ * ss_;
  for (size_t i = 0; i < (size_t)w_ * h_; ++i) {
    int n = 0;
    for (int k = 0; k < words_; ++k) n += std::popcount(bits_[i * words_ + k]);
    img.px[i * 4 + 3] = (uint8_t)((n * color.a + total / 2) / total);
  }
  return img;
}

}  // namespace gen_res
