#include "gen_res/shapes.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace gen_res {

namespace {

// Integral of sqrt(r^2 - t^2) from 0 to u, for 0 <= u <= r.
double circle_integral(double r, double u) {
  double s = std::sqrt(std::max(0.0, r * r - u * u));
  return 0.5 * (u * s + r * r * std::asin(std::min(1.0, u / r)));
}

// Area of the part of [u0, u1] x [v0, v1] (all >= 0) inside the circle of radius r
// around the origin.
double quarter_area(double r, double u0, double u1, double v0, double v1) {
  if (u1 <= u0 || v1 <= v0 || u0 >= r || v0 >= r) return 0;
  double r2 = r * r;
  double ua = v1 >= r ? 0.0 : std::sqrt(r2 - v1 * v1);  // left of ua the column is full
  double ub = std::sqrt(r2 - v0 * v0);                  // right of ub it is empty
  double area = 0;
  double f1 = std::min(u1, ua);
  if (f1 > u0) area += (f1 - u0) * (v1 - v0);
  double c0 = std::max(u0, ua), c1 = std::min(u1, ub);
  if (c1 > c0) area += circle_integral(r, c1) - circle_integral(r, c0) - v0 * (c1 - c0);
  return area;
}

double overlap(double a0, double a1, double b0, double b1) { return std::max(0.0, std::min(a1, b1) - std::max(a0, b0)); }

// Area of a pixel's part of one corner square that lies outside the corner's arc.
double corner_cut(double px, double py, double sx0, double sx1, double sy0, double sy1, double cx, double cy,
                  double r) {
  double ax0 = std::max(px, sx0), ax1 = std::min(px + 1, sx1);
  double ay0 = std::max(py, sy0), ay1 = std::min(py + 1, sy1);
  if (ax1 <= ax0 || ay1 <= ay0) return 0;
  double u0 = std::abs(ax0 - cx), u1 = std::abs(ax1 - cx);
  double v0 = std::abs(ay0 - cy), v1 = std::abs(ay1 - cy);
  if (u0 > u1) std::swap(u0, u1);
  if (v0 > v1) std::swap(v0, v1);
  return (ax1 - ax0) * (ay1 - ay0) - quarter_area(r, u0, u1, v0, v1);
}

// Nearest byte of a value in [0, 255].
uint8_t to_byte(double v) { return (uint8_t)(std::clamp(v, 0.0, 255.0) + 0.5); }

double clamp_radius(double r, double w, double h) { return std::clamp(r, 0.0, std::max(0.0, std::min(w, h) / 2)); }

// Coverage rows of one rounded rectangle with real bounds. Rows away from the
// corners ("plain" rows) are all alike, so callers compute one and copy it.
class RRect {
 public:
  RRect(int w, int h, double x0, double y0, double x1, double y1, double r)
      : w_(std::max(w, 0)), h_(std::max(h, 0)), x0_(x0), y0_(y0), x1_(x1), y1_(y1) {
    empty_ = x1 <= x0 || y1 <= y0;
    r_ = empty_ ? 0 : clamp_radius(r, x1 - x0, y1 - y0);
    hx_.resize(w_);
    for (int px = 0; px < w_; ++px) hx_[px] = overlap(px, px + 1, x0, x1);
    // Pixel columns that meet the left and the right corner squares.
    a0_ = std::max(0, (int)std::floor(x0)), a1_ = std::min(w_, (int)std::ceil(x0 + r_));
    b0_ = std::max(a1_, (int)std::floor(x1 - r_)), b1_ = std::min(w_, (int)std::ceil(x1));
  }

  bool plain(int py) const { return !empty_ && py >= y0_ + r_ && py + 1 <= y1_ - r_; }

  void row(int py, float* out) const {
    double vy = empty_ ? 0 : overlap(py, py + 1, y0_, y1_);
    if (vy <= 0) {
      std::fill(out, out + w_, 0.0f);
      return;
    }
    for (int px = 0; px < w_; ++px) out[px] = (float)(hx_[px] * vy);
    if (r_ <= 0 || plain(py)) return;
    double x0 = x0_, y0 = y0_, x1 = x1_, y1 = y1_, r = r_;
    auto fix = [&](int px) {
      double cut = corner_cut(px, py, x0, x0 + r, y0, y0 + r, x0 + r, y0 + r, r) +
                   corner_cut(px, py, x1 - r, x1, y0, y0 + r, x1 - r, y0 + r, r) +
                   corner_cut(px, py, x0, x0 + r, y1 - r, y1, x0 + r, y1 - r, r) +
                   corner_cut(px, py, x1 - r, x1, y1 - r, y1, x1 - r, y1 - r, r);
      out[px] = (float)std::clamp(hx_[px] * vy - cut, 0.0, 1.0);
    };
    for (int px = a0_; px < a1_; ++px) fix(px);
    for (int px = b0_; px < b1_; ++px) fix(px);
  }

