#include "assets/pictures.h"

namespace ub {

namespace {

std::string text_field(const Json& rec, const char* key) {
  auto it = rec.find(key);
  if (it == rec.end()) return "";
  return it->is_string() ? it->get<std::string>() : to_text(*it);
}

}  // namespace

std::string Pictures::shape(const std::string& name, double w, double h, double radius, Rgba fill,
                            std::optional<Rgba> border, double border_w) {
  return pic_ref(registry.put(name, shape_entry(w, h, radius, fill, border, border_w)));
}

std::string Pictures::chevron(const std::string& name, double w, double h, Rgba color) {
  return pic_ref(registry.put(name, chevron_entry(w, h, color)));
}

std::string Pictures::clip_shape(const std::string& name, double w, double h, double radius, Rgba fill,
                                 double src_w, double src_h, double src_x, double src_y, int ss) {
  return pic_ref(registry.put(name, clip_entry(w, h, radius, fill, src_w, src_h, src_x, src_y, ss)));
}

std::string Pictures::bar(const std::string& name, double w, double h, double bar_h, Rgba fill) {
  return pic_ref(registry.put(name, bar_entry(w, h, bar_h, fill)));
}

std::string Pictures::mark(const std::string& name, double w, double h, double radius, Rgba fill,
                           const std::string& mark, double mark_size, std::optional<Rgba> mark_color,
                           std::optional<Rgba> border, double border_w) {
  return pic_ref(
      registry.put(name, mark_entry(w, h, radius, fill, mark, mark_size, mark_color, border, border_w)));
}

std::string Pictures::chart(const std::string& name, double w, double h, const std::string& kind,
                            const std::vector<double>& data, Rgba color, Rgba axis, int base_h,
                            std::optional<double> limit, Rgba limit_color) {
  return pic_ref(registry.put(name, chart_entry(w, h, kind, data, color, axis, base_h, limit, limit_color)));
}

std::string Pictures::gauge(const std::string& name, int side, int stroke, int value_pm, int limit_pm, Rgba track,
                            Rgba value, Rgba limit) {
  return pic_ref(registry.put(name, gauge_entry(side, stroke, value_pm, limit_pm, track, value, limit)));
}

std::string Pictures::shipped(const std::string& name, gen_res::Image pixels, std::string pixels_id) {
  return pic_ref(registry.put(name, shipped_entry(std::move(pixels), std::move(pixels_id))));
}

std::string Pictures::glyph(const std::string& name, const std::string& g, double size, Rgba color,
                            std::optional<std::pair<int, int>> canvas, std::optional<std::string> state) {
  check_picture_name(name);
  const int sz = (int)trunc_int(size);
  const Json* info = icons.available() ? icons.find(g) : nullptr;
  // Wire-frames have no states.
  Asset entry = glyph_entry(g, sz, color, canvas, info ? state : std::nullopt, info != nullptr);
  const int tier = fill_box ? iconlib::tier_covering(sz) : iconlib::tier_of(sz);
  if (info && fill_box) entry.tier = tier;
  const std::string& at = registry.put(name, std::move(entry));
  if (info) icon_uses.add(g, text_field(*info, "name"), sz, tier, state);
  else icon_fallbacks.push_back({g, sz, at, page_name});
  return pic_ref(at);
}

std::vector<std::string> Pictures::emit_assets(const std::string& project_root, std::ostream& log) const {
  return emit_registry(all(), icons, project_root, log);
}

}  // namespace ub
