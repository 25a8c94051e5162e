// One page-wide set of row measures: the right-end reserve and the icon column,
// settled once before any row is built, and the single text box formula.
#include "kinds/registry.h"
#include "rows/row_family.h"
#include "rows/row_text.h"

namespace ub {

namespace {

// Whether a block of kind k belongs to the plain rows alone, or to plain and field rows.
bool in_family(const BlockKind* k, bool with_fields) {
  return k && (k->family == RowFamily::Plain || (with_fields && k->family == RowFamily::Field));
}

// Rows of the page, in page order, looking into cards and form sections but not
// into lists or wheels.
std::vector<const BlockRecord*> collect_family(const std::vector<BlockRecord>& blocks, bool with_fields) {
  std::vector<const BlockRecord*> rows;
  for (const BlockRecord& b : blocks) {
    if (b.kind && b.kind->holds_blocks) {
      for (const BlockRecord& r : b.blocks)
        if (in_family(r.kind, with_fields)) rows.push_back(&r);
    } else if (in_family(b.kind, with_fields)) {
      rows.push_back(&b);
    }
  }
  return rows;
}

// An icon as the block gives it. Field rows draw none (their library entries leave the key
// out), yet an icon on one puts every row of the page behind the icon column.
bool has_icon(const BlockRecord& b) { return truthy(given_value(b, "icon")); }

// Plain rows with an icon and without one may not share a page; the rows without one are
// named, with their places, only for the refusal.
void icons_all_or_none(const std::vector<const BlockRecord*>& rows) {
  size_t plain = 0, with_icon = 0;
  for (const BlockRecord* r : rows) {
    if (r->kind->family != RowFamily::Plain) continue;  // field rows stay out of this test
    ++plain;
    if (has_icon(*r)) ++with_icon;
  }
  if (with_icon == 0 || with_icon == plain) return;
  std::vector<std::string> named;
  for (const BlockRecord* r : rows) {
    if (r->kind->family != RowFamily::Plain || has_icon(*r)) continue;
    std::string who = text(*r, "label");
    if (who.empty()) who = r->name;
    named.push_back(cat(who, "（", r->path, "）"));
  }
  stop(cat("[X] 同页行族图标不统一（", with_icon, "/", plain, " 行有图标）：缺图标 ", join(named, "；"),
           "\n口径：同一页面行族图标「要么都有、要么都没有」；缺图标的行请补 icon，或去掉所有 icon"));
}

}  // namespace

void RowFamilyState::scan_row_family(const std::vector<BlockRecord>& blocks) {
  // One walk gives both families: the plain rows are the field rows left out.
  const std::vector<const BlockRecord*> rows = collect_family(blocks, true);
  icons_all_or_none(rows);
  int reserve = 0;
  for (const BlockRecord* r : rows)
    if (r->kind->end_reserve) reserve = std::max(reserve, r->kind->end_reserve(m, *r));
  fam_reserve = reserve;
  bool any_icon = false;
  for (const BlockRecord* r : rows) any_icon = any_icon || has_icon(*r);
  fam_icon = any_icon && !m.compact;
}

RowBoxes RowFamilyState::row_boxes(int x0, int /*y0: rows are boxed by width only*/, int w) const {
  RowBoxes rb;
  rb.text_left = x0 + (fam_icon.value_or(false) ? m.icon_left + m.icon_bg + m.spacer : m.pad_l);
  rb.right_edge = x0 + w - m.pad_r - (fam_reserve.value_or(0) + m.text_chev_gap);
  rb.text_w = std::max(rb.right_edge - rb.text_left, 1);
  return rb;
}

}  // namespace ub
