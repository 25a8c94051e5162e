// Geometry checks made while the tree is built: text room, children inside their
// container, and content clear of the bottom band.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "controls/node.h"
#include "spec/metrics.h"
#include "spec/notes.h"
#include "spec/page_context.h"

namespace ub {

// Effective absolute rectangle of a node (_collect_rects).
struct RectRecord {
  int l = 0, t = 0, r = 0, b = 0;
  std::string caption, type;
  bool leaf = false;
  std::vector<std::string> path;
};

// Notes a text that needs more room than its box (the page still composes).
void check_text_fit(Notes& notes, const PageContext& page, const std::string& caption, const std::string& txt,
                    double fs, int box_w, int box_h, const std::string& where);
// Refuses (StopError) a window whose children leave its cw x ch.
void assert_children_fit(const Node& win, int cw, int ch, const std::string& where);
std::vector<RectRecord> collect_rects(const NodeList& nodes, int ox = 0, int oy = 0,
                                      const std::optional<std::array<int, 4>>& clip = {},
                                      std::vector<RectRecord>* out = nullptr,
                                      const std::vector<std::string>& path = {});
// Refuses content that reaches under the bottom bands or below its declared height
// (content_h under bar_top); notes the lowest content otherwise.
void assert_no_bar_overlap(const Metrics& m, int content_h, const std::vector<std::string>& places, Notes& notes,
                           const NodeList& content_nodes, const NodeList& band_nodes);

}  // namespace ub
