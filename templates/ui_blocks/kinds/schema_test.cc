#include "kinds/schema.h"

#include <gtest/gtest.h>

#include "kinds/registry.h"
#include "kinds/schema_patterns.h"
#include "spec/library.h"
#include "test_support.h"

using namespace ub;

namespace {

std::vector<std::string> enum_of(const Json& s, const std::string& def) {
  return s["$defs"][def]["properties"]["type"]["enum"].get<std::vector<std::string>>();
}

}  // namespace

TEST(Schema, EveryKindOfTheLibraryHasAClosedDefinitionAndContainersTakeOnlyTheirKinds) {
  const Json s = spec_schema(block_kinds(), ubtest::installation().blocks);
  std::vector<std::string> all, in_card, in_form;
  for (const BlockKind* k : block_kinds().all()) {
    SCOPED_TRACE(k->type);
    all.push_back(k->type);
    if (k->places & kInCard) in_card.push_back(k->type);
    if (k->places & kInForm) in_form.push_back(k->type);
    const Json& d = s["$defs"][k->type];
    EXPECT_EQ(d["properties"]["type"]["const"], k->type);
    EXPECT_EQ(d["additionalProperties"], false);
    EXPECT_TRUE(d["properties"].contains("name"));
    EXPECT_EQ(d["properties"].contains("blocks"), k->holds_blocks);
  }
  EXPECT_EQ(enum_of(s, "block_on_page"), all);
  EXPECT_EQ(enum_of(s, "block_in_card"), in_card);
  EXPECT_EQ(enum_of(s, "block_in_form_section"), in_form);
  EXPECT_LT(in_card.size(), all.size());
  EXPECT_EQ(s["$defs"]["card"]["properties"]["blocks"]["anyOf"][0]["items"]["$ref"], "#/$defs/block_in_card");
  // The footer takes the bottom bar's keys without its type, or a false value.
  const Json& footer = s["properties"]["page"]["properties"]["footer"]["anyOf"][0];
  EXPECT_FALSE(footer["properties"].contains("type"));
  EXPECT_TRUE(footer["properties"].contains("primary"));
}

TEST(Schema, KeyDeclarationsBecomeProperties) {
  std::map<std::string, Json> lib;
  lib["tabs"] = Json::parse(R"({"type": "tabs", "keys": {"items": {"type": "array", "description": "d", "required": true},
                                                        "selected": {"type": "integer", "description": "i"}}})");
  lib["carousel"] = Json::parse(R"({"type": "carousel"})");  // no kind: left out
  const Json s = spec_schema(block_kinds(), lib);
  EXPECT_EQ(enum_of(s, "block_on_page"), std::vector<std::string>{"tabs"});
  EXPECT_FALSE(s["$defs"].contains("carousel"));
  const Json& tabs = s["$defs"]["tabs"];
  EXPECT_EQ(tabs["required"], Json::parse(R"(["type", "items"])"));
  EXPECT_EQ(tabs["properties"]["items"], Json::parse(R"({"type": "array", "description": "d"})"));
  // A key read with a default also takes a false value, which stands for its absence.
  EXPECT_EQ(tabs["properties"]["selected"]["description"], "i");
  EXPECT_EQ(tabs["properties"]["selected"]["anyOf"][1], Json::parse(R"({"$ref": "#/$defs/absent"})"));
  lib["tabs"]["keys"]["selected"] = "index";  // a bare description is no declaration
  EXPECT_THROW(spec_schema(block_kinds(), lib), InputError);
}

TEST(Schema, DeclaredTypesReadAsComposeReadsThem) {
  std::map<std::string, Json> lib;
  lib["grid_icons"] = Json::parse(R"({"type": "grid_icons", "keys": {
      "cols": {"type": "integer", "minimum": 1, "maximum": 6, "default": 4, "description": "c"},
      "tappable": {"type": "boolean", "description": "t"},
      "text": {"type": ["string", "number"], "description": "x"},
      "raw": {"type": ["string", "number"], "font_checked": false, "description": "r"},
      "icon": {"type": "string", "description": "i"},
      "keys": {"type": ["array", "null"], "description": "k"}}})");
  const Json props = spec_schema(block_kinds(), lib)["$defs"]["grid_icons"]["properties"];
  // A whole number: a number cut towards zero, or whole-number text.
  const Json& cols = props["cols"]["anyOf"][0];
  EXPECT_EQ(props["cols"]["default"], 4);
  EXPECT_EQ(cols["type"], Json::parse(R"(["number", "string"])"));
  EXPECT_EQ(cols["minimum"], 1);
  EXPECT_EQ(cols["exclusiveMaximum"], 7);
  EXPECT_EQ(cols["pattern"], whole_text_pattern(1, 6));
  // A flag: true, false, 1 or 0, and no false value of another kind.
  EXPECT_EQ(props["tappable"], Json::parse(R"({"description": "t", "enum": [false, true, 0, 1]})"));
  // Texts shown on the screen keep to the engine's font unless the key says otherwise.
  EXPECT_EQ(props["text"]["anyOf"][0]["pattern"], no_forbidden_pattern());
  EXPECT_FALSE(props["raw"]["anyOf"][0].contains("pattern"));
  EXPECT_FALSE(props["raw"]["anyOf"][0].contains("font_checked"));
  EXPECT_FALSE(props["icon"]["anyOf"][0].contains("pattern"));
  // A key declaring null itself takes no other false value.
  EXPECT_EQ(props["keys"], Json::parse(R"({"type": ["array", "null"], "description": "k"})"));
}

TEST(Schema, AnIndexNamesAnEntryOfItsList) {
  std::map<std::string, Json> lib;
  lib["bottom_nav"] = Json::parse(R"({"type": "bottom_nav", "keys": {
      "items": {"type": "array", "maxItems": 6, "description": "d", "required": true},
      "selected": {"type": "integer", "minimum": 0, "index_of": "items", "description": "i"}}})");
  const Json def = spec_schema(block_kinds(), lib)["$defs"]["bottom_nav"];
  EXPECT_FALSE(def["properties"]["selected"]["anyOf"][0].contains("index_of"));
  // With at most k entries the index lies below k, up to the longest list: 6 clauses.
  ASSERT_EQ(def["allOf"].size(), 6u);
  const Json& last = def["allOf"][5];
  EXPECT_EQ(last["if"]["anyOf"][1]["properties"]["items"]["anyOf"][1], Json::parse(R"({"type": "array", "maxItems": 6})"));
  const Json& below = last["then"]["properties"]["selected"]["anyOf"];
  EXPECT_EQ(below[1], Json::parse(R"({"type": "number", "exclusiveMaximum": 6})"));
  EXPECT_EQ(below[2]["pattern"], whole_text_pattern(std::nullopt, 5));
}
