#include <gtest/gtest.h>

#include "compose.h"
#include "test_support.h"

using namespace ub;
using ubtest::keys_of;

namespace {

struct Factories : ::testing::Test {
  Composer c{ubtest::page_spec(800, 480), "main", ubtest::installation()};
};

}  // namespace

TEST_F(Factories, BoxRoundsHalvesToEven) {
  Pos p = c.box(10.5, 11.5, 20.5, 21.5);
  EXPECT_EQ(p.to_json().dump(), R"({"left":10,"top":12,"width":20,"height":22})");
  c.origin = {4, 8};
  EXPECT_EQ(c.xy(10.5, 8), std::make_pair(6, 0));  // 6.5 -> 6
}

TEST_F(Factories, TextPayloadAndPictureReference) {
  auto t = c.text("Label", {0, 0, 10, 10}, 18, 5, "hi", "a.png", 38, true);
  EXPECT_EQ(t->type, "textview");
  EXPECT_EQ(t->payload["backgroundPic"], "images/a.png");
  EXPECT_EQ(t->payload["colorTab"].dump(), R"({"color0":5,"color1":-1,"color2":-1,"color3":-1,"color4":-1})");
  EXPECT_EQ(c.text("L", {}, 18, 5, "", "images/b.png")->payload["backgroundPic"], "images/b.png");
  EXPECT_FALSE(c.text("L", {}, 18, 5)->payload.contains("backgroundPic"));

  auto d = c.deco("Deco", {0, 0, 4, 4}, 7, "images/d.png");
  EXPECT_EQ(d->payload["fontSize"], c.m.fs.b2);
  EXPECT_EQ(d->payload["alignment"], 37);
  EXPECT_EQ(d->payload["text"], "");
  EXPECT_EQ(d->payload["touchable"], false);
  EXPECT_EQ(c.deco("Deco", {}, 7, "d.png", 30)->payload["fontSize"], 30);
}

TEST_F(Factories, ButtonStartsFromTheSmallestPayload) {
  EXPECT_EQ(c.button("Hit", {0, 0, 10, 10})->payload.dump(), R"({"alignment":37,"touchable":true})");
  auto b = c.button("B", {}, "x.png", 0, 0, 36, "OK");
  EXPECT_FALSE(b->payload.contains("fontSize"));  // fs 0 writes nothing
  EXPECT_EQ(b->payload["colorTab"].dump(), R"({"color0":0,"color1":0,"color2":-1,"color3":-1,"color4":-1})");
  EXPECT_EQ(keys_of(b->payload), (std::vector<std::string>{"alignment", "touchable", "backgroundPic", "colorTab", "text"}));
  EXPECT_EQ(b->payload["backgroundPic"], "images/x.png");
  EXPECT_EQ(c.button("B", {}, "", 16)->payload["fontSize"], 16);
}

TEST_F(Factories, SubitemsAndRadioButtonsShareOneCounter) {
  Json s1 = c.subitem("SubTitle", {1, 2, 3, 4}, 18, 9, "t");
  Json s2 = c.subitem("SubIcon", {}, 18, 9, "", "images/ic.png", 37, false);
  auto rg = c.make_radiogroup("RadioRow1Group", {0, 0, 300, 200}, Json::array({"A"}), 0, "RadioRow1");
  EXPECT_EQ(s1["id"], 24001);
  EXPECT_EQ(s2["id"], 24002);
  EXPECT_EQ(rg->payload["radiobuttons"][0]["id"], 94103);
  EXPECT_EQ(s1["picTab"].dump(), R"({"pic0":""})");
  EXPECT_EQ(s2["picTab"]["pic0"], "images/ic.png");
  EXPECT_EQ(s2["touchable"], false);
  EXPECT_EQ(keys_of(s1), (std::vector<std::string>{"id", "caption", "position", "alignment", "backgroundColor",
                                                   "bgColorTab", "bold", "colorTab", "fontFamily", "fontSize", "italic",
                                                   "longClickIntervalTime", "longClickTimeOut", "picTab", "text",
                                                   "touchable", "visible"}));
}

TEST_F(Factories, RadioGroupGeometry) {
  // Metric cb 28 and opt_h 40 at 800x480; spacer 8, h_b1 24.
  ASSERT_EQ(c.m.cb, 28);
  auto rg = c.make_radiogroup("G", {0, 0, 300, 120}, Json::array({"甲", "乙", "丙"}), "1", "Radio");
  EXPECT_EQ(rg->type, "radiogroup");
  EXPECT_EQ(keys_of(rg->payload), (std::vector<std::string>{"touchable", "radiobuttons"}));
  const Json& bs = rg->payload["radiobuttons"];
  ASSERT_EQ(bs.size(), 3u);
  EXPECT_EQ(bs[2]["caption"], "RadioOpt3");
  EXPECT_EQ(bs[2]["position"].dump(), R"({"left":0,"top":80,"width":300,"height":40})");
  EXPECT_EQ(bs[1]["checked"], true);
  EXPECT_EQ(bs[0]["checked"], false);
  EXPECT_EQ(bs[0]["iconPosition"].dump(), R"({"left":8,"top":6,"width":28,"height":28})");
  EXPECT_EQ(bs[0]["textPosition"].dump(), R"({"left":44,"top":8,"width":248,"height":24})");
  EXPECT_EQ(bs[0]["colorTab"]["color2"], c.col("brand"));
  EXPECT_EQ(bs[0]["picTab"].dump(), R"({"pic0":"images/rd_28_off.png","pic1":"images/rd_28_off.png","pic2":"images/rd_28_on.png"})");
  EXPECT_EQ(c.assets.at("rd_28_on.png").mark, "dot");
  EXPECT_EQ(c.assets.at("rd_28_on.png").mark_size, 12);  // half_even(11.76)
  // A selection beyond the options checks nothing.
  auto none = c.make_radiogroup("G2", {0, 0, 300, 80}, Json::array({"a", "b"}), 5, "R2");
  for (const Json& b : none->payload["radiobuttons"]) EXPECT_EQ(b["checked"], false);
}

