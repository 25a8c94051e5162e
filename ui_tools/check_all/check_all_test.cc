#include "check_all/check_all.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <functional>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/file_digest.h"
#include "base/forbidden_chars.h"
#include "check_all/project.h"
#include "check_all/report.h"
#include "base/values.h"
#include "gen_res/image.h"

namespace fs = std::filesystem;

namespace {

std::string temp_dir() {
  std::string tmpl = (fs::temp_directory_path() / "ub_check_all_XXXXXX").string();
  return mkdtemp(tmpl.data()) ? tmpl : "";
}

// The first 24 bytes of a PNG declaring w x h: all a size probe reads.
std::string png_header(uint32_t w, uint32_t h) {
  std::string s = "\x89PNG\r\n\x1a\n";
  s += std::string("\0\0\0\x0dIHDR", 8);
  for (uint32_t v : {w, h})
    for (int sh = 24; sh >= 0; sh -= 8) s += (char)((v >> sh) & 255);
  return s + std::string("\x08\x06\0\0\0", 5);
}

// Layout text with n windows each inside the one before: built as text, since a
// nested document is what the reader must survive.
std::string nested_windows(int n) {
  std::string s = R"({"resolution":{"width":100,"height":100})";
  for (int i = 0; i < n; ++i) s += R"(,"window__1":{"position":{"left":0,"top":0,"width":10,"height":10})";
  return s + std::string((size_t)n, '}') + "}";
}

Json box(int l, int t, int w, int h) { return {{"left", l}, {"top", t}, {"width", w}, {"height", h}}; }

Json text(int id, const std::string& cap, Json pos, const std::string& txt, int align = 36) {
  return {{"id", id},       {"caption", cap}, {"position", pos}, {"alignment", align},
          {"fontSize", 16}, {"text", txt},    {"touchable", false}};
}

// A project that passes every rule: a card of two rows (the second with an edit
// field), a third row on the page, a list, one picture of the right size.
struct ProjectFixture : ::testing::Test {
  std::string root, out;
  Json doc;
  std::string logic =
      "// onEditTextChanged_Nothing(\n"
      "static bool onButtonClick_ButtonRow1(TVButton *pButton) { return false; }\n"
      "static void onEditTextChanged_EditRow2Box(const std::string &text) {}\n";

  void SetUp() override {
    root = temp_dir();
    doc = {{"id", 0}, {"position", box(0, 0, 480, 272)}, {"resolution", {{"width", 480}, {"height", 272}}},
           {"backgroundColor", 15790320}};
    doc["textview__1"] = text(50001, "Title", box(0, 0, 480, 40), "Settings", 37);
    Json card = {{"id", 110001}, {"caption", "Card"}, {"position", box(16, 48, 448, 120)}, {"visible", true}};
    card["textview__2"] = text(50002, "TextRow1Label", box(12, 14, 200, 20), "ABCD");
    card["textview__3"] = text(50003, "ImageRow1Chevron", box(424, 16, 8, 16), "", 37);
    card["textview__3"]["backgroundPic"] = "images/chev_8x16.png";
    card["button__1"] = {{"id", 20001}, {"caption", "ButtonRow1"}, {"position", box(0, 0, 448, 48)},
                         {"touchable", true}};
    card["textview__4"] = text(50004, "TextRow2Label", box(12, 62, 200, 20), "EFGH");
    card["edittext__1"] = text(51001, "EditRow2Box", box(12, 84, 424, 30), "");
    card["edittext__1"]["hintText"] = "AB";
    card["edittext__1"]["touchable"] = true;
    doc["window__1"] = card;
    doc["textview__5"] = text(50005, "TextRow3Label", box(28, 176, 200, 20), "IJKL");
    Json sub = {{"id", 24001}, {"caption", "ItemSubChevron"}, {"position", box(400, 8, 8, 16)},
                {"picTab", {{"pic0", "images/chev_8x16.png"}}}, {"text", ""}};
    doc["listview__1"] = {{"id", 80001}, {"caption", "List"}, {"position", box(16, 200, 448, 67)}, {"rows", 2},
                          {"rowSpacing", 0},
                          {"item", {{"caption", "Item"}, {"position", box(0, 0, 448, 33)}, {"subItem", {sub}}}}};
  }
  void TearDown() override { fs::remove_all(root); }

