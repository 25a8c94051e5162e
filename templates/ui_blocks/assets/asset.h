// Registry entries of the pictures a page declares, and the tally of icon use.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "gen_res/image.h"
#include "spec/rgba.h"

namespace ub {

// One registry entry. `kind` is shape, libicon, glyph, chevron, clip, bar, mark, chart,
// gauge or shipped; only the fields of that kind are meaningful.
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
  int tier = 0;  // libicon: the library tier to draw from, 0 for the one its size gives
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
  // gauge: a ring open at the bottom in `fill`, its value arc in `color` and the limit's
  // tick in `mark_color`; value and limit in thousandths of the range (limit -1: none)
  int stroke = 0, value_pm = 0, limit_pm = -1;
  // shipped: a picture of the project brought to its box, drawn when the page was built;
  // `pixels_id` tells two apart (a digest of the pixels)
  std::shared_ptr<const gen_res::Image> pixels;
  std::string pixels_id;
  std::optional<double> limit;  // chart: a horizontal line at this value
  Rgba limit_color{};
};

// The icons a page took from the library, as the report counts them: the uses per size
// tier and each distinct token, name, size, tier and state ("-" for none). A page may use
// icons hundreds of thousands of times, so a use is counted, not kept.
struct IconTally {
  using Kind = std::tuple<std::string, std::string, int, int, std::string>;
  size_t uses = 0;
  std::map<int, int> tiers;
  std::set<Kind> kinds;

  void add(const std::string& token, const std::string& name, int size, int tier,
           const std::optional<std::string>& state);
  bool empty() const { return uses == 0; }
};

struct IconFallback {
  std::string token;
  int size = 0;
  std::string asset, page;
};

}  // namespace ub
