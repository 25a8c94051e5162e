// The scroll decision: content higher than the viewport goes into a scroll window under
// the title band; otherwise the top-level nodes move down by the band height. Only the
// top level moves: children are relative to their parent.
#include "page/flow.h"

namespace ub {

NodeList place_content(Build& bd, NodeList& content, int content_h) {
  const Metrics& m = bd.page.m;
  if (content_h > m.viewport) {
    const std::string name = title_case(bd.page.page_name);
    const Json& scroll = bd.page.tok.at("scroll");
    Json view_payload = Json::object();
    view_payload["dragMaxDis"] = m.drag_max;
    view_payload["orientation"] = scroll.at("orientation");
    view_payload["edgeEffect"] = scroll.at("edge_effect");
    view_payload["touchable"] = true;
    Json inner_payload = Json::object();
    inner_payload["backgroundColor"] = -1;
    inner_payload["hideTimeOut"] = -1;
    inner_payload["modal"] = false;
    inner_payload["touchable"] = false;
    inner_payload["visible"] = true;
    NodePtr inner = make_node("window", "Window" + name, Pos{0, 0, bd.page.W, content_h}, inner_payload, content);
    NodePtr view = make_node("scrollwindow", "Scroll" + name, Pos{0, m.bar_top, bd.page.W, m.viewport}, view_payload,
                             NodeList{inner});
    bd.notes.add(cat("内容总高 ", content_h, " > 视口 ", m.viewport, " → 自动上滑动窗口（行程 ",
                          content_h - m.viewport, " px，dragMaxDis=", m.drag_max, "）"));
    return NodeList{view};
  }
  for (NodePtr& n : content) n->pos.top += m.bar_top;
  bd.notes.add(
      cat("内容总高 ", content_h, " ≤ 视口 ", m.viewport, " → 不上滑动窗口（白放一层没意义）"));
  return content;
}

}  // namespace ub
