// Planned height of a block in a container: must equal what its builder reports.
#include "compose.h"
#include "rows/row_text.h"

namespace ub {

int Composer::row_height(const Json& blk) const {
  const std::string t = text_or(blk, "type");
  const int label_h = truthy(get(blk, "label")) ? m.h_b2 + m.spacer : 0;
  if (t == "slider_row" || t == "progress_row") return m.row_h + m.seek_h + 2 * m.widget_pad;
  if (t == "input_row") return m.row_h + m.edit_h + 2 * m.widget_pad;
  if (t == "radio_row") {
    const int n = static_cast<int>(block_list(blk, t, "options").size());
    return m.row_h + n * m.opt_h + 2 * m.widget_pad;
  }
  if (t == "list_item") {
    const long long rows = std::max(int_or(blk, "rows", m.li_rows), 1LL);
    const long long rs = std::max(int_or(blk, "rowSpacing", 0), 0LL);
    return static_cast<int>(rows * (m.li_h + rs) + std::min<long long>(rows - 1, m.li_peek)) + label_h;
  }
  if (t == "wheel_picker") {
    const long long rows = std::max(int_or(blk, "rows", m.wheel_rows), 3LL);
    return static_cast<int>(rows * m.wheel_h) + label_h;
  }
  return m.row_h;
}

}  // namespace ub
