// The dispatch of the main loop: which builder a top-level block goes to, whether a
// group gap precedes it, and how the flow cursor moves afterwards.
#include "page/flow.h"

namespace ub {

namespace {

std::string library_types(const Composer& c) {
  std::vector<std::string> names;
  for (const auto& [type, def] : c.blocks) names.push_back(type);  // std::map: already sorted
  return join(names, ", ");
}

}  // namespace

void dispatch_block(Composer& c, Json& b, FlowLists& f) {
  const Json& tv = get(b, "type");
  if (!tv.is_string() || !c.blocks.count(tv.get<std::string>()))
    stop(cat("[X] 未知块类型：", to_text(tv), "（可用：", library_types(c), "）"));
  const std::string t = tv.get<std::string>();
  const Metrics& m = c.m;
  const int x = m.margin;
  auto gap = [&] {
    if (c.y > 0) c.y += m.group_gap;
  };

  if (t == "page_title") {
    if (f.seen_title) stop("[X] page_title 只能出现一次");
    f.seen_title = true;
  } else if (t == "bottom_actions") {
    f.footer.push_back(&b);
  } else if (t == "dialog") {
    f.dialogs.push_back(&b);
  } else if (t == "card") {
    gap();
    c.y = c.build_card(b, f.content, x, c.y);
  } else if (t == "section_header") {
    gap();
    c.y = c.build_section(b, f.content, x, c.y);
  } else if (t == "empty_state") {
    c.y = c.build_empty(b, f.content, x, c.y);
  } else if (in(ROW_TYPES, t)) {
    bool has_icon = c.fam_icon.value_or(false) && truthy(get(b, "icon")) && !m.compact;
    c.build_row(b, f.content, x, c.y, m.content_w, c.fam_reserve.value_or(0), has_icon);
    c.y += m.row_h;
  } else if (in(FIELD_TYPES, t)) {
    c.y += c.build_field_row(b, f.content, x, c.y, m.content_w);
  } else if (in(WIDGET_TYPES, t)) {
    gap();
    int h = t == "list_item" ? c.build_list(b, f.content, x, c.y, m.content_w)
                             : c.build_wheel(b, f.content, x, c.y, m.content_w);
    c.y += h;
  } else if (in(STRUCT3_TYPES, t)) {
    gap();
    if (t == "tabs") c.y = c.build_tabs(b, f.content, x, c.y);
    else if (t == "banner") c.y = c.build_banner(b, f.content, x, c.y);
    else if (t == "status_pill") c.y = c.build_pill(b, f.content, x, c.y);
    else if (t == "divider_label") c.y = c.build_divider_label(b, f.content, x, c.y);
    else c.y = c.build_grid(b, f.content, x, c.y);
  } else if (in(STRUCT4_TYPES, t)) {
    gap();
    if (t == "chart_card") c.y = c.build_chart_card(b, f.content, x, c.y);
    else if (t == "image_gallery") c.y = c.build_gallery(b, f.content, x, c.y);
    else if (t == "keypad") c.y = c.build_keypad(b, f.content, x, c.y);
    else if (t == "loading") c.y = c.build_loading(b, f.content, x, c.y);
    else c.y = c.build_form_section(b, f.content, x, c.y);
  } else if (t == "bottom_nav" || t == "toolbar") {
    // fixed bands: handled before and after the flow
  } else if (t == "toast") {
    f.toasts.push_back(&b);
  } else {
    stop(cat("[X] 块 ", t, " 没有 builder"));
  }
}

}  // namespace ub
