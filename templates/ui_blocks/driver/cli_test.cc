#include "driver/cli.h"

#include <gtest/gtest.h>

#include "base/values.h"

using namespace ub;

namespace {
Options parse(const std::vector<std::string>& a) { return parse_args(a).opts; }

std::string usage_error(const std::vector<std::string>& a) {
  try {
    parse_args(a);
  } catch (const UsageError& e) {
    return e.what();
  }
  return "(no error)";
}
}  // namespace

TEST(Cli, DefaultsAndEveryOption) {
  Options o = parse({"spec.json", "--project", "proj"});
  EXPECT_EQ(std::tie(o.spec, o.project, o.page, o.ui_layout), std::tuple("spec.json", "proj", "main", "auto"));
  EXPECT_FALSE(o.render || o.check || o.json_only || o.no_logic || o.font.has_value());

  o = parse({"--project=p", "--page", "settings", "--render", "--check", "--font", "", "--json-only", "--no-logic",
             "--ui-layout", "res", "s.json"});
  EXPECT_EQ(std::tie(o.project, o.page), std::tuple("p", "settings"));
  EXPECT_TRUE(o.render && o.check && o.json_only && o.no_logic);
  ASSERT_TRUE(o.font.has_value());
  EXPECT_EQ(*o.font, "");  // an empty font is given but counts as absent later
  EXPECT_EQ(o.ui_layout, "res");
  EXPECT_EQ(parse({"s", "--project", "p", "--ui-layout=flat"}).ui_layout, "flat");
}

TEST(Cli, UniquePrefixesAndDoubleDash) {
  Options o = parse({"--proj", "p", "--ui", "res", "--json", "--", "-odd-name.json"});
  EXPECT_EQ(std::tie(o.project, o.ui_layout, o.json_only, o.spec), std::tuple("p", "res", true, "-odd-name.json"));
  EXPECT_NE(usage_error({"s", "--p", "x"}).find("ambiguous option: --p"), std::string::npos);
}

TEST(Cli, UsageErrors) {
  EXPECT_EQ(usage_error({}), "the following arguments are required: spec, --project");
  EXPECT_EQ(usage_error({"s.json"}), "the following arguments are required: --project");
  EXPECT_EQ(usage_error({"--project", "p"}), "the following arguments are required: spec");
  EXPECT_EQ(usage_error({"s", "--project", "p", "--ui-layout", "grid"}),
            "argument --ui-layout: invalid choice: 'grid' (choose from 'auto', 'flat', 'res')");
  EXPECT_EQ(usage_error({"s", "--project"}), "argument --project: expected one argument");
  EXPECT_EQ(usage_error({"s", "--project", "--render"}), "argument --project: expected one argument");
  EXPECT_EQ(usage_error({"s", "--project", "p", "--bogus", "-x"}), "unrecognized arguments: --bogus -x");
  EXPECT_EQ(usage_error({"s", "t", "--project", "p"}), "unrecognized arguments: t");
  EXPECT_EQ(usage_error({"s", "--project", "p", "--render=yes"}), "argument --render: ignored explicit argument 'yes'");
}

TEST(Cli, HelpWinsOverOtherErrors) {
  EXPECT_TRUE(parse_args({"-h"}).help);
  EXPECT_TRUE(parse_args({"s", "--bogus", "--help"}).help);
}

