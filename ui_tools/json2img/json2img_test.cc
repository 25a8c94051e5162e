#include "json2img/json2img.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <functional>
#include <fstream>

#include "base/values.h"
#include "gen_res/image.h"
#include "json2img/layout_model.h"
#include "json2img/pictures.h"
#include "json2img/text_painter.h"

namespace fs = std::filesystem;
using gen_res::Rgba;

namespace {

std::string temp_dir() {
  std::string tmpl = (fs::temp_directory_path() / "ub_json2img_XXXXXX").string();
  return mkdtemp(tmpl.data()) ? tmpl : "";
}

Json box(int l, int t, int w, int h) { return {{"left", l}, {"top", t}, {"width", w}, {"height", h}}; }

Rgba px(const gen_res::Image& img, int x, int y) {
  const uint8_t* p = img.at(x, y);
  return {p[0], p[1], p[2], p[3]};
}

const Rgba kGround{240, 240, 240, 255};

struct RenderFixture : ::testing::Test {
  std::string root;
  Json doc;
  gen_res::Image img;
  std::string out;

  void SetUp() override {
    root = temp_dir();
    fs::create_directories(root + "/ui");
    fs::create_directories(root + "/resources/images");
    doc = {{"id", 0}, {"resolution", {{"width", 200}, {"height", 120}}}, {"backgroundColor", 0xF0F0F0}};
  }
  void TearDown() override { fs::remove_all(root); }

  void picture(const std::string& name, int w, int h, Rgba c) {
    gen_res::save_png(gen_res::Image(w, h, c), root + "/resources/images/" + name);
  }

