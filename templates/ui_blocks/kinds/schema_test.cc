#include "kinds/schema.h"

#include <gtest/gtest.h>

#include "kinds/registry.h"
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
  EXPECT_EQ(s["$defs"]["card"]["properties"]["blocks"]["items"]["$ref"], "#/$defs/block_in_card");
  // The footer takes the bottom bar's keys without its type.
  const Json& footer = s["properties"]["page"]["properties"]["footer"];
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
  lib["tabs"]["keys"]["selected"] = "index";  // a bare description is no declaration
  EXPECT_THROW(spec_schema(block_kinds(), lib), InputError);
}
