#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "page_bench.h"

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


TEST(Composer, RefusesBadFrames) {
  using Change = void (*)(Json&);
  const std::pair<Change, std::string> cases[] = {
      {[](Json& s) { s.erase("resolution"); }, "resolution.width: missing"},
      {[](Json& s) { s["resolution"].erase("height"); }, "resolution.height"},
      {[](Json& s) { s["resolution"]["width"] = "wide"; }, "resolution.width: expected a whole number, got a text 'wide'"},
      {[](Json& s) { s["resolution"]["width"] = true; }, "resolution.width"},
      {[](Json& s) { s["resolution"] = 800; }, "resolution"},
      {[](Json& s) { s["page"] = Json::array({1}); }, "page: expected a mapping, got a list [1]"},
      {[](Json& s) { s["page"]["blocks"] = {{"type", "card"}}; }, "page.blocks: expected a list of blocks"},
      {[](Json& s) { s["page"]["blocks"].push_back("setting_row"); },
       "page.blocks[1]: expected a block (a mapping), got a text 'setting_row'"},
      {[](Json& s) { s["page"]["blocks"][0]["blocks"].push_back(7); }, "page.blocks[0].blocks[1]"},
      {[](Json& s) { s["page"]["blocks"][0]["blocks"] = "rows"; }, "page.blocks[0].blocks"},
  };
  for (const auto& [change, part] : cases) {
    Json spec = ubtest::page_spec(800, 480, Json::parse(R"([{"type": "card", "blocks": [{"type": "setting_row"}]}])"));
    change(spec);
    EXPECT_NE(error_of(spec).find(part), std::string::npos) << part << " -> " << error_of(spec);
  }
  EXPECT_NE(error_of(Json::array()), "");
}

TEST(Composer, ResolutionAsIntegersAndAMissingOrEmptyPage) {
  Json spec = ubtest::page_spec(800, 480);
  spec["resolution"] = {{"width", " 800 "}, {"height", 480.9}};
  Composer c(spec, "main", ubtest::installation());
  EXPECT_EQ(std::pair(c.context().W, c.context().H), std::pair(800, 480));
  EXPECT_FALSE(c.context().blocks.count("_tokens"));
  spec.erase("page");
  EXPECT_EQ(Composer(spec, "main", ubtest::installation()).page(), Json::object());
  spec["page"] = Json::array();
  EXPECT_EQ(Composer(spec, "main", ubtest::installation()).page(), Json::object());
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
  ASSERT_EQ(c.context().blocks.size(), 1u);
  EXPECT_EQ(c.context().blocks.at("setting_row")["from"], "b");
}

TEST(Composer, BrokenLibraryIsAnInputError) {
  // No tokens, a definition without a type, a definition that does not parse.
  for (const char* text : {"", R"({"description": "no type"})", R"({"type": "card",})"}) {
    TempLibrary lib(*text != 0);
    if (*text) lib.put("card.json", text);
    EXPECT_NE(error_of(ubtest::page_spec(480, 272), lib.inst()).find(*text ? "card.json" : "_tokens.json"),
              std::string::npos) << text;
  }
  EXPECT_NE(error_of(ubtest::page_spec(480, 272), {"/nonexistent/blocks", ubtest::required_keys()}), "");
}

TEST(Composer, ColoursAndStates) {
  ubtest::PageBench bench(ubtest::page_spec(800, 480));
  PageContext& c = bench.ctx;
  c.tok["color"]["gradient"] = "linear(...)";
  c.tok["color"]["glass"] = "#11223344";
  Json cols = c.col_int();
  EXPECT_FALSE(cols.contains("gradient"));
  EXPECT_EQ(cols["glass"], 0x44112233);
  EXPECT_THROW(c.col("nope"), InputError);
  EXPECT_THROW(c.sem_color("error"), StopError);
  // Every semantic pair names colour tokens that exist.
  for (const char* s : {"info", "success", "warn", "danger", "ok", "off"}) {
    auto [fg, bg] = c.sem_color(s);
    EXPECT_NO_THROW(c.col(fg));
    EXPECT_NO_THROW(c.col(bg));
  }
}
