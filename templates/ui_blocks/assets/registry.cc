#include "assets/registry.h"

#include "base/primitives.h"
#include "base/values.h"

namespace ub {

namespace {
int to_int(double v) { return (int)trunc_int(v); }
}  // namespace

std::string pic_ref(const std::string& name) { return "images/" + name; }

Asset shape_entry(double w, double h, double radius, Rgba fill, std::optional<Rgba> border, double border_w) {
  Asset a;
  a.kind = "shape";
  a.w = to_int(w), a.h = to_int(h), a.radius = to_int(radius);
  a.fill = fill;
  a.border = border;
  a.border_w = border_w;
  return a;
}

Asset chevron_entry(double w, double h, Rgba color) {
  Asset a;
  a.kind = "chevron";
  a.w = to_int(w), a.h = to_int(h);
  a.color = color;
  return a;
}

Asset clip_entry(double w, double h, double radius, Rgba fill, double src_w, double src_h, double src_x,
                 double src_y, int ss) {
  Asset a;
  a.kind = "clip";
  a.w = to_int(w), a.h = to_int(h), a.radius = to_int(radius);
  a.fill = fill;
  a.src_w = to_int(src_w), a.src_h = to_int(src_h), a.src_x = to_int(src_x), a.src_y = to_int(src_y);
  a.ss = ss;
  return a;
}

Asset bar_entry(double w, double h, double bar_h, Rgba fill) {
  Asset a;
  a.kind = "bar";
  a.w = to_int(w), a.h = to_int(h), a.bar_h = to_int(bar_h);
  a.fill = fill;
  return a;
}

Asset mark_entry(double w, double h, double radius, Rgba fill, const std::string& mark, double mark_size,
                 std::optional<Rgba> mark_color, std::optional<Rgba> border, double border_w) {
  Asset a;
  a.kind = "mark";
  a.w = to_int(w), a.h = to_int(h), a.radius = to_int(radius);
  a.fill = fill;
  a.mark = mark;
  a.mark_size = to_int(mark_size);
  a.mark_color = mark_color;
  a.border = border;
  a.border_w = border_w;
  return a;
}

Asset chart_entry(double w, double h, const std::string& kind, const std::vector<double>& data, Rgba color,
                  Rgba axis, int base_h, std::optional<double> limit, Rgba limit_color) {
  Asset a;
  a.kind = "chart";
  a.w = to_int(w), a.h = to_int(h);
  a.chart_kind = kind;
  a.data = data;
  a.color = color;
  a.axis = axis;
  a.base_h = base_h;
  if (limit) {
    a.limit = limit;
    a.limit_color = limit_color;
  }
  return a;
}

Asset gauge_entry(int side, int stroke, int value_pm, int limit_pm, Rgba track, Rgba value, Rgba limit) {
  Asset a;
  a.kind = "gauge";
  a.w = a.h = side;
  a.stroke = stroke;
  a.value_pm = value_pm;
  a.limit_pm = limit_pm;
  a.fill = track;
  a.color = value;
  a.mark_color = limit;
  return a;
}

Asset shipped_entry(gen_res::Image pixels, std::string pixels_id) {
  Asset a;
  a.kind = "shipped";
  a.w = pixels.w, a.h = pixels.h;
  a.pixels = std::make_shared<const gen_res::Image>(std::move(pixels));
  a.pixels_id = std::move(pixels_id);
  return a;
}

Asset glyph_entry(const std::string& g, int size, Rgba color, std::optional<std::pair<int, int>> canvas,
                  std::optional<std::string> state, bool from_library) {
  Asset a;
  a.kind = from_library ? "libicon" : "glyph";
  a.g = g;
  a.size = size;
  a.color = color;
  a.canvas = canvas;
  if (from_library) a.state = std::move(state);
  return a;
}

void IconTally::add(const std::string& token, const std::string& name, int size, int tier,
                    const std::optional<std::string>& state) {
  ++uses;
  ++tiers[tier];
  kinds.emplace(token, name, size, tier, state && !state->empty() ? *state : "-");
}

}  // namespace ub
