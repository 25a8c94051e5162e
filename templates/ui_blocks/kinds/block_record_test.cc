#include "kinds/block_record.h"

#include <gtest/gtest.h>

#include "kinds/registry.h"

using namespace ub;

namespace {

// A library entry of every sort of key: a text with a default, a truth value, a number
// without a default, a list of records with their own defaults.
const Json kEntry = Json::parse(R"({"type": "banner", "keys": {
  "state": {"type": "string", "default": "info", "description": "d"},
  "close": {"type": ["boolean", "integer"], "default": true, "description": "d"},
  "visible": {"type": "boolean", "default": false, "description": "d"},
  "count": {"type": ["integer", "string"], "description": "d"},
  "columns": {"type": ["integer", "array", "boolean"], "default": 1, "description": "d"},
  "items": {"type": "array", "description": "d", "items": {"properties": {
    "text": {"type": "string", "description": "d"},
    "icon": {"type": "string", "default": "info", "description": "d"}}}}
}})");

struct Read {
  Json raw;
  KindKeys keys = kind_keys(kEntry);
  BlockRecord b;
  explicit Read(const char* text) : raw(Json::parse(text)), b(read_record(raw, nullptr, &keys)) {}
};

}  // namespace

TEST(BlockRecord, KeysOfALibraryEntry) {
  const KindKeys keys = kind_keys(kEntry);
  ASSERT_EQ(keys.size(), 6u);
  EXPECT_EQ(keys[0].name, "state");
  EXPECT_EQ(*keys[0].def, "info");
  EXPECT_FALSE(keys[0].truth);
  EXPECT_TRUE(keys[1].truth);
  EXPECT_TRUE(keys[2].truth);
  EXPECT_EQ(keys[3].def, nullptr);
  EXPECT_FALSE(keys[4].truth);  // a count or a list is no truth value, though it may be one
  EXPECT_NE(keys[5].entry_keys, nullptr);
  EXPECT_TRUE(kind_keys(Json::parse(R"({"type": "x"})")).empty());
}

// A false value takes the default, except for truth values, where only an absent key does.
TEST(BlockRecord, DefaultsFillFalseValuesButAPresentFalseTruthValueStays) {
  Read absent(R"({})");
  EXPECT_EQ(text(absent.b, "state"), "info");
  EXPECT_TRUE(flag(absent.b, "close"));
  EXPECT_FALSE(flag(absent.b, "visible"));
  EXPECT_EQ(value(absent.b, "count"), Json());
  EXPECT_FALSE(is_set(absent.b, "count"));
  EXPECT_EQ(integer(absent.b, "count"), 0);
  EXPECT_EQ(integer(absent.b, "columns"), 1);

  Read falses(R"({"state": "", "close": false, "visible": 0, "count": 0, "columns": false})");
  EXPECT_EQ(text(falses.b, "state"), "info");
  EXPECT_FALSE(flag(falses.b, "close"));
  EXPECT_EQ(value(falses.b, "close"), false);
  EXPECT_EQ(integer(falses.b, "columns"), 1);
  EXPECT_EQ(given_value(falses.b, "state"), "");  // the value as given stays readable

  Read nulls(R"({"close": null, "state": null})");
  EXPECT_FALSE(flag(nulls.b, "close"));  // present: its own truth
  EXPECT_EQ(text(nulls.b, "state"), "info");

  Read given(R"({"state": "warn", "close": 1, "count": " 12 ", "columns": [[1, 2], []]})");
  EXPECT_EQ(text(given.b, "state"), "warn");
  EXPECT_TRUE(flag(given.b, "close"));
  EXPECT_EQ(integer(given.b, "count"), 12);
  EXPECT_EQ(number(given.b, "count"), 12.0);
  EXPECT_EQ(list(given.b, "columns").size(), 2u);
  Read bad(R"({"count": "1.5"})");
  EXPECT_THROW(integer(bad.b, "count"), InputError);
}

TEST(BlockRecord, TextsOfValues) {
  Read r(R"({"state": 2.0, "count": true})");
  EXPECT_EQ(text(r.b, "state"), "2.0");
  EXPECT_EQ(text(r.b, "count"), "True");
}

// The library says what a type reads: a builder reading another key is a library that does
// not fit. A type the library lacks reads its keys as given.
TEST(BlockRecord, UndeclaredKeysAndTypesTheLibraryLacks) {
  Read r(R"({"label": "a"})");
  EXPECT_THROW(value(r.b, "label"), InputError);
  try {
    text(r.b, "label");
  } catch (const InputError& e) {
    EXPECT_STREQ(e.what(), "block library: ? does not declare the key \"label\" that its builder reads");
  }
  const Json raw = Json::parse(R"({"type": "setting_row", "label": "a", "chevron": false})");
  const BlockRecord unlisted = read_record(raw, block_kinds().find(std::string("setting_row")), nullptr);
  EXPECT_EQ(text(unlisted, "label"), "a");
  EXPECT_FALSE(flag(unlisted, "chevron"));  // no default to fall back on
  EXPECT_EQ(type_text(unlisted), "setting_row");
  // A value a page rule sets is read like a declared one.
  BlockRecord set = read_record(raw, nullptr, nullptr);
  const Json title = "T";
  set_value(set, "title", &title);
  EXPECT_EQ(text(set, "title"), "T");
}

TEST(BlockRecord, ListsAreListsOrNothing) {
  Read none(R"({"items": 0})"), text_items(R"({"items": "a, b"})");
  EXPECT_TRUE(list(none.b, "items").empty());
  EXPECT_TRUE(entries(none.b, "items", "text").empty());
  try {
    list(text_items.b, "items");
    ADD_FAILURE() << "no KeyError";
  } catch (const KeyError& e) {
    EXPECT_EQ(e.key, "items");
    EXPECT_EQ(e.problem, "expected a list, got a text 'a, b'");
  }
}

// An entry is a mapping, or a plain value standing for one key; the library's entry defaults
// fill what it leaves out.
TEST(BlockRecord, EntriesOfAList) {
  Read r(R"({"items": [{"text": "a", "icon": "wifi", "state": "on"}, "b", {"text": 0, "state": null}, "", 5, null]})");
  const std::vector<Entry> e = entries(r.b, "items", "text");
  ASSERT_EQ(e.size(), 6u);
  EXPECT_EQ(text(e[0], "icon"), "wifi");
  EXPECT_EQ(optional_text(e[0], "state"), "on");
  EXPECT_EQ(text(e[1], "text"), "b");
  EXPECT_EQ(text(e[1], "icon"), "info");  // the entry default
  EXPECT_EQ(optional_text(e[1], "state"), std::nullopt);
  EXPECT_EQ(text(e[2], "text"), "");  // a false member
  EXPECT_EQ(optional_text(e[2], "state"), std::nullopt);
  EXPECT_FALSE(is_set(e[3], "text"));
  EXPECT_EQ(text(e[4], "text"), "5");
  EXPECT_EQ(text(e[5], "text"), "None");  // a plain value is its key's text, whatever it is
  EXPECT_EQ(given_value(e[1], "text"), "b");
  EXPECT_EQ(given_value(e[1], "icon"), Json());
}

TEST(BlockRecord, CaptionIdIsTheOwnNameOrTheNumber) {
  BlockRecord b;
  b.seq = 12;
  b.name = "Dialog12";
  EXPECT_EQ(caption_id(b), "12");
  b.named = true;
  b.name = "Pwd";
  EXPECT_EQ(caption_id(b), "Pwd");
}