  // Renders doc; returns the exit status, the picture in img and stdout in out.
  int render(std::vector<std::string> extra = {}) {
    std::ofstream(root + "/ui/main.json") << doc.dump(2);
    std::vector<std::string> args{root + "/ui/main.json", "--page", "main", "--out", root + "/ui/main.render.png"};
    args.insert(args.end(), extra.begin(), extra.end());
    ::testing::internal::CaptureStdout();
    int status = tools::json2img_main(args);
    out = ::testing::internal::GetCapturedStdout();
    if (status == 0) img = gen_res::load_png(root + "/ui/main.render.png");
    return status;
  }
};

TEST_F(RenderFixture, SizeAndControlsInZOrderWithNestedPositions) {
  picture("red_10x10.png", 10, 10, {255, 0, 0, 255});
  doc["window__1"] = {{"caption", "Card"}, {"position", box(20, 30, 100, 60)}, {"backgroundColor", 0x0000FF}};
  doc["window__1"]["textview__1"] = {{"caption", "Pic"}, {"position", box(5, 5, 10, 10)}, {"text", ""},
                                     {"backgroundPic", "images/red_10x10.png"}};
  // Drawn after the card: covers its right part.
  doc["textview__2"] = {{"caption", "Over"}, {"position", box(100, 30, 40, 20)}, {"backgroundColor", 0x00FF00}};
  ASSERT_EQ(render(), 0);
  EXPECT_EQ(img.w, 200);
  EXPECT_EQ(img.h, 120);
  EXPECT_EQ(px(img, 0, 0), kGround);
  EXPECT_EQ(px(img, 21, 31), (Rgba{0, 0, 255, 255}));
  EXPECT_EQ(px(img, 25, 35), (Rgba{255, 0, 0, 255}));  // 20 + 5, 30 + 5: relative to the card
  EXPECT_EQ(px(img, 34, 44), (Rgba{255, 0, 0, 255}));
  EXPECT_EQ(px(img, 35, 45), (Rgba{0, 0, 255, 255}));
  EXPECT_EQ(px(img, 110, 40), (Rgba{0, 255, 0, 255}));
  EXPECT_EQ(px(img, 110, 60), (Rgba{0, 0, 255, 255}));
}

TEST_F(RenderFixture, HiddenWindowsAndScrollClipping) {
  doc["window__1"] = {{"caption", "Dialog"}, {"position", box(0, 0, 200, 120)}, {"backgroundColor", 0},
                      {"visible", false}};
  doc["window__1"]["textview__1"] = {{"caption", "Inside"}, {"position", box(0, 0, 50, 50)},
                                     {"backgroundColor", 0xFF0000}};
  doc["scrollwindow__1"] = {{"caption", "Scroll"}, {"position", box(100, 0, 50, 50)}};
  doc["scrollwindow__1"]["textview__2"] = {{"caption", "Long"}, {"position", box(0, 0, 50, 100)},
                                           {"backgroundColor", 0x00FF00}};
  ASSERT_EQ(render({"--report"}), 0);
  EXPECT_EQ(px(img, 10, 10), kGround);
  EXPECT_EQ(px(img, 120, 49), (Rgba{0, 255, 0, 255}));
  EXPECT_EQ(px(img, 120, 50), kGround);
  EXPECT_NE(out.find("window__1 window \"Dialog\" @0,0 200x120 [hidden]"), std::string::npos) << out;
  EXPECT_NE(out.find("controls 4 (hidden 2, clipped 0)"), std::string::npos) << out;
}

TEST_F(RenderFixture, CheckStatesListTemplateAndArgbColours) {
  picture("off.png", 8, 8, {0, 0, 255, 255});
  picture("on.png", 8, 8, {255, 0, 0, 255});
  Json pics = {{"pic0", "images/off.png"}, {"pic1", "images/off.png"}, {"pic2", "images/on.png"}};
  doc["checkbox__1"] = {{"caption", "A"}, {"position", box(0, 0, 8, 8)}, {"checked", false},
                        {"iconPosition", box(0, 0, 8, 8)}, {"picTab", pics}};
  doc["checkbox__2"] = {{"caption", "B"}, {"position", box(10, 0, 8, 8)}, {"checked", true},
                        {"iconPosition", box(0, 0, 8, 8)}, {"picTab", pics}};
  doc["radiogroup__1"] = {{"caption", "G"}, {"position", box(0, 20, 40, 40)}};
  doc["radiogroup__1"]["radiobuttons"] = {
      {{"position", box(0, 0, 40, 20)}, {"checked", false}, {"iconPosition", box(2, 2, 8, 8)}, {"picTab", pics}},
      {{"position", box(0, 20, 40, 20)}, {"checked", true}, {"iconPosition", box(2, 2, 8, 8)}, {"picTab", pics}}};
  Json sub = {{"position", box(10, 5, 10, 10)}, {"backgroundColor", 0x00FF00}};
  doc["listview__1"] = {{"caption", "L"}, {"position", box(100, 0, 100, 90)}, {"rows", 3},
                        {"item", {{"position", box(0, 0, 100, 30)}, {"subItem", {sub}}}}};
  // Half-transparent black over the ground.
  doc["textview__1"] = {{"caption", "Shade"}, {"position", box(50, 100, 10, 10)},
                        {"backgroundColor", (long long)0x80000000}};
  ASSERT_EQ(render({"--report"}), 0);
  EXPECT_EQ(px(img, 4, 4), (Rgba{0, 0, 255, 255}));
  EXPECT_EQ(px(img, 14, 4), (Rgba{255, 0, 0, 255}));
  EXPECT_EQ(px(img, 4, 24), (Rgba{0, 0, 255, 255}));
  EXPECT_EQ(px(img, 4, 44), (Rgba{255, 0, 0, 255}));
  EXPECT_EQ(px(img, 112, 7), (Rgba{0, 255, 0, 255}));  // the template row, item-relative
  EXPECT_EQ(px(img, 112, 37), kGround);                // drawn once, not per row
  Rgba shade = px(img, 55, 105);
  EXPECT_NEAR(shade.r, 120, 1);
  EXPECT_EQ(shade.a, 255);
  EXPECT_NE(out.find("  radiobutton[1] \"\" @0,40 40x20"), std::string::npos) << out;
  EXPECT_NE(out.find("    subItem[0] \"\" @110,5 10x10"), std::string::npos) << out;
}

TEST_F(RenderFixture, TextInColourAlignedInItsBox) {
  doc["textview__1"] = {{"caption", "L"}, {"position", box(0, 0, 200, 40)}, {"text", "汉字"}, {"fontSize", 20},
                        {"alignment", 36}, {"colorTab", {{"color0", 0xFF0000}}}};
  doc["textview__2"] = {{"caption", "R"}, {"position", box(0, 60, 200, 40)}, {"text", "汉字"}, {"fontSize", 20},
                        {"alignment", 38}, {"colorTab", {{"color0", 0x0000FF}}}};
  std::string font = std::string(UB_SOURCE_DIR) + "/components/fonts/fonts/torvo-hans-common.ttf";
  ASSERT_EQ(render({"--report", "--font", font}), 0);
  auto ink = [&](int x0, int x1, int y0, int y1, Rgba c) {
    int n = 0;
    for (int y = y0; y < y1; ++y)
      for (int x = x0; x < x1; ++x) {
        Rgba p = px(img, x, y);
        n += p.r == c.r && p.g == c.g && p.b == c.b;
      }
    return n;
  };
  EXPECT_GT(ink(0, 50, 0, 40, {255, 0, 0, 255}), 20);
  EXPECT_EQ(ink(50, 200, 0, 40, {255, 0, 0, 255}), 0);
  EXPECT_GT(ink(150, 200, 60, 100, {0, 0, 255, 255}), 20);
  EXPECT_EQ(ink(0, 150, 60, 100, {0, 0, 255, 255}), 0);
  EXPECT_NE(out.find("glyph boxes 0"), std::string::npos) << out;
}

TEST_F(RenderFixture, MissingPicturesAndUnusableFontStillRender) {
  doc["textview__1"] = {{"caption", "T"}, {"position", box(0, 0, 200, 40)}, {"text", "中"},
                        {"backgroundPic", "images/nowhere.png"}};
  ::testing::internal::CaptureStderr();
  ASSERT_EQ(render({"--report", "--font", root + "/ui/main.json"}), 0);
  ::testing::internal::GetCapturedStderr();
  EXPECT_NE(out.find("[!] missing picture images/nowhere.png"), std::string::npos) << out;
  EXPECT_NE(out.find("[!] FreeType cannot use the font"), std::string::npos) << out;
  EXPECT_NE(out.find("glyph boxes 1"), std::string::npos) << out;
}

TEST_F(RenderFixture, BadInputGivesAnErrorStatus) {
  ::testing::internal::CaptureStderr();
  doc = Json::object();
  EXPECT_EQ(render(), 1);  // no resolution
  doc = {{"resolution", {{"width", 10}, {"height", 10}}}, {"textview__1", {{"position", {{"left", "x"}}}}}};
  EXPECT_EQ(render(), 1);
  std::ofstream(root + "/ui/bad.json") << "{";
  EXPECT_EQ(tools::json2img_main({root + "/ui/bad.json", "--out", root + "/x.png"}), 1);
  EXPECT_EQ(tools::json2img_main({root + "/ui/none.json", "--out", root + "/x.png"}), 1);
  EXPECT_EQ(tools::json2img_main({root + "/ui/main.json"}), 2);
  EXPECT_EQ(tools::json2img_main({root + "/ui/main.json", "--out", "x.png", "--bogus"}), 2);
  EXPECT_EQ(tools::json2img_main({root + "/ui/main.json", "--out"}), 2);
  std::string err = ::testing::internal::GetCapturedStderr();
  EXPECT_NE(err.find("json2img: the layout has no resolution"), std::string::npos) << err;
  EXPECT_NE(err.find("left is not a number"), std::string::npos) << err;
}

// Hostile layouts: a clear status and message each, never a crash, a read outside
// resources/images or a decode of a picture too large to draw.
TEST_F(RenderFixture, HostileLayouts) {
  const std::string outside = temp_dir();
  gen_res::save_png(gen_res::Image(4, 4, {255, 0, 0, 255}), outside + "/red.png");
  auto pic_at = [&](const std::string& ref) {
    doc["textview__1"] = {{"caption", "P"}, {"position", box(0, 0, 4, 4)}, {"backgroundPic", ref}};
  };
  std::string nested = R"({"resolution":{"width":100,"height":100})";
  for (int i = 0; i < 20000; ++i) nested += R"(,"window__1":{"position":{"width":10,"height":10})";
  nested += std::string(20000, '}') + "}";
  struct Case {
    const char* name;
    std::function<void()> plant;
    int status;
    const char* expect;  // in the report (status 0) or on standard error
  };
  const Case cases[] = {
      {"20,000 nested windows", [&] { doc = Json::parse(nested); }, 1,
       "json2img: window__1: controls nest deeper than 100 levels"},
      {"30000 x 30000 picture",
       [&] {
         std::string h = "\x89PNG\r\n\x1a\n" + std::string("\0\0\0\x0dIHDR\0\0\x75\x30\0\0\x75\x30\x08\x06\0\0\0", 21);
         std::ofstream(root + "/resources/images/huge.png", std::ios::binary) << h;
         pic_at("images/huge.png");
       },
       0, "[!] refused picture images/huge.png: 30000x30000 is over 8192 pixels a side"},
      {"picture link out of the project",
       [&] { fs::create_symlink(outside + "/red.png", root + "/resources/images/link.png"); pic_at("images/link.png"); },
       0, "[!] refused picture images/link.png: leads outside"},
      {"picture reference with ..", [&] { pic_at("images/../../red.png"); }, 0,
       "[!] refused picture images/../../red.png: leads outside"},
      {"list as font size", [&] { pic_at(""); doc["textview__1"]["text"] = "x"; doc["textview__1"]["fontSize"] = {1}; },
       1, "json2img: textview__1: fontSize is not a number (a list)"},
      {"number beyond range", [&] { pic_at(""); doc["textview__1"]["position"]["top"] = -1e300; }, 1,
       "json2img: textview__1.position: top is out of range (-1e+300)"},
      {"colour beyond range", [&] { pic_at(""); doc["textview__1"]["backgroundColor"] = 1e300; }, 0, "controls 1"},
      // The scroll content of a page of tens of thousands of blocks.
      {"content millions of pixels down", [&] { pic_at(""); doc["textview__1"]["position"]["top"] = 5000000; }, 0,
       "controls 1"},
  };
  const Json clean = doc;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    doc = clean;
    c.plant();
    ::testing::internal::CaptureStderr();
    // Written as text: the nested document is what the reader must survive.
    if (c.status) std::ofstream(root + "/ui/main.json") << (c.name[0] == '2' ? nested : doc.dump());
    const int status = c.status ? tools::json2img_main({root + "/ui/main.json", "--out", root + "/x.png", "--report"})
                                : render({"--report"});
    std::string err = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(status, c.status);
    EXPECT_NE((c.status ? err : out).find(c.expect), std::string::npos) << out << err;
    if (status == 0) {
      EXPECT_EQ(px(img, 1, 1), kGround);  // nothing refused was drawn
    }
  }
  fs::remove_all(outside);
}