  void write_all() {
    for (const char* d : {"/ui", "/resources/images", "/src/logic"}) fs::create_directories(root + d);
    std::ofstream(root + "/ui/main.json") << doc.dump(2);
    std::ofstream(root + "/src/logic/mainLogic.cc") << logic;
    gen_res::save_png(gen_res::Image(8, 16, {0, 0, 0, 255}), root + "/resources/images/chev_8x16.png");
  }

  // Runs the checks over the project; the output goes to out.
  int run(bool write = true) {
    if (write) write_all();
    ::testing::internal::CaptureStdout();
    int status = tools::check_all_main({root});
    out = ::testing::internal::GetCapturedStdout();
    return status;
  }

  // Runs and expects exactly the given rules to fail (a "[X] #N" line each); the output is in out.
  void expect_failing(std::initializer_list<int> rules) {
    EXPECT_EQ(run(), rules.size() ? 1 : 0) << out;
    for (int n : {5, 6, 7, 8, 9, 11, 13, 15, 21, 22, 27, 29, 36, 37}) {
      bool want = std::find(rules.begin(), rules.end(), n) != rules.end();
      std::string x = "[X] #" + std::to_string(n) + " ", ok = "[OK] #" + std::to_string(n) + " ";
      EXPECT_EQ(out.find(x) != std::string::npos, want) << "rule " << n << "\n" << out;
      EXPECT_EQ(out.find(ok) != std::string::npos, !want) << "rule " << n << "\n" << out;
    }
  }
};

TEST_F(ProjectFixture, CleanProjectPassesEveryRuleWithSectionHeads) {
  expect_failing({});
  EXPECT_NE(out.find("== 5 输入框回调 ==\n"), std::string::npos);
  EXPECT_NE(out.find("== 13 文本装得下 ==\n"), std::string::npos);
  EXPECT_NE(out.find("[OK] check_all 全部通过：17 条规则"), std::string::npos);
  EXPECT_NE(out.find("[OK] #22 1 张图都有布局引用\n"), std::string::npos) << out;
}

// Pictures no layout names are warnings that say what compose build --prune does with
// them: it removes only those a build wrote, as the build wrote them.
TEST_F(ProjectFixture, PicturesNoLayoutNamesAreWarningsThatSayWhatPruneDoes) {
  write_all();
  const std::string images = root + "/resources/images/";
  gen_res::save_png(gen_res::Image(2, 2), images + "built.png");
  gen_res::save_png(gen_res::Image(3, 3), images + "edited.png");
  gen_res::save_png(gen_res::Image(4, 4), images + "own.png");
  fs::create_directories(root + "/.compose");
  std::ofstream(root + "/.compose/build.json")
      << Json{{"format", 1},
                  {"pages", Json::object()},
                  {"written",
                   {{"built.png", ub::file_digest(images + "built.png")},
                    {"chev_8x16.png", ub::file_digest(images + "chev_8x16.png")},
                    {"edited.png", "0000000000000000"}}}}
             .dump();
  fs::create_symlink(images + "own.png", images + "link.png");  // not a plain file: never removed, not listed
  EXPECT_EQ(run(false), 0) << out;
  EXPECT_NE(out.find("== 22 没有布局引用的图片 ==\n"
                     "[!] #22 resources/images/built.png 没有布局引用 → compose build --prune 会删掉它\n"
                     "[!] #22 resources/images/edited.png 没有布局引用 → 构建写出后被改过，--prune 不删\n"
                     "[!] #22 resources/images/own.png 没有布局引用 → 不是 compose build 写出的，--prune 不删\n"
                     "[OK] #22 1 张图有布局引用，3 张没有（--prune 会删 1 张）\n"),
            std::string::npos)
      << out;
  // A layout that cannot be read may name any picture: nothing is listed.
  std::ofstream(root + "/ui/broken.json") << "{";
  EXPECT_EQ(run(false), 1);
  EXPECT_NE(out.find("[!] #22 ui/broken.json 读不了（见 #9）→ 无从判断哪些图没有布局引用；compose build --prune 此时一张也不删\n"),
            std::string::npos)
      << out;
  EXPECT_EQ(out.find("built.png"), std::string::npos) << out;
}

// A callback counts only outside comments and only under its whole name.
TEST_F(ProjectFixture, CallbacksMustBeDefinedOutsideCommentsUnderTheirWholeName) {
  logic = "// static void onEditTextChanged_EditRow2Box(const std::string &t) {}\n"
          "static bool onButtonClick_ButtonRow10(TVButton *p) { return false; }\n";
  expect_failing({5, 8});
  EXPECT_NE(out.find("缺 onEditTextChanged_EditRow2Box"), std::string::npos);
}

// Layouts are flat and of one resolution, or each in the folder of its resolution;
// never both kinds in one project.
TEST_F(ProjectFixture, LayoutsAreReadableAndAgreeOnTheirResolutions) {
  Json wide = doc;
  wide["resolution"] = {{"width", 800}, {"height", 480}};
  auto layouts = [&](std::vector<std::pair<std::string, std::string>> files) {
    fs::remove_all(root + "/ui");
    write_all();
    fs::remove(root + "/ui/main.json");
    for (const auto& [rel, text] : files) {
      fs::create_directories(fs::path(root + "/" + rel).parent_path());
      std::ofstream(root + "/" + rel) << text;
    }
    run(false);
  };
  // Flat: one resolution passes (the line the packing step's projects always had).
  layouts({{"ui/main.json", doc.dump()}, {"ui/other.json", doc.dump()}});
  EXPECT_NE(out.find("[OK] #9 2 个布局，扁平单分辨率 480x272\n"), std::string::npos) << out;
  layouts({{"ui/main.json", doc.dump()}, {"ui/wide.json", wide.dump()}, {"ui/broken.json", "{ not json"}});
  EXPECT_NE(out.find("[X] #9 ui/broken.json 读不了：no valid JSON: [json.exception.parse_error.101] parse error at line 1, "
                     "column 4"),
            std::string::npos) << out;
  EXPECT_NE(out.find("[X] #9 布局分辨率不一：480x272：ui/main.json；800x480：ui/wide.json"), std::string::npos) << out;
  // Resolution folders: each layout of its folder's resolution, the folders of any.
  logic += "static bool onButtonClick_Far(TVButton *p) { return false; }\n";
  layouts({{"ui/480x272/main.json", doc.dump()}, {"ui/800x480/main.json", wide.dump()}});
  EXPECT_NE(out.find("[OK] #9 2 个布局，各在其分辨率目录：480x272、800x480\n"), std::string::npos) << out;
  layouts({{"ui/480x272/main.json", doc.dump()}, {"ui/800x480/main.json", doc.dump()}});
  EXPECT_NE(out.find("[X] #9 ui/800x480/main.json 分辨率 480x272 ≠ 所在目录 800x480"), std::string::npos) << out;
  EXPECT_EQ(out.find("[X] #9 ui/480x272/"), std::string::npos) << out;
  // Both kinds in one project.
  layouts({{"ui/main.json", doc.dump()}, {"ui/480x272/main.json", doc.dump()}});
  EXPECT_NE(out.find("[X] #9 扁平布局与分辨率目录混用：ui/main.json；ui/480x272/"), std::string::npos) << out;
  fs::remove_all(root + "/ui");
  EXPECT_EQ(run(false), 1);
  EXPECT_NE(out.find("[X] #9 ui/ 下没有布局文件"), std::string::npos);
}

// The project check refuses exactly the base set the composer refuses, radio buttons included.
TEST_F(ProjectFixture, ForbiddenCharactersAreTheBaseSet) {
  doc["radiogroup__1"] = {{"id", 94001}, {"caption", "Group"}, {"position", box(300, 240, 100, 30)},
                          {"visible", false}, {"radiobuttons", {{{"caption", "Opt1"}, {"text", ""}}}}};
  for (char32_t ch : ub::kForbiddenChars) {
    const std::string c = ub::utf8_encode(std::u32string(1, ch));
    doc["radiogroup__1"]["radiobuttons"][0]["text"] = "IJ" + c;
    expect_failing({11});
    EXPECT_NE(out.find("Opt1」.text = 「IJ" + c + "」 含字库外字符 " + c + " "), std::string::npos) << out;
  }
}

// Every text of the document is scanned, wherever it stands and whatever comes after it in
// its record; findings come in document order (a record before what it holds, its own
// texts in the order text, hintText, passwordChar); a key given twice counts with its last value.
TEST(CheckAllScan, ForbiddenCharactersAnywhereInDocumentOrder) {
  const std::string root = temp_dir();
  fs::create_directories(root + "/ui");
  std::ofstream(root + "/ui/main.json") << R"({"resolution": {"width": 100, "height": 100},
    "window__1": {"caption": "W", "textview__1": {"position": {"left": 0}, "colorTab": {"color0": 1},
                                                  "passwordChar": "●", "text": "a★", "caption": "T"},
                  "hintText": "h■", "text": "b▶"},
    "textview__2": {"text": "x★", "text": "ok"},
    "junk": {"deeper": [{"text": "c…", "caption": "J"}]}})";
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(tools::check_all_main({root}), 1);
  const std::string out = ::testing::internal::GetCapturedStdout();
  const std::string lines[] = {
      "[X] #11 ui/main.json window__1「W」.text = 「b▶」 含字库外字符 ▶ → 改用 ASCII 写法\n"
      "[X] #11 ui/main.json window__1「W」.hintText = 「h■」 含字库外字符 ■ → 改用 ASCII 写法\n"
      "[X] #11 ui/main.json window__1.textview__1「T」.text = 「a★」 含字库外字符 ★ → 改用 ASCII 写法\n"
      "[X] #11 ui/main.json window__1.textview__1「T」.passwordChar = 「●」 含字库外字符 ● → 改用 ASCII 写法\n"
      "[X] #11 ui/main.json junk.deeper[0]「J」.text = 「c…」 含字库外字符 … → 改用 ASCII 写法\n"};
  EXPECT_NE(out.find(lines[0]), std::string::npos) << out;
  EXPECT_EQ(out.find("x★"), std::string::npos) << out;
  fs::remove_all(root);
}

