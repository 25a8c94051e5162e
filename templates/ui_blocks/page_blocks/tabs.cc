// Segmented control: a rounded bar of equal tabs; the selected one gets an indicator and
// a light background, both cut from the bar's own shape.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_tabs(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  std::vector<std::string> items;
  for (const Json& v : list(blk, "items")) items.push_back(to_text(v));
  const int n = (int)items.size();
  if (n < 2) stop(cat("[X] tabs.items 至少 2 个（分段控件），得到 ", n));
  const long long sel = integer(blk, "selected");
  if (sel < 0 || sel >= n) stop(cat("[X] tabs.selected=", sel, " 越界（可选 0~", n - 1, "）"));

  const std::string s_ = caption_id(blk);
  const int w = m.content_w, h = m.tab_h;
  const int r_bar = (int)floordiv(h, 2);  // all rounding follows the band height
  auto win = make_node("window", cat("Tabs", s_), bd.controls.box(x, y, w, h));

  win->children.push_back(
      bd.controls.deco(cat("TabsBg", s_), bd.controls.box(0, 0, w, h), bd.page.col("surface"),
                       bd.pictures.shape(cat("tabsbg_", w, "x", h, ".png"), w, h, r_bar, bd.page.tcol("surface"))));

  const Columns cols = split_columns(w, n);
  const int sl = cols.lefts[sel], sw = cols.widths[sel];
  // Indicator and selected background: static, below every tab button, and cut from the
  // bar's coverage mask so the end tabs keep the bar's corners. They do not overlap.
  win->children.push_back(
      bd.controls.deco(cat("TabsIndicator", s_), bd.controls.box(sl, h - m.ind_h, sw, m.ind_h), bd.page.col("brand"),
                       bd.pictures.clip_shape(cat("ind_", sw, "x", m.ind_h, "_l", sl, ".png"), sw, m.ind_h, r_bar,
                                              bd.page.tcol("brand"), w, h, sl, h - m.ind_h)));
  const int on_h = h - m.ind_h;
  win->children.push_back(bd.controls.deco(cat("TabsOnBg", s_), bd.controls.box(sl, 0, sw, on_h), bd.page.col("brand1"),
                                           bd.pictures.clip_shape(cat("tab_on_", sw, "x", on_h, "_l", sl, ".png"), sw,
                                                                  on_h, r_bar, bd.page.tcol("brand1"), w, h, sl, 0)));

  for (int i = 0; i < n; ++i) {
    const std::string cap = cat("Tabs", s_, "Item", i + 1);
    win->children.push_back(bd.controls.button(cap, bd.controls.box(cols.lefts[i], 0, cols.widths[i], h), "", m.fs.b1,
                                               bd.page.col(i == sel ? "brand" : "fg2"), kAlignCenter, items[i]));
    check_text_fit(bd.notes, bd.page, cap, items[i], m.fs.b1, cols.widths[i], h, "tab");
  }

  assert_children_fit(*win, w, h, cat("Tabs", s_));
  parent.push_back(win);
  return y + h;
}

namespace {

long long tabs_limits(const LimitCheck& lc, const BlockRecord& b) {
  lc.int_key(b, "selected");
  lc.at_most(b, "items", (long long)list_size(b, "items"), lc.m.content_w / kMinSlotPx,
             cat("tabs of ", kMinSlotPx, " px fit in ", lc.m.content_w, " px"));
  return lc.m.h_b2;
}

}  // namespace

extern const BlockKind kTabs{.type = "tabs", .prefix = "Tabs", .group_gap = true, .limits = tabs_limits, .build = at_xy<build_tabs>};

}  // namespace ub
