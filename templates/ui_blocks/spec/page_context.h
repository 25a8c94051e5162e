// What composing a page reads and never changes: the page name, the screen, the design
// tokens and the metrics drawn from them (fixed bands included), the block library and
// the colour table. Built once before any block; builders get it by const reference.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/values.h"
#include "spec/metrics.h"
#include "spec/rgba.h"

namespace ub {

struct PageContext {
  std::string page_name;
  int W = 0, H = 0;
  Json tok;
  Metrics m;
  std::map<std::string, Json> blocks;        // block library: type -> definition
  std::map<std::string, long long> col_map;  // col_int() once: the colours never change

  std::string tok_color(const std::string& name) const;           // raw "#RRGGBB"
  Rgba tcol(const std::string& name, int default_a = 255) const;  // rgba of a colour token
  long long col(const std::string& name) const;                   // col_int()[name]
  Json col_int() const;                                           // name -> integer colour
  int text_box_w(const std::string& txt, double fs, int align = 37, double slack = 1.1) const;
  std::pair<std::string, std::string> sem_color(const std::string& state) const;
};

}  // namespace ub
