// The row builders: plain and field rows, section headings, cards and form sections,
// lists and wheels. Each returns the new bottom y (see BlockKind::build).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kinds/build.h"

namespace ub {

// One row of a list block: what its template shows and what the device lists. A plain
// entry is a title; a record gives its title (the first of title, label, text that is
// given), value, icon and icon state.
struct ListRow {
  std::string title, value, icon;
  std::optional<std::string> icon_state;  // none when absent or null
};
std::vector<ListRow> list_rows(const BlockRecord& list);

// The columns of a wheel picker: one list of value texts per column (empty for a column
// given only by the count).
std::vector<std::vector<std::string>> wheel_columns(const BlockRecord& wheel);

// Boxes of one list row (list_row_boxes).
struct ListRowBoxes {
  int ic = 0;
  bool has_ic = false;
  int left = 0, right_edge = 0, vw = 0, tw = 0;
  std::string title, value;
};

// Planned height of a block in a container: must equal what its builder takes.
int row_height(const PageContext& page, const BlockRecord& blk);

int build_row(Build& bd, const BlockRecord& blk, NodeList& parent, int x0, int y0, int w, int reserve, bool has_icon);
int build_field_row(Build& bd, const BlockRecord& blk, NodeList& parent, int x0, int y0, int w);
// A section heading: the caption "SectionHeader" + id (a number or a name), the text in h2.
int section_heading(Build& bd, const std::string& id, const std::string& txt, NodeList& parent, int x, int y);
int build_section(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_card(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_form_section(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
ListRowBoxes list_row_boxes(Build& bd, int w, int ih, const ListRow& row, bool chevron);
ListRowBoxes list_row_check(Build& bd, const std::string& caption, int w, int ih, const ListRow& row, bool chevron);
// `icon_pic`, when given, receives the icon's picture reference ("" without an icon).
Json list_row_subitems(Build& bd, const std::string& caption, int w, int ih, const ListRow& row, bool chevron,
                       std::string* icon_pic = nullptr);
// The template of a list's items; without a row, an empty title (and the chevron).
Json list_item_template(Build& bd, const std::string& caption, int w, int ih, bool chevron = true,
                        const ListRow* row = nullptr, std::string* icon_pic = nullptr);
int build_list(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w);
int build_wheel(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w);

}  // namespace ub
