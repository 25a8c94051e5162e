#include "rows/row_testing.h"

using namespace ub;
using rowtest::captions;
using rowtest::page;
using rowtest::stop_message;

TEST(Wheel, RowsAreRaisedToThreeAndMustBeOdd) {
  auto c = page(800, 480, R"([{"type":"wheel_picker"},{"type":"wheel_picker","rows":1},{"type":"wheel_picker","rows":2},
      {"type":"wheel_picker","rows":4},{"type":"wheel_picker","rows":"7","label":"时间"}])"_json);
  const Metrics& m = c->m;
  const int rows[] = {5, 3, 3, 0, 7};
  for (size_t i : {0, 1, 2, 4}) {
    NodeList out;
    const BlockRecord& b = rowtest::block(*c, i);
    EXPECT_EQ(build_wheel(c->bd, b, out, m.margin, 20, m.content_w), 20 + row_height(c->ctx, b));
    const int top = 20 + (i == 4 ? m.h_b2 + m.spacer : 0);
    EXPECT_EQ(out.back()->pos.height, rows[i] * m.wheel_h);  // no remainder
    EXPECT_EQ(out.back()->pos.top, top);
    EXPECT_EQ(out[out.size() - 2]->pos.top, top + rows[i] / 2 * m.wheel_h);  // band over the middle row
  }
  NodeList out;
  EXPECT_EQ(stop_message([&] { build_wheel(c->bd, rowtest::block(*c, 3), out, 0, 0, 400); }),
            "[X] wheel_picker.rows 必须为奇数（正中行 = 选中行），得到 4");
}

TEST(Wheel, ColumnCountsBandsFirstAndCycling) {
  auto c = page(800, 480, R"([{"type":"wheel_picker","columns":3},{"type":"wheel_picker","columns":[{},{"a":1},{}]},
      {"type":"wheel_picker","columns":0},{"type":"wheel_picker","columns":[]},{"type":"wheel_picker","columns":"ab"}])"_json);
  const Metrics& m = c->m;
  NodeList a, b, one, none;
  build_wheel(c->bd, rowtest::block(*c, 0), a, m.margin, 0, m.content_w);
  build_wheel(c->bd, rowtest::block(*c, 1), b, m.margin, 0, m.content_w);
  build_wheel(c->bd, rowtest::block(*c, 2), one, m.margin, 0, m.content_w);
  build_wheel(c->bd, rowtest::block(*c, 3), none, m.margin, 0, m.content_w);
  EXPECT_EQ(captions(a), (std::vector<std::string>{"BandWheelPicker1Col1", "BandWheelPicker1Col2",
                                                   "BandWheelPicker1Col3", "ListWheelPicker1Col1",
                                                   "ListWheelPicker1Col2", "ListWheelPicker1Col3"}));
  ASSERT_EQ(b.size(), a.size());
  for (size_t i = 0; i < a.size(); ++i) EXPECT_EQ(a[i]->pos.left, b[i]->pos.left);
  EXPECT_EQ(one.size(), 2u);
  EXPECT_EQ(none.size(), 2u);
  EXPECT_THROW(build_wheel(c->bd, rowtest::block(*c, 4), none, m.margin, 0, m.content_w), InputError);
}

// The values of every column read from the record; a count gives empty columns.
TEST(Wheel, ColumnsOfTheRecord) {
  const ubtest::OneBlock lists(Json::parse(R"({"type": "wheel_picker", "columns": [["00", 1, 2.5], "x", []]})"));
  EXPECT_EQ(wheel_columns(*lists),
            (std::vector<std::vector<std::string>>{{"00", "1", "2.5"}, {}, {}}));
  EXPECT_EQ(wheel_columns(*ubtest::OneBlock(Json::parse(R"({"type": "wheel_picker", "columns": 3})"))).size(), 3u);
  EXPECT_EQ(wheel_columns(*ubtest::OneBlock(Json::parse(R"({"type": "wheel_picker"})"))).size(), 1u);
}