TEST(FactoriesSmall, RadioDotNeedsTwentyFourPixels) {
  Composer c(ubtest::page_spec(800, 480), "main", ubtest::installation());
  c.m.cb = 23;
  c.make_radiogroup("G", {0, 0, 200, 40}, Json::array({"a"}), 0, "R");
  EXPECT_EQ(c.assets.at("rd_23_on.png").mark, "");
  c.m.cb = 24;
  c.make_radiogroup("G", {0, 0, 200, 40}, Json::array({"a"}), 0, "R");
  EXPECT_EQ(c.assets.at("rd_24_on.png").mark, "dot");
}

TEST_F(Factories, SeekBarPicturesAndThumb) {
  auto sk = c.make_seekbar("Seek", {0, 0, 200, 8}, 42.9);
  EXPECT_EQ(c.assets.at("sk_track_200x8.png").bar_h, 8);  // floor of 10, then the box height
  EXPECT_EQ(sk->payload["defProgress"], 42);
  EXPECT_EQ(sk->payload["thumb"]["normalPic"], "images/sk_thumb_24.png");
  EXPECT_EQ(c.assets.size(), 3u);

  Composer r(ubtest::page_spec(800, 480), "main", ubtest::installation());
  auto ro = r.make_seekbar("Seek", {0, 0, 200, 32}, "50", true);
  EXPECT_EQ(r.assets.size(), 2u);
  EXPECT_EQ(r.assets.at("sk_track_200x32.png").bar_h, 12);  // r4(13.76)
  EXPECT_EQ(ro->payload["thumb"].dump(), R"({"size":{"width":0,"height":0},"normalPic":"","pressedPic":""})");
  EXPECT_EQ(ro->payload["touchable"], true);
  EXPECT_THROW(r.make_seekbar("Seek", {0, 0, 200, 32}, "half"), InputError);
}

TEST_F(Factories, EditTextReadsTheBlockWithDefaults) {
  auto e = c.make_edittext("Edit", {0, 0, 200, 40}, Json::parse(R"({"hintText": "", "textType": "2", "isPassword": 1})"));
  EXPECT_EQ(e->payload["hintText"], "");
  EXPECT_EQ(e->payload["text"], "");
  EXPECT_EQ(e->payload["textType"], 2);
  EXPECT_EQ(e->payload["isPassword"], true);
  EXPECT_EQ(e->payload["passwordChar"], "*");
  EXPECT_EQ(e->payload["bgColorTab"]["color0"], c.col("page"));
  EXPECT_EQ(e->payload["hintTextColor"], 8947848);
}

TEST_F(Factories, CheckBoxIsSquare) {
  auto cb = c.make_checkbox("Check", {10, 10, 28, 28}, true);
  EXPECT_EQ(cb->payload["checked"], true);
  EXPECT_EQ(cb->payload["iconPosition"].dump(), R"({"left":0,"top":0,"width":28,"height":28})");
  EXPECT_EQ(cb->payload["textPosition"], cb->payload["iconPosition"]);
  EXPECT_EQ(cb->payload["picTab"]["pic2"], "images/cb_28_on.png");
  EXPECT_EQ(c.assets.at("cb_28_off.png").radius, 7);
  EXPECT_EQ(c.assets.at("cb_28_on.png").mark_size, 16);  // half_even(16.24)
  c.make_checkbox("Check2", {0, 0, 6, 6}, false);
  EXPECT_EQ(c.assets.at("cb_6_on.png").radius, 2);
  EXPECT_EQ(c.assets.at("cb_6_on.png").mark_size, 8);
}

TEST_F(Factories, SeparatorAndControlListing) {
  auto sep = c.sep_node(16, 100, 300, 7);
  EXPECT_EQ(sep->caption, "RowSep7");
  EXPECT_EQ(sep->pos.to_json().dump(), R"({"left":16,"top":100,"width":300,"height":1})");
  EXPECT_EQ(sep->payload["backgroundPic"], "images/sep_300x1.png");
  EXPECT_EQ(sep->payload["colorTab"]["color0"], c.col("line"));

  auto a = make_node("window", "A", {}), b = make_node("textview", "B", {}), d = make_node("textview", "D", {});
  a->children = {b};
  NodeList all = Composer::collect_controls({a, d});
  ASSERT_EQ(all.size(), 3u);
  EXPECT_EQ(all[1]->caption, "B");
  EXPECT_EQ(all[2]->caption, "D");
}
