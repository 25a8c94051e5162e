#include "driver/build_report.h"

#include <gtest/gtest.h>

using namespace ub;

TEST(BuildReport, SummaryTable) {
  EXPECT_EQ(summary_table({{"oven", "480x272", false, 132, 24, 1, 0.214},
                           {"oven", "1024x600", false, 1400, 9, 0, 12.5},
                           {"settings", "800x480", true}}),
            "page      size      controls  pictures  notes      time\n"
            "oven      480x272        132        24      1    0.21 s\n"
            "oven      1024x600      1400         9      0   12.50 s\n"
            "settings  800x480   up to date\n");
}

TEST(BuildReport, WarningsUnderTheirSizeHeads) {
  const std::string report =
      "==== 480x272 ====\n== compose (480x272) ==\n  [NOTE] a note\n"
      "==== 800x480 ====\n  [X] 回退线框 1 处（目标 0）\n  [NOTE] another\n==== 2 个尺寸 ====\n";
  EXPECT_EQ(notable_lines(report), "==== 800x480 ====\n  [X] 回退线框 1 处（目标 0）\n");
  EXPECT_EQ(notable_lines("  [NOTE] only notes\n"), "");
}

TEST(BuildReport, ProgressLineFitsItsWidth) {
  EXPECT_EQ(progress_line(2, 5, {"oven", "main"}), "[2/5] oven, main");
  EXPECT_EQ(progress_line(0, 3, {"a_long_page_name", "another"}, 20), "[0/3] a_long_page_n…");
}
