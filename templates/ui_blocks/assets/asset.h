// Registry entries of the pictures a page declares, and the records of icon use.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "spec/rgba.h"

namespace ub {

// One registry entry. `kind` is shape, libicon, glyph, chevron, clip, bar, mark or chart;
// only the fields of that kind are meaningful.
struct Asset {
  std::string kind;
  int w = 0, h = 0, radius = 0;
  Rgba fill{};
  std::optional<Rgba> border;
  double border_w = 1;
  // glyph / libicon
  std::string g;
  int size = 0;
  Rgba color{};
  std::optional<std::pair<int, int>> canvas;
  std::optional<std::string> state;
  // clip
  int src_w = 0, src_h = 0, src_x = 0, src_y = 0, ss = 8;
  // bar
  int bar_h = 0;
  // mark
  std::string mark;
  int mark_size = 0;
  std::optional<Rgba> mark_color;
  // chart
  std::string chart_kind;
  std::vector<double> data;
  Rgba axis{};
  int base_h = 1;
};

struct IconUse {
  std::string token, name, icon, category, style;
  Json states;
  int size = 0;
  int tier = 0;
  std::optional<std::string> state;
  std::string asset;
};

struct IconFallback {
  std::string token;
  int size = 0;
  std::string asset, page;
};

}  // namespace ub
