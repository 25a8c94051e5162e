// The command as a user meets it: exit statuses, where files land, what a failure leaves.
#include <gtest/gtest.h>

#include "e2e.h"
#include "gen_res/image.h"
#include "json2img/contact_sheet.h"

using namespace e2e;

namespace {

Json title_page(int w, int h) {
  Json spec = ubtest::page_spec(w, h);
  spec["page"]["subtitle"] = "副标题";
  return spec;
}

bool empty_dir(const fs::path& p) { return !fs::exists(p) || fs::is_empty(p); }

}  // namespace

TEST(Command, UsageErrorsExitTwo) {
  for (const auto& args : std::vector<std::vector<std::string>>{
           {}, {"s.json"}, {"--project", "p"}, {"s.json", "--project", "p", "--ui-layout", "tree"},
           {"s.json", "--project", "p", "--verbose"}}) {
    Outcome r = compose(args);
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.err.rfind("usage: compose", 0), 0u) << r.err;
    EXPECT_NE(r.err.find("compose: error: "), std::string::npos);
    EXPECT_EQ(r.out, "");
  }
  Outcome help = compose({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("--ui-layout {auto,flat,res}"), std::string::npos);
}

TEST(Command, BadInputExitsOneAndWritesNothing) {
  const std::vector<std::pair<std::string, std::string>> cases = {  // the input text, a part of the message
      {"{\"resolution\": {\"width\": 800", "malformed JSON"},
      {R"({"page": {"title": "t", "footer": {"primary": "p"}}})", "width"},
      {R"({"resolution": {"width": 800, "height": 480}, "page": {"title": "t", "blocks": ["setting_row"]}})",
       "blocks"},
      {R"({"resolution": {"width": 800, "height": 480}, "page": {"title": "t", "blocks": 5}})", "blocks"},
      {R"([1, 2])", "object"},
      {R"({"resolution": {"width": 800, "height": 480}, "page": {"title": )" + std::string(1000, '[') +
           std::string(1000, ']') + "}}",
       "deeper"},
  };
  for (const auto& [text, part] : cases) {
    Project p(text);
    Outcome r = p.run();
    EXPECT_EQ(r.status, 1) << text;
    EXPECT_EQ(r.err.rfind("compose: error: ", 0), 0u) << r.err;
    EXPECT_NE(r.err.find(part), std::string::npos) << r.err;
    EXPECT_TRUE(empty_dir(p.proj())) << text;
  }
  Outcome missing = compose({"/nonexistent/spec.json", "--project", "/nonexistent/p"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.err.find("/nonexistent/spec.json"), std::string::npos);
}

TEST(Command, StopsPrintTheMessageAloneAndWriteNothing) {
  Json spec = title_page(800, 480);
  spec["page"].erase("footer");
  Project p(spec);
  Outcome r = p.run();
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "[X] 缺 bottom_actions（底部固定带必须有，否则视口高度没法定）\n");
  EXPECT_TRUE(empty_dir(p.proj()));
}

TEST(Command, LibraryWithoutTokensIsBadInput) {
  Project p(title_page(800, 480));
  const fs::path lib = p.root / "lib";
  fs::create_directories(lib);
  ub::write_file_atomic((lib / "page_title.json").string(), R"({"type": "page_title"})");
  setenv("TVUITOOL_BLOCKS", lib.c_str(), 1);
  Outcome r = p.run();
  unsetenv("TVUITOOL_BLOCKS");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err.rfind("compose: error: ", 0), 0u) << r.err;
  EXPECT_TRUE(empty_dir(p.proj()));
}

