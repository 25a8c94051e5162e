#include <gtest/gtest.h>

#include "controls/emit_layer.h"
#include "controls/serialize.h"
#include "test_support.h"

using namespace ub;
using ubtest::keys_of;

namespace {

// The control records of the written layout, read back: key -> record.
Json serialize(const NodeList& nodes, const EmitLayer& layer) {
  Json doc = Json::parse(write_layout(LayoutRoot{8, 6, 1}, nodes, layer).text);
  for (const char* k : {"id", "position", "resolution", "backgroundColor", "touchable", "topmost"}) doc.erase(k);
  return doc;
}

// One record without the required-keys table.
Json record(const std::string& type, Json payload = Json::object()) {
  NodeList l = {make_node(type, "C", {1, 2, 30, 40}, std::move(payload))};
  testing::internal::CaptureStderr();  // the warning of the missing table
  Json out = serialize(l, EmitLayer{});
  testing::internal::GetCapturedStderr();
  return out.begin().value();
}

}  // namespace

TEST(Serialize, RecordKeyOrderPerType) {
  using V = std::vector<std::string>;
  const V roll = {"rollEnable", "rollDirection", "rollIntervalTime", "rollStep"};
  auto with_roll = [&](V v) {
    v.insert(v.end(), roll.begin(), roll.end());
    return v;
  };
  EXPECT_EQ(keys_of(record("textview")),
            with_roll({"id", "caption", "position", "alignment", "colorTab", "fontSize", "touchable", "backgroundColor",
                       "bgColorTab", "bold", "italic", "fontFamily", "text", "visible"}));
  EXPECT_EQ(keys_of(record("button")),
            with_roll({"id", "caption", "position", "alignment", "colorTab", "picTab", "text", "touchable",
                       "backgroundColor", "bgColorTab", "bold", "italic", "fontFamily", "fontSize", "visible",
                       "longClickIntervalTime", "longClickTimeOut"}));
  EXPECT_EQ(keys_of(record("window")),
            (V{"id", "caption", "position", "backgroundColor", "hideTimeOut", "modal", "touchable", "visible"}));
  EXPECT_EQ(keys_of(record("scrollwindow")),
            (V{"id", "caption", "position", "dragMaxDis", "orientation", "edgeEffect", "touchable"}));
  EXPECT_EQ(keys_of(record("edittext")),
            with_roll({"id", "caption", "position", "alignment", "bgColorTab", "bold", "beepEnable", "colorTab",
                       "fontFamily", "fontSize", "hintText", "hintTextColor", "isPassword", "italic", "passwordChar",
                       "text", "textType", "touchable", "visible"}));
  EXPECT_EQ(keys_of(record("seekbar")),
            (V{"id", "caption", "position", "backgroundColor", "backgroundPic", "defProgress", "max", "orientation",
               "progressPic", "secondaryProgressPic", "thumb", "touchable", "visible"}));
  EXPECT_EQ(keys_of(record("checkbox")),
            (V{"id", "caption", "position", "alignment", "backgroundColor", "bold", "checked", "bgColorTab", "colorTab",
               "fontFamily", "fontSize", "italic", "iconPosition", "text", "textPosition", "touchable", "visible"}));
  EXPECT_EQ(keys_of(record("radiogroup")),
            (V{"id", "caption", "position", "backgroundColor", "touchable", "visible", "radiobuttons"}));
  EXPECT_EQ(keys_of(record("listview")),
            (V{"id", "caption", "position", "autoRollback", "backgroundColor", "cols", "cycleEnable", "dragMaxDis",
               "edgeEffect", "hasScrollbar", "rows", "touchable", "visible", "orientation", "colSpacing", "rowSpacing",
               "item"}));
  // Id bases and the defaults that differ between types.
  EXPECT_EQ(record("edittext")["id"], 51001);
  EXPECT_EQ(record("checkbox")["id"], 94501);
  EXPECT_EQ(record("listview")["id"], 80001);
  EXPECT_EQ(record("button")["colorTab"].dump(),
            R"({"color0":16777215,"color1":16777215,"color2":-1,"color3":-1,"color4":-1})");
  EXPECT_EQ(record("seekbar")["thumb"].dump(), R"({"size":{"width":0,"height":0},"normalPic":"","pressedPic":""})");
  EXPECT_EQ(record("textview")["position"].dump(), R"({"left":1,"top":2,"width":30,"height":40})");
}

