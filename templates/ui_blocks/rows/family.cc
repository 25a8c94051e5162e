// One page-wide set of row measures: the right-end reserve and the icon column,
// settled once before any row is built, and the single text box formula.
#include "kinds/registry.h"
#include "rows/row_family.h"
#include "rows/row_text.h"

namespace ub {

namespace {

// where: the container type whose blocks are read, or none for the page's own list.
const Json& checked_block(const Json& b, const char* container) {
  if (!b.is_object())
    throw InputError(cat(container ? cat(container, ".blocks") : std::string("page.blocks"),
                         ": each block must be a mapping, got ", type_name(b), ": ", literal_form(b)));
  return b;
}

// The blocks of a container or the page, as block_list reads them.
const Json& blocks_of(const Json& b) {
  static const Json empty = Json::array();
  const Json& v = get(b, "blocks");
  if (!truthy(v)) return empty;
  if (!v.is_array()) throw KeyError("blocks", "expected a list, got " + shown_value(v));
  return v;
}

struct FamilyRow {
  const Json* blk;
  const BlockKind* kind;
};

// Whether a block of kind k belongs to the plain rows alone, or to plain and field rows.
bool in_family(const BlockKind* k, bool with_fields) {
  return k && (k->family == RowFamily::Plain || (with_fields && k->family == RowFamily::Field));
}

// Rows of the page, in page order, looking into cards and form sections but not
// into lists or wheels.
std::vector<FamilyRow> collect_family(const Json& page, bool with_fields) {
  std::vector<FamilyRow> rows;
  const KindTable& kinds = block_kinds();
  for (const Json& raw : blocks_of(page)) {
    const Json& b = checked_block(raw, nullptr);
    const BlockKind* k = kinds.of(b);
    if (k && k->holds_blocks) {
      for (const Json& inner : blocks_of(b)) {
        const Json& r = checked_block(inner, k->type);
        const BlockKind* rk = kinds.of(r);
        if (in_family(rk, with_fields)) rows.push_back({&r, rk});
      }
    } else if (in_family(k, with_fields)) {
      rows.push_back({&b, k});
    }
  }
  return rows;
}

bool has_icon(const Json& b) { return truthy(get(b, "icon")); }

// Plain rows with an icon and without one may not share a page; the rows with one are
// named only for the refusal.
void icons_all_or_none(const std::vector<FamilyRow>& rows) {
  size_t plain = 0, with_icon = 0;
  for (const FamilyRow& r : rows) {
    if (r.kind->family != RowFamily::Plain) continue;  // field rows stay out of this test
    ++plain;
    if (has_icon(*r.blk)) ++with_icon;
  }
  if (with_icon == 0 || with_icon == plain) return;
  std::vector<std::string> named;
  for (const FamilyRow& r : rows) {
    if (r.kind->family != RowFamily::Plain || !has_icon(*r.blk)) continue;
    std::string who = text_or(*r.blk, "label");
    if (who.empty()) who = text_or(*r.blk, "_name");
    named.push_back(who);
  }
  stop(cat("[X] 同页行族图标不统一（", named.size(), "/", plain, " 行有图标）：", join(named, "；"),
           "\n口径：同一页面行族图标「要么都有、要么都没有」；缺图标的行请补 icon，或去掉所有 icon"));
}

}  // namespace

void RowFamilyState::scan_row_family(const Json& page) {
  // One walk gives both families: the plain rows are the field rows left out.
  const std::vector<FamilyRow> rows = collect_family(page, true);
  icons_all_or_none(rows);
  int reserve = 0;
  for (const FamilyRow& r : rows)
    if (r.kind->end_reserve) reserve = std::max(reserve, r.kind->end_reserve(m, *r.blk));
  fam_reserve = reserve;
  bool any_icon = false;
  for (const FamilyRow& r : rows) any_icon = any_icon || has_icon(*r.blk);
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

void RowFamilyState::assert_icon_uniform(const Json& page) const { icons_all_or_none(collect_family(page, false)); }

RowBoxes RowFamilyState::row_boxes(int x0, int /*y0: rows are boxed by width only*/, int w) const {
  RowBoxes rb;
  rb.text_left = x0 + (fam_icon.value_or(false) ? m.icon_left + m.icon_bg + m.spacer : m.pad_l);
  rb.right_edge = x0 + w - m.pad_r - (fam_reserve.value_or(0) + m.text_chev_gap);
  rb.text_w = std::max(rb.right_edge - rb.text_left, 1);
  return rb;
}

}  // namespace ub
