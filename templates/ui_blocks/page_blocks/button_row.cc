// A row of one to four plain buttons side by side: equal widths over the content width,
// the spacer between them, each a touch target with its own callback.
#include <set>

#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"
#include "spec/page_limits.h"

namespace ub {

namespace {

constexpr int kMaxButtons = 4;

// What stands for a button in its caption: its own name, else "Item" and its number.
std::string button_id(const Entry& e, int i) {
  const std::string own = text(e, "name");
  return own.empty() ? cat("Item", i + 1) : own;
}

}  // namespace

int build_button_row(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const std::vector<Entry> items = entries(blk, "buttons", "text");
  const int n = (int)items.size();
  const std::string s_ = caption_id(blk);
  const int w = m.content_w, h = m.edit_h, fs = m.fs.b1;
  const int radius = (int)floordiv(m.radius, 2) + 2;
  // The gaps come off the span first, so the last button ends on the content's right edge.
  const Columns widths = split_columns(w - (n - 1) * m.spacer, n, m.spacer);

  auto win = make_node("window", cat("ButtonBar", s_), bd.controls.box(x, y, w, h));
  for (int i = 0; i < n; ++i) {
    const bool primary = text(items[i], "style") == "primary";
    const int bw = widths.widths[i], bx = widths.lefts[i];
    const std::string bg = bd.pictures.shape(cat(primary ? "btn_primary_" : "btn_secondary_", bw, "x", h, ".png"), bw,
                                             h, radius, bd.page.tcol(primary ? "brand" : "brand1"));
    const std::string cap = cat("ButtonBar", s_, button_id(items[i], i));
    const std::string txt = text(items[i], "text");
    win->children.push_back(bd.controls.button(cap, bd.controls.box(bx, 0, bw, h), bg, fs,
                                               bd.page.col(primary ? "onBrand" : "brand"), kAlignCenter, txt));
    check_text_fit(bd.notes, bd.page, cap, txt, fs, bw, h, "按钮");
  }
  assert_children_fit(*win, w, h, cat("ButtonBar", s_));
  parent.push_back(win);
  return y + h;
}

namespace {

long long button_row_limits(const LimitCheck& lc, const BlockRecord& b) {
  const std::vector<Entry> items = entries(b, "buttons", "text");
  const long long n = (long long)items.size();
  if (n < 1) fail_at(b, "buttons", cat("needs 1 to ", kMaxButtons, " buttons, got none"));
  lc.at_most(b, "buttons", n, kMaxButtons, "buttons share one row");
  std::set<std::string> ids;
  for (int i = 0; i < (int)n; ++i) {
    const std::string key = cat("buttons[", i, "]");
    const Json& style = given_value(items[i], "style");
    if (truthy(style) && style != "primary" && style != "secondary")
      fail_at(b, key + ".style", cat(literal_form(style), " is not primary or secondary"));
    const Json& own = given_value(items[i], "name");
    if (truthy(own) && !(own.is_string() && is_identifier(own.get<std::string>())))
      fail_at(b, key + ".name",
              cat(literal_form(own), " is not an identifier: letters, digits and underscores, not starting with a "
                                     "digit, at most ",
                  kMaxIdentifierLength, " characters"));
    if (!ids.insert(button_id(items[i], i)).second)
      fail_at(b, key + ".name", cat("\"", button_id(items[i], i), "\" names two buttons of the row"));
  }
  return lc.m.edit_h;
}

}  // namespace

extern const BlockKind kButtonRow{.type = "button_row", .prefix = "ButtonBar", .group_gap = true,
                                  .limits = button_row_limits, .build = at_xy<build_button_row>};

}  // namespace ub