TEST_F(ProjectFixture, TextFitAndMarginUseTheEstimate) {
  // "ABCD" at 16 px, left-aligned: estimate 62 x 20; 1.05 x 62 = 65.1.
  doc["textview__1"] = text(50001, "Title", box(0, 0, 66, 20), "ABCD");
  expect_failing({});
  doc["textview__1"]["position"]["width"] = 65;
  expect_failing({36});
  EXPECT_NE(out.find("盒宽 65 < 估算 62 ×1.05 = 65.1"), std::string::npos) << out;
  doc["textview__1"]["position"]["width"] = 61;
  expect_failing({13, 36});
  doc["textview__1"]["position"]["width"] = 200;
  doc["textview__1"]["position"]["height"] = 19;
  expect_failing({13});
  EXPECT_NE(out.find("需 ≥62x20，盒 200x19"), std::string::npos) << out;
  // Right alignment drops the 8 px allowance: 54 x 1.05 = 56.7; hints count as text.
  doc["textview__1"] = text(50001, "Title", box(0, 0, 57, 40), "ABCD", 38);
  expect_failing({});
  doc["window__1"]["edittext__1"]["hintText"] = std::string(60, 'W');
  expect_failing({13, 36});
}

// One change to the clean project each, failing exactly one rule with its message.
TEST_F(ProjectFixture, EachFindingNamesItsControls) {
  struct Case {
    std::function<void()> change;
    int rule;
    const char* expect;
  };
  const Case cases[] = {
      {[&] { doc["textview__5"]["caption"] = "TextRow1Label"; }, 6, "出现 2 次：textview__2, textview__5"},
      {[&] { doc["window__1"]["textview__3"]["position"]["height"] = 15; }, 21, "图 images/chev_8x16.png 8x16 ≠ 盒 8x15"},
      {[&] { doc["listview__1"]["item"]["subItem"][0]["picTab"]["pic0"] = "images/gone.png"; }, 21,
       "subItem[0].picTab.pic0 缺图 images/gone.png"},
      {[&] { doc["listview__1"]["item"]["subItem"][0]["picTab"]["pic0"] = "images/../../etc/passwd"; }, 21,
       "越出 resources/images"},
      // The page-level row matches the rows inside the card by its absolute left edge.
      {[&] { doc["textview__5"]["position"]["left"] = 12; }, 27,
       "textview__5「TextRow3Label」 与行族（3 行）不齐：left 12 ≠ 28"},
      {[&] { doc["textview__5"]["alignment"] = 37; }, 27, "alignment 37 ≠ 36"},
      {[&] { doc["window__1"]["textview__4"]["position"]["top"] = 80; }, 27,
       "文本压在 edittext__1「EditRow2Box」(edittext) 上 200x16 px"},
      {[&] { doc["listview__1"]["rowSpacing"] = 1; }, 37, "项高 33 ≠ int(67/2)−1 = 32"},
      {[&] {
         doc["button__9"] = {{"id", 20009}, {"caption", "Over"}, {"position", box(0, 40, 100, 20)}};
         logic += "static bool onButtonClick_Over(TVButton *p) { return false; }\n";
       },
       15, "ButtonRow1」(button) 被后来的可触控件 button__9「Over」(button) 盖住 84x12 px @16,48"},
      {[&] {
         doc["window__1"]["textview__9"] = text(50009, "Badge", box(430, 10, 8, 16), "", 37);
         doc["window__1"]["textview__9"]["backgroundPic"] = "images/chev_8x16.png";
       },
       29, "被后来的装饰 textview__9「Badge」(textview)"},
  };
  const Json clean = doc;
  const std::string clean_logic = logic;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expect);
    doc = clean;
    logic = clean_logic;
    c.change();
    expect_failing({c.rule});
    EXPECT_NE(out.find(c.expect), std::string::npos) << out;
  }
  // The list item of the engine's height passes.
  doc = clean;
  doc["listview__1"]["rowSpacing"] = 1;
  doc["listview__1"]["item"]["position"]["height"] = 32;
  expect_failing({});
}

