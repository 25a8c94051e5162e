#include "gen_res/glyphs.h"

#include <cmath>
#include <map>

#include "gen_res/raster.h"
#include "gen_res/shapes.h"

namespace gen_res {

namespace {

// One stroke of a drawing, in 24-unit grid coordinates.
struct Stroke {
  enum Kind { kPath, kClosed, kCircle, kDot } kind;
  std::vector<Point> pts;  // path points, or the centre
  double r = 0;            // circle or dot radius
};

Stroke path(std::vector<Point> p) { return {Stroke::kPath, std::move(p)}; }
Stroke closed(std::vector<Point> p) { return {Stroke::kClosed, std::move(p)}; }
Stroke circle(double x, double y, double r) { return {Stroke::kCircle, {{x, y}}, r}; }
Stroke dot(double x, double y, double r) { return {Stroke::kDot, {{x, y}}, r}; }

using Drawing = std::vector<Stroke>;

std::vector<Stroke> loader_strokes() {
  std::vector<Stroke> out;
  for (int k = 0; k < 8; ++k) {
    double a = k * M_PI / 4;
    out.push_back(path({{12 + 4.5 * std::cos(a), 12 + 4.5 * std::sin(a)}, {12 + 9 * std::cos(a), 12 + 9 * std::sin(a)}}));
  }
  return out;
}

const std::map<std::string, Drawing>& drawings() {
  static const std::map<std::string, Drawing> d = {
      {"info", {circle(12, 12, 9), dot(12, 8, 1.2), path({{11, 12}, {12, 12}, {12, 16}, {13, 16}})}},
      {"check", {path({{5, 12}, {10, 17}, {20, 7}})}},
      {"warning", {closed({{12, 4}, {21, 19.5}, {3, 19.5}}), path({{12, 9.5}, {12, 13}}), dot(12, 16.2, 1.2)}},
      {"close", {path({{6, 6}, {18, 18}}), path({{18, 6}, {6, 18}})}},
      {"arrow-left", {path({{5, 12}, {19, 12}}), path({{11, 6}, {5, 12}, {11, 18}})}},
      {"arrow-right", {path({{5, 12}, {19, 12}}), path({{13, 6}, {19, 12}, {13, 18}})}},
      {"back", {path({{15, 6}, {9, 12}, {15, 18}})}},
      {"forward", {path({{9, 6}, {15, 12}, {9, 18}})}},
      {"more", {dot(5, 12, 1.6), dot(12, 12, 1.6), dot(19, 12, 1.6)}},
      {"photo",
       {closed({{4, 4}, {20, 4}, {20, 20}, {4, 20}}), path({{4, 16}, {9, 11}, {14, 16}}),
        path({{13, 15}, {15, 13}, {20, 18}}), dot(15, 8.5, 1.4)}},
      {"loader", loader_strokes()},
      {"plus", {path({{12, 5}, {12, 19}}), path({{5, 12}, {19, 12}})}},
      {"minus", {path({{5, 12}, {19, 12}})}},
      {"search", {circle(10, 10, 7), path({{15, 15}, {21, 21}})}},
  };
  return d;
}

const Drawing& generic_drawing() {
  static const Drawing g = {closed({{4, 4}, {20, 4}, {20, 20}, {4, 20}}), path({{4, 20}, {20, 4}})};
  return g;
}

}  // namespace

bool has_wireframe(const std::string& token) { return drawings().count(token) > 0; }

std::vector<std::string> wireframe_tokens() {
  std::vector<std::string> out;
  for (auto& [k, v] : drawings()) out.push_back(k);
  return out;
}

Image glyph_image(const std::string& token, int size, Rgba color, std::optional<std::pair<int, int>> canvas) {
  size = std::max(size, 0);
  int cw = canvas ? canvas->first : size, ch = canvas ? canvas->second : size;
  const int ss = 8;
  SsCanvas cv(cw, ch, ss);
  auto it = drawings().find(token);
  const Drawing& drawing = it != drawings().end() ? it->second : generic_drawing();
  // Grid unit and origin in the big grid; the size x size square is centred.
  double u = size / 24.0 * ss;
  double ox = (double)((cw - size) >> 1) * ss, oy = (double)((ch - size) >> 1) * ss;
  double stroke = std::max(2.0 * u, 1.5 * ss), hw = stroke / 2;
  auto at = [&](Point p) { return Point{ox + p.first * u, oy + p.second * u}; };
  for (const Stroke& s : drawing) {
    switch (s.kind) {
      case Stroke::kPath:
      case Stroke::kClosed: {
        std::vector<Point> pts;
        for (auto& p : s.pts) pts.push_back(at(p));
        if (s.kind == Stroke::kClosed) pts.push_back(pts.front());
        cv.line(pts, stroke, true);
        for (auto& p : pts) cv.ellipse(p.first - hw, p.second - hw, p.first + hw, p.second + hw);
        break;
      }
      case Stroke::kCircle: {
        Point c = at(s.pts[0]);
        cv.ring(c.first, c.second, s.r * u + hw, s.r * u - hw);
        break;
      }
      case Stroke::kDot: {
        Point c = at(s.pts[0]);
        double r = std::max(s.r * u, hw);
        cv.ellipse(c.first - r, c.second - r, c.first + r, c.second + r);
        break;
      }
    }
  }
  return cv.paint(color);
}

std::string glyph_icon(const std::string& out_dir, const std::string& name, const std::string& token, int size,
                       Rgba color, std::optional<std::pair<int, int>> canvas) {
  return save(glyph_image(token, size, color, canvas), out_dir, name);
}

}  // namespace gen_res
