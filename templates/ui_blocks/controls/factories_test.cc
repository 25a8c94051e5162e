// Factory payloads are pinned by the whole pages; these are the edges the pages do not reach.
#include <gtest/gtest.h>

#include "controls/control_types.h"
#include "page_bench.h"

using namespace ub;

namespace {

struct Factories : ::testing::Test {
  ubtest::PageBench c{ubtest::page_spec(800, 480)};
};

}  // namespace

TEST_F(Factories, BoxRoundsHalvesToEven) {
  Pos p = c.controls.box(10.5, 11.5, 20.5, 21.5);
  EXPECT_EQ(p.to_json().dump(), R"({"left":10,"top":12,"width":20,"height":22})");
  c.controls.set_origin({4, 8});
  EXPECT_EQ(c.controls.xy(10.5, 8), std::make_pair(6, 0));  // 6.5 -> 6
}

TEST_F(Factories, PictureReferencesAndOptionalKeys) {
  EXPECT_EQ(c.controls.text("L", {}, 18, 5, "", "a.png")->payload.to_json()["backgroundPic"], "images/a.png");
  EXPECT_EQ(c.controls.text("L", {}, 18, 5, "", "images/b.png")->payload.to_json()["backgroundPic"], "images/b.png");
  EXPECT_FALSE(c.controls.text("L", {}, 18, 5)->payload.to_json().contains("backgroundPic"));
  EXPECT_EQ(c.controls.button("Hit", {0, 0, 10, 10})->payload.to_json().dump(), R"({"alignment":37,"touchable":true})");
  EXPECT_FALSE(c.controls.button("B", {}, "x.png", 0, 0, 36, "OK")->payload.to_json().contains("fontSize"));  // fs 0 writes nothing
  EXPECT_EQ(c.controls.deco("Deco", {}, 7, "d.png", 30)->payload.to_json()["fontSize"], 30);
}

TEST_F(Factories, SubitemsAndRadioButtonsShareOneCounter) {
  Json s1 = c.controls.subitem("SubTitle", {1, 2, 3, 4}, 18, 9, "t");
  Json s2 = c.controls.subitem("SubIcon", {}, 18, 9, "", "images/ic.png", 37, false);
  auto rg = c.controls.make_radiogroup("RadioRow1Group", {0, 0, 300, 200}, Json::array({"A"}), 0, "RadioRow1");
  EXPECT_EQ(s1["id"], 24001);
  EXPECT_EQ(s2["id"], 24002);
  EXPECT_EQ(rg->payload.to_json()["radiobuttons"][0]["id"], 94103);
}

TEST_F(Factories, RadioSelectionAndDotThreshold) {
  auto rg = c.controls.make_radiogroup("G", {0, 0, 300, 120}, Json::array({"甲", "乙", "丙"}), 1, "Radio");
  EXPECT_EQ(rg->payload.to_json()["radiobuttons"][1]["checked"], true);
  EXPECT_EQ(rg->payload.to_json()["radiobuttons"][0]["checked"], false);
  const Json none = c.controls.make_radiogroup("G2", {0, 0, 300, 80}, Json::array({"a", "b"}), 5, "R2")->payload.to_json();
  for (const Json& b : none["radiobuttons"]) EXPECT_EQ(b["checked"], false);  // beyond the options
  // The dot is drawn from 24 px boxes up.
  c.ctx.m.cb = 23;
  c.controls.make_radiogroup("G", {0, 0, 200, 40}, Json::array({"a"}), 0, "R");
  EXPECT_EQ(c.pictures.all().at("rd_23_on.png").mark, "");
  c.ctx.m.cb = 24;
  c.controls.make_radiogroup("G", {0, 0, 200, 40}, Json::array({"a"}), 0, "R");
  EXPECT_EQ(c.pictures.all().at("rd_24_on.png").mark, "dot");
}

TEST_F(Factories, SeekBarAndReadOnlySeekBar) {
  auto sk = c.controls.make_seekbar("Seek", {0, 0, 200, 8}, 42);
  EXPECT_EQ(c.pictures.all().at("sk_track_200x8.png").bar_h, 8);  // floor of 10, then the box height
  EXPECT_EQ(sk->payload.to_json()["defProgress"], 42);
  EXPECT_EQ(c.pictures.all().size(), 3u);

  ubtest::PageBench r(ubtest::page_spec(800, 480));
  auto ro = r.controls.make_seekbar("Seek", {0, 0, 200, 32}, 50, true);
  EXPECT_EQ(r.pictures.all().size(), 2u);  // no thumb picture
  EXPECT_EQ(ro->payload.to_json()["thumb"].dump(), R"({"size":{"width":0,"height":0},"normalPic":"","pressedPic":""})");
}

TEST_F(Factories, EditTextKeepsItsTextsAsGivenAndATinyCheckBoxKeepsItsMark) {
  const Json hint = 12, text = "", star = "#";
  auto e = c.controls.make_edittext("Edit", {0, 0, 200, 40}, EditFields{hint, text, 2, true, star});
  EXPECT_EQ(e->payload.to_json()["hintText"], 12);  // a number stays a number
  EXPECT_EQ(e->payload.to_json()["textType"], 2);
  EXPECT_EQ(e->payload.to_json()["isPassword"], true);
  EXPECT_EQ(e->payload.to_json()["passwordChar"], "#");
  c.controls.make_checkbox("Check2", {0, 0, 6, 6}, false);
  EXPECT_EQ(c.pictures.all().at("cb_6_on.png").radius, 2);
  EXPECT_EQ(c.pictures.all().at("cb_6_on.png").mark_size, 8);
}

TEST(FactoriesListing, ControlsCountedAtEveryDepth) {
  auto a = make_node("window", "A", {}), b = make_node("window", "B", {});
  b->children = {make_node("textview", "C", {})};
  a->children = {b};
  EXPECT_EQ(count_controls({a, make_node("textview", "D", {})}), 4u);
}

// Records of list-item parts keep the field order whatever order the values come in; a key
// that is no field is refused rather than dropped.
TEST(ControlTypes, RecordsFromDefaults) {
  const Json r = record_from(subitem_fields(), Json{{"text", "t"}, {"id", 24001}});
  EXPECT_EQ(r.begin().key(), "id");
  EXPECT_EQ(r["text"], "t");
  EXPECT_EQ(r["longClickTimeOut"], -1);
  EXPECT_THROW(record_from(radiobutton_fields(), Json{{"colour", 1}}), std::logic_error);
}
