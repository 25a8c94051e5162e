#include <gtest/gtest.h>

#include "logic/logic.h"
#include "logic/logic_head.h"

using namespace ub;

namespace {

Json ctrl(int id, const std::string& caption) { return Json{{"id", id}, {"caption", caption}}; }

// Root keys first, then controls; the window holds a button and an edit field.
Json sample_doc() {
  Json doc = Json::object();
  doc["id"] = 0;
  doc["resolution"] = {{"width", 800}, {"height", 480}};
  Json win = ctrl(110001, "WindowMain");
  win["button__1"] = ctrl(20001, "Inner");
  win["edittext__1"] = ctrl(51001, "NameEdit");
  doc["window__1"] = win;
  doc["button__2"] = ctrl(20002, "ButtonPrimary9");
  Json list = ctrl(80001, "List");
  list["item"] = {{"subItem", Json::array({ctrl(24001, "SubInList")})}};
  doc["listview__1"] = list;
  doc["radiogroup__1"] = ctrl(94000, "Group");
  doc["radiogroup__1"]["radiobuttons"] = Json::array({ctrl(94101, "Opt1")});
  return doc;
}

}  // namespace

TEST(LogicCaptions, DepthFirstByIdRangeSkippingArraysAndEmptyCaptions) {
  Json doc = sample_doc();
  doc["button__3"] = ctrl(29999, "");         // no caption: skipped
  doc["button__4"] = ctrl(29999, "Last");     // upper edge inside
  doc["textview__1"] = ctrl(30000, "Above");  // just outside
  doc["textview__2"] = ctrl(19999, "Below");
  EXPECT_EQ(collect_button_caps(doc), (std::vector<std::string>{"Inner", "ButtonPrimary9", "Last"}));
  EXPECT_EQ(collect_edittext_caps(doc), (std::vector<std::string>{"NameEdit"}));
  // Only keys holding "__" are controls: a stray mapping with a button id is not one.
  Json plain = Json{{"notctrl", ctrl(20005, "Hidden")}};
  EXPECT_TRUE(collect_button_caps(plain).empty());
}

TEST(LogicSkeleton, PageWithoutButtonsHasHeadAndSectionHeadOnly) {
  Json doc = {{"id", 0}, {"textview__1", ctrl(50001, "TextTitle")}};
  EXPECT_EQ(logic_text(doc), std::string(LOGIC_HEAD) + "\n// ---- 按钮回调 ----\n");
  EXPECT_EQ(logic_path("settings"), "src/logic/settingsLogic.cc");
  EXPECT_EQ(logic_base_path("settings"), ".compose/logic/settingsLogic.cc");
}

// No reviewed example page has edit fields: the bytes of that section are pinned here.
TEST(LogicSkeleton, OneCallbackPerButtonThenTheEditSection) {
  EXPECT_EQ(logic_text(sample_doc()),
            std::string(LOGIC_HEAD) +
                "\n// ---- 按钮回调 ----\n"
                "static bool onButtonClick_Inner(TVButton *pButton) {\n    // TODO: Inner\n    return false;\n}\n"
                "static bool onButtonClick_ButtonPrimary9(TVButton *pButton) {\n    // TODO: ButtonPrimary9\n"
                "    return false;\n}\n"
                "\n// ---- 输入框回调（check_all #5 核对：edittext 必须有 onEditTextChanged_<caption>）----\n"
                "static void onEditTextChanged_NameEdit(const std::string &text) {\n    // TODO: NameEdit 输入内容 = text\n}\n");
}

TEST(LogicSkeleton, DuplicateButtonCaptionsAreRefused) {
  Json doc = sample_doc();
  doc["button__5"] = ctrl(20005, "Inner");
  doc["button__6"] = ctrl(20006, "Alpha");
  doc["button__7"] = ctrl(20007, "Alpha");
  try {
    logic_text(doc);
    FAIL() << "expected a stop";
  } catch (const StopError& e) {
    EXPECT_EQ(std::string(e.what()),
              "[X] button caption 重名（Alpha、Inner）→ onButtonClick_<caption> 会重复定义，拒绝生成 logic 骨架");
  }
}
