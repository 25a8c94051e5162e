#include "driver/report.h"

#include <gtest/gtest.h>

#include "driver/console_text.h"
#include "driver/installation.h"

using namespace ub;

namespace {
std::string repeat(const std::string& s, size_t n) {
  std::string out;
  for (size_t i = 0; i < n; ++i) out += s;
  return out;
}
}  // namespace

TEST(ReportRender, CutOnlyAboveSixThousandCharacters) {
  const std::string whole = repeat("字", 6000);  // characters, not bytes
  EXPECT_EQ(render_report_text(whole), whole);
  const std::string longer = repeat("a", 2500) + repeat("字", 1001) + repeat("b", 2500);
  EXPECT_EQ(render_report_text(longer),
            repeat("a", 2500) + "\n  ...[中略 1001 字；完整清单请直接跑 json2img --report]...\n" + repeat("b", 2500));
}

TEST(ReportRender, FailedToolShowsStatusAndStderrTail) {
  ChildResult r{3, "  report line \n", repeat("e", 900) + "END"};
  EXPECT_EQ(render_section(r, "/nonexistent/main.render.png", 800, 480),
            "-- render --\nreport line\n  [X] json2img exit=3\n" + repeat("e", 797) + "END\n");
  ChildResult empty{0, "", ""};
  EXPECT_EQ(render_section(empty, "/nonexistent/main.render.png", 800, 480),
            "-- render --\n\n  [WARN] 渲染图读取失败：cannot identify image file '/nonexistent/main.render.png'\n");
}

TEST(ReportCheck, TailKeepsMarkedLinesAndTheLast25) {
  const std::string out =
      "[OK] 1 fine\nnoise\n  [X] indented is not a start\n[!] warn\n== 27 family\nrule FAIL here\nWARN 需 look\n"
      "[X] bad\n";
  EXPECT_EQ(check_tail(out),
            (std::vector<std::string>{"[OK] 1 fine", "[!] warn", "== 27 family", "rule FAIL here", "WARN 需 look",
                                      "[X] bad"}));
  std::string many;
  for (int i = 0; i < 30; ++i) many += "[OK] " + std::to_string(i) + "\n";
  const std::string sec = check_section({0, many, ""});
  EXPECT_EQ(sec.rfind("[OK] 5\n", 0), 0u);
  EXPECT_TRUE(sec.ends_with("[OK] 29\n  check_all exit = 0\n"));
  // A failing run also shows the end of its whole output.
  EXPECT_EQ(check_section({1, "x\n" + repeat("y", 3000), ""}), "\n  check_all exit = 1\n" + repeat("y", 3000) + "\n");
}

TEST(ReportSummary, FallbackLineBothForms) {
  EXPECT_EQ(fallback_line({}), "回退线框 0 处（全部图标来自 components/icons ✓）\n");
  std::vector<IconFallback> f = {{"wifi", 24, "a.png", "main"}, {"炉", 32, "b.png", "main"}};
  EXPECT_EQ(fallback_line(f),
            "  [X] 回退线框 2 处（目标 0）—— 图标字面量不在 components/icons 里：wifi@24px、炉@32px\n");
}

// One line per icon and picture, whatever the number of controls that show it.
TEST(ReportSummary, FallbackIconLinesOncePerCause) {
  EXPECT_EQ(fallback_icon_lines({}), "");
  const std::vector<IconFallback> f = {{"wifi", 24, "a.png", "main"}, {"wifi", 24, "a.png", "main"},
                                       {"炉", 32, "b.png", "main"}, {"wifi", 24, "a_2.png", "main"}};
  EXPECT_EQ(fallback_icon_lines(f),
            "  [回退线框] 图标 'wifi' 在 components/icons 里没有对应语义名 → 用 gen_res 线框（a.png；目标 0 处，请改用库里已有语义名）\n"
            "  [回退线框] 图标 '炉' 在 components/icons 里没有对应语义名 → 用 gen_res 线框（b.png；目标 0 处，请改用库里已有语义名）\n"
            "  [回退线框] 图标 'wifi' 在 components/icons 里没有对应语义名 → 用 gen_res 线框（a_2.png；目标 0 处，请改用库里已有语义名）\n");
}

TEST(ReportSummary, RequiredKeysWarningOnceForAMissingTable) {
  EXPECT_EQ(required_keys_warning(EmitLayer{true, "", Json::object()}), "");
  EXPECT_EQ(required_keys_warning(load_emit_layer("/nonexistent/required_keys.json")),
            "[warn] 未走共享发射层（ui_emit 不可用：cannot read /nonexistent/required_keys.json）→ 必填键可能缺\n");
}

TEST(ReportSummary, IconStatisticsSortedDistinctAndPadded) {
  EXPECT_EQ(icon_stats({}), "");
  IconTally uses;
  uses.add("wifi", "wifi-high", 32, 2, std::nullopt);
  uses.add("bell", "bell", 24, 1, "on");
  uses.add("wifi", "wifi-high", 32, 2, "");
  uses.add("a-very-long-token", "x", 8, 1, "off");
  EXPECT_EQ(icon_stats(uses),
            "图标来源：components/icons（4 处 ｜ 档位 1 档 ×2、2 档 ×2 ｜ 3 种 名×尺寸×态 组合）\n"
            "      a-very-long-token → x                        8px（1 档）state=off\n"
            "      bell         → bell                     24px（1 档）state=on\n"
            "      wifi         → wifi-high                32px（2 档）state=-\n");
}

TEST(ReportSummary, TooLongNotesAreRepeated) {
  std::vector<std::string> notes = {"a", "Row1Label(row) 文本「x」… → 文案过长，请用", "c"};
  EXPECT_EQ(notes_lines(notes), "  [NOTE] a\n  [NOTE] Row1Label(row) 文本「x」… → 文案过长，请用\n  [NOTE] c\n");
  EXPECT_EQ(too_long_lines(notes),
            "  [X] 1 处文本装不下（#13 会 FAIL）→ 缩短文案或给 value_short：\n"
            "      - Row1Label(row) 文本「x」… → 文案过长，请用\n");
  EXPECT_EQ(too_long_lines({"a"}), "");
}

TEST(ConsoleText, DecodeStripAndSplit) {
  EXPECT_EQ(decode_replace("ok\xff\xe4\xb8x中"), "ok\xEF\xBF\xBD\xEF\xBF\xBDx中");
  EXPECT_EQ(strip_space("\u3000 \n a b \t\n"), "a b");
  EXPECT_EQ(split_lines("a\r\nb\rc\n\nd"), (std::vector<std::string>{"a", "b", "c", "", "d"}));
  EXPECT_TRUE(split_lines("").empty());
}
