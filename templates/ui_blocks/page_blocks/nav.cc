// Bottom navigation strip: equal items of icon and label standing on the bottom bar's
// upper edge; the whole item is the hit area.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_nav(Build& bd, const BlockRecord& blk, NodeList& parent) {
  const Metrics& m = bd.page.m;
  const int W = bd.page.W;
  const std::vector<Entry> items = entries(blk, "items", "text");
  const int n = (int)items.size();
  if (n < 2 || n > 6) stop(cat("[X] bottom_nav.items 应为 3~5 项（允许 2~6），得到 ", n));
  const long long sel = integer(blk, "selected");
  if (sel < 0 || sel >= n) stop(cat("[X] bottom_nav.selected=", sel, " 越界（可选 0~", n - 1, "）"));

  const std::string s_ = caption_id(blk);
  const int w = W, h = m.nav_h, ny = m.content_bottom - h;
  auto win = make_node("window", cat("BottomNav", s_), Pos{0, ny, w, h});
  win->children.push_back(
      bd.controls.deco(cat("NavBg", s_), bd.controls.box(0, 0, w, h), bd.page.col("surface"),
                       bd.pictures.shape(cat("navbg_", w, "x", h, ".png"), w, h, 0, bd.page.tcol("surface"))));

  const Columns c = split_columns(w, n);
  const int ic = m.nav_ic;
  // Icon and label centred as a pair, never nearer than 4 px to the top.
  const int top_ic = std::max((int)floordiv(h - (ic + m.nav_gap + m.h_b2), 2), 4);
  // Decorations and buttons are collected apart so every button lies above every
  // decoration, however many items there are.
  NodeList deco_nodes, btns;
  for (int i = 0; i < n; ++i) {
    const Entry& it = items[i];
    const bool on = i == sel;
    const std::string g = text(it, "icon"), state = on ? "on" : "off";
    const int iw = c.widths[i], ix0 = c.lefts[i];
    const long long colour = bd.page.col(on ? "brand" : "fg2");
    const std::string cap = cat("Nav", s_, "Item", i + 1);

    const std::string p_ic = bd.pictures.glyph(cat("nav_", g, "_", ic, "_", state, ".png"), g, ic,
                                               bd.page.tcol(on ? "brand" : "fg2"), std::pair{ic, ic}, state);
    deco_nodes.push_back(
        bd.controls.deco(cap + "Icon", bd.controls.box(ix0 + floordiv(iw - ic, 2), top_ic, ic, ic), colour, p_ic));
    const std::string lbl = text(it, "text");
    deco_nodes.push_back(bd.controls.text(cap + "Label", bd.controls.box(ix0, top_ic + ic + m.nav_gap, iw, m.h_b2),
                                          m.fs.b2, colour, lbl, "", kAlignCenter));
    check_text_fit(bd.notes, bd.page, cap + "Label", lbl, m.fs.b2, iw, m.h_b2, "nav");
    btns.push_back(bd.controls.button(cap, bd.controls.box(ix0, 0, iw, h)));
  }

  append_layers(*win, deco_nodes, btns);
  assert_children_fit(*win, w, h, cat("BottomNav", s_));
  parent.push_back(win);
  return ny + h;
}

namespace {

int build_nav_kind(Build& bd, const BlockRecord& blk, NodeList& parent, Spot) { return build_nav(bd, blk, parent); }

long long nav_limits(const LimitCheck& lc, const BlockRecord& b) {
  lc.int_key(b, "selected");
  return lc.m.h_b2;
}

}  // namespace

extern const BlockKind kBottomNav{.type = "bottom_nav", .prefix = "BottomNav", .flow = Flow::NavBand, .limits = nav_limits, .build = build_nav_kind};

}  // namespace ub
