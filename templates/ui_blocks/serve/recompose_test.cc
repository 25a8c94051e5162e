#include "serve/recompose.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "test_support.h"

namespace fs = std::filesystem;

namespace {

using serve::RunPlan;
using serve::run_plan;

void put(const fs::path& p, const std::string& text) {
  fs::create_directories(p.parent_path());
  std::ofstream(p, std::ios::binary) << text;
}

TEST(Recompose, ReportLinesGiveNotesAndTheLayoutPath) {
  const std::string report =
      "== compose (480x272) ==\n  [NOTE] first\n  [NOTE] second [X]\n  → /p/ui/other.json\n  → /p/ui/480x272/main.json\n";
  EXPECT_EQ(serve::note_lines(report), (std::vector<std::string>{"first", "second [X]"}));
  EXPECT_EQ(serve::reported_layout(report, "main"), "/p/ui/480x272/main.json");
  EXPECT_EQ(serve::reported_layout(report, "home"), "");
}

TEST(Recompose, AGoodRunReadsTheLayout) {
  const fs::path dir = ubtest::temp_dir("serve_run");
  put(dir / "ui" / "main.json", R"({"id":0,"resolution":{"width":2,"height":1}})");
  RunPlan plan{"spec", {"compose", "s.json"}};
  auto fake = [&](const std::vector<std::string>& argv) {
    EXPECT_EQ(argv, plan.argv);
    return ub::ChildResult{0, "  [NOTE] n1\n  → " + (dir / "ui" / "main.json").string() + "\n", ""};
  };
  auto r = run_plan(plan, "main", fake);
  EXPECT_TRUE(r.ok) << r.stop;
  EXPECT_EQ(r.layout["resolution"]["width"], 2);
  EXPECT_EQ(r.notes, std::vector<std::string>{"n1"});
  fs::remove_all(dir);
}

TEST(Recompose, RefusedOrBrokenRunsCarryTheirMessage) {
  RunPlan plan{"spec", {"compose"}};
  auto refused = run_plan(plan, "main", [](const std::vector<std::string>&) {
    return ub::ChildResult{1, "", "[X] duplicate caption Card1 (page.blocks[2])\n"};
  });
  EXPECT_FALSE(refused.ok);
  EXPECT_EQ(refused.stop, "[X] duplicate caption Card1 (page.blocks[2])");
  auto killed = run_plan(plan, "main", [](const std::vector<std::string>&) { return ub::ChildResult{-9, "", ""}; });
  EXPECT_FALSE(killed.ok);
  EXPECT_NE(killed.stop.find("status -9"), std::string::npos);
  auto silent = run_plan(plan, "main", [](const std::vector<std::string>&) { return ub::ChildResult{0, "ok\n", ""}; });
  EXPECT_FALSE(silent.ok);
  auto unstartable = run_plan(plan, "main", [](const std::vector<std::string>&) -> ub::ChildResult {
    throw std::runtime_error("cannot start compose");
  });
  EXPECT_EQ(unstartable.stop, "compose: error: cannot start compose");
}

TEST(Recompose, SizesAreOneRunReadSectionBySection) {
  serve::ServeOptions o;
  o.spec = "s.json";
  o.project = "P";
  o.sizes = {{800, 480}, {320, 240}};
  const auto plans = serve::plan_runs("compose", o);
  ASSERT_EQ(plans.size(), 1u);
  EXPECT_EQ(plans[0].argv, (std::vector<std::string>{"compose", "s.json", "--project", "P", "--page", "main",
                                                     "--sizes", "800x480,320x240"}));
  EXPECT_EQ(serve::view_labels(plans), (std::vector<std::string>{"800x480", "320x240"}));

  const fs::path dir = ubtest::temp_dir("serve_sizes");
  for (const char* size : {"800x480", "320x240"})
    put(dir / "ui" / size / "main.json", R"({"id":0,"resolution":{"width":)" + std::string(size).substr(0, 3) + "}}");
  const std::string report = "==== 800x480 ====\n  [NOTE] wide\n  → " + (dir / "ui/800x480/main.json").string() +
                             "\n==== 320x240 ====\n  [NOTE] narrow\n  → " + (dir / "ui/320x240/main.json").string() +
                             "\n==== 2 个尺寸 ====\n";
  auto good = serve::run_views(plans[0], "main", [&](const std::vector<std::string>&) {
    return ub::ChildResult{0, report, ""};
  });
  ASSERT_EQ(good.size(), 2u);
  EXPECT_TRUE(good[0].ok && good[1].ok);
  EXPECT_EQ(std::tie(good[0].notes, good[1].notes),
            std::tuple(std::vector<std::string>{"wide"}, std::vector<std::string>{"narrow"}));
  EXPECT_EQ(good[1].layout["resolution"]["width"], 320);
  // One size refuses: the run wrote nothing, so every size shows the stop.
  auto refused = serve::run_views(plans[0], "main", [](const std::vector<std::string>&) {
    return ub::ChildResult{1, "", "[X] too small\n  at size 320x240\n"};
  });
  ASSERT_EQ(refused.size(), 2u);
  for (const auto& r : refused) EXPECT_EQ(r.stop, "[X] too small\n  at size 320x240");
  fs::remove_all(dir);
}

// Each save is an ordinary compose run: the author's code in the logic file is merged, not
// overwritten, and a conflict is the run's stop; with --no-logic the file is left alone.
TEST(Recompose, ASaveKeepsHandWrittenLogic) {
  const fs::path dir = ubtest::temp_dir("serve_logic");
  auto spec = [&](const std::vector<std::string>& rows) {
    Json s = ubtest::page_spec(320, 240);
    for (const auto& r : rows) s["page"]["blocks"].push_back({{"type", "setting_row"}, {"label", r}, {"name", r}});
    put(dir / "spec.json", s.dump());
  };
  spec({"Wifi"});
  serve::ServeOptions o;
  o.spec = (dir / "spec.json").string();
  o.project = (dir / "proj").string();
  ASSERT_TRUE(run_plan(serve::plan_runs(COMPOSE_EXE, o)[0], "main").ok);
  const fs::path logic = dir / "proj/src/logic/mainLogic.cc";
  const std::string hand = "static void helper() {}\n";
  put(logic, ub::read_file(logic.string()) + hand);

  spec({"Wifi", "Bt"});
  auto r = run_plan(serve::plan_runs(COMPOSE_EXE, o)[0], "main");
  ASSERT_TRUE(r.ok) << r.stop;
  std::string text = ub::read_file(logic.string());
  EXPECT_NE(text.find(hand), std::string::npos);
  EXPECT_NE(text.find("onButtonClick_ButtonRowBt("), std::string::npos);
  EXPECT_NE(text.find("onButtonClick_ButtonRowWifi("), std::string::npos);

  // Bt's first line changed by hand where a new row's callback would go: refused, nothing written.
  const std::string sig = "static bool onButtonClick_ButtonRowBt(TVButton *pButton) {";
  text.replace(text.find(sig), sig.size(), "static bool onButtonClick_ButtonRowBt(TVButton *) {");
  put(logic, text);
  spec({"Wifi", "Vpn", "Bt"});
  r = run_plan(serve::plan_runs(COMPOSE_EXE, o)[0], "main");
  EXPECT_FALSE(r.ok);
  EXPECT_EQ(r.stop.rfind("[X] logic 合并冲突：" + logic.string(), 0), 0u) << r.stop;
  EXPECT_EQ(ub::read_file(logic.string()), text);

  o.no_logic = true;
  const auto plan = serve::plan_runs(COMPOSE_EXE, o)[0];
  EXPECT_EQ(std::count(plan.argv.begin(), plan.argv.end(), "--no-logic"), 1);
  spec({"Wifi", "Vpn", "Bt", "Lan"});
  ASSERT_TRUE(run_plan(plan, "main").ok);
  EXPECT_EQ(ub::read_file(logic.string()), text);
  fs::remove_all(dir);
}

}  // namespace
