// Notice bar: a one-line message in a semantic state, with an icon and an optional
// close button.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

namespace {
// The icon a banner shows when the block names none.
std::string default_banner_icon(const std::string& state) {
  if (state == "success" || state == "ok") return "check";
  if (state == "warn" || state == "danger") return "warning";
  return "info";
}
}  // namespace

int build_banner(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const std::string state = text(blk, "state");
  const auto [fg_name, bg_name] = bd.page.sem_color(state);
  const std::string s_ = caption_id(blk);
  const int w = m.content_w, h = m.banner_h;
  auto win = make_node("window", cat("Banner", s_), bd.controls.box(x, y, w, h));

  win->children.push_back(bd.controls.deco(
      cat("BannerBg", s_), bd.controls.box(0, 0, w, h), bd.page.col(fg_name),
      bd.pictures.shape(cat("bnr_", state, "_", w, "x", h, ".png"), w, h, m.radius, bd.page.tcol(bg_name))));

  const std::string g = is_set(blk, "icon") ? text(blk, "icon") : default_banner_icon(state);
  const int ic = m.ic_min;
  win->children.push_back(bd.controls.deco(
      cat("Banner", s_, "Icon"), bd.controls.box(m.pad_l, floordiv(h - ic, 2), ic, ic), bd.page.col(fg_name),
      bd.pictures.glyph(cat("ic_", g, "_", ic, "_", state, ".png"), g, ic, bd.page.tcol(fg_name), std::pair{ic, ic})));

  const bool close = flag(blk, "close");
  const int cw = std::max(ic, 16);
  const int gj = close ? cw + m.text_chev_gap : 0;
  const int text_left = m.pad_l + ic + m.spacer, text_right = w - m.pad_r - gj;
  const std::string label = text(blk, "text");
  const std::string cap = cat("Banner", s_, "Text");
  win->children.push_back(
      bd.controls.text(cap, bd.controls.box(text_left, floordiv(h - m.h_b1, 2), text_right - text_left, m.h_b1),
                       m.fs.b1, bd.page.col(fg_name), label, "", kAlignLeft));
  check_text_fit(bd.notes, bd.page, cap, label, m.fs.b1, text_right - text_left, m.h_b1, "banner");

  if (close) {
    bd.rows.note_row_gaps(cap, text_right, w - m.pad_r - cw);
    // The state is in the name although the fill does not change with it.
    const std::string p_cl = bd.pictures.glyph(cat("ic_close_", cw, "_", state, ".png"), "close", cw,
                                               bd.page.tcol("fg2"), std::pair{cw, cw});
    win->children.push_back(bd.controls.button(cat("Banner", s_, "Close"),
                                               bd.controls.box(w - m.pad_r - cw, floordiv(h - cw, 2), cw, cw), p_cl));
  }

  assert_children_fit(*win, w, h, cat("Banner", s_));
  parent.push_back(win);
  return y + h;
}

extern const BlockKind kBanner{.type = "banner", .prefix = "Banner", .group_gap = true, .build = at_xy<build_banner>};

}  // namespace ub
