// One page-wide set of row measures: the right-end reserve and the icon column,
// settled once before any row is built, and the single text box formula.
#include "kinds/registry.h"
#include "rows/row_family.h"
#include "rows/row_text.h"

namespace ub {

namespace {

const Json& checked_block(const Json& b, const std::string& where) {
  if (!b.is_object())
    throw InputError(cat(where, ": each block must be a mapping, got ", type_name(b), ": ", literal_form(b)));
  return b;
}

// Whether a block belongs to the plain rows alone, or to plain and field rows.
bool in_family(const Json& b, bool with_fields) {
  const BlockKind* k = block_kinds().of(b);
  return k && (k->family == RowFamily::Plain || (with_fields && k->family == RowFamily::Field));
}

// Rows of the page, in page order, looking into cards and form sections but not
// into lists or wheels.
std::vector<const Json*> collect_family(const Json& page, bool with_fields) {
  std::vector<const Json*> rows;
  for (const Json& raw : block_list(page, "blocks")) {
    const Json& b = checked_block(raw, "page.blocks");
    const BlockKind* k = block_kinds().of(b);
    if (k && k->holds_blocks) {
      const std::string t = k->type;
      for (const Json& inner : block_list(b, "blocks")) {
        const Json& r = checked_block(inner, t + ".blocks");
        if (in_family(r, with_fields)) rows.push_back(&r);
      }
    } else if (in_family(b, with_fields)) {
      rows.push_back(&b);
    }
  }
  return rows;
}

}  // namespace

void RowFamilyState::scan_row_family(const Json& page) {
  const std::vector<const Json*> rows = collect_family(page, true);
  assert_icon_uniform(page);
  fam_reserve = plan_row_reserve(rows);
  bool any_icon = false;
  for (const Json* b : rows) any_icon = any_icon || truthy(get(*b, "icon"));
  fam_icon = any_icon && !m.compact;
}

int RowFamilyState::plan_row_reserve(const std::vector<const Json*>& rows) const {
  int reserve = 0;
  for (const Json* b : rows) {
    const BlockKind* k = block_kinds().of(*b);
    if (k && k->end_reserve) reserve = std::max(reserve, k->end_reserve(m, *b));
  }
  return reserve;
}

void RowFamilyState::assert_icon_uniform(const Json& page) const {
  // Field rows stay out of this test.
  const std::vector<const Json*> rows = collect_family(page, false);
  if (rows.empty()) return;
  std::vector<std::string> named;
  for (const Json* b : rows) {
    if (!truthy(get(*b, "icon"))) continue;
    std::string who = text_or(*b, "label");
    if (who.empty()) who = text_or(*b, "_name");
    named.push_back(who);
  }
  if (!named.empty() && named.size() < rows.size())
    stop(cat("[X] 同页行族图标不统一（", named.size(), "/", rows.size(), " 行有图标）：", join(named, "；"),
             "\n口径：同一页面行族图标「要么都有、要么都没有」；缺图标的行请补 icon，或去掉所有 icon"));
}

RowBoxes RowFamilyState::row_boxes(int x0, int /*y0: rows are boxed by width only*/, int w) const {
  RowBoxes rb;
  rb.text_left = x0 + (fam_icon.value_or(false) ? m.icon_left + m.icon_bg + m.spacer : m.pad_l);
  rb.right_edge = x0 + w - m.pad_r - (fam_reserve.value_or(0) + m.text_chev_gap);
  rb.text_w = std::max(rb.right_edge - rb.text_left, 1);
  return rb;
}

}  // namespace ub
