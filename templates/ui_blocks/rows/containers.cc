// Section headings, cards and form sections. A container's height is the sum of
// the planned heights of its blocks; rows lie flush, in coordinates local to it.
#include "compose.h"
#include "rows/row_text.h"

namespace ub {

namespace {

struct ContainerKind {
  const char* win_prefix;  // caption of the window, then the number
  const char* bg_prefix;   // caption of the background: prefix, number, suffix
  const char* bg_suffix;
  const char* refuse;      // stop message for a block type it does not take
};

const ContainerKind kCard{"Card", "CardBg", "",
                          "[X] 卡内不支持的块类型：%s（卡内只能是行块/列表块；tabs/banner/toast/status_pill/"
                          "divider_label/grid_icons/chart_card/image_gallery/keypad/loading/form_section/toolbar "
                          "是根层块）"};
const ContainerKind kForm{"FormSection", "FormSection", "Bg", "[X] form_section 只收行块/列表块（与 card 同口径）：%s"};

std::string fill_s(const std::string& fmt, const std::string& s) {
  std::string out = fmt;
  out.replace(out.find("%s"), 2, s);
  return out;
}

// Sets origin to (0, 0) for the rows of a container and puts the old one back.
struct LocalOrigin {
  Composer& c;
  std::pair<double, double> saved;
  explicit LocalOrigin(Composer& c) : c(c), saved(c.origin) { c.origin = {0, 0}; }
  ~LocalOrigin() { c.origin = saved; }
};

int build_container(Composer& c, const Json& blk, NodeList& parent, int x, int y, const ContainerKind& kind,
                    const Json& rows, bool surface) {
  const Metrics& m = c.m;
  const int seq = block_seq(blk);
  if (truthy(get(blk, "title"))) {
    // The heading stands on the page, above the container.
    Json head = {{"text", get(blk, "title")}, {"_seq", seq}};
    y = c.build_section(head, parent, x, y);
  }

  std::vector<int> heights;
  int ch = 0;
  for (const Json& b : rows) {
    if (!b.is_object())
      throw InputError(cat(text_or(blk, "type"), ".blocks: each block must be a mapping, got ", type_name(b)));
    heights.push_back(c.row_height(b));
    ch += heights.back();
  }
  const int cw = m.content_w;
  NodePtr win = make_node("window", cat(kind.win_prefix, seq), c.box(x, y, cw, ch));
  if (surface) {
    const std::string pic = c.shape(cat("card_", cw, "x", ch, ".png"), cw, ch, m.radius, c.tcol("surface"));
    // Local coordinates: the window's offset must not count twice.
    win->children.push_back(c.deco(cat(kind.bg_prefix, seq, kind.bg_suffix), c.box(0, 0, cw, ch),
                                   hex2int(c.tok_color("surface")), pic));
  }

  const int reserve = c.fam_reserve.value_or(0);
  NodeList row_nodes, sep_nodes;
  {
    LocalOrigin local(c);
    int top = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
      const Json& b = rows[i];
      const std::string t = text_or(b, "type");
      if (in(FIELD_TYPES, t)) {
        c.build_field_row(b, row_nodes, 0, top, cw);
      } else if (t == "list_item") {
        c.build_list(b, row_nodes, 0, top, cw);
      } else if (t == "wheel_picker") {
        c.build_wheel(b, row_nodes, 0, top, cw);
      } else if (in(ROW_TYPES, t)) {
        const bool has_icon = c.fam_icon.value_or(false) && truthy(get(b, "icon")) && !m.compact;
        c.build_row(b, row_nodes, 0, top, cw, reserve, has_icon);
      } else {
        stop(fill_s(kind.refuse, t));
      }
      // The planned height, not the builder's result, moves the cursor.
      top += heights[i];
      if (i + 1 < rows.size())
        sep_nodes.push_back(c.sep_node(m.pad_l, top, cw - 2 * m.pad_l, block_seq(b)));
    }
  }

  // Separators above the background and under all rows.
  win->children.insert(win->children.end(), sep_nodes.begin(), sep_nodes.end());
  win->children.insert(win->children.end(), row_nodes.begin(), row_nodes.end());
  c.assert_children_fit(*win, cw, ch, cat(kind.win_prefix, seq));
  parent.push_back(win);
  return y + ch;
}

}  // namespace

int Composer::build_section(const Json& blk, NodeList& parent, int x, int y) {
  const std::string txt = text_or(blk, "text");
  parent.push_back(text(cat("SectionHeader", block_seq(blk)), box(x, y, m.content_w, m.h_h2), m.fs.h2,
                        hex2int(tok_color("fg2")), txt, "", kAlignLeft, true));
  // Never less than the third spacer step of the tokens, however small the font.
  const int step = static_cast<int>(int_of(get(get(tok, "spacer"), "spacer3")));
  return y + std::max(m.h_h2, step);
}

int Composer::build_card(const Json& blk, NodeList& parent, int x, int y) {
  return build_container(*this, blk, parent, x, y, kCard, block_list(blk, "card", "blocks"), true);
}

int Composer::build_form_section(const Json& blk, NodeList& parent, int x, int y) {
  const Json& rows = block_list(blk, "form_section", "blocks");
  if (rows.empty()) stop("[X] form_section.blocks 不能为空（它就是「组标题 + 字段行集合」）");
  return build_container(*this, blk, parent, x, y, kForm, rows, flag(blk, "surface", false));
}

}  // namespace ub