// A picture is decoded once however many controls name it and however its path is
// spelt; the drawn count stays one per reference, as the report has always counted.
TEST_F(RenderFixture, OnePictureUnderManyNamesIsDecodedOnce) {
  picture("red.png", 8, 8, {255, 0, 0, 255});
  fs::create_directories(root + "/resources/images/sub");
  fs::create_symlink(root + "/resources/images/red.png", root + "/resources/images/sub/alias.png");
  const char* refs[] = {"images/red.png", "red.png", "images/./red.png", "./red.png", "images/sub/alias.png",
                        "sub/alias.png", "images/sub/./alias.png"};
  j2i::Pictures pics(root + "/resources/images");
  for (int twice = 0; twice < 2; ++twice)
    for (const char* ref : refs) {
      auto img = pics.get(ref);
      ASSERT_TRUE(img) << ref;
      EXPECT_EQ(img->w, 8);
    }
  EXPECT_EQ(pics.decoded(), 1);
  EXPECT_EQ(pics.loaded(), 7);
  EXPECT_FALSE(pics.get("images/sub/../red.png"));  // "..": refused, even when it comes back inside
  EXPECT_EQ(pics.refused().size(), 1u);
  // Within a budget of one picture, two pictures drawn in turn are decoded again each time.
  picture("blue.png", 8, 8, {0, 0, 255, 255});
  j2i::Pictures tight(root + "/resources/images", 8 * 8 * 4);
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(tight.get("images/red.png"));
    EXPECT_TRUE(tight.get("images/blue.png"));
  }
  EXPECT_EQ(tight.decoded(), 6);
  EXPECT_EQ(tight.loaded(), 2);
}

