// Section headings, cards and form sections. A container's height is the sum of
// the planned heights of its blocks; rows lie flush, in coordinates local to it.
#include "checks/geometry.h"
#include "kinds/block_place.h"
#include "kinds/registry.h"
#include "rows/row_text.h"
#include "rows/rows.h"

namespace ub {

extern const BlockKind kCard, kFormSection;

namespace {

struct ContainerKind {
  const BlockKind& kind;
  const char* win_prefix;  // caption of the window, then the number
  const char* bg_prefix;   // caption of the background: prefix, number, suffix
  const char* bg_suffix;
};

const ContainerKind kCardBox{kCard, "Card", "CardBg", ""};
const ContainerKind kFormBox{kFormSection, "FormSection", "FormSection", "Bg"};

// The stop message for a block type a container does not take.
std::string refusal(const ContainerKind& box, const std::string& type) {
  if (&box.kind == &kCard) {
    std::vector<std::string> root_only;
    for (const BlockKind* k : block_kinds().all())
      if (!(k->places & kInCard)) root_only.push_back(k->type);
    return cat("[X] 卡内不支持的块类型：", type, "（卡内只能是行块/列表块；", join(root_only, "/"), " 是根层块）");
  }
  return cat("[X] ", box.kind.type, " 只收行块/列表块（与 ", kCard.type, " 同口径）：", type);
}

// For a type no block has: the nearest type the container takes.
std::string unknown_type_hint(const ContainerKind& box, const BlockRecord& b) {
  const Json& t = given_value(b, "type");
  if (b.kind) return "";
  std::vector<std::string> taken;
  for (const BlockKind* k : block_kinds().all())
    if (k->places & box.kind.takes) taken.push_back(k->type);
  return type_hint(t, taken);
}

// Sets origin to (0, 0) for the rows of a container and puts the old one back.
struct LocalOrigin {
  Controls& c;
  std::pair<double, double> saved;
  explicit LocalOrigin(Controls& c) : c(c), saved(c.current_origin()) { c.set_origin({0, 0}); }
  ~LocalOrigin() { c.set_origin(saved); }
};

int build_container(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, const ContainerKind& kind,
                    bool surface) {
  const Metrics& m = bd.page.m;
  const std::vector<BlockRecord>& rows = blk.blocks;
  const std::string id = caption_id(blk);
  // The heading stands on the page, above the container.
  if (is_set(blk, "title")) y = section_heading(bd, id, text(blk, "title"), parent, x, y);

  std::vector<int> heights;
  int ch = 0;
  for (const BlockRecord& b : rows) {
    heights.push_back(at_block(b, [&] { return row_height(bd.page, b); }));
    ch += heights.back();
  }
  const int cw = m.content_w;
  // An empty container is drawn as a box without height: worth a word, as it is mostly a
  // misspelt `blocks`.
  if (rows.empty())
    bd.notes.add(cat(blk.path, " (", type_text(blk), " ", blk.name, "): no blocks, drawn ", cw, "x0"));
  NodePtr win = make_node("window", cat(kind.win_prefix, id), bd.controls.box(x, y, cw, ch));
  if (surface) {
    const std::string pic =
        bd.pictures.shape(cat("card_", cw, "x", ch, ".png"), cw, ch, m.radius, bd.page.tcol("surface"));
    // Local coordinates: the window's offset must not count twice.
    win->children.push_back(bd.controls.deco(cat(kind.bg_prefix, id, kind.bg_suffix), bd.controls.box(0, 0, cw, ch),
                                             hex2int(bd.page.tok_color("surface")), pic));
  }

  NodeList row_nodes, sep_nodes;
  {
    LocalOrigin local(bd.controls);
    int top = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
      const BlockRecord& b = rows[i];
      const BlockKind* k = b.kind;
      if (!k || !(k->places & kind.kind.takes))
        stop_at(b, refusal(kind, text_or(*b.raw, "type")), unknown_type_hint(kind, b));
      build_placed(bd.flow, b, row_nodes, [&] { k->build(bd, b, row_nodes, Spot{0, top, cw}); });
      // The planned height, not the builder's result, moves the cursor.
      top += heights[i];
      if (i + 1 < rows.size()) sep_nodes.push_back(bd.controls.sep_node(m.pad_l, top, cw - 2 * m.pad_l, caption_id(b)));
    }
  }

  // Separators above the background and under all rows.
  win->children.insert(win->children.end(), sep_nodes.begin(), sep_nodes.end());
  win->children.insert(win->children.end(), row_nodes.begin(), row_nodes.end());
  assert_children_fit(*win, cw, ch, cat(kind.win_prefix, id));
  parent.push_back(win);
  return y + ch;
}

}  // namespace

int section_heading(Build& bd, const std::string& id, const std::string& txt, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const Json& tok = bd.page.tok;
  parent.push_back(bd.controls.text(cat("SectionHeader", id), bd.controls.box(x, y, m.content_w, m.h_h2), m.fs.h2,
                                    hex2int(bd.page.tok_color("fg2")), txt, "", kAlignLeft, true));
  // Never less than the third spacer step of the tokens, however small the font.
  const int step = static_cast<int>(int_of(get(get(tok, "spacer"), "spacer3")));
  return y + std::max(m.h_h2, step);
}

int build_section(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  return section_heading(bd, caption_id(blk), text(blk, "text"), parent, x, y);
}

int build_card(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  return build_container(bd, blk, parent, x, y, kCardBox, true);
}

int build_form_section(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  if (blk.blocks.empty()) stop(cat("[X] ", kFormSection.type, ".blocks 不能为空（它就是「组标题 + 字段行集合」）"));
  return build_container(bd, blk, parent, x, y, kFormBox, flag(blk, "surface"));
}

namespace {

// A container's blocks, each at least one row high, must fit the scroll room.
long long container_limits(const LimitCheck& lc, const BlockRecord& b) {
  long long h = 0;
  for (const BlockRecord& inner : b.blocks) {
    h += std::max<long long>(lc.nested(inner), lc.m.row_h);
    if (h > lc.room)
      fail(b, cat("its rows are taller than the ", kScrollScreens, " screens one block may take (", lc.room, " px)"));
  }
  return h;
}

}  // namespace

extern const BlockKind kSectionHeader{
    .type = "section_header", .prefix = "SectionHeader", .group_gap = true, .build = at_xy<build_section>};
extern const BlockKind kCard{.type = "card",
                             .prefix = "Card",
                             .group_gap = true,
                             .holds_blocks = true,
                             .takes = kInCard,
                             .limits = container_limits,
                             .build = at_xy<build_card>};
extern const BlockKind kFormSection{.type = "form_section",
                                    .prefix = "FormSection",
                                    .group_gap = true,
                                    .holds_blocks = true,
                                    .takes = kInForm,
                                    .limits = container_limits,
                                    .build = at_xy<build_form_section>};

}  // namespace ub