TEST_F(ProjectFixture, HiddenOrScrolledAwayControlsCoverNothing) {
  doc["window__9"] = {{"id", 110009}, {"caption", "Dialog"}, {"position", box(0, 0, 480, 272)}, {"visible", false}};
  doc["window__9"]["button__9"] = {{"id", 20009}, {"caption", "Ok"}, {"position", box(0, 0, 480, 272)}};
  // A button inside a scroll window, below its visible part.
  doc["scrollwindow__1"] = {{"id", 120001}, {"caption", "Scroll"}, {"position", box(0, 0, 480, 40)}};
  doc["scrollwindow__1"]["button__10"] = {{"id", 20010}, {"caption", "Far"}, {"position", box(0, 60, 480, 40)}};
  logic += "static bool onButtonClick_Ok(TVButton *p) { return false; }\n"
           "static bool onButtonClick_Far(TVButton *p) { return false; }\n";
  expect_failing({});
}

// Hostile projects: each is a finding with its message, never a crash or a read
// outside the project.
TEST_F(ProjectFixture, HostileLayoutsAreFindings) {
  const std::string outside = temp_dir();
  gen_res::save_png(gen_res::Image(8, 16), outside + "/chev.png");
  std::ofstream(outside + "/main.json") << doc.dump();
  std::ofstream(outside + "/mainLogic.cc") << logic;
  struct Case {
    const char* name;
    std::function<void()> plant;  // after the clean project is written
    const char* expect;
  };
  const std::string img = root + "/resources/images/chev_8x16.png";
  auto save = [&](const std::string& text) { std::ofstream(root + "/ui/main.json") << text; };
  const Case cases[] = {
      {"20,000 nested windows", [&] { save(nested_windows(20000)); },
       "[X] #9 ui/main.json 读不了：window__1: controls nest deeper than 100 levels"},
      {"picture link out of the project", [&] { fs::remove(img); fs::create_symlink(outside + "/chev.png", img); },
       "图片引用「images/chev_8x16.png」经符号链接越出 resources/images"},
      {"picture reference with ..", [&] { doc["window__1"]["textview__3"]["backgroundPic"] = "images/../../x.png";
                                          save(doc.dump()); },
       "图片引用「images/../../x.png」越出 resources/images"},
      {"30000 x 30000 picture", [&] { std::ofstream(img, std::ios::binary) << png_header(30000, 30000); },
       "图 images/chev_8x16.png 30000x30000 超过边长上限 8192"},
      {"layout link out of the project",
       [&] { fs::remove(root + "/ui/main.json"); fs::create_symlink(outside + "/main.json", root + "/ui/main.json"); },
       "[X] #9 ui/main.json 读不了：a symbolic link leading outside the project"},
      {"logic link out of the project",
       [&] { fs::remove(root + "/src/logic/mainLogic.cc");
             fs::create_symlink(outside + "/mainLogic.cc", root + "/src/logic/mainLogic.cc"); },
       "缺 onButtonClick_ButtonRow1：没有 src/logic/mainLogic.cc"},
      {"list as font size", [&] { doc["textview__1"]["fontSize"] = Json::array({1, 2}); save(doc.dump()); },
       "读不了的布局内容：textview__1: fontSize is not a number (a list)"},
      {"number beyond range", [&] { doc["textview__1"]["position"]["left"] = 1e300; save(doc.dump()); },
       "[X] #9 ui/main.json 读不了：textview__1.position: left is out of range (1e+300)"},
  };
  const Json clean = doc;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    fs::remove_all(root);
    doc = clean;
    write_all();
    c.plant();
    EXPECT_EQ(run(false), 1);
    EXPECT_NE(out.find(c.expect), std::string::npos) << out;
  }
  fs::remove_all(outside);
}

