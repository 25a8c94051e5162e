// The picture registry of one page: every picture a control refers to, registered under
// its file name, the icons resolved against the library, and their emission.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "assets/registry.h"
#include "spec/notes.h"

namespace ub {

class Pictures {
 public:
  // Replaced pictures and icon fall-backs are noted in `notes`; fall-backs name `page_name`.
  Pictures(Notes& notes, std::string page_name) : notes(notes), page_name(std::move(page_name)) {}

  // Each registers an entry under name (a later one replaces it) and returns "images/" + name.
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
                    const std::vector<double>& data, Rgba color, Rgba axis, int base_h = 1);
  std::string glyph(const std::string& name, const std::string& g, double size, Rgba color,
                    std::optional<std::pair<int, int>> canvas = {}, std::optional<std::string> state = {});

  const AssetMap& all() const { return assets; }  // sorted by name = emission order
  const IconTally& uses() const { return icon_uses; }
  const std::vector<IconFallback>& fallbacks() const { return icon_fallbacks; }

  // Writes every registered picture under project/resources/images; returns names in order.
  std::vector<std::string> emit_assets(const std::string& project_root) const;

 private:
  Notes& notes;
  std::string page_name;
  AssetMap assets;
  IconTally icon_uses;
  std::vector<IconFallback> icon_fallbacks;
};

}  // namespace ub
