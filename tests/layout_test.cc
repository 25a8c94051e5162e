// Whole layout files compared byte for byte with reviewed expectations. Set
// UB_UPDATE_EXPECTED=1 to write the expectations anew (then review the diff).
#include <gtest/gtest.h>

#include <cstdlib>

#include "e2e.h"

using namespace e2e;

namespace {

bool updating() {
  const char* v = std::getenv("UB_UPDATE_EXPECTED");
  return v && *v;
}

void expect_file(const fs::path& produced, const std::string& expected_name) {
  const std::string got = ub::read_file(produced.string());
  const std::string want_path = expected_path(expected_name);
  if (updating()) {
    ub::write_file_atomic(want_path, got);
    return;
  }
  ASSERT_TRUE(fs::exists(want_path)) << want_path;
  EXPECT_EQ(got, ub::read_file(want_path)) << "differs from " << want_path;
}

void compose_example(const std::string& example, const std::string& page) {
  Project p(ub::read_file(ubtest::source_dir() + "/examples/" + example + ".json"));
  Outcome r = p.run({"--page", page, "--ui-layout", "flat"});
  ASSERT_EQ(r.status, 0) << r.err;
  expect_file(p.proj() / "ui" / (page + ".json"), example + ".json");
  expect_file(p.proj() / "src/logic" / (page + "Logic.cc"), example + "Logic.cc");
}

}  // namespace

TEST(Layout, TitleSubtitleFooterAtCommonSizes) {
  for (auto [w, h] : {std::pair{320, 240}, {480, 272}, {800, 480}, {1024, 600}}) {
    Json spec = ubtest::page_spec(w, h);
    spec["page"]["subtitle"] = "副标题";
    Project p(spec);
    Outcome r = p.run({"--json-only"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("回退线框 0 处"), std::string::npos);
    EXPECT_NE(r.out.find("  [NOTE] 内容总高 0 ≤ 视口"), std::string::npos);
    expect_file(p.proj() / "ui/main.json", ub::cat("title_only_", w, "x", h, ".json"));
  }
}

TEST(Layout, SettingsPage) { compose_example("settings_800x480", "settings"); }
TEST(Layout, StatusPageCompact) { compose_example("status_320x240", "main"); }
TEST(Layout, ControlsPage) { compose_example("controls_480x272", "main"); }
TEST(Layout, DashboardPage) { compose_example("dashboard_1024x600", "main"); }
TEST(Layout, BenchPage) { compose_example("bench_page_1024x600", "main"); }
