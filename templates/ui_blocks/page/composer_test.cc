#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include "page_bench.h"
#include "spec/library.h"

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
  Installation inst() const { return ubtest::installation_of(dir); }
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
  const Installation inst = lib.inst();
  Composer c(ubtest::page_spec(480, 272), "main", inst);
  ASSERT_EQ(c.context().blocks.size(), 1u);
  EXPECT_EQ(c.context().blocks.at("setting_row")["from"], "b");
}

TEST(Composer, BrokenLibraryIsAnInputError) {
  auto error = [](const std::function<void()>& f) -> std::string {
    try {
      f();
    } catch (const InputError& e) {
      return e.what();
    }
    return "";
  };
  // No tokens, a definition without a type, a definition that does not parse.
  for (const char* text : {"", R"({"description": "no type"})", R"({"type": "card",})"}) {
    TempLibrary lib(*text != 0);
    if (*text) lib.put("card.json", text);
    EXPECT_NE(error([&] { lib.inst(); }).find(*text ? "card.json" : "_tokens.json"), std::string::npos) << text;
  }
  EXPECT_NE(error([] { ubtest::installation_of("/nonexistent/blocks"); }), "");
  EXPECT_EQ(error([] { ubtest::installation_of(ubtest::blocks_dir(), Json::array({1})); }),
            "_tokens.json must hold a mapping");
}

TEST(Composer, ColoursAndStates) {
  Json tokens = load_json(ubtest::blocks_dir() + "/_tokens.json");
  tokens["color"]["gradient"] = "linear(...)";
  tokens["color"]["glass"] = "#11223344";
  const Installation inst = ubtest::installation_of(ubtest::blocks_dir(), tokens);
  ubtest::PageBench bench(ubtest::page_spec(800, 480), "main", inst);
  const PageContext& c = bench.ctx;
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

// The library's defaults are the only ones: changing one changes the page. A banner without
// a state takes the library's, and its icon, computed from the state, follows.
TEST(Composer, LibraryDefaultsDecideThePage) {
  const Json spec = ubtest::page_spec(800, 480, Json::parse(R"([{"type": "banner", "text": "a"},
      {"type": "list_item", "items": ["x"]}, {"type": "toggle_row", "label": "b"}])"));
  auto pictures = [&](const Installation& inst) {
    std::string names;
    auto c = ubtest::composer(spec, "main", inst);
    c->run();
    for (const auto& [name, a] : c->pictures().all()) names += name + " ";
    return names;
  };
  const std::string shipped = pictures(ubtest::installation());
  EXPECT_NE(shipped.find("bnr_info_"), std::string::npos) << shipped;
  EXPECT_NE(shipped.find("sw_"), std::string::npos) << shipped;

  TempLibrary lib;
  for (const auto& e : fs::directory_iterator(blocks_src()))
    if (e.path().filename() != "_tokens.json") fs::copy_file(e.path(), lib.dir + "/" + e.path().filename().string());
  Json banner = load_json(lib.dir + "/banner.json");
  banner["keys"]["state"]["default"] = "warn";
  lib.put("banner.json", banner.dump());
  Json toggle = load_json(lib.dir + "/toggle_row.json");
  toggle["keys"]["on"]["default"] = false;
  lib.put("toggle_row.json", toggle.dump());
  const Installation changed = lib.inst();
  const std::string warn = pictures(changed);
  EXPECT_NE(warn.find("bnr_warn_"), std::string::npos) << warn;
  EXPECT_NE(warn.find("ic_warning_"), std::string::npos) << warn;
  EXPECT_EQ(warn.find("bnr_info_"), std::string::npos) << warn;
  EXPECT_NE(warn.find("_off.png"), std::string::npos) << warn;  // the switch is off

  // A builder reading a key its library entry leaves out is a library that does not fit.
  Json list = load_json(lib.dir + "/list_item.json");
  list["keys"].erase("rowSpacing");
  lib.put("list_item.json", list.dump());
  try {
    ubtest::composer(spec, "main", lib.inst())->run();
    ADD_FAILURE() << "no refusal";
  } catch (const InputError& e) {
    EXPECT_NE(std::string(e.what()).find("block library: list_item does not declare the key \"rowSpacing\""),
              std::string::npos)
        << e.what();
  }
}