// A whole-content preview higher than the pixel limit is refused before any canvas is
// made, naming the height; one within the limit is drawn.
TEST_F(RenderFixture, AFullPreviewBeyondThePixelLimitIsRefused) {
  // 100 pixels wide: at most 671,088 high.
  doc["resolution"] = {{"width", 100}, {"height", 480}};
  doc["scrollwindow__1"] = {{"caption", "Scroll"}, {"position", box(0, 0, 100, 480)}};
  doc["scrollwindow__1"]["textview__1"] = {{"caption", "Far"}, {"position", box(0, 700000, 100, 10)}};
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(render({"--full"}), 1);
  const std::string err = ::testing::internal::GetCapturedStderr();
  EXPECT_NE(err.find("json2img: the full preview would be at least 700010 pixels high (100x700010), over the limit of "
                     "67108864 pixels (671088 high at this width)"),
            std::string::npos)
      << err;
  EXPECT_FALSE(fs::exists(root + "/ui/main.render.png"));
  doc["scrollwindow__1"]["textview__1"]["position"]["top"] = 2000;
  ASSERT_EQ(render({"--full"}), 0);
  EXPECT_EQ(img.h, 2010);
}

// Layouts that are no usable JSON: exit 1, the message saying where.
TEST_F(RenderFixture, MalformedLayoutsNameTheirPlace) {
  const std::pair<std::string, std::string> cases[] = {
      {R"({"resolution": {"width": 10, "height": 10},)" "\n" R"( "textview__1": {"text": "a" "b"}})",
       "is no valid JSON: [json.exception.parse_error.101] parse error at line 2, column 32"},
      {R"({"resolution": {"width": 10, "height": 10}, "junk": )" + std::string(5000, '[') + std::string(5000, ']') + "}",
       "is no valid JSON: the layout nests deeper than 1000 levels at line 1, column"},
      {R"({"resolution": {"width": 10, "height": 10}, "textview__1": {}, "textview__1": {}})",
       "json2img: textview__1 appears twice in the layout's root"},
      {R"({"resolution": {"width": 10, "height": 10}, "textview__1": {"position": {"left": "x"}}} x)",
       "is no valid JSON: [json.exception.parse_error.101] parse error at line 1, column"},
  };
  for (const auto& [text, expect] : cases) {
    SCOPED_TRACE(expect);
    std::ofstream(root + "/ui/main.json") << text;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(tools::json2img_main({root + "/ui/main.json", "--out", root + "/x.png"}), 1);
    const std::string err = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(err.find(expect), std::string::npos) << err;
  }
}

