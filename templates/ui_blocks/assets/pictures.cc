#include "assets/pictures.h"

#include "assets/picture_names.h"

namespace ub {

// Registering a name again replaces the earlier entry; a different picture is noted.

std::string Pictures::shape(const std::string& name, double w, double h, double radius, Rgba fill,
                            std::optional<Rgba> border, double border_w) {
  put_picture(assets, notes, name, shape_entry(w, h, radius, fill, border, border_w));
  return pic_ref(name);
}

std::string Pictures::chevron(const std::string& name, double w, double h, Rgba color) {
  put_picture(assets, notes, name, chevron_entry(w, h, color));
  return pic_ref(name);
}

std::string Pictures::clip_shape(const std::string& name, double w, double h, double radius, Rgba fill,
                                 double src_w, double src_h, double src_x, double src_y, int ss) {
  put_picture(assets, notes, name, clip_entry(w, h, radius, fill, src_w, src_h, src_x, src_y, ss));
  return pic_ref(name);
}

std::string Pictures::bar(const std::string& name, double w, double h, double bar_h, Rgba fill) {
  put_picture(assets, notes, name, bar_entry(w, h, bar_h, fill));
  return pic_ref(name);
}

std::string Pictures::mark(const std::string& name, double w, double h, double radius, Rgba fill,
                           const std::string& mark, double mark_size, std::optional<Rgba> mark_color,
                           std::optional<Rgba> border, double border_w) {
  put_picture(assets, notes, name, mark_entry(w, h, radius, fill, mark, mark_size, mark_color, border, border_w));
  return pic_ref(name);
}

std::string Pictures::chart(const std::string& name, double w, double h, const std::string& kind,
                            const std::vector<double>& data, Rgba color, Rgba axis, int base_h) {
  put_picture(assets, notes, name, chart_entry(w, h, kind, data, color, axis, base_h));
  return pic_ref(name);
}

std::string Pictures::glyph(const std::string& name, const std::string& g, double size, Rgba color,
                            std::optional<std::pair<int, int>> canvas, std::optional<std::string> state) {
  check_picture_name(name);
  put_picture(assets, notes, name, glyph_entry({icon_uses, icon_fallbacks, page_name}, name, g, size, color, canvas, state));
  return pic_ref(name);
}

std::vector<std::string> Pictures::emit_assets(const std::string& project_root) const {
  return emit_registry(assets, project_root);
}

}  // namespace ub
