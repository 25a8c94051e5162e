#include <gtest/gtest.h>

#include <filesystem>

#include "logic/logic.h"
#include "logic/logic_head.h"
#include "test_support.h"

namespace fs = std::filesystem;
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

std::string read(const std::string& p) { return read_file(p); }

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

TEST(LogicEmit, PageWithoutButtonsHasHeadAndSectionHeadOnly) {
  const std::string dir = ubtest::temp_dir("logic");
  Json doc = {{"id", 0}, {"textview__1", ctrl(50001, "TextTitle")}};
  const std::string p = emit_logic(dir, "settings", doc);
  EXPECT_EQ(p, dir + "/src/logic/settingsLogic.cc");
  EXPECT_EQ(read(p), std::string(LOGIC_HEAD) + "\n// ---- 按钮回调 ----\n");
  fs::remove_all(dir);
}

TEST(LogicEmit, SecondRunOverwritesHandEdits) {
  const std::string dir = ubtest::temp_dir("logic");
  const std::string p = emit_logic(dir, "main", sample_doc());
  write_file_atomic(p, "// hand written\n");
  emit_logic(dir, "main", sample_doc());
  EXPECT_EQ(read(p).rfind(LOGIC_HEAD, 0), 0u);
  fs::remove_all(dir);
}

TEST(LogicEmit, DuplicateButtonCaptionsAreRefusedAndNothingIsWritten) {
  const std::string dir = ubtest::temp_dir("logic");
  Json doc = sample_doc();
  doc["button__5"] = ctrl(20005, "Inner");
  doc["button__6"] = ctrl(20006, "Alpha");
  doc["button__7"] = ctrl(20007, "Alpha");
  try {
    emit_logic(dir, "main", doc);
    FAIL() << "expected a stop";
  } catch (const StopError& e) {
    EXPECT_EQ(std::string(e.what()),
              "[X] button caption 重名（Alpha、Inner）→ onButtonClick_<caption> 会重复定义，拒绝生成 logic 骨架");
  }
  EXPECT_FALSE(fs::exists(dir + "/src"));
  fs::remove_all(dir);
}