TEST(Serialize, PayloadMergeKeepsPlacesAndAppendsNewKeys) {
  Json r = record("textview", {{"extra", 1}, {"position", {{"left", 9}}}, {"text", "hi"}});
  auto k = keys_of(r);
  EXPECT_EQ(k[2], "position");
  EXPECT_EQ(r["position"], (Json{{"left", 9}}));
  EXPECT_EQ(k.back(), "extra");
  EXPECT_EQ(r["text"], "hi");
  EXPECT_EQ(std::find(k.begin(), k.end(), "text") - k.begin(), 12);
  // Unknown types carry their payload alone.
  EXPECT_EQ(record("gauge", {{"a", 1}}), (Json{{"a", 1}}));
}

TEST(Serialize, TextPositionRules) {
  Json moved = record("textview", {{"textPosition", {{"left", 5}}}, {"backgroundPic", "images/a.png"}});
  auto k = keys_of(moved);
  EXPECT_EQ(k[18], "textPosition");
  EXPECT_EQ(moved["textPosition"], (Json{{"left", 5}}));
  EXPECT_EQ(std::count(k.begin(), k.end(), "textPosition"), 1);
  EXPECT_EQ(k.back(), "backgroundPic");

  Json pic = record("textview", {{"backgroundPic", "images/a.png"}});
  EXPECT_EQ(pic["textPosition"], pic["position"]);
  EXPECT_FALSE(record("textview", {{"backgroundPic", ""}}).contains("textPosition"));

  // A button with pictures gets icon and text positions equal to its own position, before the payload keys.
  Json btn = record("button", {{"alignment", 36}, {"picTab", {{"pic0", "images/x.png"}}}, {"extra", 1}});
  k = keys_of(btn);
  EXPECT_EQ(k[k.size() - 3], "iconPosition");
  EXPECT_EQ(k[k.size() - 2], "textPosition");
  EXPECT_EQ(k.back(), "extra");
  EXPECT_EQ(btn["iconPosition"], btn["position"]);
  EXPECT_EQ(btn["textPosition"], btn["position"]);
  EXPECT_EQ(btn["position"]["left"], 1);
  EXPECT_EQ(k[5], "picTab");
  EXPECT_EQ(btn["alignment"], 36);
  EXPECT_FALSE(record("button", {{"picTab", Json::object()}}).contains("iconPosition"));
  EXPECT_TRUE(record("button", {{"backgroundPic", "images/b.png"}}).contains("textPosition"));
}

TEST(Serialize, SerialisingTwiceGivesTheSameRecords) {
  // textPosition is taken out of the payload into its fixed place; the node keeps it.
  NodeList l = {make_node("window", "W", {0, 0, 100, 100}, Json::object(),
                          {make_node("textview", "T", {1, 2, 3, 4}, {{"text", "a"}, {"textPosition", "p"}})})};
  const Json first = serialize(l, ubtest::required_keys());
  EXPECT_EQ(first["window__1"]["textview__1"]["text"], "a");
  EXPECT_EQ(serialize(l, ubtest::required_keys()), first);
}

