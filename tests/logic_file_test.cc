// The logic file through the command: what its author writes in it survives every run.
#include <gtest/gtest.h>

#include <map>

#include "e2e.h"

using namespace e2e;

namespace {

Json row(const std::string& name) { return Json{{"type", "setting_row"}, {"label", name}, {"name", name}}; }

Json page_of(const std::vector<std::string>& rows) {
  Json blocks = Json::array();
  for (const auto& r : rows) blocks.push_back(row(r));
  return ubtest::page_spec(800, 480, blocks);
}

std::string logic_of(const Project& p) { return ub::read_file((p.proj() / "src/logic/mainLogic.cc").string()); }
std::string base_of(const Project& p) { return ub::read_file((p.proj() / ".compose/logic/mainLogic.cc").string()); }
void write_logic(const Project& p, const std::string& text) {
  ub::write_file_atomic((p.proj() / "src/logic/mainLogic.cc").string(), text);
}

// The author fills in Wifi's callback.
const std::string kTodoWifi = "    // TODO: ButtonRowWifi\n";
const std::string kHandWifi = "    connectWifi();  // hand-written\n";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// The report line of the logic file, without the path before it.
std::string logic_status(const std::string& out) {
  const size_t at = out.find("  logic 骨架 → ");
  if (at == std::string::npos) return "<none>";
  const size_t from = out.find("）", at) + std::string("）").size();
  return out.substr(from, out.find('\n', at) - from);
}

size_t count(const std::string& text, const std::string& piece) {
  size_t n = 0;
  for (size_t at = 0; (at = text.find(piece, at)) != std::string::npos; at += piece.size()) ++n;
  return n;
}

// Every file below a directory with its bytes.
std::map<std::string, std::string> tree(const fs::path& root) {
  std::map<std::string, std::string> t;
  for (const auto& e : fs::recursive_directory_iterator(root))
    if (e.is_regular_file()) t[fs::relative(e.path(), root).string()] = ub::read_file(e.path().string());
  return t;
}

}  // namespace

TEST(LogicFile, AFreshProjectGetsTodaysSkeletonAndKeepsItAsTheBase) {
  Project p(ub::read_file(ubtest::source_dir() + "/examples/settings_800x480.json"));
  Outcome r = p.run({"--page", "settings"});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string file = ub::read_file((p.proj() / "src/logic/settingsLogic.cc").string());
  EXPECT_EQ(file, ub::read_file(expected_path("settings_800x480Logic.cc.expected")));
  EXPECT_EQ(ub::read_file((p.proj() / ".compose/logic/settingsLogic.cc").string()), file);
  // The report line is the one it always was.
  EXPECT_EQ(logic_status(r.out), "");
}

TEST(LogicFile, HandEditsSurviveRerunsNewButtonsAndRemovedButtons) {
  Project p(page_of({"Wifi", "Bt"}));
  ASSERT_EQ(p.run().status, 0);
  const std::string edited = replaced(logic_of(p), kTodoWifi, kHandWifi);
  write_logic(p, edited);

  Outcome r = p.run();
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(logic_of(p), edited);
  EXPECT_EQ(logic_status(r.out), "：未变");

  // A new row: its callback is added (and the footer's, renumbered), the edit kept.
  p.write(page_of({"Wifi", "Bt", "Vpn"}).dump());
  r = p.run();
  ASSERT_EQ(r.status, 0) << r.err;
  std::string file = logic_of(p);
  EXPECT_NE(file.find(kHandWifi), std::string::npos);
  EXPECT_EQ(count(file, "onButtonClick_ButtonRowVpn("), 1u);
  EXPECT_EQ(logic_status(r.out), "：已与手改合并 → 新增 2 个回调，保留 1 个已删控件的回调（已加注释）");
  // The base is the new skeleton, exactly what a fresh project gets.
  Project fresh(page_of({"Wifi", "Bt", "Vpn"}));
  ASSERT_EQ(fresh.run().status, 0);
  EXPECT_EQ(base_of(p), logic_of(fresh));

  // Both edited and untouched rows removed: their callbacks stay, marked.
  p.write(page_of({"Vpn"}).dump());
  r = p.run();
  ASSERT_EQ(r.status, 0) << r.err;
  file = logic_of(p);
  const std::string mark = "// 页面上已没有这个控件：回调保留，不再需要时手动删除\n";
  EXPECT_NE(file.find(mark + "static bool onButtonClick_ButtonRowWifi(TVButton *pButton) {\n" + kHandWifi),
            std::string::npos);
  EXPECT_NE(file.find(mark + "static bool onButtonClick_ButtonRowBt("), std::string::npos);
  EXPECT_EQ(logic_status(r.out), "：已与手改合并 → 新增 1 个回调，保留 3 个已删控件的回调（已加注释）");
}

