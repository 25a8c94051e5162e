// The row builders: plain and field rows, section headings, cards and form sections,
// lists and wheels. Each returns the new bottom y (see BlockKind::build).
#pragma once

#include <string>

#include "kinds/build.h"

namespace ub {

// Boxes of one list row (list_row_boxes).
struct ListRowBoxes {
  int ic = 0;
  bool has_ic = false;
  int left = 0, right_edge = 0, vw = 0, tw = 0;
  std::string title, value;
};

// Planned height of a block in a container: must equal what its builder takes.
int row_height(const PageContext& page, const Json& blk);

int build_row(Build& bd, const Json& blk, NodeList& parent, int x0, int y0, int w, int reserve, bool has_icon);
int build_field_row(Build& bd, const Json& blk, NodeList& parent, int x0, int y0, int w);
int build_section(Build& bd, const Json& blk, NodeList& parent, int x, int y);
int build_card(Build& bd, const Json& blk, NodeList& parent, int x, int y);
int build_form_section(Build& bd, const Json& blk, NodeList& parent, int x, int y);
ListRowBoxes list_row_boxes(Build& bd, int w, int ih, const Json& row, bool chevron);
ListRowBoxes list_row_check(Build& bd, const std::string& caption, int w, int ih, const Json& row, bool chevron);
Json list_row_subitems(Build& bd, const std::string& caption, int w, int ih, const Json& row, bool chevron);
Json list_item_template(Build& bd, const std::string& caption, int w, int ih, bool chevron = true,
                        const Json& row = Json());
int build_list(Build& bd, const Json& blk, NodeList& parent, int x, int y, int w);
int build_wheel(Build& bd, const Json& blk, NodeList& parent, int x, int y, int w);

}  // namespace ub
