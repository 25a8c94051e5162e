// Bottom navigation strip: equal items of icon and label standing on the bottom bar's
// upper edge; the whole item is the hit area.
#include "compose.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"

namespace ub {

int Composer::build_nav(const Json& blk, NodeList& parent) {
  const std::vector<Json> items = list_or_empty(blk, "items");
  const int n = (int)items.size();
  if (n < 2 || n > 6) stop(cat("[X] bottom_nav.items 应为 3~5 项（允许 2~6），得到 ", n));
  const long long sel = int_or(blk, "selected", 0);
  if (sel < 0 || sel >= n) stop(cat("[X] bottom_nav.selected=", sel, " 越界（可选 0~", n - 1, "）"));

  const long long s_ = seq_of(blk);
  const int w = W, h = m.nav_h, ny = m.content_bottom - h;
  auto win = make_node("window", cat("BottomNav", s_), Pos{0, ny, w, h});
  win->children.push_back(deco(cat("NavBg", s_), box(0, 0, w, h), col("surface"),
                               shape(cat("navbg_", w, "x", h, ".png"), w, h, 0, tcol("surface"))));

  const Columns c = split_columns(w, n);
  const int ic = m.nav_ic;
  // Icon and label centred as a pair, never nearer than 4 px to the top.
  const int top_ic = std::max((int)floordiv(h - (ic + m.nav_gap + m.h_b2), 2), 4);
  // Decorations and buttons are collected apart so every button lies above every
  // decoration, however many items there are.
  NodeList deco_nodes, btns;
  for (int i = 0; i < n; ++i) {
    const Json it = entry_map(items[i], "text");
    const bool on = i == sel;
    const std::string g = text_or(it, "icon", "info"), state = on ? "on" : "off";
    const int iw = c.widths[i], ix0 = c.lefts[i];
    const long long colour = col(on ? "brand" : "fg2");
    const std::string cap = cat("Nav", s_, "Item", i + 1);

    const std::string p_ic = glyph(cat("nav_", g, "_", ic, "_", state, ".png"), g, ic, tcol(on ? "brand" : "fg2"),
                                   std::pair{ic, ic}, state);
    deco_nodes.push_back(deco(cap + "Icon", box(ix0 + floordiv(iw - ic, 2), top_ic, ic, ic), colour, p_ic));
    const std::string lbl = text_or(it, "text");
    deco_nodes.push_back(text(cap + "Label", box(ix0, top_ic + ic + m.nav_gap, iw, m.h_b2), m.fs.b2, colour, lbl, "",
                              kAlignCenter));
    check_text_fit(cap + "Label", lbl, m.fs.b2, iw, m.h_b2, "nav");
    btns.push_back(button(cap, box(ix0, 0, iw, h)));
  }

  append_layers(*win, deco_nodes, btns);
  assert_children_fit(*win, w, h, cat("BottomNav", s_));
  parent.push_back(win);
  return ny + h;
}


namespace {

int build_nav_kind(Composer& c, const Json& blk, NodeList& parent, Spot) { return c.build_nav(blk, parent); }

long long nav_limits(const LimitCheck& lc, const LimitWhere& w) {
  lc.int_key(w, "selected", 0);
  return lc.m.h_b2;
}

}  // namespace

extern const BlockKind kBottomNav{.type = "bottom_nav", .prefix = "BottomNav", .flow = Flow::NavBand, .limits = nav_limits, .build = build_nav_kind};

}  // namespace ub
