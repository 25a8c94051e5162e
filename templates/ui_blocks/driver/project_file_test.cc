#include "driver/project_file.h"

#include <gtest/gtest.h>

using namespace ub;

namespace {

std::string problem(const std::string& text) {
  try {
    project_from_json(Json::parse(text), "compose.json", "/p");
  } catch (const InputError& e) {
    return e.what();
  }
  return "(accepted)";
}

}  // namespace

TEST(ProjectFile, PagesWithTheirDefaults) {
  const ProjectFile pf = project_from_json(Json::parse(R"({
    "pages": [{"spec": "pages/oven.json", "page": "oven", "sizes": ["480x272", "800x480"]},
              {"spec": "/abs/main.json"}],
    "theme": "theme/dark.json"})"),
                                           "compose.json", "/p");
  ASSERT_EQ(pf.pages.size(), 2u);
  EXPECT_EQ(pf.pages[0].spec_path, "/p/pages/oven.json");
  EXPECT_EQ(pf.pages[0].page, "oven");
  EXPECT_EQ(pf.pages[0].sizes, (std::vector<ScreenSize>{{480, 272}, {800, 480}}));
  // A page without a name takes a single run's default; without sizes, its spec's own.
  EXPECT_EQ(std::tie(pf.pages[1].spec_path, pf.pages[1].page, pf.pages[1].named), std::tuple("/abs/main.json", "main", false));
  EXPECT_TRUE(pf.pages[1].sizes.empty());
  EXPECT_EQ(pf.theme, "/p/theme/dark.json");
  EXPECT_EQ(pf.ui_layout, "auto");
}

TEST(ProjectFile, EveryMistakeIsPlaced) {
  EXPECT_EQ(problem("[]"), "compose.json: expected a mapping with \"pages\", got a list []");
  EXPECT_EQ(problem("{}"), "compose.json: missing key \"pages\" (the list of pages to compose)");
  EXPECT_EQ(problem(R"({"pages": [], "theme": "t.json"})"), "compose.json: pages: expected a non-empty list of pages, got a list []");
  EXPECT_EQ(problem(R"({"page": []})"), "compose.json: unknown key 'page' (did you mean \"pages\"?)");
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json"}], "colours": 1})"),
            "compose.json: unknown key 'colours' (known: $schema, pages, theme, ui_layout)");
  EXPECT_EQ(problem(R"({"pages": ["a.json"]})"),
            "compose.json: pages[0]: expected a page (a mapping with \"spec\"), got a text 'a.json'");
  EXPECT_EQ(problem(R"({"pages": [{"page": "a"}]})"),
            "compose.json: pages[0]: missing key \"spec\" (the page's spec.json, relative to the project)");
  EXPECT_EQ(problem(R"({"pages": [{"spec": ""}]})"), "compose.json: pages[0].spec: expected a non-empty text, got a text ''");
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json", "page": "a/b"}]})"),
            "compose.json: pages[0].page: 'a/b' is not an identifier: letters, digits and underscores, not starting "
            "with a digit, at most 64 characters");
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json", "sizes": []}]})"),
            "compose.json: pages[0].sizes: expected a non-empty list of sizes \"WxH\", got a list []");
  for (const char* bad : {"\"800\"", "\"800x\"", "\"8x480\"", "\"800x9000\"", "\"0800x480\"", "800"})
    EXPECT_EQ(problem(std::string(R"({"pages": [{"spec": "a.json", "sizes": ["480x272", )") + bad + "]}]}")
                  .rfind("compose.json: pages[0].sizes[1]: expected a size \"WxH\" with each side 16 to 8192, got ", 0),
              0u)
        << bad;
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json", "sizes": ["480x272", "480x272"]}]})"),
            "compose.json: pages[0].sizes[1]: size 480x272 given twice");
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json"}], "ui_layout": "tree"})"),
            "compose.json: ui_layout: expected \"auto\", \"flat\" or \"res\", got a text 'tree'");
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json"}], "theme": 3})"), "compose.json: theme: expected a non-empty text, got a number 3");
}

TEST(ProjectFile, PageNamesAreTheProjectsOwn) {
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json"}, {"spec": "b.json"}]})"),
            "compose.json: pages[1]: page name 'main' (the default) is taken by pages[0]; every page needs a name of "
            "its own (\"page\"), as it names ui/<page>.json and src/logic/<page>Logic.cc");
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json", "page": "x"}, {"spec": "b.json", "page": "x", "sizes": ["480x272"]}]})")
                .rfind("compose.json: pages[1].page: page name 'x' is taken by pages[0]", 0),
            0u);
  // One unnamed page beside named ones is fine.
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json"}, {"spec": "b.json", "page": "b"}]})"), "(accepted)");
}

TEST(ProjectFile, FlatLayoutTakesOneSizeAPage) {
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json", "sizes": ["480x272"]}], "ui_layout": "flat"})"), "(accepted)");
  EXPECT_EQ(problem(R"({"pages": [{"spec": "a.json", "sizes": ["480x272", "800x480"]}], "ui_layout": "flat"})"),
            "compose.json: pages[0].sizes: several sizes need ui/<W>x<H>/ folders, but \"ui_layout\" is \"flat\"");
}
