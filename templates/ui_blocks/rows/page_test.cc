// Whole pages of the row family, composed at the supported sizes. Some sizes are
// compared with reviewed layout files (ubtest::expect_golden; UB_UPDATE_EXPECTED=1
// writes them anew).
#include <cstdlib>
#include <filesystem>
#include <set>
#include <tuple>

#include "checks/document_scans.h"
#include "rows/row_testing.h"

using namespace ub;

namespace {

std::string testdata(const std::string& name) {
  return ubtest::source_dir() + "/templates/ui_blocks/rows/testdata/" + name;
}

std::unique_ptr<Composer> composer(const std::string& name, int w, int h) {
  Json spec = Json::parse(read_file(testdata(name + ".spec.json")));
  spec["resolution"] = {{"width", w}, {"height", h}};
  return ubtest::composer(spec);
}

}  // namespace

TEST(RowPages, ComposeAndPassEverySelfCheckAtEverySize) {
  for (const char* name : {"settings", "icons"}) {
    for (auto [w, h] : rowtest::kSizes) {
      auto c = composer(name, w, h);
      Json doc;
      ASSERT_NO_THROW(doc = c->document()) << name << " " << w << "x" << h;
      // One gap for the whole family, and no row wider than its container.
      std::set<int> gaps;
      for (const auto& [cap, gap] : c->row_family().row_gaps().value()) gaps.insert(gap);
      EXPECT_EQ(gaps.size(), 1u) << name << " " << w << "x" << h;
      EXPECT_TRUE(duplicate_captions(doc).empty());
    }
  }
}

TEST(RowPages, MatchReviewedLayouts) {
  const std::vector<std::tuple<std::string, int, int>> cases = {
      {"settings", 480, 272}, {"settings", 1024, 600}, {"icons", 320, 240}, {"icons", 800, 480}};
  for (const auto& [name, w, h] : cases)
    ubtest::expect_golden(dump_layout(composer(name, w, h)->document()), testdata(cat(name, "_", w, "x", h, ".json")));
}
