// The picture registry's parts: entries as Pictures stores them, and their drawing and
// emission, usable on any registry mapping.
#pragma once

#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "assets/asset.h"
#include "gen_res/image.h"
#include "iconlib/iconlib.h"

namespace ub {

using AssetMap = std::map<std::string, Asset>;

// "images/" + name: what every registry method returns for the control's payload.
std::string pic_ref(const std::string& name);

// Entries with their measures truncated towards zero, as the registry keeps them.
Asset shape_entry(double w, double h, double radius, Rgba fill, std::optional<Rgba> border, double border_w);
Asset chevron_entry(double w, double h, Rgba color);
Asset clip_entry(double w, double h, double radius, Rgba fill, double src_w, double src_h, double src_x,
                 double src_y, int ss);
Asset bar_entry(double w, double h, double bar_h, Rgba fill);
Asset mark_entry(double w, double h, double radius, Rgba fill, const std::string& mark, double mark_size,
                 std::optional<Rgba> mark_color, std::optional<Rgba> border, double border_w);
Asset chart_entry(double w, double h, const std::string& kind, const std::vector<double>& data, Rgba color,
                  Rgba axis, int base_h, std::optional<double> limit = {}, Rgba limit_color = {});
Asset gauge_entry(int side, int stroke, int value_pm, int limit_pm, Rgba track, Rgba value, Rgba limit);
Asset shipped_entry(gen_res::Image pixels, std::string pixels_id);

// An icon: a library icon ("libicon") when the library resolved the token, else a
// wire-frame ("glyph"), whose state is dropped.
Asset glyph_entry(const std::string& g, int size, Rgba color, std::optional<std::pair<int, int>> canvas,
                  std::optional<std::string> state, bool from_library);

// The picture of an entry, drawn as emission draws it.
gen_res::Image draw_picture(const Asset& a, const iconlib::Index& icons);

// Every entry drawn and encoded, in name order, library icons from `icons`. The report's
// lines of drawing go to `log`: one per library icon, and one, the first time, when the
// tick of a check box falls back to a wire-frame because the library lacks it.
struct Picture {
  std::string name, png;
};
std::vector<Picture> render_registry(const AssetMap& assets, const iconlib::Index& icons, std::ostream& log);

// Writes every entry, in name order, to project_root/resources/images; returns the
// names written.
std::vector<std::string> emit_registry(const AssetMap& assets, const iconlib::Index& icons,
                                       const std::string& project_root, std::ostream& log);

}  // namespace ub
