#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "controls/json_text.h"
#include "test_support.h"

using namespace ub;

namespace {

std::string written(const Json& v, int level = 0) {
  TextOut out;
  append_json(out, v, level);
  return out.take();
}

std::string dumped(const Json& v) { return v.dump(2, ' ', false, Json::error_handler_t::strict); }

}  // namespace

TEST(JsonText, ScalarsAsTheLibraryDumpsThem) {
  const std::string texts[] = {"",
                               "plain",
                               "a/b",
                               "q\"uote\\back",
                               "\b\f\n\r\t",
                               std::string("nul\0x", 5),
                               "\x01\x1f\x7f",
                               "中文…℃",
                               "\xF0\x9F\x98\x80",
                               "\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF",
                               // Past eight bytes, where whole words are checked at once.
                               "abcdefgh12345678", "abcdefgh\"2345678", "abcdefghi\\", "abcdefgh\x1f",
                               "abcdefgh1234567\x7f", "abcdefgh中", std::string("abcdefgh\0", 9), " !#$%&'()*+,-./0"};
  for (const std::string& s : texts) EXPECT_EQ(written(Json(s)), dumped(Json(s))) << s;

  const Json numbers[] = {0, -1, 16777215, std::numeric_limits<long long>::min(),
                          std::numeric_limits<long long>::max(), std::numeric_limits<unsigned long long>::max(),
                          0.1, 1e-7, 12.0, -0.0, 1e300, 2.5e-308, std::nan(""), true, false, nullptr};
  for (const Json& n : numbers) EXPECT_EQ(written(n), dumped(n)) << n.dump();
}

TEST(JsonText, InvalidUtf8IsRefusedLikeTheLibrary) {
  for (const char* bad : {"\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "ab\xFF", "\xE4\xB8"}) {
    TextOut out;
    EXPECT_THROW(append_json_string(out, bad), Json::type_error) << bad;
  }
}

TEST(JsonText, NestedValuesAtAnyLevel) {
  const Json v = Json::parse(R"({"a": [], "b": {}, "c": [1, {"d": "x", "e": [[], [2.5, null]]}], "中": {"k": true}})");
  EXPECT_EQ(written(v), dumped(v));
  EXPECT_EQ(written(Json::array()), "[]");
  // Inside a document the value keeps its parent's indentation.
  const Json doc = Json{{"outer", {{"inner", v}}}};
  const std::string whole = dumped(doc);
  const std::string part = written(v, 2);
  EXPECT_NE(whole.find("\"inner\": " + part + "\n"), std::string::npos);
}
