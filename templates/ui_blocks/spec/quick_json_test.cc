#include "spec/quick_json.h"

#include <gtest/gtest.h>

#include "base/json_reader.h"

using namespace ub;

namespace {

// Equal with the same types throughout (1 and 1u compare equal as values).
bool same(const Json& a, const Json& b) {
  if (a.type() != b.type() || a.size() != b.size()) return false;
  if (a.is_object()) {
    for (auto i = a.begin(), j = b.begin(); i != a.end(); ++i, ++j)
      if (i.key() != j.key() || !same(*i, *j)) return false;
    return true;
  }
  if (a.is_array()) {
    for (size_t i = 0; i < a.size(); ++i)
      if (!same(a[i], b[i])) return false;
    return true;
  }
  return a == b;
}

}  // namespace

TEST(QuickJson, ReadsWhatTheFullReaderReads) {
  const char* texts[] = {
      R"( {"a": [1, -2, 0, -0, 18446744073, 1.5, -2.5e-3, 1E2, 1e-400], "b": {}, "c": [], "d": null} )",
      R"({"t": true, "f": false, "s": "x\"\\\/\b\f\n\r\t\u00e9\u4e2d\ud83d\ude00\u0000 é中😀"})",
      R"([[[[{"deep": [{}]}]]]])", R"("text")", "7", "\t\r\n[ ]\n",
      R"({"page": {"blocks": [{"type": "card", "blocks": [{"type": "toggle_row", "on": true}]}]}})",
  };
  for (const char* t : texts) {
    const auto quick = read_quick_json(t, 8);
    ASSERT_TRUE(quick.has_value()) << t;
    EXPECT_TRUE(same(*quick, read_json(t, 8))) << t;
  }
}

// Text the quick path leaves to the full reader: malformed, a repeated key, too deep, a
// number it does not read, invalid UTF-8, a byte-order mark.
TEST(QuickJson, LeavesTheRestToTheFullReader) {
  const std::string texts[] = {
      "", " ", "{", "[1,]", "{\"a\":1,}", "{\"a\" 1}", "[1 2]", "01", "1.", ".5", "-", "1e", "+1", "tru",
      "nul", "[1]x", "{'a': 1}", "\"a\nb\"", "\"\\x\"", "\"\\u12\"", "\"\\udc00\"", "\"\\ud800x\"",
      "\"\\ud800\\u0041\"", "\"\xC0\xAF\"", "\"\xED\xA0\x80\"", "\"\xF4\x90\x80\x80\"", "\"\xE4\xB8\"",
      "\"\x80\"", R"({"a": 1, "b": 2, "a": 3})", "[[[[[[[[[1]]]]]]]]]", "1234567890123456789", "1e999",
      "-1e999", "\xEF\xBB\xBF{}", "[NaN]", "[Infinity]", "// c\n{}", std::string("[1]\0", 4),
  };
  for (const std::string& t : texts) EXPECT_FALSE(read_quick_json(t, 8).has_value()) << t;
  std::string wide = "{";
  for (int i = 0; i < 40; ++i) wide += "\"k" + std::to_string(i % 39) + "\": 1,";
  wide.back() = '}';
  EXPECT_FALSE(read_quick_json(wide, 8).has_value());  // a repeat among many keys
  EXPECT_TRUE(read_quick_json(wide.substr(0, wide.rfind(',')) + "}", 8).has_value());
}
