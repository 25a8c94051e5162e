#include "spec/theme.h"

#include <gtest/gtest.h>

#include <functional>

#include "test_support.h"

using namespace ub;

namespace {

const Json& library() { return ubtest::installation().tokens; }

// The message of a theme the layering refuses, "" when it is taken.
std::string refusal(const std::string& theme_text) {
  try {
    lay_theme(library(), Json::parse(theme_text), "dark.json");
    return "";
  } catch (const InputError& e) {
    return e.what();
  }
}

TEST(Theme, MergesMappingsKeyByKeyAndKeepsTheRest) {
  const Json out = lay_theme(library(), Json::parse(R"({
    "color": {"page": "#101418", "fg1": "#e6e8eb"},
    "font": {"h1": {"max": 36}},
    "ladder": [12, 16, 20],
    "size": {"pad_l_wide": "spacer2", "row_h_of_h": 0}
  })"),
                             "dark.json");
  EXPECT_EQ(out["color"]["page"], "#101418");
  EXPECT_EQ(out["color"]["fg1"], "#e6e8eb");
  EXPECT_EQ(out["color"]["surface"], library()["color"]["surface"]);  // not given: the library's
  EXPECT_EQ(out["font"]["h1"]["max"], 36);
  EXPECT_EQ(out["font"]["h1"]["base"], library()["font"]["h1"]["base"]);
  EXPECT_EQ(out["ladder"], Json::parse("[12, 16, 20]"));  // a list replaces the library's whole
  EXPECT_EQ(out["size"]["pad_l_wide"], "spacer2");
  EXPECT_EQ(out["size"]["row_h_of_h"], 0);
  // Keys keep the library's order, so every table reads as before.
  std::vector<std::string> lib_keys, out_keys;
  for (auto it = library()["color"].begin(); it != library()["color"].end(); ++it) lib_keys.push_back(it.key());
  for (auto it = out["color"].begin(); it != out["color"].end(); ++it) out_keys.push_back(it.key());
  EXPECT_EQ(out_keys, lib_keys);
  // An empty theme, or one of the schema key alone, changes nothing.
  EXPECT_EQ(lay_theme(library(), Json::parse(R"({"$schema": "./tokens.schema.json"})"), "t.json"), library());
}

TEST(Theme, RefusesUnknownNamesWithTheNearest) {
  EXPECT_EQ(refusal(R"({"color": {"backround": "#000000"}})"),
            "dark.json: color: unknown token 'backround' (known in color: page, surface, fg1, fg2, line, brand, "
            "brand1, onBrand, switchOff, chevron, scrim, mask, info, info1, success, success1, warn, warn1, danger, "
            "danger1)");
  EXPECT_EQ(refusal(R"({"color": {"surfce": "#000000"}})"),
            "dark.json: color: unknown token 'surfce' (did you mean \"surface\"?)");
  EXPECT_EQ(refusal(R"({"colour": {}})"), "dark.json: unknown token 'colour' (did you mean \"color\"?)");
  EXPECT_EQ(refusal(R"({"font": {"h1": {"bass": 20}}})"),
            "dark.json: font.h1: unknown token 'bass' (did you mean \"base\"?)");
}

TEST(Theme, RefusesValuesOfTheWrongForm) {
  EXPECT_EQ(refusal("[1]"), "dark.json: expected a mapping of design tokens, got a list [1]");
  EXPECT_EQ(refusal(R"({"color": "#000000"})"), "dark.json: color: expected a mapping of tokens, got a text '#000000'");
  for (const char* bad : {R"("red")", R"("#12345")", R"("#1234567")", R"("#GG0000")", R"("##000000")", "255", "null"})
    EXPECT_EQ(refusal(std::string(R"({"color": {"fg1": )") + bad + "}}").rfind("dark.json: color.fg1: expected a colour "
                                                                                 "\"#RRGGBB\" or \"#RRGGBBAA\", got ",
                                                                                 0),
              0u)
        << bad;
  EXPECT_EQ(refusal(R"({"color": {"fg1": "#0a0B0c80"}})"), "");  // eight digits, either case
  EXPECT_EQ(refusal(R"({"size": {"row_gap_px": 4.5}})"), "dark.json: size.row_gap_px: expected a whole number, got a number 4.5");
  EXPECT_EQ(refusal(R"({"size": {"row_gap_px": 4.0}})"), "");
  EXPECT_EQ(refusal(R"({"size": {"row_h_of_h": "0.1"}})"), "dark.json: size.row_h_of_h: expected a number, got a text '0.1'");
  EXPECT_EQ(refusal(R"({"size": {"row_h_of_h": -0.1}})"), "dark.json: size.row_h_of_h: expected a number from 0 to 10, got -0.1");
  EXPECT_EQ(refusal(R"({"base_screen": {"height": 0}})"),
            "dark.json: base_screen.height: expected a whole number from 1 to 10000, got 0");
  EXPECT_EQ(refusal(R"({"spacer": {"spacer": 1e9}})"),
            "dark.json: spacer.spacer: expected a whole number from 0 to 10000, got 1000000000.0");
  EXPECT_EQ(refusal(R"({"size": {"pad_l_wide": "spacer9"}})"),
            "dark.json: size.pad_l_wide: expected the name of a spacer token (spacer, spacer1, spacer2, spacer3), got a "
            "text 'spacer9'");
  EXPECT_EQ(refusal(R"({"ladder": []})"), "dark.json: ladder: expected a non-empty list of font sizes, got a list []");
  EXPECT_EQ(refusal(R"({"ladder": [12, 0]})"), "dark.json: ladder[1]: expected a whole number from 1 to 10000, got 0");
  EXPECT_EQ(refusal(R"({"$schema": 1})"), "dark.json: $schema: expected a text, got a number 1");
}

TEST(Theme, SchemaFollowsTheLibrary) {
  const Json s = tokens_schema(library());
  EXPECT_EQ(s["properties"]["color"]["properties"]["fg1"]["default"], library()["color"]["fg1"]);
  EXPECT_EQ(s["properties"]["size"]["properties"]["pad_l_wide"]["enum"],
            Json::parse(R"(["spacer", "spacer1", "spacer2", "spacer3"])"));
  EXPECT_EQ(s["properties"]["size"]["properties"]["row_gap_px"]["type"], "integer");
  EXPECT_EQ(s["properties"]["size"]["properties"]["row_h_of_h"]["type"], "number");
  EXPECT_EQ(s["properties"]["font"]["properties"]["b2"]["additionalProperties"], false);
  // A token added to the library is in the schema at once, and needs a description.
  Json more = library();
  more["size"]["touch_px"] = 44;
  EXPECT_EQ(tokens_schema(more)["properties"]["size"]["properties"]["touch_px"]["type"], "integer");
}

// Every token and group of the library says what it means.
TEST(Theme, EveryLibraryTokenIsDescribed) {
  std::vector<std::string> missing;
  std::function<void(const Json&, const std::string&)> walk = [&](const Json& v, const std::string& path) {
    if (!path.empty() && token_description(path).empty()) missing.push_back(path);
    if (v.is_object())
      for (auto it = v.begin(); it != v.end(); ++it) walk(it.value(), path.empty() ? it.key() : path + "." + it.key());
  };
  walk(library(), "");
  EXPECT_TRUE(missing.empty()) << "tokens without a description in spec/token_schema.cc: " << join(missing, ", ");
}

}  // namespace
