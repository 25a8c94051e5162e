#include "logic/definitions.h"

#include <gtest/gtest.h>

using namespace ub;

namespace {

std::vector<std::string> names(const std::string& code) {
  std::vector<std::string> out;
  for (const auto& d : function_definitions(code)) out.push_back(d.name);
  return out;
}

}  // namespace

TEST(FunctionDefinitions, LinesOfTheNameAndOfTheClosingBrace) {
  const std::string code =
      "static bool onButtonClick_A(TVButton *pButton) {\n"  // 0
      "    if (ready()) {\n"                                  // 1
      "        go();\n"                                       // 2
      "    }\n"                                               // 3
      "    return false;\n"                                   // 4
      "}\n"                                                   // 5
      "static void\n"                                         // 6
      "onEditTextChanged_B(const std::string &text)\n"        // 7
      "{}\n";                                                 // 8
  const auto defs = function_definitions(code);
  ASSERT_EQ(defs.size(), 2u);
  EXPECT_EQ(std::tie(defs[0].name, defs[0].line, defs[0].end_line), std::tuple("onButtonClick_A", 0, 5));
  EXPECT_EQ(std::tie(defs[1].name, defs[1].line, defs[1].end_line), std::tuple("onEditTextChanged_B", 7, 8));
}

TEST(FunctionDefinitions, CallsDeclarationsCommentsAndLiteralsAreNoDefinitions) {
  EXPECT_EQ(names("static bool onButtonClick_A(TVButton *p);\n"          // a declaration
                  "// static bool onButtonClick_B(TVButton *p) {}\n"     // commented out
                  "/* static bool onButtonClick_C(TVButton *p) {\n}*/\n"
                  "static const char* s = \"onButtonClick_D(x) {\";\n"  // in a literal
                  "static char q = '{';\n"
                  "static void f() { onButtonClick_E(nullptr); if (x) { } }\n"  // calls in a body
                  "static bool onButtonClick_F(TVButton *p) { return g(\"}\"); }\n"),
            (std::vector<std::string>{"f", "onButtonClick_F"}));
  // Bodies of namespaces and classes are searched; an unclosed body runs to the end.
  EXPECT_EQ(names("namespace {\nstruct S { int m() { return 1; } };\nvoid a() {}\n}\nvoid b() { {"),
            (std::vector<std::string>{"m", "a", "b"}));
}