TEST(TextPainter, WithoutFontsEveryGlyphIsABoxAndAlignmentHolds) {
  j2i::TextPainter tp("", "");
  j2i::Canvas cv(100, 20, {255, 255, 255, 255});
  j2i::TextStyle st;
  st.size = 10;
  st.align = 38;
  st.color = {0, 0, 0, 255};
  tp.draw(cv, "a中 b", {0, 0, 100, 20}, st, {0, 0, 100, 20});
  // Widths 6 + 10 + 6 + 6 = 28, right-aligned: nothing left of x = 72; the blank has no box.
  EXPECT_EQ(tp.boxes_drawn(), 3);
  EXPECT_EQ(tp.measure("a中 b", 10, false), 28);
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 72; ++x) ASSERT_EQ(cv.image().at(x, y)[0], 255) << x << "," << y;
}

// A negative colour is no colour; pictures are found for a layout in a size folder too,
// never outside resources/images.
TEST(LayoutModel, ColourAndPictureLookup) {
  EXPECT_FALSE(layout::Color{}.rgba().has_value());
  EXPECT_EQ(layout::Color({0x80102030u, true}).rgba(), (Rgba{0x10, 0x20, 0x30, 0x80}));
  EXPECT_EQ(layout::Color({0x102030u, true}).rgba(), (Rgba{0x10, 0x20, 0x30, 255}));
  EXPECT_EQ(layout::images_dir_for("/p/ui/480x272/main.json"), "/p/resources/images");
  EXPECT_EQ(layout::picture_path("/p/resources/images", "images/a.png"), "/p/resources/images/a.png");
  EXPECT_EQ(layout::picture_path("/p/resources/images", "images/../x.png"), "");
  EXPECT_EQ(layout::picture_path("/p/resources/images", "/etc/passwd"), "");
}

