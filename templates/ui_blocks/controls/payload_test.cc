#include "controls/payload.h"

#include <gtest/gtest.h>

namespace ub {
namespace {

// The compact form and the JSON form it falls back to hold the same fields in the same order.
TEST(Payload, CompactAndFallbackFormsReadAlike) {
  struct Case {
    const char* what;
    void (*fill)(Payload&);
    const char* json;
  };
  const Case cases[] = {
      {"compact", [](Payload& p) { p.add_int("fontSize", 18); p.add_text("text", "a\"é"); p.add_colors("colorTab", 7, 7); },
       R"({"fontSize":18,"text":"a\"é","colorTab":{"color0":7,"color1":7,"color2":-1,"color3":-1,"color4":-1}})"},
      {"a long text", [](Payload& p) { p.add_text("text", std::string(40, 'x')); p.add_flag("bold", true); },
       R"({"text":"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx","bold":true})"},
      {"another key", [](Payload& p) { p.add_int("alignment", 1); p.add_int("rows", 3); p.add_flag("bold", false); },
       R"({"alignment":1,"rows":3,"bold":false})"},
      {"a key again", [](Payload& p) { p.add_int("fontSize", 1); p.add_text("text", "t"); p.add_int("fontSize", 2); },
       R"({"fontSize":2,"text":"t"})"},
      {"a wide colour", [](Payload& p) { p.add_colors("colorTab", 0x1FFFFFFFFLL); p.add_flag("touchable", true); },
       R"({"colorTab":{"color0":8589934591,"color1":-1,"color2":-1,"color3":-1,"color4":-1},"touchable":true})"},
  };
  for (const Case& c : cases) {
    Payload p;
    c.fill(p);
    EXPECT_EQ(p.to_json().dump(), c.json) << c.what;
  }
  Payload p;
  p.add_text("backgroundPic", "");
  EXPECT_FALSE(p.find("backgroundPic").truthy());
  EXPECT_EQ(p.find("text").json, nullptr);
}

}  // namespace
}  // namespace ub
