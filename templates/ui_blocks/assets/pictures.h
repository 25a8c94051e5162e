// The picture registry of one page: every picture a control refers to, registered under
// its file name, the icons resolved against the library, and their emission. Nothing is
// drawn or printed while the page is built: icon uses and fall-backs are kept for the
// report.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "assets/picture_names.h"
#include "assets/registry.h"
#include "iconlib/iconlib.h"

namespace ub {

class Pictures {
 public:
  // Icons are resolved against `icons`; fall-backs name `page_name`. `earlier`: the
  // pictures of the sizes composed before in the same run (see PictureRegistry).
  // `fill_box`: icons are drawn from the tier that covers their box (see Metrics::icon_fill).
  Pictures(const iconlib::Index& icons, std::string page_name, const AssetMap* earlier = nullptr,
           bool fill_box = false)
      : icons(icons),
        page_name(std::move(page_name)),
        fill_box(fill_box),
        registry(earlier, [&icons](const Asset& a) { return draw_picture(a, icons); }) {}

  // Each registers an entry and returns "images/" + the name it stands under: `name`, or
  // a variant of it when `name` already holds a different picture.
  std::string shape(const std::string& name, double w, double h, double radius, Rgba fill,
                    std::optional<Rgba> border = {}, double border_w = 1);
  std::string chevron(const std::string& name, double w, double h, Rgba color);
  std::string clip_shape(const std::string& name, double w, double h, double radius, Rgba fill, double src_w,
                         double src_h, double src_x, double src_y, int ss = 8);
  std::string bar(const std::string& name, double w, double h, double bar_h, Rgba fill);
  std::string mark(const std::string& name, double w, double h, double radius, Rgba fill,
                   const std::string& mark = "", double mark_size = 0, std::optional<Rgba> mark_color = {},
                   std::optional<Rgba> border = {}, double border_w = 1);
  std::string chart(const std::string& name, double w, double h, const std::string& kind,
                    const std::vector<double>& data, Rgba color, Rgba axis, int base_h = 1,
                    std::optional<double> limit = {}, Rgba limit_color = {});
  std::string gauge(const std::string& name, int side, int stroke, int value_pm, int limit_pm, Rgba track,
                    Rgba value, Rgba limit);
  // A picture drawn by the page (a shipped picture brought to its box), told apart by id.
  std::string shipped(const std::string& name, gen_res::Image pixels, std::string pixels_id);
  // An icon: a library icon when the library has the token (its use counted), else a
  // wire-frame (its fall-back kept). Names that could leave the images directory stop.
  std::string glyph(const std::string& name, const std::string& g, double size, Rgba color,
                    std::optional<std::pair<int, int>> canvas = {}, std::optional<std::string> state = {});

  const AssetMap& all() const { return registry.all(); }  // sorted by name = emission order
  const IconTally& uses() const { return icon_uses; }
  const std::vector<IconFallback>& fallbacks() const { return icon_fallbacks; }

  // Writes every registered picture under project/resources/images; returns names in
  // order. The lines of library icons go to `log`.
  std::vector<std::string> emit_assets(const std::string& project_root, std::ostream& log) const;

 private:
  const iconlib::Index& icons;
  std::string page_name;
  bool fill_box = false;
  PictureRegistry registry;
  IconTally icon_uses;
  std::vector<IconFallback> icon_fallbacks;
};

}  // namespace ub