 private:
  int w_, h_;
  double x0_, y0_, x1_, y1_, r_ = 0;
  bool empty_ = false;
  std::vector<double> hx_;
  int a0_ = 0, a1_ = 0, b0_ = 0, b1_ = 0;
};

}  // namespace

void rrect_coverage(int w, int h, double x0, double y0, double x1, double y1, double r, std::vector<float>& out) {
  w = std::max(w, 0);
  h = std::max(h, 0);
  out.assign((size_t)w * h, 0.0f);
  RRect rr(w, h, x0, y0, x1, y1, r);
  for (int py = 0; py < h; ++py) rr.row(py, &out[(size_t)py * w]);
}

Mask coverage_mask(int w, int h, double radius, int /*ss*/) {
  Mask m(std::max(w, 0), std::max(h, 0));
  RRect rr(m.w, m.h, 0, 0, m.w, m.h, radius);
  std::vector<float> cov(m.w);
  for (int py = 0; py < m.h; ++py) {
    rr.row(py, cov.data());
    for (int px = 0; px < m.w; ++px) m.at(px, py) = to_byte(cov[px] * 255.0f);
  }
  return m;
}

Image rounded_rect_cov(int w, int h, double radius, Rgba fill, int /*ss*/) {
  // Transparent pixels keep the fill's colour too, so nothing dark bleeds in at edges.
  Image img(w, h, {fill.r, fill.g, fill.b, 0});
  if (img.px.empty()) return img;
  RRect rr(img.w, img.h, 0, 0, img.w, img.h, radius);
  std::vector<float> cov(img.w);
  int plain_row = -1;
  for (int py = 0; py < img.h; ++py) {
    uint8_t* dst = img.at(0, py);
    if (rr.plain(py) && plain_row >= 0) {
      std::memcpy(dst, img.at(0, plain_row), (size_t)img.w * 4);
      continue;
    }
    rr.row(py, cov.data());
    for (int px = 0; px < img.w; ++px) dst[px * 4 + 3] = to_byte(cov[px] * fill.a);
    if (rr.plain(py)) plain_row = py;
  }
  return img;
}

Image bordered_cov(int w, int h, double radius, Rgba fill, Rgba border, double border_w, int /*ss*/) {
  Image img(w, h, {border.r, border.g, border.b, 0});
  if (img.px.empty()) return img;
  double r = clamp_radius(radius, img.w, img.h);
  double bw = std::max(0.0, border_w);
  RRect outer(img.w, img.h, 0, 0, img.w, img.h, r);
  RRect inner(img.w, img.h, bw, bw, img.w - bw, img.h - bw, std::max(0.0, r - bw));
  std::vector<float> co(img.w), ci(img.w);
  const uint8_t fill_px[4] = {(uint8_t)fill.r, (uint8_t)fill.g, (uint8_t)fill.b, (uint8_t)fill.a};
  const uint8_t border_px[4] = {(uint8_t)border.r, (uint8_t)border.g, (uint8_t)border.b, (uint8_t)border.a};
  double ab = border.a / 255.0, af = fill.a / 255.0;
  int plain_row = -1;
  for (int py = 0; py < img.h; ++py) {
    uint8_t* dst = img.at(0, py);
    bool plain = outer.plain(py) && inner.plain(py);
    if (plain && plain_row >= 0) {
      std::memcpy(dst, img.at(0, plain_row), (size_t)img.w * 4);
      continue;
    }
    outer.row(py, co.data());
    inner.row(py, ci.data());
    for (int px = 0; px < img.w; ++px) {
      uint8_t* p = dst + px * 4;
      double cin = std::min(ci[px], co[px]);
      double ring = co[px] - cin;
      if (cin >= 1.0) {
        std::memcpy(p, fill_px, 4);
        continue;
      }
      if (ring >= 1.0) {
        std::memcpy(p, border_px, 4);
        continue;
      }
      double a = ring * ab + cin * af;  // premultiplied weights of the two paints
      if (a <= 0) {
        if (cin > 0) p[0] = fill_px[0], p[1] = fill_px[1], p[2] = fill_px[2];
        continue;
      }
      double wb = ring * ab / a, wf = cin * af / a;
      p[0] = to_byte(border.r * wb + fill.r * wf);
      p[1] = to_byte(border.g * wb + fill.g * wf);
      p[2] = to_byte(border.b * wb + fill.b * wf);
      p[3] = to_byte(a * 255.0);
    }
    if (plain) plain_row = py;
  }
  return img;
}

Image rounded_rect_ss(int w, int h, double radius, Rgba fill, std::optional<Rgba> border, double border_w, int ss) {
  if (border) return bordered_cov(w, h, radius, fill, *border, border_w, ss);
  return rounded_rect_cov(w, h, radius, fill, ss);
}

std::string save(const Image& img, const std::string& out_dir, const std::string& name) {
  std::string path = out_dir.empty() ? name : out_dir + "/" + name;
  save_png(img, path);
  return path;
}

}  // namespace gen_res
