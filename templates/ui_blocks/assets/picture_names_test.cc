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
  // FNV-1a over the little-endian bytes of each double, folded to 32 bits.
  EXPECT_EQ(data_digest({1, 2, 3}), "734fdca3");
  EXPECT_EQ(data_digest({0.5, -2}), "341e550c");
  EXPECT_EQ(data_digest({}), "67f80c33");
  const std::string d = data_digest({1, 2, 3});
  EXPECT_EQ(d, data_digest({1, 2, 3}));
  for (const auto& other :
       std::vector<std::vector<double>>{{1, 2, 4}, {3, 2, 1}, {1, 2}, {1, 2, 3, 0}, {1, 2, 3.0000001}})
    EXPECT_NE(d, data_digest(other));
}

// A name never stands for two pictures: a different later one takes the first free
// "stem_n.png", or the one that already holds it.
TEST(PictureNames, ADifferentPictureTakesTheFirstFreeVariant) {
  PictureRegistry r;
  EXPECT_EQ(r.put("chart.png", chart({1, 2})), "chart.png");
  EXPECT_EQ(r.put("chart.png", chart({1, 2})), "chart.png");  // the same picture again
  EXPECT_EQ(r.put("chart.png", chart({2, 1})), "chart_2.png");
  EXPECT_EQ(r.put("chart.png", chart({3, 1})), "chart_3.png");
  EXPECT_EQ(r.put("chart.png", chart({2, 1})), "chart_2.png");
  EXPECT_EQ(r.put("chart.png", chart({1, 2})), "chart.png");
  EXPECT_EQ(r.all().at("chart.png").data, (std::vector<double>{1, 2}));  // the first keeps the plain name
  EXPECT_EQ(r.all().size(), 3u);
  // Names given directly count: a variant holding the same picture is taken, another is skipped.
  r.put("dot_2.png", chart({5}));
  r.put("dot_3.png", chart({6}));
  r.put("dot.png", chart({4}));
  EXPECT_EQ(r.put("dot.png", chart({6})), "dot_3.png");
  EXPECT_EQ(r.put("dot.png", chart({7})), "dot_4.png");
  EXPECT_EQ(r.put("dot.png", chart({5})), "dot_2.png");
  EXPECT_EQ(r.put("dot_4.png", chart({8})), "dot_4_2.png");
  // Any field of the entry tells pictures apart.
  Asset a = shape_entry(10, 10, 2, {1, 1, 1, 255}, std::nullopt, 1);
  Asset b = a;
  b.fill.a = 254;
  EXPECT_FALSE(same_picture(a, b));
  b = a;
  b.state = "on";
  EXPECT_FALSE(same_picture(a, b));
  EXPECT_THROW(r.put(std::string(300, 'x'), a), StopError);
  EXPECT_EQ(r.all().count(std::string(300, 'x')), 0u);
}

// Names of the sizes composed before count as taken by their pictures; a name shared with
// the same picture is this page's too.
TEST(PictureNames, EarlierSizesKeepTheirNames) {
  const AssetMap earlier{{"card.png", chart({1})}, {"card_2.png", chart({2})}};
  PictureRegistry r(&earlier);
  EXPECT_EQ(r.put("card.png", chart({1})), "card.png");
  EXPECT_EQ(r.put("card.png", chart({3})), "card_3.png");
  EXPECT_EQ(r.put("card.png", chart({2})), "card_2.png");
  EXPECT_EQ(r.all().size(), 3u);
}

// Many pictures under one name each get their own, in registration order.
TEST(PictureNames, ManyPicturesUnderOneName) {
  PictureRegistry r;
  for (int i = 0; i < 20000; ++i) r.put("ic_photo_36.png", chart({double(i)}));
  EXPECT_EQ(r.all().size(), 20000u);
  EXPECT_EQ(r.all().at("ic_photo_36_20000.png").data, (std::vector<double>{19999}));
  EXPECT_EQ(r.put("ic_photo_36.png", chart({1234})), "ic_photo_36_1235.png");
}

// With a painter, entries of different parameters that draw the same pixels are one picture.
TEST(PictureNames, APainterTellsPicturesByTheirPixels) {
  int painted = 0;
  // A picture of its data's first value, whatever else differs.
  PictureRegistry r(nullptr, [&painted](const Asset& a) {
    ++painted;
    gen_res::Image img(2, 1);
    img.px[0] = (uint8_t)a.data.at(0);
    return img;
  });
  EXPECT_EQ(r.put("p.png", chart({1, 2})), "p.png");
  EXPECT_EQ(painted, 0);  // nothing to compare yet
  EXPECT_EQ(r.put("p.png", chart({1, 3})), "p.png");  // other parameters, the same pixels
  EXPECT_EQ(r.put("p.png", chart({2, 2})), "p_2.png");
  EXPECT_EQ(r.put("p.png", chart({2, 9})), "p_2.png");
  EXPECT_EQ(r.put("p.png", chart({3, 3})), "p_3.png");
  EXPECT_EQ(r.all().size(), 3u);
  EXPECT_EQ(r.all().at("p.png").data, (std::vector<double>{1, 2}));  // the first entry stays
  const AssetMap earlier{{"q.png", chart({5, 1})}};
  PictureRegistry later(&earlier, [](const Asset& a) {
    gen_res::Image img(1, 1);
    img.px[0] = (uint8_t)a.data.at(0);
    return img;
  });
  EXPECT_EQ(later.put("q.png", chart({5, 2})), "q.png");
  EXPECT_EQ(later.put("q.png", chart({6, 2})), "q_2.png");
}
