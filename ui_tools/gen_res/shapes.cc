#include "gen_res/shapes.h"

#include <algorithm>
#include <cmath>

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

uint8_t to_byte(double v) { return (uint8_t)std::clamp((int)std::lround(v), 0, 255); }

double clamp_radius(double r, double w, double h) { return std::clamp(r, 0.0, std::max(0.0, std::min(w, h) / 2)); }

}  // namespace

void rrect_coverage(int w, int h, double x0, double y0, double x1, double y1, double r, std::vector<float>& out) {
  w = std::max(w, 0);
  h = std::max(h, 0);
  out.assign((size_t)w * h, 0.0f);
  if (x1 <= x0 || y1 <= y0) return;
  r = clamp_radius(r, x1 - x0, y1 - y0);
  std::vector<double> hx(w);
  for (int px = 0; px < w; ++px) hx[px] = overlap(px, px + 1, x0, x1);
  // Pixel columns that meet the left and the right corner squares.
  int a0 = std::max(0, (int)std::floor(x0)), a1 = std::min(w, (int)std::ceil(x0 + r));
  int b0 = std::max(a1, (int)std::floor(x1 - r)), b1 = std::min(w, (int)std::ceil(x1));
  for (int py = 0; py < h; ++py) {
    double vy = overlap(py, py + 1, y0, y1);
    if (vy <= 0) continue;
    float* row = &out[(size_t)py * w];
    for (int px = 0; px < w; ++px) row[px] = (float)(hx[px] * vy);
    if (r <= 0 || (py >= y0 + r && py + 1 <= y1 - r)) continue;
    auto fix = [&](int px) {
      double cut = corner_cut(px, py, x0, x0 + r, y0, y0 + r, x0 + r, y0 + r, r) +
                   corner_cut(px, py, x1 - r, x1, y0, y0 + r, x1 - r, y0 + r, r) +
                   corner_cut(px, py, x0, x0 + r, y1 - r, y1, x0 + r, y1 - r, r) +
                   corner_cut(px, py, x1 - r, x1, y1 - r, y1, x1 - r, y1 - r, r);
      row[px] = (float)std::clamp(hx[px] * vy - cut, 0.0, 1.0);
    };
    for (int px = a0; px < a1; ++px) fix(px);
    for (int px = b0; px < b1; ++px) fix(px);
  }
}

Mask coverage_mask(int w, int h, double radius, int /*ss*/) {
  std::vector<float> cov;
  rrect_coverage(w, h, 0, 0, w, h, radius, cov);
  Mask m(std::max(w, 0), std::max(h, 0));
  for (size_t i = 0; i < cov.size(); ++i) m.v[i] = to_byte(cov[i] * 255.0);
  return m;
}

Image rounded_rect_cov(int w, int h, double radius, Rgba fill, int /*ss*/) {
  std::vector<float> cov;
  rrect_coverage(w, h, 0, 0, w, h, radius, cov);
  // Transparent pixels keep the fill's colour too, so nothing dark bleeds in at edges.
  Image img(w, h, {fill.r, fill.g, fill.b, 0});
  for (size_t i = 0; i < cov.size(); ++i) img.px[i * 4 + 3] = to_byte(cov[i] * fill.a);
  return img;
}

Image bordered_cov(int w, int h, double radius, Rgba fill, Rgba border, double border_w, int /*ss*/) {
  std::vector<float> outer, inner;
  rrect_coverage(w, h, 0, 0, w, h, radius, outer);
  double r = clamp_radius(radius, w, h);
  double bw = std::max(0.0, border_w);
  rrect_coverage(w, h, bw, bw, w - bw, h - bw, std::max(0.0, r - bw), inner);
  Image img(w, h, {border.r, border.g, border.b, 0});
  double ab = border.a / 255.0, af = fill.a / 255.0;
  for (size_t i = 0; i < outer.size(); ++i) {
    double ci = std::min<double>(inner[i], outer[i]);
    double ring = outer[i] - ci;
    double a = ring * ab + ci * af;  // premultiplied weights of the two paints
    uint8_t* p = &img.px[i * 4];
    if (a <= 0) {
      if (ci > 0) p[0] = (uint8_t)fill.r, p[1] = (uint8_t)fill.g, p[2] = (uint8_t)fill.b;
      continue;
    }
    double wb = ring * ab / a, wf = ci * af / a;
    p[0] = to_byte(border.r * wb + fill.r * wf);
    p[1] = to_byte(border.g * wb + fill.g * wf);
    p[2] = to_byte(border.b * wb + fill.b * wf);
    p[3] = to_byte(a * 255.0);
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