// 20,000 buttons in a grid, each with its callback, none covering another.
TEST_F(ProjectFixture, TwentyThousandButtonsAreAllCountedAndUncovered) {
  doc = {{"resolution", {{"width", 800}, {"height", 480}}}};
  logic.clear();
  for (int i = 0; i < 20000; ++i) {
    std::string cap = "B" + std::to_string(i);
    doc["button__" + std::to_string(i)] = {{"caption", cap}, {"position", box(i % 200 * 4, i / 200 * 4, 4, 4)}};
    logic += "static bool onButtonClick_" + cap + "(TVButton *p) { return false; }\n";
  }
  write_all();
  EXPECT_EQ(run(false), 0) << out;
  EXPECT_NE(out.find("[OK] #15 20000 个可触控件都没被可触控件盖住"), std::string::npos) << out;
  EXPECT_NE(out.find("[OK] #8 20000 个按钮都有"), std::string::npos) << out;
}

// A layout that repeats a control id fails #7, which names the id and every key holding it.
TEST_F(ProjectFixture, RepeatedControlIdsFail) {
  doc["window__1"]["textview__4"]["id"] = 50002;  // the id of textview__2 in the same card
  doc["textview__5"]["id"] = 50002;
  expect_failing({7});
  EXPECT_NE(out.find("[X] #7 ui/main.json id 50002 出现 3 次：textview__2, textview__4, textview__5\n"), std::string::npos)
      << out;
  // Ids of the same number in two pages do not clash; a page id above the signed range is its own.
  doc["textview__5"]["id"] = 50005;
  doc["window__1"]["textview__4"]["id"] = 18446744073709551615ULL;
  doc["listview__1"]["id"] = -1;
  expect_failing({});
}

