// Control records: every record states its whole field set, in a fixed key order.
#include <iostream>
#include <map>
#include <stdexcept>

#include "controls/control_ids.h"
#include "controls/emit_layer.h"
#include "controls/node.h"

namespace ub {

namespace {

constexpr long long kWhite = 16777215;

Json color_set(long long c0, long long c1 = -1) {
  return Json{{"color0", c0}, {"color1", c1}, {"color2", -1}, {"color3", -1}, {"color4", -1}};
}

Json zero_pos() { return Pos{}.to_json(); }

void roll_keys(Json& r) {
  r["rollEnable"] = false;
  r["rollDirection"] = 1;
  r["rollIntervalTime"] = 150;
  r["rollStep"] = 5;
}

}  // namespace

Json Node::to_ctrl(const std::string& /*key*/, int n) {
  Json r = Json::object();
  Json rest = payload;
  auto head = [&](int base) {
    r["id"] = base + n;
    r["caption"] = caption;
    r["position"] = pos.to_json();
  };
  if (type == "textview") {
    head(kTextviewIds.base);
    r["alignment"] = 0;
    r["colorTab"] = color_set(kWhite);
    r["fontSize"] = 16;
    r["touchable"] = false;
    r["backgroundColor"] = -1;
    r["bgColorTab"] = color_set(-1);
    r["bold"] = false;
    r["italic"] = false;
    r["fontFamily"] = 0;
    r["text"] = "";
    r["visible"] = true;
    roll_keys(r);
    if (rest.contains("textPosition")) {
      r["textPosition"] = rest["textPosition"];
      rest.erase("textPosition");
    } else if (truthy(get(payload, "backgroundPic"))) {
      r["textPosition"] = pos.to_json();
    }
  } else if (type == "button") {
    head(kButtonIds.base);
    r["alignment"] = 37;
    r["colorTab"] = color_set(kWhite, kWhite);
    r["picTab"] = Json::object();
    r["text"] = "";
    r["touchable"] = true;
    r["backgroundColor"] = -1;
    r["bgColorTab"] = color_set(-1);
    r["bold"] = false;
    r["italic"] = false;
    r["fontFamily"] = 0;
    r["fontSize"] = 16;
    r["visible"] = true;
    r["longClickIntervalTime"] = -1;
    r["longClickTimeOut"] = -1;
    roll_keys(r);
    if (truthy(get(payload, "backgroundPic")) || truthy(get(payload, "picTab"))) {
      r["iconPosition"] = pos.to_json();
      r["textPosition"] = pos.to_json();
    }
  } else if (type == "window") {
    head(kWindowIds.base);
    r["backgroundColor"] = -1;
    r["hideTimeOut"] = -1;
    r["modal"] = false;
    r["touchable"] = false;
    r["visible"] = true;
  } else if (type == "scrollwindow") {
    head(kScrollwindowIds.base);
    r["dragMaxDis"] = 200;
    r["orientation"] = 1;
    r["edgeEffect"] = 1;
    r["touchable"] = true;
  } else if (type == "edittext") {
    head(kEdittextIds.base);
    r["alignment"] = 36;
    r["bgColorTab"] = color_set(kWhite);
    r["bold"] = false;
    r["beepEnable"] = true;
    r["colorTab"] = color_set(kWhite);
    r["fontFamily"] = 0;
    r["fontSize"] = 16;
    r["hintText"] = "";
    r["hintTextColor"] = 8947848;
    r["isPassword"] = false;
    r["italic"] = false;
    r["passwordChar"] = "*";
    r["text"] = "";
    r["textType"] = 0;
    r["touchable"] = true;
    r["visible"] = true;
    roll_keys(r);
  } else if (type == "seekbar") {
    head(kSeekbarIds.base);
    r["backgroundColor"] = -1;
    r["backgroundPic"] = "";
    r["defProgress"] = 0;
    r["max"] = 100;
    r["orientation"] = 0;
    r["progressPic"] = "";
    r["secondaryProgressPic"] = "";
    r["thumb"] = Json{{"size", {{"width", 0}, {"height", 0}}}, {"normalPic", ""}, {"pressedPic", ""}};
    r["touchable"] = true;
    r["visible"] = true;
  } else if (type == "checkbox") {
    head(kCheckboxIds.base);
    r["alignment"] = 37;
    r["backgroundColor"] = -1;
    r["bold"] = false;
    r["checked"] = false;
    r["bgColorTab"] = color_set(-1);
    r["colorTab"] = color_set(kWhite);
    r["fontFamily"] = 0;
    r["fontSize"] = 16;
    r["italic"] = false;
    r["iconPosition"] = zero_pos();
    r["text"] = "";
    r["textPosition"] = zero_pos();
    r["touchable"] = true;
    r["visible"] = true;
  } else if (type == "radiogroup") {
    head(kRadiogroupIds.base);
    r["backgroundColor"] = -1;
    r["touchable"] = true;
    r["visible"] = true;
    r["radiobuttons"] = Json::array();
  } else if (type == "listview") {
    head(kListviewIds.base);
    r["autoRollback"] = true;
    r["backgroundColor"] = -1;
    r["cols"] = 1;
    r["cycleEnable"] = false;
    r["dragMaxDis"] = 50;
    r["edgeEffect"] = 1;
    r["hasScrollbar"] = false;
    r["rows"] = 1;
    r["touchable"] = true;
    r["visible"] = true;
    r["orientation"] = 1;
    r["colSpacing"] = 0;
    r["rowSpacing"] = 0;
    r["item"] = Json::object();
  } else if (type == "separator") {
    throw std::logic_error("separator 不应直接序列化");
  }
  // Payload keys replace defaults in place; new keys follow in payload order.
  for (auto it = rest.begin(); it != rest.end(); ++it) r[it.key()] = it.value();
  return r;
}

namespace {

std::pair<std::string, Json> one(Node& n, std::map<std::string, int>& counts, const EmitLayer& layer) {
  int k = ++counts[n.type];
  std::string key = n.type + "__" + std::to_string(k);
  Json ctrl = n.to_ctrl(key, k);
  if (!layer.ok) {
    std::cerr << "[warn] 未走共享发射层（ui_emit 不可用：" << layer.reason << "）→ 必填键可能缺\n";
  } else {
    auto [filled, unfilled] = fill_required(layer.table, n.type, std::move(ctrl));
    if (!unfilled.empty()) {
      Json names = Json::array();
      for (const auto& u : unfilled) names.push_back(u);
      throw std::logic_error("发射层默认表缺 " + n.type + " 的必填键取值：" + plain_text(names));
    }
    ctrl = std::move(filled);
  }
  // Child keys are unique by their counters: append them without a look-up, into room
  // reserved once, so that a window of many children costs linear time.
  Json::object_t& fields = ctrl.get_ref<Json::object_t&>();
  fields.reserve(fields.size() + n.children.size());
  for (const auto& child : n.children) {
    auto [ck, cc] = one(*child, counts, layer);
    fields.emplace_back(std::move(ck), std::move(cc));
  }
  return {key, std::move(ctrl)};
}

}  // namespace

Json serialize(NodeList& nodes, const EmitLayer& required_keys) {
  std::map<std::string, int> counts;
  Json out = Json::object();
  Json::object_t& fields = out.get_ref<Json::object_t&>();
  fields.reserve(nodes.size());
  for (const auto& n : nodes) {
    auto [k, c] = one(*n, counts, required_keys);
    fields.emplace_back(std::move(k), std::move(c));
  }
  return out;
}

}  // namespace ub