TEST(Serialize, CountersRunThroughTheWholeForest) {
  NodeList empty;
  EXPECT_EQ(serialize(empty, ubtest::required_keys()), Json::object());

  auto inner = make_node("textview", "Inner", {0, 0, 10, 10});
  auto win = make_node("window", "Win", {0, 0, 100, 100}, Json::object(), {inner, make_node("button", "B", {})});
  NodeList forest = {win, make_node("textview", "After", {0, 100, 10, 10}), make_node("window", "W2", {})};
  Json out = serialize(forest, ubtest::required_keys());
  EXPECT_EQ(keys_of(out), (std::vector<std::string>{"window__1", "textview__2", "window__2"}));
  EXPECT_EQ(out["window__1"]["textview__1"]["id"], 50001);
  EXPECT_EQ(out["window__1"]["textview__1"]["caption"], "Inner");
  EXPECT_EQ(out["textview__2"]["id"], 50002);
  EXPECT_EQ(out["window__2"]["id"], 110002);
  // Children follow all of the parent's own keys.
  auto k = keys_of(out["window__1"]);
  EXPECT_EQ(k[k.size() - 2], "textview__1");
  EXPECT_EQ(k.back(), "button__1");
}

TEST(Serialize, SeparatorIsRefused) {
  NodeList l = {make_node("separator", "S", {})};
  try {
    serialize(l, ubtest::required_keys());
    FAIL();
  } catch (const std::logic_error& e) {
    EXPECT_STREQ(e.what(), "separator 不应直接序列化");
  }
}

TEST(Serialize, EmissionLayerFillsDefaultsAndReportsGaps) {
  Json table = Json::parse(R"({"window": {"id": null, "zOrder": 0, "layer": null, "modal": true}})");
  auto [filled, unfilled] = fill_required(table, "window", Json{{"id", 1}, {"modal", false}});
  EXPECT_EQ(filled.dump(), R"({"id":1,"modal":false,"zOrder":0})");
  EXPECT_EQ(unfilled, (std::vector<std::string>{"layer"}));
  EXPECT_TRUE(fill_required(table, "button", Json{{"id", 1}}).second.empty());

  NodeList l = {make_node("window", "W", {})};
  try {
    serialize(l, {true, "", table});
    FAIL();
  } catch (const std::logic_error& e) {
    EXPECT_STREQ(e.what(), "发射层默认表缺 window 的必填键取值：['layer']");
  }
  table["window"].erase("layer");
  l = {make_node("window", "W", {})};
  EXPECT_EQ(serialize(l, {true, "", table})["window__1"]["zOrder"], 0);
}

TEST(Serialize, MissingEmissionLayerWarnsAtEachNode) {
  const EmitLayer missing = load_emit_layer("/nonexistent/required_keys.json");
  NodeList l = {make_node("window", "W", {}, Json::object(), {make_node("textview", "T", {})})};
  testing::internal::CaptureStderr();
  Json out = serialize(l, missing);
  std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(out["window__1"]["textview__1"]["id"], 50001);
  std::string line = "[warn] 未走共享发射层（ui_emit 不可用：cannot read /nonexistent/required_keys.json）→ 必填键可能缺\n";
  EXPECT_EQ(err, line + line);
}

TEST(Serialize, ShippedLayerCoversEveryRecord) {
  const EmitLayer& layer = ubtest::required_keys();
  ASSERT_TRUE(layer.ok) << layer.reason;
  for (const char* t : {"textview", "button", "window", "scrollwindow", "edittext", "seekbar", "checkbox",
                        "radiogroup", "listview"}) {
    Json r = record(t);
    auto [filled, unfilled] = fill_required(layer.table, t, r);
    EXPECT_TRUE(unfilled.empty()) << t;
    EXPECT_EQ(filled, r) << t;
  }
}

TEST(Node, ShiftMovesTheSubtree) {
  auto leaf = make_node("textview", "L", {0, 5, 1, 1});
  auto root = make_node("window", "W", {0, 10, 1, 1}, Json(), {make_node("window", "M", {0, 0, 1, 1}, Json(), {leaf})});
  root->shift(7);
  EXPECT_EQ(root->pos.top, 17);
  EXPECT_EQ(leaf->pos.top, 12);
  EXPECT_TRUE(root->payload.is_object());
}