TEST(Cli, SizesAsOneListOrSeveralWords) {
  Options o = parse({"--project", "p", "--sizes", "320x240,480x272", "800x480", "s.json"});
  EXPECT_EQ(o.spec, "s.json");
  EXPECT_EQ(o.sizes, (std::vector<ScreenSize>{{320, 240}, {480, 272}, {800, 480}}));
  EXPECT_EQ(parse({"s", "--project", "p", "--sizes=800x480,800x480"}).sizes, (std::vector<ScreenSize>{{800, 480}}));
  // After the inline form the next word is the spec, whatever it looks like.
  EXPECT_EQ(parse({"--project", "p", "--sizes=800x480", "480x272"}).spec, "480x272");
  for (const auto& bad : std::vector<std::string>{"800", "800x", "8x480", "800x9000", "x480", ",", "80a0x480"})
    EXPECT_NE(usage_error({"s", "--project", "p", "--sizes", bad}).find("argument --sizes: "), std::string::npos)
        << bad;
  EXPECT_EQ(usage_error({"s", "--project", "p", "--sizes", "800x480,480x272", "--ui-layout", "flat"}),
            "argument --sizes: several sizes are not allowed with --ui-layout flat");
  // One size replaces the spec's resolution and may go to ui/<page>.json.
  o = parse({"s", "--project", "p", "--sizes", "480x272", "--ui-layout", "flat"});
  EXPECT_EQ(std::tie(o.sizes, o.ui_layout), std::tuple(std::vector<ScreenSize>{{480, 272}}, "flat"));
}

TEST(Cli, PreviewModesAskForAPreview) {
  Options o = parse({"s", "--project", "p", "--render-full"});
  EXPECT_TRUE(o.render && o.render_full && !o.show_hidden);
  o = parse({"s", "--project", "p", "--show-hidden"});
  EXPECT_TRUE(o.render && o.show_hidden && !o.render_full);
}

TEST(Cli, BuildChildOptionsAreWholeNamesOnlyAndNotInTheHelp) {
  Options o = parse({"s", "--project", "p", "--stage", "st", "--run-record", "r.json", "--depfile", "d.d"});
  EXPECT_EQ(std::tie(o.stage, o.run_record, o.depfile), std::tuple("st", "r.json", "d.d"));
  EXPECT_EQ(usage_error({"s", "--project", "p", "--sta", "st"}), "unrecognized arguments: --sta st");
  EXPECT_EQ(usage_error({"s", "--project", "p", "--stage", "st", "--render"}),
            "argument --stage: not allowed with --render (a staged page is drawn once it is committed)");
  const std::string help = help_text();
  EXPECT_EQ(help.find("--stage"), std::string::npos);
  EXPECT_EQ(help.find("--run-record"), std::string::npos);
  EXPECT_NE(help.find("  --depfile FILE        另写一份 Make 式依赖文件"), std::string::npos);
}

TEST(Cli, HelpLinesWrapAtAHundredColumns) {
  const std::string item = help_item("--x", std::string(60, 'a') + " " + std::string(20, 'b') + " " + std::string(10, 'c'));
  EXPECT_EQ(item, "  --x                   " + std::string(60, 'a') + "\n" + std::string(24, ' ') + std::string(20, 'b') +
                      " " + std::string(10, 'c') + "\n");
  // A head longer than its column gets a line of its own.
  EXPECT_EQ(help_item("--a-very-long-option NAME", "x"), "  --a-very-long-option NAME\n" + std::string(24, ' ') + "x\n");
  for (const std::string& text : {help_text(), schema_help(), serve_help()})
    for (size_t at = 0, nl; (nl = text.find('\n', at)) != std::string::npos; at = nl + 1)
      EXPECT_LE(display_width(text.substr(at, nl - at)), 100u) << text.substr(at, nl - at);
  // Wide characters count two columns and a line may break between them.
  EXPECT_EQ(display_width("ab页面"), 6u);
  const std::string cjk = wrap_text(std::string(98, 'a') + " " + "页面名", 0, 0);
  EXPECT_EQ(cjk, std::string(98, 'a') + "\n页面名\n");
  EXPECT_EQ(wrap_text("页面名默认", 0, 96), "页面\n名默认\n");
}

TEST(Cli, FontProblems) {
  EXPECT_EQ(font_problem(std::nullopt), std::nullopt);
  EXPECT_EQ(font_problem(""), std::nullopt);
  EXPECT_EQ(font_problem("/nonexistent/x.ttf"), "argument --font: no such file: /nonexistent/x.ttf");
  EXPECT_EQ(font_problem("/"), "argument --font: not a file: /");
}
