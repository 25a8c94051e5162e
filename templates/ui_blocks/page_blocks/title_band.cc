// The two bands no page goes without: the title band at the top and the bottom bar with
// its primary button (and optional secondary button and status text).
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_title(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int /*y*/) {
  const Metrics& m = bd.page.m;
  const int W = bd.page.W;
  const bool has_sub = is_set(blk, "subtitle");
  // The reserve ignores compact mode: the title keeps its place even when the subtitle is not drawn.
  const int reserve = has_sub ? m.h_b2 + 4 : 0;
  const int line_w = W - 2 * m.margin;
  Pos p = bd.controls.box(x, (double)floordiv(m.bar_top - m.h_h1 - reserve, 2), line_w, m.h_h1);
  parent.push_back(
      bd.controls.text("TextTitle", p, m.fs.h1, bd.page.col("fg1"), text(blk, "title"), "", kAlignLeft, true));
  if (has_sub && !m.compact)
    parent.push_back(bd.controls.text("TextSubtitle", bd.controls.box(x, p.top + m.h_h1 + 4, line_w, m.h_b2), m.fs.b2,
                                      bd.page.col("fg2"), text(blk, "subtitle")));
  return m.bar_top;
}

int build_actions(Build& bd, const BlockRecord& blk, NodeList& parent, int /*x*/, int /*y*/) {
  const Metrics& m = bd.page.m;
  const int W = bd.page.W, H = bd.page.H;
  const std::string sq = caption_id(blk);
  const int bar_y = m.content_bottom;
  parent.push_back(bd.controls.deco(
      cat("FooterBg", sq), bd.controls.box(0, bar_y, W, m.bar_bot), bd.page.col("surface"),
      bd.pictures.shape(cat("footbg_", W, "x", m.bar_bot, ".png"), W, m.bar_bot, 0, bd.page.tcol("surface"))));

  const int bw = m.btn_w, bh = m.btn_h;
  const int by = bar_y + (int)floordiv(m.bar_bot - bh, 2);
  const int px_primary = W - m.margin - bw;
  const int radius = (int)floordiv(m.radius, 2) + 2;
  if (is_set(blk, "secondary")) {
    std::string bg =
        bd.pictures.shape(cat("btn_secondary_", bw, "x", bh, ".png"), bw, bh, radius, bd.page.tcol("brand1"));
    parent.push_back(bd.controls.button(cat("ButtonSecondary", sq),
                                        bd.controls.box(px_primary - m.spacer - bw, by, bw, bh), bg, m.fs.b2,
                                        bd.page.col("brand"), kAlignCenter, text(blk, "secondary")));
  }
  std::string bg = bd.pictures.shape(cat("btn_primary_", bw, "x", bh, ".png"), bw, bh, radius, bd.page.tcol("brand"));
  parent.push_back(bd.controls.button(cat("ButtonPrimary", sq), bd.controls.box(px_primary, by, bw, bh), bg, m.fs.b2,
                                      bd.page.col("onBrand"), kAlignCenter, text(blk, "primary")));

  if (is_set(blk, "status")) {
    const std::string status = text(blk, "status");
    const std::string cap = cat("ActionStatus", sq);
    const int sw = r4(m.content_w * 0.4);
    parent.push_back(bd.controls.text(cap, bd.controls.box(m.margin, by + (int)floordiv(bh - m.h_b2, 2), sw, m.h_b2),
                                      m.fs.b2, bd.page.col("fg2"), status));
    check_text_fit(bd.notes, bd.page, cap, status, m.fs.b2, sw, m.h_b2, "footer");
  }
  return H;
}

extern const BlockKind kPageTitle{.type = "page_title", .prefix = "Title", .flow = Flow::Title, .build = at_xy<build_title>};
extern const BlockKind kBottomActions{.type = "bottom_actions", .prefix = "Action", .flow = Flow::Footer, .build = at_xy<build_actions>};

}  // namespace ub
