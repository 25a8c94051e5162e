// One page-wide set of row measures: the right-end reserve and the icon column,
// settled once before any row is built, and the single text box formula.
#include "compose.h"
#include "rows/row_text.h"

namespace ub {

namespace {

const Json& checked_block(const Json& b, const std::string& where) {
  if (!b.is_object())
    throw InputError(cat(where, ": each block must be a mapping, got ", type_name(b), ": ", literal_form(b)));
  return b;
}

// Blocks of the page whose type is in `wanted`, in page order, looking into
// cards and form sections but not into lists or wheels.
std::vector<const Json*> collect_family(const Json& page, const std::vector<std::string>& wanted) {
  std::vector<const Json*> rows;
  for (const Json& raw : block_list(page, "page", "blocks")) {
    const Json& b = checked_block(raw, "page.blocks");
    const std::string t = text_or(b, "type");
    if (in(ROW_CONTAINERS, t)) {
      for (const Json& inner : block_list(b, t, "blocks")) {
        const Json& r = checked_block(inner, t + ".blocks");
        if (in(wanted, text_or(r, "type"))) rows.push_back(&r);
      }
    } else if (in(wanted, t)) {
      rows.push_back(&b);
    }
  }
  return rows;
}

}  // namespace

void Composer::scan_row_family() {
  const std::vector<const Json*> rows = collect_family(page, FAMILY_TYPES);
  assert_icon_uniform();
  fam_reserve = plan_row_reserve(rows);
  bool any_icon = false;
  for (const Json* b : rows) any_icon = any_icon || truthy(get(*b, "icon"));
  fam_icon = any_icon && !m.compact;
}

int Composer::plan_row_reserve(const std::vector<const Json*>& rows) const {
  int reserve = 0;
  for (const Json* b : rows) {
    const std::string t = text_or(*b, "type");
    if (in(FIELD_TYPES, t)) {
      // Only the check box sits at the row's end; other controls have a band.
      if (t == "checkbox_row") reserve = std::max(reserve, m.cb);
      continue;
    }
    if (t == "toggle_row") reserve = std::max(reserve, r4(m.row_h * 1.3));
    // A toggle row reserves its chevron too, although it never draws one.
    if (flag(*b, "chevron", true)) reserve = std::max(reserve, m.chev_w);
  }
  return reserve;
}

void Composer::assert_icon_uniform() const {
  // Field rows stay out of this test.
  const std::vector<const Json*> rows = collect_family(page, ROW_TYPES);
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

RowBoxes Composer::row_boxes(int x0, int /*y0: rows are boxed by width only*/, int w) const {
  RowBoxes rb;
  rb.text_left = x0 + (fam_icon.value_or(false) ? m.icon_left + m.icon_bg + m.spacer : m.pad_l);
  rb.right_edge = x0 + w - m.pad_r - (fam_reserve.value_or(0) + m.text_chev_gap);
  rb.text_w = std::max(rb.right_edge - rb.text_left, 1);
  return rb;
}

}  // namespace ub
