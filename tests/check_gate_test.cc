// The project checks as a page author and a CI job meet them: a page composed at several
// sizes passes its own checks, and check_all's exit status is the gate while --check only
// reports.
#include <gtest/gtest.h>

#include <fstream>

#include "e2e.h"

using namespace e2e;

TEST(CheckGate, APageAtSeveralSizesPassesItsChecks) {
  Project p(ub::read_file(ubtest::source_dir() + "/examples/showcase_800x480.json"));
  const Outcome r = p.run({"--sizes", "320x240,800x480", "--check"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("[OK] #9 2 个布局，各在其分辨率目录：320x240、800x480\n"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("[OK] check_all 全部通过：17 条规则"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("  check_all exit = 0\n"), std::string::npos) << r.out;
  EXPECT_EQ(compose({"check_all", p.proj().string()}).status, 0);

  // A flat layout beside the resolution folders: the project fails; compose --check still
  // ends with 0, the tool itself with 1.
  const Outcome flat = p.run({"--ui-layout", "flat", "--check"});
  EXPECT_EQ(flat.status, 0) << flat.err;
  EXPECT_NE(flat.out.find("[X] #9 扁平布局与分辨率目录混用：ui/main.json；ui/320x240/, ui/800x480/"), std::string::npos)
      << flat.out;
  EXPECT_NE(flat.out.find("  check_all exit = 1\n"), std::string::npos) << flat.out;
  EXPECT_EQ(compose({"check_all", p.proj().string()}).status, 1);
}

// A layout that repeats a control id (a hand edit here; a page past a type's id range
// would do the same) fails the gate.
TEST(CheckGate, ARepeatedIdFailsTheGate) {
  Project p(ub::read_file(ubtest::source_dir() + "/examples/settings_800x480.json"));
  ASSERT_EQ(p.run().status, 0);
  EXPECT_EQ(compose({"check_all", p.proj().string()}).status, 0);
  const fs::path layout = p.proj() / "ui/main.json";
  std::string text = ub::read_file(layout.string());
  const size_t second = text.find("\"id\": 50002");
  ASSERT_NE(second, std::string::npos);
  text.replace(second, 11, "\"id\": 50001");
  std::ofstream(layout) << text;
  const Outcome r = compose({"check_all", p.proj().string()});
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.out.find("[X] #7 ui/main.json id 50001 出现 2 次：textview__1, textview__2\n"), std::string::npos) << r.out;
}

// The appliance pages compose at their own sizes and pass the gate: warnings are allowed,
// failures are not. The washer's programs and wheel values all reach its data header.
TEST(CheckGate, TheApplianceExamplesPassTheirChecks) {
  for (const char* name : {"thermostat_480x272", "washer_800x480", "wifi_1024x600", "lock_320x240",
                           "line_dashboard_1280x800", "showcase_appliance_800x480"}) {
    SCOPED_TRACE(name);
    Project p(ub::read_file(ubtest::source_dir() + "/examples/" + name + ".json"));
    const Outcome r = p.run({"--check"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("  check_all exit = 0\n"), std::string::npos) << r.out;
    EXPECT_EQ(compose({"check_all", p.proj().string()}).status, 0);
    if (std::string(name) != "washer_800x480") continue;
    const std::string data = ub::read_file((p.proj() / "src/logic/mainData.h").string());
    for (const char* program : {"标准洗", "快洗", "羊毛", "大件", "婴儿衣物", "筒自洁"})
      EXPECT_NE(data.find(std::string("{\"") + program + "\""), std::string::npos) << program;
    for (const char* value : {"冷水", "90°C", "1400", "3 次"})
      EXPECT_NE(data.find(std::string("\"") + value + "\""), std::string::npos) << value;
  }
}
