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

}  // namespace
