#include "json2img/layout_model.h"

#include <algorithm>
#include <cmath>

namespace layout {

namespace {

struct IdRange {
  long long lo, hi;
  const char* type;
};
// Id bases of the control format, each type owning the thousand above its base
// (radio groups and check boxes share the 94000s, so their ranges are narrower).
const IdRange kIdRanges[] = {
    {20000, 30000, "button"},     {50000, 51000, "textview"},      {51000, 52000, "edittext"},
    {80000, 81000, "listview"},   {91000, 92000, "seekbar"},       {94000, 94100, "radiogroup"},
    {94500, 95000, "checkbox"},   {110000, 111000, "window"},      {120000, 121000, "scrollwindow"},
};
const char* kKnownTypes[] = {"textview", "button",   "window",   "scrollwindow", "edittext", "seekbar",
                             "checkbox", "radiogroup", "listview", "pagewindow",  "slidewindow"};

bool is_control_key(const std::string& key, const Json& v) {
  return key.find("__") != std::string::npos && v.is_object();
}

void walk(const Json& rec, int ox, int oy, const Rect& clip, int depth, int parent, bool shown,
          std::vector<Control>& out) {
  for (auto it = rec.begin(); it != rec.end(); ++it) {
    if (!is_control_key(it.key(), it.value())) continue;
    const Json& c = it.value();
    Control ctl;
    ctl.key = it.key();
    ctl.rec = &c;
    ctl.type = control_type(ctl.key, c);
    const Json& cap = ub::get(c, "caption");
    ctl.caption = cap.is_string() ? cap.get<std::string>() : "";
    ctl.box = read_box(ub::get(c, "position"), ox, oy, ctl.key);
    ctl.clip = clip;
    ctl.vis = ctl.box.intersect(clip);
    ctl.depth = depth;
    ctl.parent = parent;
    const Json& visible = ub::get(c, "visible");
    ctl.shown = shown && !(visible.is_boolean() && !visible.get<bool>());
    int me = (int)out.size();
    out.push_back(ctl);
    Rect sub = clips(ctl.type) ? clip.intersect(ctl.box) : clip;
    if (depth + 1 > kMaxDepth)
      throw LayoutError(ctl.key + ": controls nest deeper than " + std::to_string(kMaxDepth) + " levels");
    walk(c, ctl.box.l, ctl.box.t, sub, depth + 1, me, out[me].shown, out);
    out[me].end = (int)out.size();
  }
}

}  // namespace

Rect Rect::intersect(const Rect& o) const {
  return {std::max(l, o.l), std::max(t, o.t), std::min(r, o.r), std::min(b, o.b)};
}

long long int_field(const Json& rec, const char* key, long long def, const std::string& where) {
  const Json& v = ub::get(rec, key);
  if (v.is_null()) return def;
  if (v.is_number_unsigned() && v.get<unsigned long long>() <= (unsigned long long)kMaxInt)
    return v.get<long long>();
  if (v.is_number_integer() && !v.is_number_unsigned()) {
    long long n = v.get<long long>();
    if (n >= -kMaxInt && n <= kMaxInt) return n;
  }
  if (v.is_number_float()) {
    double d = v.get<double>();
    if (std::isfinite(d) && std::fabs(d) <= (double)kMaxInt) return (long long)std::trunc(d);
  }
  if (v.is_number()) throw LayoutError(where + ": " + key + " is out of range (" + v.dump() + ")");
  // Structured values are named by type only: they may be large or deeply nested.
  std::string shown = v.is_structured() ? std::string(v.is_object() ? "a mapping" : "a list") : v.dump();
  if (shown.size() > 60) shown = shown.substr(0, 57) + "...";
  throw LayoutError(where + ": " + key + " is not a number (" + shown + ")");
}

Rect read_box(const Json& pos, int ox, int oy, const std::string& where) {
  if (!pos.is_null() && !pos.is_object()) throw LayoutError(where + ": position is not a mapping");
  std::string w = where + ".position";
  auto l = int_field(pos, "left", 0, w), t = int_field(pos, "top", 0, w);
  auto wd = int_field(pos, "width", 0, w), ht = int_field(pos, "height", 0, w);
  const long long lim = kMaxCoord;
  if (std::llabs(l) > lim || std::llabs(t) > lim || std::llabs(wd) > lim || std::llabs(ht) > lim)
    throw LayoutError(w + ": value out of range");
  int x = ox + (int)l, y = oy + (int)t;
  return {x, y, x + (int)std::max(0LL, wd), y + (int)std::max(0LL, ht)};
}

Rect inner_box(const Control& c, const char* key) {
  const Json& p = ub::get(*c.rec, key);
  if (!p.is_object() || p == ub::get(*c.rec, "position")) return c.box;
  Rect r = read_box(p, c.box.l, c.box.t, c.key + "." + key);
  return r.empty() ? c.box : r;
}

bool clips(const std::string& type) {
  return type == "scrollwindow" || type == "pagewindow" || type == "slidewindow";
}

std::string control_type(const std::string& key, const Json& rec) {
  std::string head = key.substr(0, key.find("__"));
  for (const char* t : kKnownTypes)
    if (head == t) return head;
  const Json& id = ub::get(rec, "id");
  if (id.is_number_integer()) {
    long long v = id.get<long long>();
    for (const auto& r : kIdRanges)
      if (v >= r.lo && v < r.hi) return r.type;
  }
  return head;
}

Layout flatten(const Json& doc) {
  if (!doc.is_object()) throw LayoutError("the layout is not a JSON object");
  Layout lay;
  const Json& res = ub::get(doc, "resolution");
  const Json& src = res.is_object() ? res : ub::get(doc, "position");
  if (!src.is_object()) throw LayoutError("the layout has no resolution");
  lay.W = (int)int_field(src, "width", 0, "resolution");
  lay.H = (int)int_field(src, "height", 0, "resolution");
  if (lay.W <= 0 || lay.H <= 0 || lay.W > 8192 || lay.H > 8192)
    throw LayoutError("the layout's resolution " + std::to_string(lay.W) + "x" + std::to_string(lay.H) +
                      " is not usable");
  walk(doc, 0, 0, Rect{0, 0, lay.W, lay.H}, 0, -1, true, lay.controls);
  return lay;
}

std::optional<gen_res::Rgba> color_of(const Json& v) {
  if (!v.is_number()) return std::nullopt;
  if (v.is_number_float() && !(std::fabs(v.get<double>()) < 9e18)) return std::nullopt;
  long long c = v.is_number_float() ? (long long)v.get<double>() : v.get<long long>();
  if (c == -1) return std::nullopt;
  auto u = (unsigned long long)c & 0xFFFFFFFFULL;
  int a = (int)(u >> 24);
  return gen_res::Rgba{(int)(u >> 16) & 255, (int)(u >> 8) & 255, (int)u & 255, a ? a : 255};
}

std::optional<gen_res::Rgba> table_color(const Json& rec, const char* table, const char* slot) {
  return color_of(ub::get(ub::get(rec, table), slot));
}

}  // namespace layout