// "图 == 盒" with one allowance: a box of no height shows a picture one pixel high of its
// width (and a box of no width one a pixel wide); nothing looser.
TEST_F(ProjectFixture, AnEmptyBoxTakesAPictureOfOnePixel) {
  struct Case {
    int bw, bh, pw, ph;
    bool ok;
  };
  const Case cases[] = {{768, 0, 768, 1, true},  {0, 20, 1, 20, true},  {768, 0, 768, 2, false},
                        {768, 0, 767, 1, false}, {0, 20, 1, 21, false}, {0, 0, 1, 1, false},
                        {768, 1, 768, 1, true},  {768, 1, 768, 0, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.bw) + "x" + std::to_string(c.bh) + " box, " + std::to_string(c.pw) + "x" +
                 std::to_string(c.ph) + " picture");
    doc["textview__9"] = text(50009, "Sep", box(0, 269, c.bw, c.bh), "", 37);
    doc["textview__9"]["backgroundPic"] = "images/sep.png";
    write_all();
    if (c.ph > 0) gen_res::save_png(gen_res::Image(c.pw, c.ph, {0, 0, 0, 255}), root + "/resources/images/sep.png");
    else std::ofstream(root + "/resources/images/sep.png", std::ios::binary) << png_header(c.pw, 0);
    EXPECT_EQ(run(false), c.ok ? 0 : 1) << out;
    EXPECT_EQ(out.find("[X] #21 ui/main.json textview__9「Sep」.backgroundPic") != std::string::npos, !c.ok) << out;
  }
}

