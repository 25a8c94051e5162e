#include "kinds/schema_patterns.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>

#include "base/values.h"

using namespace ub;

namespace {

bool matches(const std::regex& pattern, const std::string& s) { return std::regex_search(s, pattern); }
bool matches(const std::string& pattern, const std::string& s) { return matches(std::regex(pattern), s); }

// Random short texts of the characters that matter to number readers.
std::vector<std::string> texts(const std::string& alphabet, int n, int longest) {
  std::mt19937 rng(7);
  std::vector<std::string> out;
  for (int i = 0; i < n; ++i) {
    std::string s;
    const int len = (int)(rng() % (longest + 1));
    for (int k = 0; k < len; ++k) s += alphabet[rng() % alphabet.size()];
    out.push_back(s);
  }
  return out;
}

std::optional<long long> read_int(const std::string& s) {
  try {
    return int_of(Json(s));
  } catch (const InputError&) {
    return std::nullopt;
  }
}

}  // namespace

TEST(SchemaPatterns, WholeTextMatchesExactlyWhatIntOfReadsInTheRange) {
  const std::vector<std::pair<std::optional<long long>, std::optional<long long>>> ranges = {
      {1, 6}, {0, 100}, {16, 8192}, {0, std::nullopt}, {7, std::nullopt}, {std::nullopt, std::nullopt}, {-12, -3}};
  std::vector<std::string> cases = texts(" +-0123456789_\t.", 4000, 6);
  for (const char* s : {"0", "-0", "+0", "0_0", "6", "06", "0_6", "7", " 3 ", "\n3\n", "1_0", "1__0", "_1", "1_",
                        "100", "101", "99", "8192", "8193", "16", "15", "999999999999999999", "1000000000000000000",
                        "0000000000000000001", "000000000000000001", "-12", "-3", "-2", "-13", "3.0", "", "+-1"})
    cases.push_back(s);
  for (const auto& [lo, hi] : ranges) {
    const std::regex p(whole_text_pattern(lo, hi));
    for (const std::string& s : cases) {
      const auto v = read_int(s);
      const bool in = v && (!lo || *v >= *lo) && (!hi || *v <= *hi);
      EXPECT_EQ(matches(p, s), in) << "'" << s << "' in [" << lo.value_or(-1) << ", " << hi.value_or(-1) << "]";
    }
  }
}

TEST(SchemaPatterns, EvenTextFromLeast) {
  const std::string p = even_text_pattern(4);
  for (const char* s : {"4", "6", " 8", "10", "0_12", "+20", "1_000"}) EXPECT_TRUE(matches(p, s)) << s;
  for (const char* s : {"2", "0", "3", "5", "11", "-4", "4.0", "4x"}) EXPECT_FALSE(matches(p, s)) << s;
  EXPECT_THROW(even_text_pattern(11), std::invalid_argument);
}

TEST(SchemaPatterns, NumberTextMatchesWhatFloatOfReadsAsAFiniteNumber) {
  std::vector<std::string> cases = texts(" +-019.eE", 4000, 6);
  for (const char* s : {"inf", "nan", "-inf", ".", "e5", "1.", ".5", "+-.5", "1e-3", "0x10"}) cases.push_back(s);
  const std::regex p(number_text_pattern());
  const std::regex huge_exponent("[eE][+-]?[0-9]{3}");  // the magnitude is compose's to check
  for (const std::string& s : cases) {
    if (std::regex_search(s, huge_exponent)) continue;
    bool finite = false;
    try {
      finite = std::isfinite(float_of(Json(s)));
    } catch (const InputError&) {
    }
    EXPECT_EQ(matches(p, s), finite) << "'" << s << "'";
  }
}
