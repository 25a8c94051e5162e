#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "compose.h"
#include "test_support.h"

using namespace ub;
namespace fs = std::filesystem;

namespace {

std::string blocks_src() { return ubtest::source_dir() + "/templates/ui_blocks/blocks"; }

// A private block library: the shipped tokens plus the given files.
struct TempLibrary {
  std::string dir = ubtest::temp_dir("lib");
  explicit TempLibrary(bool with_tokens = true) {
    if (with_tokens) fs::copy_file(blocks_src() + "/_tokens.json", dir + "/_tokens.json");
  }
  Installation inst() const { return {dir, ubtest::required_keys()}; }
  void put(const std::string& name, const std::string& text) const { std::ofstream(dir + "/" + name) << text; }
  ~TempLibrary() { fs::remove_all(dir); }
};

std::string error_of(const Json& spec, const Installation& inst = ubtest::installation()) {
  try {
    Composer c(spec, "main", inst);
  } catch (const InputError& e) {
    return e.what();
  }
  return "";
}

}  // namespace

TEST(Composer, ReadsResolutionAsIntegers) {
  Json spec = ubtest::page_spec(800, 480);
  spec["resolution"] = {{"width", " 800 "}, {"height", 480.9}};
  Composer c(spec, "main", ubtest::installation());
  EXPECT_EQ(c.W, 800);
  EXPECT_EQ(c.H, 480);
  EXPECT_EQ(c.m.W, 800);
  EXPECT_EQ(c.m.row_h, 56);
  EXPECT_EQ(c.page["title"], "设置");
  EXPECT_TRUE(c.blocks.count("setting_row"));
  EXPECT_FALSE(c.blocks.count("_tokens"));
  EXPECT_EQ(c.seq_, 0);
  EXPECT_EQ(c.sub_, 0);
}

TEST(Composer, RefusesBadFrames) {
  auto with = [](auto change) {
    Json spec = ubtest::page_spec(800, 480, Json::parse(R"([{"type": "card", "blocks": [{"type": "setting_row"}]}])"));
    change(spec);
    return error_of(spec);
  };
  EXPECT_NE(with([](Json& s) { s.erase("resolution"); }).find("resolution.width: missing"), std::string::npos);
  EXPECT_NE(with([](Json& s) { s["resolution"].erase("height"); }).find("resolution.height"), std::string::npos);
  EXPECT_NE(with([](Json& s) { s["resolution"]["width"] = "wide"; }).find("resolution.width: expected a whole number, got a text 'wide'"),
            std::string::npos);
  EXPECT_NE(with([](Json& s) { s["resolution"]["width"] = true; }), "");
  EXPECT_NE(with([](Json& s) { s["resolution"] = 800; }), "");
  EXPECT_NE(with([](Json& s) { s["page"] = Json::array({1}); }).find("page: expected a mapping, got a list [1]"), std::string::npos);
  EXPECT_NE(with([](Json& s) { s["page"]["blocks"] = {{"type", "card"}}; }).find("page.blocks: expected a list of blocks"),
            std::string::npos);
  EXPECT_NE(with([](Json& s) { s["page"]["blocks"].push_back("setting_row"); }).find("page.blocks[1]: expected a block (a mapping), got a text 'setting_row'"),
            std::string::npos);
  EXPECT_NE(with([](Json& s) { s["page"]["blocks"][0]["blocks"].push_back(7); }).find("page.blocks[0].blocks[1]"),
            std::string::npos);
  EXPECT_NE(with([](Json& s) { s["page"]["blocks"][0]["blocks"] = "rows"; }), "");
  EXPECT_NE(error_of(Json::array()), "");
}

TEST(Composer, MissingOrEmptyPageHasNoBlocks) {
  Json spec = ubtest::page_spec(320, 240);
  spec.erase("page");
  EXPECT_EQ(Composer(spec, "main", ubtest::installation()).page, Json::object());
  spec["page"] = Json::array();
  EXPECT_EQ(Composer(spec, "main", ubtest::installation()).page, Json::object());
  spec["page"] = {{"blocks", Json::array()}};
  EXPECT_NO_THROW(Composer(spec, "main", ubtest::installation()));
}

TEST(Composer, LibraryScanSkipsPrivateFilesAndLaterNamesWin) {
  TempLibrary lib;
  lib.put("a_row.json", R"({"type": "setting_row", "from": "a"})");
  lib.put("b_row.json", R"({"type": "setting_row", "from": "b"})");
  lib.put("_icons.json", R"({"type": "icons"})");
  lib.put("notes.txt", "not json");
  Composer c(ubtest::page_spec(480, 272), "main", lib.inst());
  ASSERT_EQ(c.blocks.size(), 1u);
  EXPECT_EQ(c.blocks["setting_row"]["from"], "b");
}

TEST(Composer, BrokenLibraryIsAnInputError) {
  {
    TempLibrary lib(false);
    EXPECT_NE(error_of(ubtest::page_spec(480, 272), lib.inst()).find("_tokens.json"), std::string::npos);
  }
  {
    TempLibrary lib;
    lib.put("card.json", R"({"description": "no type"})");
    EXPECT_NE(error_of(ubtest::page_spec(480, 272), lib.inst()).find("card.json"), std::string::npos);
  }
  {
    TempLibrary lib;
    lib.put("card.json", R"({"type": "card",})");
    EXPECT_NE(error_of(ubtest::page_spec(480, 272), lib.inst()).find("card.json"), std::string::npos);
  }
  EXPECT_NE(error_of(ubtest::page_spec(480, 272), {"/nonexistent/blocks", ubtest::required_keys()}), "");
}

TEST(Composer, ColoursAndStates) {
  Composer c(ubtest::page_spec(800, 480), "main", ubtest::installation());
  c.tok["color"]["gradient"] = "linear(...)";
  c.tok["color"]["glass"] = "#11223344";
  Json cols = c.col_int();
  EXPECT_FALSE(cols.contains("gradient"));
  EXPECT_EQ(cols["glass"], 0x44112233);
  EXPECT_EQ(c.col("page"), hex2int(c.tok_color("page")));
  EXPECT_EQ(c.tcol("scrim", 102).a, 102);
  EXPECT_THROW(c.col("nope"), InputError);
  EXPECT_EQ(c.sem_color("ok"), (std::pair<std::string, std::string>("success", "success1")));
  EXPECT_EQ(c.sem_color("off"), (std::pair<std::string, std::string>("fg2", "page")));
  try {
    c.sem_color("error");
    FAIL();
  } catch (const StopError& e) {
    EXPECT_STREQ(e.what(), "[X] 未知语义状态：error（可用：danger、info、off、ok、success、warn）");
  }
  // Every semantic pair names colour tokens that exist.
  for (const char* s : {"info", "success", "warn", "danger", "ok", "off"}) {
    auto [fg, bg] = c.sem_color(s);
    EXPECT_NO_THROW(c.col(fg));
    EXPECT_NO_THROW(c.col(bg));
  }
}

TEST(Composer, TextBoxWidthRoundsUpWithSlack) {
  Composer c(ubtest::page_spec(800, 480), "main", ubtest::installation());
  EXPECT_EQ(c.text_box_w("", 24), 8);           // 4 * 1.1 = 4.4 -> 8
  EXPECT_EQ(c.text_box_w("A", 10, 38), 28);     // 22 * 1.1 = 24.2 -> 28
  EXPECT_EQ(c.text_box_w("A", 10, 37, 1.0), 32);  // 30 -> 32
  EXPECT_EQ(c.text_box_w("设置", 20), 76);       // 68 * 1.1 = 74.8 -> 76
}
