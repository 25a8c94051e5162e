#include "base/json_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "base/values.h"

using namespace ub;

namespace {
std::string what_of(const std::string& text, bool linear) {
  try {
    const Json doc = linear ? read_json(text) : Json::parse(text);
  } catch (const std::exception& e) {
    return e.what();
  }
  return "";
}
}  // namespace

// Same documents as the ordered reader: member order, duplicates (first place, last value),
// numbers of every kind, escapes, nesting of arrays in objects and back.
TEST(JsonReader, ReadsWhatTheOrderedReaderReads) {
  const char* texts[] = {
      R"({"b":1,"a":[1,-2,3.5,1e-7,18446744073709551615,true,null,"\u00e9\n/"],"c":{"z":{},"y":[]}})",
      R"({"a":1,"b":2,"a":3,"c":{"x":1,"x":[2],"y":0},"b":{"k":4}})",
      R"([[],[{}],{"":""},"中文"])",
      "  42 ",
  };
  for (const char* t : texts) EXPECT_EQ(read_json(t).dump(), Json::parse(t).dump()) << t;

  std::ostringstream wide;
  wide << "{";
  for (int i = 0; i < 3000; ++i) wide << (i ? "," : "") << "\"k" << i % 2900 << "\":" << i;
  wide << "}";
  EXPECT_EQ(read_json(wide.str()).dump(), Json::parse(wide.str()).dump());

  for (const auto& e : std::filesystem::directory_iterator(std::string(UB_SOURCE_DIR) + "/examples")) {
    if (!e.is_regular_file() || e.path().extension() != ".json") continue;  // the pages, not examples/themes/
    const std::string text = read_file(e.path().string());
    EXPECT_EQ(read_json(text).dump(2), Json::parse(text).dump(2)) << e.path();
  }
}

TEST(JsonReader, FailsWithTheOrderedReadersExceptions) {
  for (const char* t : {"{\"a\":", "[1,]", "{\"a\" 1}", "1e999", "", "[1] x"}) {
    EXPECT_NE(what_of(t, true), "") << t;
    EXPECT_EQ(what_of(t, true), what_of(t, false)) << t;
  }
  EXPECT_THROW(read_json("1e999"), Json::out_of_range);
  TextPlace at;
  EXPECT_THROW(read_json("{\"标\": [1,\n  2, 1e999]}", 0, &at), Json::out_of_range);
  EXPECT_EQ(at.line, 2u);
  EXPECT_EQ(at.column, 6u);
}

TEST(JsonReader, BoundsNesting) {
  const std::string deep4 = "[[[[1]]]]";
  EXPECT_NO_THROW(read_json(deep4, 4));
  EXPECT_THROW(read_json(deep4, 3), JsonTooDeep);
  EXPECT_THROW(read_json("{\"a\":{\"b\":{\"c\":{}}}}", 3), JsonTooDeep);
  EXPECT_NO_THROW(read_json(std::string(100000, '[') + std::string(100000, ']')));
}