TEST(LogicFile, ADeletedBaseKeepsTheFileAndAddsOnlyWhatIsNew) {
  Project p(page_of({"Wifi", "Bt"}));
  ASSERT_EQ(p.run().status, 0);
  const std::string edited = replaced(logic_of(p), kTodoWifi, kHandWifi);
  write_logic(p, edited);
  fs::remove_all(p.proj() / ".compose");

  p.write(page_of({"Wifi", "Vpn", "Bt"}).dump());
  Outcome r = p.run();
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string file = logic_of(p);
  // Nothing of the file changed: the new callbacks follow the last button callback.
  EXPECT_EQ(file.substr(0, edited.size()), edited);
  EXPECT_EQ(count(file, "onButtonClick_ButtonRowVpn("), 1u);
  EXPECT_EQ(count(file, "onButtonClick_ButtonRowWifi("), 1u);
  EXPECT_EQ(logic_status(r.out),
            "：没有可用的合并基线（.compose/logic/mainLogic.cc 缺失）→ 手改全部保留，只补 2 个新回调");
  EXPECT_TRUE(fs::exists(p.proj() / ".compose/logic/mainLogic.cc"));
}

TEST(LogicFile, AConflictWritesNothingNamesTheLinesAndCanBeWrittenWithMarkers) {
  Project p(page_of({"Wifi", "Bt"}));
  ASSERT_EQ(p.run().status, 0);
  // The new row's callback goes right before Bt's, whose first line the author changed.
  const std::string signature = "static bool onButtonClick_ButtonRowBt(TVButton * /*unused*/) {\n";
  const std::string edited =
      replaced(logic_of(p), "static bool onButtonClick_ButtonRowBt(TVButton *pButton) {\n", signature);
  write_logic(p, edited);
  const int line = 1 + (int)count(edited.substr(0, edited.find(signature)), "\n");
  const auto before = tree(p.proj());

  p.write(page_of({"Wifi", "Vpn", "Bt"}).dump());
  Outcome r = p.run();
  EXPECT_EQ(r.status, 1);
  const std::string path = (p.proj() / "src/logic/mainLogic.cc").string();
  EXPECT_EQ(r.err.rfind("[X] logic 合并冲突：" + path + " 第 " + std::to_string(line) + " 行的手改", 0), 0u) << r.err;
  EXPECT_NE(r.err.find("--write-conflicts"), std::string::npos);
  EXPECT_EQ(tree(p.proj()), before);

  r = p.run({"--write-conflicts"});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string file = logic_of(p);
  EXPECT_EQ(count(file, "\n<<<<<<< 手改\n"), 1u);
  EXPECT_EQ(count(file, "\n>>>>>>> 新骨架\n"), 1u);
  EXPECT_NE(file.find(signature), std::string::npos);
  // The footer's renumbered callback is kept and marked there too.
  EXPECT_NE(file.find("// 页面上已没有这个控件：回调保留，不再需要时手动删除\nstatic bool onButtonClick_ButtonPrimary4("),
            std::string::npos);
  EXPECT_NE(logic_status(r.out).find("1 处合并冲突已带冲突标记写入"), std::string::npos) << r.out;
  Project fresh(page_of({"Wifi", "Vpn", "Bt"}));
  ASSERT_EQ(fresh.run().status, 0);
  EXPECT_EQ(base_of(p), logic_of(fresh));

  // Run again before the markers are resolved: the file is left as it is, and says so.
  r = p.run();
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(logic_of(p), file);
  EXPECT_NE(logic_status(r.out).find("还有 1 处冲突标记未解决"), std::string::npos) << r.out;
}

TEST(LogicFile, SizesMergeIntoTheOneFile) {
  Project p(page_of({"Wifi", "Bt"}));
  ASSERT_EQ(p.run({"--sizes", "800x480,480x272"}).status, 0);
  write_logic(p, replaced(logic_of(p), kTodoWifi, kHandWifi));
  p.write(page_of({"Wifi", "Bt", "Vpn"}).dump());
  Outcome r = p.run({"--sizes", "800x480,480x272"});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string file = logic_of(p);
  EXPECT_NE(file.find(kHandWifi), std::string::npos);
  EXPECT_EQ(count(file, "onButtonClick_ButtonRowVpn("), 1u);
  EXPECT_EQ(count(r.out, "已与手改合并 → 新增 2 个回调"), 2u) << r.out;  // once per size section
}

TEST(LogicFile, NoLogicAndJsonOnlyLeaveTheFileAndItsBaseAlone) {
  Project p(page_of({"Wifi"}));
  ASSERT_EQ(p.run().status, 0);
  const std::string edited = replaced(logic_of(p), kTodoWifi, kHandWifi);
  write_logic(p, edited);
  const std::string base = base_of(p);
  p.write(page_of({"Wifi", "Bt"}).dump());
  for (const char* flag : {"--no-logic", "--json-only"}) {
    Outcome r = p.run({flag});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(logic_of(p), edited) << flag;
    EXPECT_EQ(base_of(p), base) << flag;
    EXPECT_EQ(logic_status(r.out), "<none>");
  }
}