TEST(Command, SkippedStagesAndLayoutPlacement) {
  Project p(title_page(800, 480));
  Outcome r = p.run({"--json-only", "--no-logic"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_TRUE(fs::exists(p.proj() / "ui/main.json"));
  EXPECT_FALSE(fs::exists(p.proj() / "resources"));
  EXPECT_FALSE(fs::exists(p.proj() / "src"));
  EXPECT_EQ(r.out.find("出图 "), std::string::npos);

  r = p.run({"--no-logic"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_TRUE(fs::exists(p.proj() / "resources/images"));
  // The data header, which nobody edits, is written; the logic file is not.
  EXPECT_TRUE(fs::exists(p.proj() / "src/logic/mainData.h"));
  EXPECT_FALSE(fs::exists(p.proj() / "src/logic/mainLogic.cc"));

  r = p.run({"--page", "settings"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_TRUE(fs::exists(p.proj() / "src/logic/settingsLogic.cc"));

  ASSERT_EQ(p.run({"--ui-layout", "res", "--page", "second"}).status, 0);
  EXPECT_TRUE(fs::exists(p.proj() / "ui/800x480/second.json"));
  // The resolution folder now exists: auto follows it.
  r = p.run({"--page", "third"});
  ASSERT_EQ(r.status, 0);
  EXPECT_TRUE(fs::exists(p.proj() / "ui/800x480/third.json"));
  EXPECT_NE(r.out.find("  → " + (p.proj() / "ui/800x480/third.json").string() + "\n"), std::string::npos);
  ASSERT_EQ(p.run({"--ui-layout", "flat", "--page", "fourth"}).status, 0);
  EXPECT_TRUE(fs::exists(p.proj() / "ui/fourth.json"));
}

// The whole report, with the project's path replaced, against its reviewed copy.
TEST(Command, ReportOfATitleOnlyPage) {
  Project p(title_page(800, 480));
  Outcome r = p.run();
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string proj = p.proj().string();
  for (size_t at; (at = r.out.find(proj)) != std::string::npos;) r.out.replace(at, proj.size(), "<project>");
  ubtest::expect_golden(r.out, expected_path("title_only_800x480.report"));
}

TEST(Command, TextThatDoesNotFitIsReportedTwiceAndStillExitsZero) {
  Json spec = title_page(320, 240);
  spec["page"]["footer"]["status"] = "这是一段非常非常非常非常非常非常长的状态文字";
  Project p(spec);
  Outcome r = p.run({"--json-only"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("  [NOTE] ActionStatus"), std::string::npos);
  EXPECT_NE(r.out.find("  [X] 1 处文本装不下（#13 会 FAIL）→ 缩短文案或给 value_short：\n      - ActionStatus"),
            std::string::npos);
}

// The render and check stages only report: a failing check (no logic skeleton, so the
// button callbacks are missing) leaves the status at 0.
TEST(Command, CheckAndRenderStagesNeverChangeTheStatus) {
  Project p(title_page(480, 272));
  Outcome r = p.run({"--no-logic", "--render", "--check", "--font", ""});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("-- render --\n"), std::string::npos);
  EXPECT_NE(r.out.find("渲染图 main.render.png 480x272 ｜ 尺寸 == resolution: True\n"), std::string::npos) << r.out;
  EXPECT_TRUE(fs::exists(p.proj() / "ui/main.render.png"));
  const size_t at = r.out.find("-- check_all --\n");
  ASSERT_NE(at, std::string::npos);
  const std::string section = r.out.substr(at);
  EXPECT_NE(section.find("[X] #8 "), std::string::npos) << section;
  const size_t exit_line = section.find("\n  check_all exit = 1");
  ASSERT_NE(exit_line, std::string::npos) << section;
  // The tail of the tool's whole output follows the status line.
  EXPECT_NE(section.find("== check_all ", exit_line), std::string::npos);
}

TEST(Sizes, EverySizeInOneRun) {
  Project p(title_page(800, 480));
  Outcome r = p.run({"--sizes", "320x240,480x272", "--render", "--font", ""});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string proj = p.proj().string();
  size_t at = 0;
  for (const char* size : {"320x240", "480x272"}) {
    EXPECT_TRUE(fs::exists(p.proj() / "ui" / size / "main.json")) << size;
    EXPECT_TRUE(fs::exists(p.proj() / "ui" / size / "main.render.png")) << size;
    // Each section: its head, then that size's report as a single run prints it.
    at = r.out.find(std::string("==== ") + size + " ====\n== compose (" + size + ") ==\n", at);
    ASSERT_NE(at, std::string::npos) << size << "\n" << r.out;
    EXPECT_NE(r.out.find("  → " + proj + "/ui/" + size + "/main.json\n", at), std::string::npos);
    EXPECT_NE(r.out.find(std::string("渲染图 main.render.png ") + size + " ｜ 尺寸 == resolution: True\n", at),
              std::string::npos);
  }
  EXPECT_FALSE(fs::exists(p.proj() / "ui/main.json"));
  EXPECT_FALSE(fs::exists(p.proj() / "ui/800x480"));
  EXPECT_TRUE(fs::exists(p.proj() / "src/logic/mainLogic.cc"));
  // The contact sheet: both previews side by side under a label band.
  int w = 0, h = 0;
  ASSERT_TRUE(gen_res::png_size((p.proj() / "ui/main.sizes.png").string(), w, h));
  EXPECT_EQ(w, 320 + 480 + j2i::kSheetGap);
  EXPECT_EQ(h, 272 + j2i::kSheetBand);
  EXPECT_NE(r.out.find("联系表 → " + proj + "/ui/main.sizes.png " + std::to_string(w) + "x" + std::to_string(h)),
            std::string::npos);
}

TEST(Sizes, ASizeThatRefusesThePageStopsEverySize) {
  // 100 tabs of 4 px fit in the content width at 800x480 but not at 320x240.
  Json tabs = {{"type", "tabs"}, {"items", Json::array()}};
  for (int i = 0; i < 100; ++i) tabs["items"].push_back(ub::cat("t", i));
  Json spec = title_page(800, 480);
  spec["page"]["blocks"] = Json::array({tabs});
  Project p(spec);
  ASSERT_EQ(p.run({"--json-only"}).status, 0);
  fs::remove_all(p.proj());
  Outcome r = p.run({"--sizes", "800x480", "320x240"});
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("\n  at size 320x240\n"), std::string::npos) << r.err;
  EXPECT_EQ(r.err.find("800x480"), std::string::npos) << r.err;
  EXPECT_TRUE(empty_dir(p.proj()));
}

// Nothing is printed while a page is built: an icon that falls back is reported in its
// place in the report, and not at all when a later check refuses the page.
TEST(Command, NothingIsPrintedWhileAPageIsBuilt) {
  Json spec = title_page(800, 480);
  spec["page"]["blocks"] = Json::parse(R"([{"type": "banner", "icon": "no-such-icon", "text": "a"},
      {"type": "setting_row", "name": "a"}, {"type": "setting_row", "name": "a"}])");
  Project refused(spec);
  Outcome r = refused.run();
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(r.err.rfind("[X] caption 重名 ", 0), 0u) << r.err;
  EXPECT_EQ(r.err.find("回退"), std::string::npos) << r.err;
  EXPECT_TRUE(empty_dir(refused.proj()));

  spec["page"]["blocks"].erase(2);
  Project composed(spec);
  r = composed.run({"--json-only"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out.rfind("== compose (800x480) ==\n", 0), 0u) << r.out;
  const std::string line =
      "  [回退线框] 图标 'no-such-icon' 在 components/icons 里没有对应语义名 → 用 gen_res 线框（ic_no-such-icon_24_info.png"
      "；目标 0 处，请改用库里已有语义名）\n"
      "  [X] 回退线框 1 处（目标 0）—— 图标字面量不在 components/icons 里：no-such-icon@24px\n  [NOTE] ";
  EXPECT_NE(r.out.find(line), std::string::npos) << r.out;

  // With several sizes each section reports its own.
  r = composed.run({"--json-only", "--sizes", "320x240,480x272"});
  ASSERT_EQ(r.status, 0) << r.err;
  for (const char* size : {"320x240", "480x272"}) {
    const size_t head = r.out.find(std::string("==== ") + size + " ====\n");
    ASSERT_NE(head, std::string::npos) << r.out;
    const size_t next = r.out.find("==== ", head + 5);
    const std::string section = r.out.substr(head, next - head);
    EXPECT_NE(section.find("  [回退线框] 图标 'no-such-icon'"), std::string::npos) << section;
    EXPECT_LT(section.find("  [回退线框] 图标"), section.find("  [X] 回退线框 1 处")) << section;
  }
}

// Picture names carry sizes, but not every measure: where two sizes draw one name
// differently, the later size's controls show their own picture under a variant of the name.
TEST(Sizes, ANameTwoSizesDrawDifferentlyHoldsEachSizesOwnPicture) {
  Project p(ub::read_file(ubtest::source_dir() + "/examples/showcase_800x480.json"));
  Outcome r = p.run({"--sizes", "320x240,320x480"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out.find("图片名"), std::string::npos) << r.out;
  const fs::path images = p.proj() / "resources/images";
  const std::string first = ub::read_file((p.proj() / "ui/320x240/main.json").string());
  const std::string later = ub::read_file((p.proj() / "ui/320x480/main.json").string());
  int variants = 0;
  for (const auto& e : fs::directory_iterator(images)) {
    const std::string name = e.path().filename().string();
    if (!name.ends_with("_2.png")) continue;
    ++variants;
    const std::string plain = name.substr(0, name.size() - 6) + ".png";
    ASSERT_TRUE(fs::exists(images / plain)) << name;
    EXPECT_NE(ub::read_file((images / plain).string()), ub::read_file(e.path().string())) << name;
    EXPECT_EQ(first.find("images/" + name), std::string::npos) << name;  // the first size keeps the plain name
    EXPECT_NE(later.find("images/" + name + "\""), std::string::npos) << name;
  }
  EXPECT_GT(variants, 0);  // the showcase's card and thumbnails differ at these sizes
}