// One finding per covered control, naming the first later control that covers it, so a
// pile of controls on one spot is as many findings as controls, not pairs.
TEST_F(ProjectFixture, ACoveredControlIsOneFindingNamingItsFirstCoverer) {
  for (int i = 0; i < 3; ++i) {
    const std::string cap = "Over" + std::to_string(i);
    doc["button__" + std::to_string(9 + i)] = {{"id", 20009 + i}, {"caption", cap}, {"position", box(0, 40, 100, 20)}};
    logic += "static bool onButtonClick_" + cap + "(TVButton *p) { return false; }\n";
  }
  expect_failing({15});
  EXPECT_NE(out.find("[X] #15 ui/main.json button__1「ButtonRow1」(button) 被后来的可触控件 button__9「Over0」(button) 盖住"),
            std::string::npos) << out;
  EXPECT_NE(out.find("button__9「Over0」(button) 被后来的可触控件 button__10「Over1」"), std::string::npos) << out;
  EXPECT_NE(out.find("button__10「Over1」(button) 被后来的可触控件 button__11「Over2」"), std::string::npos) << out;
  EXPECT_NE(out.find("[X] check_all FAIL：1 条规则不过（#15），[X] 3 处"), std::string::npos) << out;
}

// Layouts that are no usable JSON, each a #9 finding with a message that says where.
TEST_F(ProjectFixture, MalformedLayoutsAreLocatedFindings) {
  // The clean layout on line 1, then "junk": on line 2 (the value from column 9).
  auto with_junk = [&](const std::string& junk) {
    std::string t = doc.dump();
    return t.substr(0, t.size() - 1) + ",\n\"junk\": " + junk + "}";
  };
  const std::pair<std::string, std::string> cases[] = {
      // 400,000 arrays one inside the other: refused at once, not walked level by level.
      {with_junk(std::string(400000, '[') + std::string(400000, ']')),
       "读不了：no valid JSON: the layout nests deeper than 1000 levels at line 2, column 1009"},
      {with_junk("[1, 2 3]"), "读不了：no valid JSON: [json.exception.parse_error.101] parse error at line 2, column 15"},
      {with_junk("\"\\ud800\""), "parse error at line 2, column 16: syntax error while parsing value - invalid string"},
      {doc.dump() + " {}", "parse error at line 1, column "},
      {R"({"resolution": {"width": 100, "height": 100}, "window__1": {"textview__1": {}, "textview__1": {}}})",
       "读不了：textview__1 appears twice in window__1"},
      {"[]", "读不了：the layout is not a JSON object"},
  };
  for (const auto& [text, expect] : cases) {
    SCOPED_TRACE(expect);
    write_all();
    std::ofstream(root + "/ui/main.json") << text;
    EXPECT_EQ(run(false), 1);
    EXPECT_NE(out.find("[X] #9 ui/main.json 读不了："), std::string::npos) << out.substr(0, 2000);
    EXPECT_NE(out.find(expect), std::string::npos) << out.substr(0, 2000);
  }
}

// Counts of findings do not wrap: 2^32 of them still fail the run.
TEST(CheckReport, CountsBeyondThirtyTwoBitsStillFail) {
  std::ostringstream sink;
  check::Report report(sink);
  report.section(15, "x");
  report.count_fails(1ULL << 32);
  EXPECT_EQ(report.finish(), 1);
  EXPECT_NE(sink.str().find("另有 4294967256 处未列出"), std::string::npos) << sink.str();
  EXPECT_NE(sink.str().find("[X] 4294967296 处"), std::string::npos) << sink.str();
}

TEST(CheckAllArgs, UsageAndMissingProject) {
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(tools::check_all_main({}), 2);
  EXPECT_EQ(tools::check_all_main({"a", "b"}), 2);
  ::testing::internal::GetCapturedStderr();
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(tools::check_all_main({"/nonexistent/project"}), 1);
  EXPECT_NE(::testing::internal::GetCapturedStdout().find("[X] check_all：项目目录不存在"), std::string::npos);
}

TEST(CheckAllLogic, CommentsAreBlankedButStringsKept) {
  std::string code = "a(/* onX( */); // onY(\nconst char* s = \"// onZ(\"; onW (1);";
  std::string stripped = check::strip_comments(code);
  EXPECT_FALSE(check::defines_callback(stripped, "onX"));
  EXPECT_FALSE(check::defines_callback(stripped, "onY"));
  EXPECT_TRUE(check::defines_callback(stripped, "onW"));
  EXPECT_EQ(stripped.size(), code.size());
}

}  // namespace
