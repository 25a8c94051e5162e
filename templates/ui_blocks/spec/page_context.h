// What composing a page reads and never changes: the design tokens, the block library and
// the icon library of the installation, the page name, the screen, the metrics drawn from
// the tokens (fixed bands included) and the colour table. Built once before any block;
// builders get it by const reference.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/values.h"
#include "iconlib/iconlib.h"
#include "spec/metrics.h"
#include "spec/rgba.h"

namespace ub {

// A colour token read once: its text, its channels when the text is a colour (alpha -1
// when it gives none), and its integer when it starts with '#'.
struct ColourToken {
  std::string text;
  std::optional<std::array<int, 4>> channels;
  std::optional<long long> value;
};

// The colour tokens by name, looked up without building a key.
struct ColourHash {
  using is_transparent = void;
  size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
};
using ColourTable = std::unordered_map<std::string, ColourToken, ColourHash, std::equal_to<>>;

struct PageContext {
  PageContext(const Json& tok, const std::map<std::string, Json>& blocks, const iconlib::Index& icons)
      : tok(tok), blocks(blocks), icons(icons) {}

  const Json& tok;                            // the design tokens
  const std::map<std::string, Json>& blocks;  // block library: type -> definition
  const iconlib::Index& icons;                // the icon library
  std::string page_name;
  std::string project_root;                   // the project composed into; "" for none (no shipped pictures)
  int W = 0, H = 0;
  Metrics m;
  ColourTable colours;                        // index_colours() once: the colours never change

  void index_colours();                                            // colours from tok, after col_int()
  const std::string& tok_color(std::string_view name) const;      // raw "#RRGGBB"
  Rgba tcol(std::string_view name, int default_a = 255) const;    // rgba of a colour token
  long long col(std::string_view name) const;                     // col_int()[name]
  Json col_int() const;                                            // name -> integer colour
  int text_box_w(const std::string& txt, double fs, int align = 37, double slack = 1.1) const;
  std::pair<std::string, std::string> sem_color(const std::string& state) const;
};

}  // namespace ub