// A title band, a scroll window of 60 px whose content is 150 px high, a bar under it and a
// hidden dialog. The first screen by default; --full grows the scroll window to its content and
// moves what lies below it; --show-hidden draws the dialog but not what is hidden inside it.
TEST_F(RenderFixture, FullAndShowHiddenPreviews) {
  doc["textview__1"] = {{"caption", "Title"}, {"position", box(0, 0, 200, 20)}, {"backgroundColor", 0x0000FF}};
  doc["scrollwindow__1"] = {{"caption", "Scroll"}, {"position", box(0, 20, 200, 60)}};
  doc["scrollwindow__1"]["textview__2"] = {
      {"caption", "Last"}, {"position", box(0, 130, 200, 20)}, {"backgroundColor", 0xFF0000}};
  doc["textview__3"] = {{"caption", "Bar"}, {"position", box(0, 80, 200, 40)}, {"backgroundColor", 0x00FF00}};
  doc["window__1"] = {{"caption", "DialogWindow1"}, {"position", box(0, 0, 200, 120)}, {"visible", false}};
  doc["window__1"]["textview__4"] = {
      {"caption", "DialogPanel"}, {"position", box(50, 30, 100, 40)}, {"backgroundColor", 0xFFFF00}};
  doc["window__1"]["textview__5"] = {
      {"caption", "StillHidden"}, {"position", box(0, 0, 10, 10)}, {"backgroundColor", 0}, {"visible", false}};
  // A panel part of the dialog lies below the scroll window's bottom edge: it stays in its dialog.
  doc["window__1"]["textview__6"] = {
      {"caption", "DialogButton"}, {"position", box(50, 90, 100, 10)}, {"backgroundColor", 0xFF00FF}};
  ASSERT_EQ(render(), 0);
  EXPECT_EQ(img.h, 120);
  EXPECT_EQ(px(img, 100, 100), (Rgba{0, 255, 0, 255}));
  EXPECT_EQ(px(img, 100, 50), kGround);  // the scroll window's empty part, no dialog

  ASSERT_EQ(render({"--full"}), 0);
  // The window grows by 150 - 60 = 90 px; the bar below it moves down by as much.
  EXPECT_EQ(img.h, 120 + 90);
  EXPECT_EQ(px(img, 100, 20 + 135), (Rgba{255, 0, 0, 255}));
  EXPECT_EQ(px(img, 100, 80 + 90 + 5), (Rgba{0, 255, 0, 255}));

  ASSERT_EQ(render({"--full", "--show-hidden"}), 0);
  EXPECT_EQ(px(img, 100, 50), (Rgba{255, 255, 0, 255}));
  EXPECT_EQ(px(img, 5, 5), (Rgba{0, 0, 255, 255}));  // the title, not the hidden black box
  EXPECT_EQ(px(img, 100, 95), (Rgba{255, 0, 255, 255}));
  EXPECT_EQ(px(img, 100, 185), (Rgba{0, 255, 0, 255}));
}

}  // namespace
