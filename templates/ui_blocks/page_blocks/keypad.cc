// Numeric keypad: three columns of static key faces with hit buttons; the typed string is
// assembled by the application in the key callbacks.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

namespace {
// 1-9, then backspace, 0 and confirm: the keys when the block gives none.
const Json& default_keys() {
  static const Json keys = [] {
    Json k = Json::array();
    for (const char* t : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) k.push_back({{"text", t}});
    k.push_back({{"icon", "arrow-left"}});
    k.push_back({{"text", "0"}});
    k.push_back({{"icon", "check"}});
    return k;
  }();
  return keys;
}
}  // namespace

int build_keypad(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const int H = bd.page.H;
  const Json& tok = bd.page.tok;
  // Only an absent list takes the default; a given empty one fails the count.
  std::vector<Entry> keys;
  if (given_value(blk, "items").is_null()) {
    for (const Json& k : default_keys()) keys.push_back(Entry{&k, "text", nullptr});
  } else {
    const Json& given = given_value(blk, "items");
    if (!given.is_array()) throw KeyError("items", "expected a list, got " + shown_value(given));
    keys = entries(blk, "items", "text");
    // A false list has no entries: it is still the list given.
  }
  const int n = (int)keys.size();
  if (n % 3 != 0 || n < 6 || n > 15) stop(cat("[X] keypad.items 个数必须是 3 的倍数且在 6~15，得到 ", n));

  const int rows = n / 3, gap = m.key_gap, w = m.content_w;
  const std::string s_ = caption_id(blk);
  const Columns c = split_columns(w - 2 * gap, 3, gap);

  // Keys follow their width, capped by a share of the screen height, never below one line.
  const int kw = c.min_width();
  const int kh = std::max(m.h_b1 + 2 * m.spacer, std::min(r4(kw * size_token(tok, "key_h_of_w")),
                                                          r4(H * size_token(tok, "key_h_max_of_h"))));
  const int gic = std::min(std::max(r4(std::min(kw, kh) * 0.34), m.ic_min), std::max(kh - 2 * m.spacer, m.ic_min));

  int top = 0;
  if (is_set(blk, "display")) {
    const std::string cap = cat("Keypad", s_, "Display"), dtxt = text(blk, "display");
    const int dw = w - 2 * m.pad_l;
    parent.push_back(bd.controls.text(cap, bd.controls.box(x + m.pad_l, y + top, dw, m.h_b1), m.fs.b1,
                                      bd.page.col("fg1"), dtxt, "", kAlignRight));
    check_text_fit(bd.notes, bd.page, cap, dtxt, m.fs.b1, dw, m.h_b1, "键盘显示行");
    top += m.h_b1 + m.spacer1;
  }

  const int keys_h = rows * kh + (rows - 1) * gap;
  auto win = make_node("window", cat("Keypad", s_), bd.controls.box(x, y + top, w, keys_h));
  NodeList deco_nodes, btns;
  for (int i = 0; i < n; ++i) {
    const Entry& it = keys[i];
    const int r = i / 3, ci = i % 3;
    const int kx = c.lefts[ci], kyw = c.widths[ci], ky = r * (kh + gap);
    const std::string cap = cat("Keypad", s_, "Key", i + 1);
    const Json& icon = given_value(it, "icon");
    const bool has_icon = is_set(it, "icon");
    // Only the check key is primary.
    const bool primary = has_icon && icon.is_string() && icon.get<std::string>() == "check";

    deco_nodes.push_back(
        bd.controls.deco(cap + "Face", bd.controls.box(kx, ky, kyw, kh), bd.page.col("surface"),
                         bd.pictures.shape(cat(primary ? "keybrand" : "key", "_", kyw, "x", kh, ".png"), kyw, kh,
                                           m.radius, bd.page.tcol(primary ? "brand" : "surface"))));
    if (has_icon) {
      const std::string g = text(it, "icon");
      deco_nodes.push_back(bd.controls.deco(
          cap + "Icon", bd.controls.box(kx + floordiv(kyw - gic, 2), ky + floordiv(kh - gic, 2), gic, gic),
          bd.page.col("fg2"),
          bd.pictures.glyph(cat("ic_", g, "_", gic, ".png"), g, gic, bd.page.tcol(primary ? "onBrand" : "fg2"),
                            std::pair{gic, gic}, optional_text(it, "state"))));
      btns.push_back(bd.controls.button(cap, bd.controls.box(kx, ky, kyw, kh)));
    } else {
      // The key's text is the button's own, so it stands over the face.
      const std::string txt = text(it, "text");
      btns.push_back(bd.controls.button(cap, bd.controls.box(kx, ky, kyw, kh), "", m.fs.b1, bd.page.col("fg1"),
                                        kAlignCenter, txt));
      check_text_fit(bd.notes, bd.page, cap, txt, m.fs.b1, kyw, kh, "键盘键面");
    }
  }

  append_layers(*win, deco_nodes, btns);
  assert_children_fit(*win, w, keys_h, cat("Keypad", s_));
  parent.push_back(win);
  return y + top + keys_h;
}

extern const BlockKind kKeypad{.type = "keypad", .prefix = "Keypad", .group_gap = true, .build = at_xy<build_keypad>};

}  // namespace ub
