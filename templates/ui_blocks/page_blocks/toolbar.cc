// Toolbar: the top band with an optional back control, a centred title and up to three
// action icons placed from the right.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_toolbar(Build& bd, const BlockRecord& blk, NodeList& parent) {
  const Metrics& m = bd.page.m;
  const int W = bd.page.W;
  const int h = m.tb_h, ic = m.tb_ic;
  const std::string s_ = caption_id(blk);
  auto win = make_node("window", cat("Toolbar", s_), Pos{0, 0, W, h});
  win->children.push_back(
      bd.controls.deco(cat("Toolbar", s_, "Bg"), bd.controls.box(0, 0, W, h), bd.page.col("surface"),
                       bd.pictures.shape(cat("toolbg_", W, "x", h, ".png"), W, h, 0, bd.page.tcol("surface"))));

  // The title's box is known only after the actions are placed, yet it comes first in
  // z-order: icons and buttons are collected apart and appended after it.
  NodeList deco_nodes, btns;
  const int hs = std::min(std::max(ic + 2 * m.spacer, 32), h);  // square hit width
  const int icon_top = (int)floordiv(h - ic, 2), icon_in = (int)floordiv(hs - ic, 2);
  int title_l = m.margin, title_r = W - m.margin;

  if (flag(blk, "back")) {
    const std::string g = text(blk, "backIcon");
    // The name stays the same whatever the back icon is.
    deco_nodes.push_back(bd.controls.deco(
        cat("Toolbar", s_, "BackIcon"), bd.controls.box(m.margin + icon_in, icon_top, ic, ic), bd.page.col("fg1"),
        bd.pictures.glyph(cat("ic_back_", ic, ".png"), g, ic, bd.page.tcol("fg1"), std::pair{ic, ic})));
    btns.push_back(bd.controls.button(cat("Toolbar", s_, "Back"), bd.controls.box(m.margin, 0, hs, h)));
    title_l = m.margin + hs + m.spacer;
  }

  const std::vector<Entry> acts = entries(blk, "actions", "icon");
  if (acts.size() >= 4) stop(cat("[X] toolbar.actions 最多 3 个（标题带放不下），得到 ", acts.size()));

  // The rightmost action is made first; numbers still run from left to right.
  int right = W - m.margin;
  for (int idx = (int)acts.size() - 1; idx >= 0; --idx) {
    const std::string cap = cat("Toolbar", s_, "Action", idx + 1);
    const int gx = right - hs;
    const std::string g = text(acts[idx], "icon");
    deco_nodes.push_back(bd.controls.deco(
        cap + "Icon", bd.controls.box(gx + icon_in, icon_top, ic, ic), bd.page.col("fg2"),
        bd.pictures.glyph(cat("ic_", g, "_", ic, ".png"), g, ic, bd.page.tcol("fg2"), std::pair{ic, ic})));
    btns.push_back(bd.controls.button(cap, bd.controls.box(gx, 0, hs, h)));
    right = gx - m.spacer;
  }
  if (!acts.empty()) title_r = right + m.spacer;  // flush on the leftmost action's hit box

  const std::string title = text(blk, "title");
  const int tw = std::max(title_r - title_l, 1);
  const std::string cap = cat("Toolbar", s_, "Title");
  win->children.push_back(bd.controls.text(cap, bd.controls.box(title_l, floordiv(h - m.h_h2, 2), tw, m.h_h2), m.fs.h2,
                                           bd.page.col("fg1"), title, "", kAlignCenter, true));
  check_text_fit(bd.notes, bd.page, cap, title, m.fs.h2, tw, m.h_h2, "toolbar");

  append_layers(*win, deco_nodes, btns);
  assert_children_fit(*win, W, h, cat("Toolbar", s_));
  parent.push_back(win);
  return h;
}

namespace {

int build_toolbar_kind(Build& bd, const BlockRecord& blk, NodeList& parent, Spot) { return build_toolbar(bd, blk, parent); }

}  // namespace

extern const BlockKind kToolbar{.type = "toolbar", .prefix = "Toolbar", .flow = Flow::TopBand, .build = build_toolbar_kind};

}  // namespace ub
