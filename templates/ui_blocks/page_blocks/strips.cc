// Small inline strips of the content flow: the status capsule, the divider with a
// label and the empty-state band.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_pill(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const std::string state = text(blk, "state");
  const auto [fg_name, bg_name] = bd.page.sem_color(state);
  const std::string txt = text(blk, "text");
  const std::string s_ = caption_id(blk);
  const int h = m.pill_h, fs = m.fs.b2;
  // As wide as its text, standing at the left, never wider than the content.
  const int w = std::min(bd.page.text_box_w(txt, fs) + 2 * m.pill_pad, m.content_w);
  auto win = make_node("window", cat("StatusPill", s_), bd.controls.box(x, y, w, h));

  win->children.push_back(bd.controls.deco(
      cat("StatusPill", s_, "Bg"), bd.controls.box(0, 0, w, h), bd.page.col(bg_name),
      bd.pictures.shape(cat("pill_", state, "_", w, "x", h, ".png"), w, h, floordiv(h, 2), bd.page.tcol(bg_name)), fs));
  const std::string cap = cat("StatusPill", s_, "Text");
  win->children.push_back(
      bd.controls.text(cap, bd.controls.box(0, 0, w, h), fs, bd.page.col(fg_name), txt, "", kAlignCenter));
  check_text_fit(bd.notes, bd.page, cap, txt, fs, w, h, "pill");

  assert_children_fit(*win, w, h, cat("StatusPill", s_));
  parent.push_back(win);
  return y + h;
}

int build_divider_label(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const std::string txt = text(blk, "text");
  const std::string s_ = caption_id(blk);
  const int h = m.divider_h, fs = m.fs.b2;
  const int tw = std::min(bd.page.text_box_w(txt, fs), m.content_w - 2 * (m.spacer + 4));
  // Each line is half of what the text leaves, less the gap; never under 4 px.
  const int line = std::max((int)floordiv(m.content_w - tw, 2) - m.text_chev_gap, 4);
  const std::string p_line = bd.pictures.shape(cat("sep_", line, "x1.png"), line, 1, 0, bd.page.tcol("line"));
  const int ly = y + (int)floordiv(h - 1, 2);

  parent.push_back(bd.controls.deco(cat("DividerLabel", s_, "LineL"), bd.controls.box(x, ly, line, 1),
                                    bd.page.col("line"), p_line, fs));
  parent.push_back(bd.controls.deco(cat("DividerLabel", s_, "LineR"),
                                    bd.controls.box(x + m.content_w - line, ly, line, 1), bd.page.col("line"), p_line,
                                    fs));
  const int tx = x + (int)floordiv(m.content_w - tw, 2);
  const std::string cap = cat("DividerLabel", s_, "Text");
  parent.push_back(bd.controls.text(cap, bd.controls.box(tx, y + floordiv(h - m.h_b2, 2), tw, m.h_b2), fs,
                                    bd.page.col("fg2"), txt, "", kAlignCenter));
  bd.rows.note_row_gaps(cap, x + line, tx);
  return y + h;
}

int build_empty(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const int H = bd.page.H;
  const std::string s_ = caption_id(blk);
  const int s = r4(m.icon_bg * 2);  // the icon disc
  const int band = std::max(s + 2 * (m.spacer2 + 4 + m.h_b2), r4(H * 0.3));
  const int cx = x + (int)floordiv(m.content_w - s, 2);
  // The disc stands one text height above the band's middle.
  const int top = y + (int)floordiv(band - s, 2) - m.h_b1;

  parent.push_back(
      bd.controls.deco(cat("EmptyStateBg", s_), bd.controls.box(cx, top, s, s), bd.page.col("brand1"),
                       bd.pictures.shape(cat("icbg_", s, ".png"), s, s, floordiv(s, 2), bd.page.tcol("brand1"))));
  const int ic = (int)floordiv(s, 2);
  const std::string g = text(blk, "icon");
  const int io = (int)floordiv(s - ic, 2);
  parent.push_back(bd.controls.deco(
      cat("EmptyStateIcon", s_), bd.controls.box(cx + io, top + io, ic, ic), bd.page.col("brand"),
      bd.pictures.glyph(cat("ic_", g, "_", ic, ".png"), g, ic, bd.page.tcol("brand"), std::pair{ic, ic})));

  const int tw = r4(m.content_w * 0.8);
  const int tx = x + (int)floordiv(m.content_w - tw, 2), ty = top + s + m.spacer2;
  const std::string cap = cat("EmptyStateText", s_), txt = text(blk, "text");
  parent.push_back(
      bd.controls.text(cap, bd.controls.box(tx, ty, tw, m.h_b1), m.fs.b1, bd.page.col("fg2"), txt, "", kAlignCenter));
  check_text_fit(bd.notes, bd.page, cap, txt, m.fs.b1, tw, m.h_b1, "empty");

  if (is_set(blk, "sub"))
    parent.push_back(bd.controls.text(cat("EmptyStateSub", s_), bd.controls.box(tx, ty + m.h_b1 + 4, tw, m.h_b2),
                                      m.fs.b2, bd.page.col("fg2"), text(blk, "sub"), "", kAlignCenter));
  return y + band;
}

extern const BlockKind kStatusPill{.type = "status_pill", .prefix = "StatusPill", .group_gap = true, .build = at_xy<build_pill>};
extern const BlockKind kDividerLabel{.type = "divider_label", .prefix = "DividerLabel", .group_gap = true, .build = at_xy<build_divider_label>};
extern const BlockKind kEmptyState{.type = "empty_state", .prefix = "EmptyState", .build = at_xy<build_empty>};

}  // namespace ub
