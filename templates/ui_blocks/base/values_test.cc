#include "base/values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace ub;

TEST(Values, FalseValues) {
  for (const char* s : {"null", "false", "0", "0.0", "\"\"", "[]", "{}"}) EXPECT_FALSE(truthy(Json::parse(s))) << s;
  for (const char* s : {"true", "1", "-0.5", "\"0\"", "[0]", "{\"a\":null}"}) EXPECT_TRUE(truthy(Json::parse(s))) << s;
}

TEST(Values, TextForms) {
  EXPECT_EQ(to_text(Json(2.0)), "2.0");
  EXPECT_EQ(to_text(Json(1e16)), "1e+16");
  EXPECT_EQ(to_text(Json(1.5e-5)), "1.5e-05");
  EXPECT_EQ(to_text(Json(true)), "True");
  EXPECT_EQ(to_text(Json()), "None");
  EXPECT_EQ(plain_text(Json::parse(R"({"h1": 28, "h2": 22})")), "{'h1': 28, 'h2': 22}");
  EXPECT_EQ(plain_text(Json::parse(R"(["a", "b", 1.5])")), "['a', 'b', 1.5]");
  EXPECT_EQ(literal_form(Json("pie")), "'pie'");
  EXPECT_EQ(literal_form(Json(3)), "3");
  EXPECT_EQ(type_name(Json::object()), "dict");
  EXPECT_EQ(shown_value(Json::parse(R"(["a", "/b"])")), "a list ['a', '/b']");
  EXPECT_EQ(shown_value(Json()), "null");
  EXPECT_EQ(shown_value(Json(std::string(100, 'x'))), "a text '" + std::string(56, 'x') + "...");
}

TEST(Values, IntegerReadings) {
  EXPECT_EQ(int_of(Json(" 12 ")), 12);
  EXPECT_EQ(int_of(Json(-3.9)), -3);
  EXPECT_THROW(int_of(Json("1.5")), InputError);
  EXPECT_THROW(int_of(Json(true)), InputError);
  EXPECT_DOUBLE_EQ(float_of(Json("1e3")), 1000.0);
  EXPECT_THROW(float_of(Json(false)), InputError);
  EXPECT_EQ(int_or(Json::parse(R"({"a": 0})"), "a", 7), 7);
  EXPECT_EQ(int_or(Json::parse(R"({"a": "2"})"), "a", 7), 2);
}

TEST(Values, RoundingAndRange) {
  EXPECT_EQ(half_even(2.5), 2);
  EXPECT_EQ(half_even(-3.5), -4);
  EXPECT_EQ(trunc_int(-3.9), -3);
  EXPECT_EQ(floordiv(-7, 2), -4);
  EXPECT_EQ(floordiv(-6, 3), -2);
  // Every float whose integer the type cannot hold, and unsigned values above it.
  for (const char* s : {"1e300", "-1e300", "9.3e18", "-9.3e18", "18446744073709551615", "9223372036854775808"})
    EXPECT_THROW(int_of(Json::parse(s)), InputError) << s;
  EXPECT_EQ(int_of(Json::parse("9223372036854775807")), 9223372036854775807LL);
  EXPECT_EQ(int_of(Json(-9.2e18)), -9200000000000000000LL);
  for (double d : {1e19, -1e19, (double)INFINITY, (double)-INFINITY, (double)NAN}) {
    EXPECT_THROW(half_even(d), InputError) << d;
    EXPECT_THROW(trunc_int(d), InputError) << d;
  }
  EXPECT_THROW(floordiv(1, 0), InputError);
  EXPECT_THROW(floordiv(std::numeric_limits<long long>::min(), -1), InputError);
  EXPECT_EQ(floordiv(7, -1), -7);
  EXPECT_EQ(narrow_int(-2147483648LL), -2147483647 - 1);
  EXPECT_THROW(narrow_int(2147483648LL), InputError);
  EXPECT_THROW(narrow_int(-2147483649LL), InputError);
}

TEST(Values, TextMeasures) {
  EXPECT_EQ(title_case("main"), "Main");
  EXPECT_EQ(title_case("my_page2x"), "My_Page2X");
  EXPECT_EQ(cp_prefix("中文abc", 3), "中文a");
  EXPECT_EQ(pad_right("中", 3), "中  ");
  EXPECT_EQ(flag(Json::object(), "back", true), true);
  EXPECT_EQ(flag(Json::parse(R"({"back": null})"), "back", true), false);
}

TEST(Values, LayoutText) {
  Json doc = Json::object();
  doc["id"] = 0;
  doc["t"] = "中\n\x01";
  doc["e"] = Json::object();
  doc["a"] = Json::array();
  EXPECT_EQ(dump_layout(doc), "{\n  \"id\": 0,\n  \"t\": \"中\\n\\u0001\",\n  \"e\": {},\n  \"a\": []\n}\n");
}

// Members keep the order given, whatever their keys, and nested values are taken whole.
TEST(Values, ObjectOfKeepsOrder) {
  std::string moved(40, 'x');
  const Json j = object_of("b", 1, "a", object_of("z", false, "y", Json::array()), "c", std::move(moved));
  EXPECT_EQ(j.dump(), R"({"b":1,"a":{"z":false,"y":[]},"c":")" + std::string(40, 'x') + "\"}");
}
