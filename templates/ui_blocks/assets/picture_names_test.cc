#include "assets/picture_names.h"

#include <gtest/gtest.h>

#include "base/values.h"

using namespace ub;

namespace {

Asset chart(std::vector<double> data) { return chart_entry(100, 40, "bar", data, {1, 2, 3, 255}, {4, 5, 6, 255}, 1); }

}  // namespace

TEST(PictureNames, PlainNamesTheFileSystemCanHold) {
  EXPECT_NO_THROW(check_picture_name("ic_wifi_24.png"));
  EXPECT_NO_THROW(check_picture_name(std::string(kMaxPictureName, 'a')));
  EXPECT_THROW(check_picture_name(std::string(kMaxPictureName + 1, 'a')), StopError);
  // Bytes count: 67 three-byte characters are 201 bytes.
  std::string cjk;
  for (int i = 0; i < 67; ++i) cjk += "图";
  EXPECT_THROW(check_picture_name(cjk), StopError);
  for (const std::string& bad : std::vector<std::string>{"", ".", "..", "a/b.png", "a\\b", std::string("a\0b", 3)})
    EXPECT_THROW(check_picture_name(bad), StopError) << bad;
}

TEST(PictureNames, DigestFollowsEveryValue) {
  const std::string d = data_digest({1, 2, 3});
  EXPECT_EQ(d, data_digest({1, 2, 3}));
  for (const auto& other :
       std::vector<std::vector<double>>{{1, 2, 4}, {3, 2, 1}, {1, 2}, {1, 2, 3, 0}, {1, 2, 3.0000001}})
    EXPECT_NE(d, data_digest(other));
}

TEST(PictureNames, ADifferentPictureUnderOneNameIsNotedOnce) {
  AssetMap assets;
  Notes notes;
  put_picture(assets, notes, "chart.png", chart({1, 2}));
  put_picture(assets, notes, "chart.png", chart({1, 2}));  // the same picture again
  EXPECT_TRUE(notes.all().empty());
  put_picture(assets, notes, "chart.png", chart({2, 1}));
  ASSERT_EQ(notes.all().size(), 1u);
  EXPECT_EQ(assets.at("chart.png").data, (std::vector<double>{2, 1}));  // the later one wins
  put_picture(assets, notes, "chart.png", chart({1, 2}));
  EXPECT_EQ(notes.all().size(), 1u);
  // Any field of the entry tells pictures apart.
  Asset a = shape_entry(10, 10, 2, {1, 1, 1, 255}, std::nullopt, 1);
  Asset b = a;
  b.fill.a = 254;
  EXPECT_FALSE(same_picture(a, b));
  b = a;
  b.state = "on";
  EXPECT_FALSE(same_picture(a, b));
  EXPECT_THROW(put_picture(assets, notes, std::string(300, 'x'), a), StopError);
  EXPECT_EQ(assets.count(std::string(300, 'x')), 0u);
}
