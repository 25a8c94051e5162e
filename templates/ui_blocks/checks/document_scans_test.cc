#include <gtest/gtest.h>

#include "checks/document_scans.h"

using namespace ub;

namespace {

Json ctrl(const std::string& caption, Json extra = Json::object()) {
  Json c = {{"id", 1}, {"caption", caption}};
  for (auto it = extra.begin(); it != extra.end(); ++it) c[it.key()] = it.value();
  return c;
}

std::string stop_message(const Json& doc, const std::string& page = "main") {
  try {
    assert_caption_unique(doc, page);
  } catch (const StopError& e) {
    return e.what();
  }
  return "";
}

}  // namespace

TEST(DocumentScans, DuplicateCaptionsCountOnlyControlKeys) {
  Json doc = Json::object();
  doc["textview__1"] = ctrl("Same");
  doc["window__1"] = ctrl("Win");
  doc["window__1"]["textview__2"] = ctrl("Same");
  doc["window__1"]["button__1"] = ctrl("");
  doc["button__2"] = ctrl("");
  doc["button__3"] = ctrl("Same");
  doc["meta"] = ctrl("Win");  // no "__": not a control
  doc["listview__1"] = ctrl("List", {{"item", {{"subItem", Json::array({ctrl("List")})}}}});
  Json dups = duplicate_captions(doc);
  EXPECT_EQ(dups.dump(), R"({"Same":["textview__1","textview__2","button__3"]})");
  EXPECT_EQ(stop_message(doc),
            "[X] caption 重名 1 个（页面 main）：重名 ⇒ onButtonClick_<caption> 重定义 ⇒ C++ 编译必失败\n"
            "    - Same 出现 3 次：textview__1, textview__2, button__3");
}

TEST(DocumentScans, DuplicateLinesInRisingOrder) {
  Json doc = Json::object();
  doc["button__1"] = ctrl("Zeta");
  doc["button__2"] = ctrl("Alpha");
  doc["button__3"] = ctrl("Zeta");
  doc["button__4"] = ctrl("Alpha");
  std::string msg = stop_message(doc, "");
  EXPECT_NE(msg.find("重名 2 个（页面 ）"), std::string::npos);
  EXPECT_LT(msg.find("- Alpha 出现 2 次：button__2, button__4"), msg.find("- Zeta"));
}

TEST(DocumentScans, ForbiddenCharsInTextKeysOfMappingsOnly) {
  Json doc = Json::object();
  doc["edittext__1"] = ctrl("Pwd", {{"passwordChar", "…"}, {"hintText", "ok"}});
  doc["window__1"] = ctrl("W");
  doc["window__1"]["textview__1"] = ctrl("Temp", {{"text", "25℃"}});
  doc["window__1"]["textview__2"] = Json{{"text", "→"}};  // no caption
  doc["radiogroup__1"] = ctrl("R", {{"radiobuttons", Json::array({ctrl("Opt", {{"text", "★"}})})}});
  doc["textview__3"] = ctrl("Plain", {{"text", "加载中..."}});
  auto bad = find_forbidden_chars(doc);
  ASSERT_EQ(bad.size(), 3u);
  EXPECT_EQ(bad[0], (std::pair<std::optional<std::string>, std::string>("Pwd", "…")));
  EXPECT_EQ(bad[1].second, "25℃");
  EXPECT_FALSE(bad[2].first.has_value());
}
