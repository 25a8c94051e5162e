// Loading block, a still frame: a spinner (icon and text) or a skeleton (text and bars).
#include "compose.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"

namespace ub {

int Composer::build_loading(const Json& blk, NodeList& parent, int x, int y) {
  const Json variant = value_or(blk, "variant", "spinner");
  if (!variant.is_string() || (variant != "spinner" && variant != "skeleton"))
    stop("[X] loading.variant 只支持 spinner / skeleton，得到 " + literal_form(variant));

  const std::string txt = text_or(blk, "text", "加载中...");
  const int w = m.content_w, bar_h = m.load_bar_h;
  const long long s_ = seq_of(blk);
  const std::string text_cap = cat("Loading", s_, "Text");
  NodeList deco_nodes;
  int band = 0;

  auto card_bg = [&](int bh) {
    return deco(cat("Loading", s_, "Bg"), box(0, 0, w, bh), col("surface"),
                shape(cat("card_", w, "x", bh, ".png"), w, bh, m.radius, tcol("surface")));
  };

  if (variant == "spinner") {
    const int ic = m.ic_min;
    band = std::max(ic + m.spacer + m.h_b1 + 2 * m.spacer2, r4(H * m.load_h_of_h));
    deco_nodes.push_back(card_bg(band));
    // The icon and text pair is centred vertically.
    const int top = (int)floordiv(band - (ic + m.spacer + m.h_b1), 2);
    const std::string g = text_or(blk, "icon", "loader");
    deco_nodes.push_back(deco(cat("Loading", s_, "Icon"), box(floordiv(w - ic, 2), top, ic, ic), col("brand"),
                              glyph(cat("ic_", g, "_", ic, ".png"), g, ic, tcol("brand"), std::pair{ic, ic})));
    deco_nodes.push_back(text(text_cap, box(0, top + ic + m.spacer, w, m.h_b1), m.fs.b1, col("fg2"), txt, "",
                              kAlignCenter));
    check_text_fit(text_cap, txt, m.fs.b1, w, m.h_b1, "加载态");
  } else {
    const int lines = (int)std::max<long long>(int_or(blk, "lines", 3), 1);
    band = 2 * m.spacer2 + m.h_b1 + m.spacer1 + lines * bar_h + (lines - 1) * m.spacer;
    deco_nodes.push_back(card_bg(band));
    const int tw = w - 2 * m.pad_l;
    deco_nodes.push_back(text(text_cap, box(m.pad_l, m.spacer2, tw, m.h_b1), m.fs.b1, col("fg2"), txt));
    check_text_fit(text_cap, txt, m.fs.b1, tw, m.h_b1, "加载态");
    for (int i = 0; i < lines; ++i) {
      // The last bar is the short one.
      const int bw = i + 1 < lines ? tw : std::max(r4(tw * 0.6), 8);
      const int by = m.spacer2 + m.h_b1 + m.spacer1 + i * (bar_h + m.spacer);
      deco_nodes.push_back(deco(cat("Loading", s_, "Bar", i + 1), box(m.pad_l, by, bw, bar_h), col("line"),
                                shape(cat("skel_", bw, "x", bar_h, ".png"), bw, bar_h, floordiv(bar_h, 2),
                                      tcol("line"))));
    }
  }

  auto win = make_node("window", cat("Loading", s_), box(x, y, w, band));
  for (auto& nd : deco_nodes) win->children.push_back(nd);
  assert_children_fit(*win, w, band, cat("Loading", s_));
  parent.push_back(win);
  return y + band;
}


namespace {
int build_loading_kind(Composer& c, const Json& blk, NodeList& parent, Spot s) {
  return c.build_loading(blk, parent, s.x, s.y);
}

long long loading_limits(const LimitCheck& lc, const LimitWhere& w) {
  const long long lines = std::max<long long>(lc.int_key(w, "lines", 3), 1);
  return lc.stacked(w, "lines", lines, lc.m.load_bar_h + lc.m.spacer);
}

}  // namespace

extern const BlockKind kLoading{.type = "loading", .prefix = "Loading", .group_gap = true, .limits = loading_limits, .build = build_loading_kind};

}  // namespace ub
