// What the lists and wheel pickers of a page show at run time beyond their one template
// row: every list row and every wheel column's values, kept as plain data while the page
// is built, for the generated data header.
#pragma once

#include <string>
#include <vector>

namespace ub {

// One list row as the device lists it.
struct ListDataRow {
  std::string title, value;
  std::string icon;      // picture file under resources/images; "" when the row shows none
  bool chevron = false;  // the row draws a chevron

  bool operator==(const ListDataRow&) const = default;
};

// A list block: its caption base (the block's own name, or its generated one) and rows.
struct ListData {
  std::string base;
  std::vector<ListDataRow> rows;

  bool operator==(const ListData&) const = default;
};

// A wheel picker: its caption base and one list of value texts per column.
struct WheelData {
  std::string base;
  std::vector<std::vector<std::string>> columns;

  bool operator==(const WheelData&) const = default;
};

// In the order the page builds them, which is reading order.
struct PageData {
  std::vector<ListData> lists;
  std::vector<WheelData> wheels;
  std::vector<std::string> shipped;  // the project's own pictures the page read (image blocks)

  bool operator==(const PageData&) const = default;
};

}  // namespace ub
