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
  Json out = serialize(l, EmitLayer{});
  return out.begin().value();
}

}  // namespace

// Key order per type and the id bases are pinned by the whole pages; these are the merge rules.
TEST(Serialize, PayloadMergeAndTextPositions) {
  Json r = record("textview", {{"extra", 1}, {"position", {{"left", 9}}}, {"text", "hi"}});
  auto k = keys_of(r);
  EXPECT_EQ(k[2], "position");
  EXPECT_EQ(r["position"], (Json{{"left", 9}}));
  EXPECT_EQ(k.back(), "extra");
  EXPECT_EQ(std::find(k.begin(), k.end(), "text") - k.begin(), 12);
  EXPECT_EQ(record("gauge", {{"a", 1}}), (Json{{"a", 1}}));  // unknown types carry their payload alone

  Json moved = record("textview", {{"textPosition", {{"left", 5}}}, {"backgroundPic", "images/a.png"}});
  k = keys_of(moved);
  EXPECT_EQ(k[18], "textPosition");
  EXPECT_EQ(moved["textPosition"], (Json{{"left", 5}}));
  EXPECT_EQ(std::count(k.begin(), k.end(), "textPosition"), 1);
  Json pic = record("textview", {{"backgroundPic", "images/a.png"}});
  EXPECT_EQ(pic["textPosition"], pic["position"]);
  EXPECT_FALSE(record("textview", {{"backgroundPic", ""}}).contains("textPosition"));

  // A button with pictures gets icon and text positions equal to its own, before the payload keys.
  Json btn = record("button", {{"picTab", {{"pic0", "images/x.png"}}}, {"extra", 1}});
  k = keys_of(btn);
  EXPECT_EQ(std::vector<std::string>(k.end() - 3, k.end()),
            (std::vector<std::string>{"iconPosition", "textPosition", "extra"}));
  EXPECT_EQ(btn["iconPosition"], btn["position"]);
  EXPECT_EQ(btn["textPosition"], btn["position"]);
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
  NodeList sep = {make_node("separator", "S", {})};
  EXPECT_THROW(serialize(sep, ubtest::required_keys()), std::logic_error);  // never written as a record

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

TEST(Serialize, MissingEmissionLayerLeavesTheRecordsAsTheyAreAndPrintsNothing) {
  const EmitLayer missing = load_emit_layer("/nonexistent/required_keys.json");
  EXPECT_FALSE(missing.ok);
  NodeList l = {make_node("window", "W", {}, Json::object(), {make_node("textview", "T", {})})};
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  Json out = serialize(l, missing);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(out["window__1"]["textview__1"]["id"], 50001);
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
