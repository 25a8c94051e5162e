#include "serve/control_boxes.h"

#include <gtest/gtest.h>

using nlohmann::json;
using nlohmann::ordered_json;
using serve::control_boxes;
using serve::picture_name;

namespace {

ordered_json rec(const char* caption, int l, int t, int w, int h) {
  return {{"caption", caption}, {"position", {{"left", l}, {"top", t}, {"width", w}, {"height", h}}}};
}

TEST(ControlBoxes, NestedPositionsAddUpInDefinitionOrder) {
  ordered_json doc = {{"id", 0}, {"position", {{"left", 0}, {"top", 0}, {"width", 480}, {"height", 272}}}};
  ordered_json scroll = rec("ScrollMain", 0, 52, 480, 176);
  ordered_json win = rec("WindowMain", 0, 0, 480, 184);
  ordered_json card = rec("Card2", 16, 52, 448, 132);
  ordered_json label = rec("TextLabel", 56, 6, 128, 20);
  label["text"] = "主灯";
  label["fontSize"] = 14;
  card["textview__2"] = label;
  win["window__2"] = card;
  scroll["window__1"] = win;
  doc["textview__9"] = rec("Zed", 1, 2, 3, 4);  // keys are not sorted: definition order wins
  doc["scrollwindow__1"] = scroll;
  const json boxes = control_boxes(doc, {});
  ASSERT_EQ(boxes.size(), 5u);
  EXPECT_EQ(boxes[0]["caption"], "Zed");
  EXPECT_EQ(boxes[1]["type"], "scrollwindow");
  const json& l = boxes[4];
  EXPECT_EQ(l["caption"], "TextLabel");
  EXPECT_EQ(l["type"], "textview");
  EXPECT_EQ(l["left"], 16 + 56);
  EXPECT_EQ(l["top"], 52 + 52 + 6);
  EXPECT_EQ(l["width"], 128);
  EXPECT_EQ(l["text"], "主灯");
  EXPECT_EQ(l["fontSize"], 14);
  EXPECT_TRUE(boxes[1]["fontSize"].is_null());
}

TEST(ControlBoxes, PicturesFromEveryPictureKeyButNotFromChildren) {
  ordered_json doc;
  ordered_json bar = rec("Seek", 0, 0, 10, 10);
  bar["backgroundPic"] = "images/track.png";
  bar["progressPic"] = "images/fill.png";
  bar["secondaryProgressPic"] = "";
  bar["thumb"] = {{"normalPic", "images/knob.png"}, {"pressedPic", "images/knob.png"}};
  ordered_json box = rec("Check", 0, 0, 16, 16);
  box["picTab"] = {{"pic0", "images/cb_off.png"}, {"pic2", "images/cb_on.png"}};
  box["text"] = "images/not_a_picture.png";
  bar["checkbox__1"] = box;
  doc["seekbar__1"] = bar;
  const json boxes = control_boxes(doc, {});
  EXPECT_EQ(boxes[0]["pictures"], json({"track.png", "fill.png", "knob.png"}));
  EXPECT_EQ(boxes[1]["pictures"], json({"cb_off.png", "cb_on.png"}));
}

TEST(ControlBoxes, NotesNameACaptionAsAWholeWord) {
  ordered_json doc;
  doc["window__1"] = rec("Tabs1", 0, 0, 1, 1);
  doc["button__1"] = rec("Tabs1Item1", 0, 0, 1, 1);
  const std::vector<std::string> notes = {"Tabs1Item1 is too narrow", "Tabs1: 3 items", "nothing"};
  const json boxes = control_boxes(doc, notes);
  EXPECT_EQ(boxes[0]["notes"], json::array({1}));
  EXPECT_EQ(boxes[1]["notes"], json::array({0}));
}

TEST(ControlBoxes, PictureNamesArePlainFileNamesOnly) {
  EXPECT_EQ(picture_name("images/card_448x132.png"), "card_448x132.png");
  EXPECT_EQ(picture_name("a-b.png"), "a-b.png");
  for (const char* bad : {"", "images/", "images/../x.png", "../x.png", "/etc/passwd", "images/a/b.png", ".hidden.png",
                          "a%2fb.png", "a b.png"})
    EXPECT_EQ(picture_name(bad), "") << bad;
}

TEST(ControlBoxes, ANonObjectLayoutHasNoControls) {
  EXPECT_TRUE(control_boxes(ordered_json(), {}).empty());
  EXPECT_TRUE(control_boxes(ordered_json::array(), {}).empty());
}

}  // namespace
