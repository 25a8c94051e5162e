// The list block: one listview with a single row template. Every item is checked
// for width, since the layout can hold only the first one.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "rows/listview.h"
#include "rows/row_text.h"
#include "rows/rows.h"

namespace ub {

namespace {

Json chevron_subitem(Build& bd, const std::string& caption, int w, int ih) {
  const Metrics& m = bd.page.m;
  const std::string pic =
      bd.pictures.chevron(cat("chev_", m.chev_w, "x", m.chev_h, ".png"), m.chev_w, m.chev_h, bd.page.tcol("chevron"));
  return bd.controls.subitem(
      caption + "SubChevron",
      Pos{w - m.pad_l - m.chev_w, static_cast<int>(floordiv(ih - m.chev_h, 2)), m.chev_w, m.chev_h}, m.fs.b2,
      bd.page.col("chevron"), "", pic, kAlignCenter);
}

Json color_table(long long c0, long long c1, long long c2, long long c3, long long c4) {
  return object_of("color0", c0, "color1", c1, "color2", c2, "color3", c3, "color4", c4);
}

// The rows as the device lists them. A row's icon is the picture the template draws for
// an icon of that name and state, under the name the template row's picture took when the
// two agree; no icon where the screen leaves icons out.
ListData list_data(Build& bd, const std::string& name, const std::vector<ListRow>& rows, int w, int ih, bool chevron,
                   const std::string& template_pic) {
  ListData d{name, {}};
  for (const ListRow& row : rows) {
    const ListRowBoxes bx = list_row_boxes(bd, w, ih, row, chevron);
    std::string icon;
    if (bx.has_ic) {
      const ListRow& first = rows.front();
      const bool as_template = !template_pic.empty() && row.icon == first.icon && row.icon_state == first.icon_state;
      // Every other row's icon is drawn too, so that the device has it to show.
      const std::string pic =
          as_template ? template_pic
                      : bd.pictures.glyph(cat("ic_", row.icon, "_", bx.ic, ".png"), row.icon, bx.ic,
                                          bd.page.tcol("brand"), std::make_pair(bx.ic, bx.ic), row.icon_state);
      icon = pic.substr(pic.find('/') + 1);
    }
    d.rows.push_back({row.title, row.value, std::move(icon), chevron});
  }
  return d;
}

}  // namespace

std::vector<ListRow> list_rows(const BlockRecord& list) {
  const Json& items = value(list, "items");
  if (truthy(items) && !items.is_array())
    stop(cat("[X] list_item.items 应为数组（每行一个 {icon,title,value}），得到 ", type_name(items)));
  std::vector<ListRow> rows;
  for (const Entry& e : entries(list, "items", "title")) {
    ListRow r;
    // A plain entry is the title, whatever it is; a record's texts skip only null and "".
    const bool record = e.value->is_object();
    r.title = record ? row_field(*e.value, {"title", "label", "text"}) : to_text(*e.value);
    if (record) r.value = row_field(*e.value, {"value"});
    r.icon = text(e, "icon");
    r.icon_state = optional_text(e, "icon_state");
    rows.push_back(std::move(r));
  }
  return rows;
}

ListRowBoxes list_row_boxes(Build& bd, int w, int ih, const ListRow& row, bool chevron) {
  const Metrics& m = bd.page.m;
  ListRowBoxes bx;
  bx.ic = m.ic_min;
  // On a very small screen the list leaves its icons out rather than crowd them.
  bx.has_ic = !row.icon.empty() && bx.ic + 2 * m.spacer <= ih;
  bx.left = m.pad_l + (bx.has_ic ? bx.ic + m.spacer : 0);
  bx.right_edge = w - m.pad_l - (chevron ? m.chev_w + m.text_chev_gap : 0);
  bx.value = row.value;
  bx.vw = bx.value.empty() ? 0 : bd.page.text_box_w(bx.value, m.fs.b2, kAlignRight);
  bx.tw = std::max(bx.right_edge - bx.left - (bx.value.empty() ? 0 : bx.vw + m.spacer), 4);
  bx.title = row.title;
  return bx;
}

ListRowBoxes list_row_check(Build& bd, const std::string& caption, int w, int ih, const ListRow& row, bool chevron) {
  const Metrics& m = bd.page.m;
  ListRowBoxes bx = list_row_boxes(bd, w, ih, row, chevron);
  check_text_fit(bd.notes, bd.page, caption + "SubTitle", bx.title, m.fs.b1, bx.tw, m.h_b1, "列表行标题");
  if (!bx.value.empty())
    check_text_fit(bd.notes, bd.page, caption + "SubValue", bx.value, m.fs.b2, bx.vw, m.h_b2, "列表行值");
  const std::string& icon = row.icon;
  // An unavailable library gets no note: its icons fall back and say so themselves.
  if (!icon.empty() && bd.page.icons.available() && !bd.page.icons.find(icon))
    bd.notes.add(cat("list_item 行内图标「", icon, "」不在 components/icons 资产库里（", caption,
                     "）——请改用库里语义名（允许值见 blocks/_icons.json）"));
  return bx;
}

Json list_row_subitems(Build& bd, const std::string& caption, int w, int ih, const ListRow& row, bool chevron,
                       std::string* icon_pic) {
  const Metrics& m = bd.page.m;
  const ListRowBoxes bx = list_row_boxes(bd, w, ih, row, chevron);
  Json subs = Json::array();
  if (bx.has_ic) {
    const std::string& icon = row.icon;
    const std::string pic = bd.pictures.glyph(cat("ic_", icon, "_", bx.ic, ".png"), icon, bx.ic, bd.page.tcol("brand"),
                                              std::make_pair(bx.ic, bx.ic), row.icon_state);
    if (icon_pic) *icon_pic = pic;
    // Decoration only: hits on title, value or chevron carry their own ids.
    subs.push_back(bd.controls.subitem(caption + "SubIcon",
                                       Pos{m.pad_l, static_cast<int>(floordiv(ih - bx.ic, 2)), bx.ic, bx.ic}, m.fs.b2,
                                       bd.page.col("brand"), "", pic, kAlignCenter, false));
  }
  subs.push_back(bd.controls.subitem(caption + "SubTitle",
                                     Pos{bx.left, static_cast<int>(floordiv(ih - m.h_b1, 2)), bx.tw, m.h_b1}, m.fs.b1,
                                     bd.page.col("fg1"), bx.title));
  if (!bx.value.empty())
    subs.push_back(bd.controls.subitem(
        caption + "SubValue", Pos{bx.right_edge - bx.vw, static_cast<int>(floordiv(ih - m.h_b2, 2)), bx.vw, m.h_b2},
        m.fs.b2, bd.page.col("fg2"), bx.value, "", kAlignRight));
  if (chevron) subs.push_back(chevron_subitem(bd, caption, w, ih));
  return subs;
}

Json list_item_template(Build& bd, const std::string& caption, int w, int ih, bool chevron, const ListRow* row,
                        std::string* icon_pic) {
  const Metrics& m = bd.page.m;
  Json subs;
  if (row) {
    subs = list_row_subitems(bd, caption, w, ih, *row, chevron, icon_pic);
  } else {
    // Without items: an empty title and the chevron.
    subs = Json::array();
    const int right = chevron ? m.chev_w + m.spacer : 0;
    subs.push_back(bd.controls.subitem(
        caption + "SubTitle",
        Pos{m.pad_l, static_cast<int>(floordiv(ih - m.h_b1, 2)), (w - m.pad_l) - (m.pad_l + right), m.h_b1}, m.fs.b1,
        bd.page.col("fg1")));
    if (chevron) subs.push_back(chevron_subitem(bd, caption, w, ih));
  }
  const long long fg1 = bd.page.col("fg1");
  // Row content always goes through subItem, never into the item's own text.
  return object_of("caption", caption, "position", Pos{0, 0, w, ih}.to_json(), "alignment", kAlignLeft,
                   "backgroundColor", -1, "bold", false, "bgColorTab", color_table(-1, -1, -1, -1, -1), "colorTab",
                   color_table(fg1, fg1, fg1, fg1, -1), "fontSize", m.fs.b1, "italic", false, "picTab", Json::object(),
                   "text", "", "touchable", true, "visible", true, "longClickIntervalTime", -1, "longClickTimeOut", -1,
                   "subItem", std::move(subs));
}

int build_list(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w) {
  const Metrics& m = bd.page.m;
  const std::string& name = blk.name;
  const int rows = static_cast<int>(std::max(integer(blk, "rows"), 1LL));
  const int rs = static_cast<int>(std::max(integer(blk, "rowSpacing"), 0LL));
  const int ih = m.li_h;
  const int peek = std::min(rows - 1, m.li_peek);
  const int lv_w = w - 2 * m.pad_l;
  // The engine's item height is int(lv_h / rows) - rs; the remainder `peek`
  // shows a sliver of the next item as a hint that the list scrolls.
  const int lv_h = rows * (ih + rs) + peek;
  const bool chevron = flag(blk, "chevron");
  const std::vector<ListRow> rows_data = list_rows(blk);

  int cur = y;
  if (is_set(blk, "label")) {
    parent.push_back(bd.controls.text(cat("Label", name), bd.controls.box(x + m.pad_l, y, lv_w, m.h_b2), m.fs.b2,
                                      bd.page.col("fg2"), text(blk, "label")));
    cur += m.h_b2 + m.spacer;
  }

  if (!rows_data.empty()) {
    const int n = static_cast<int>(rows_data.size());
    std::optional<std::string> tight;
    int tight_slack = 0;
    int n_ic = 0;
    bool any_icon = false;
    for (int i = 0; i < n; ++i) {
      const ListRow& row = rows_data[i];
      const std::string cap = cat(name, "Row", i + 1);
      const ListRowBoxes bx = list_row_check(bd, cap, lv_w, ih, row, chevron);
      if (bx.has_ic) ++n_ic;
      any_icon = any_icon || !row.icon.empty();
      const int mw = text_min_size(bx.title, m.fs.b1, kAlignLeft).first;
      const int slack = bx.tw - mw;
      if (!tight || slack < tight_slack) {  // on equal slack the earlier row stays
        tight = cat(cap, " 标题「", cp_prefix(bx.title, 12), "」需 ", mw, " / 盒 ", bx.tw);
        tight_slack = slack;
      }
    }
    if (n < rows)
      bd.notes.add(cat("list_item ", name, "：items ", n, " 行 < rows ", rows, " → 其余 ", rows - n,
                       " 行在真机上是空行（**列表高按 rows 算**，不把已有行挤在一起）"));
    if (n_ic == 0 && any_icon)
      bd.notes.add(cat("list_item ", name, " 行内图标省去（图标档 ", m.ic_min, " + 上下各 1×spacer ", m.spacer,
                       " > 模板行高 ", ih, "）——极小屏宁可省图标"));
    const ListRow& first = rows_data[0];
    bd.notes.add(cat("list_item ", name, "：rows ", rows, " ｜ items ", n, " 行（模板行 = items[0]：",
                     first.title, " / ", first.value, "） ｜ itemH ",
                     ih, " = int(", lv_h, "/", rows, ")−", rs, "（余 ", peek, " px = 可滑动提示） ｜ 行内图标 ", n_ic,
                     " 处 × ", m.ic_min, "px ｜ 逐行宽度最紧者 ", *tight));
  }

  // The first item shapes the template; a record without keys gives the empty template.
  const bool shaped = !rows_data.empty() && truthy(value(blk, "items")[0]);
  std::string template_pic;
  Json payload = listview_payload(rows, rs, false, m.drag_max,
                                  list_item_template(bd, cat(name, "Item"), lv_w, ih, chevron,
                                                     shaped ? &rows_data[0] : nullptr, &template_pic));
  bd.data.lists.push_back(list_data(bd, name, rows_data, lv_w, ih, chevron, shaped ? template_pic : ""));
  parent.push_back(make_node("listview", cat("List", name), bd.controls.box(x + m.pad_l, cur, lv_w, lv_h), std::move(payload)));
  return cur + lv_h;
}

namespace {

int list_height(const PageContext& c, const BlockRecord& blk) {
  const Metrics& m = c.m;
  const int label_h = is_set(blk, "label") ? m.h_b2 + m.spacer : 0;
  const long long rows = std::max(integer(blk, "rows"), 1LL);
  const long long rs = std::max(integer(blk, "rowSpacing"), 0LL);
  return static_cast<int>(rows * (m.li_h + rs) + std::min<long long>(rows - 1, m.li_peek)) + label_h;
}

long long list_limits(const LimitCheck& lc, const BlockRecord& b) {
  const Metrics& m = lc.m;
  const long long rs = std::max<long long>(lc.int_key(b, "rowSpacing"), 0);
  lc.at_most(b, "rowSpacing", rs, m.H, "px, the screen height");
  const long long rows = std::max<long long>(lc.int_key(b, "rows"), 1);
  const long long h = lc.stacked(b, "rows", rows, m.li_h + rs);
  // Every item is measured, though only the first shapes the template.
  lc.stacked(b, "items", (long long)list_size(b, "items"), m.li_h);
  return h;
}

}  // namespace

extern const BlockKind kListItem{.type = "list_item",
                                 .prefix = "ListItem",
                                 .places = kOnPage | kInCard | kInForm,
                                 .group_gap = true,
                                 .planned_height = list_height,
                                 .limits = list_limits,
                                 .build = at_xyw<build_list>};

}  // namespace ub
