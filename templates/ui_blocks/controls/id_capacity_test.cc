#include "controls/id_capacity.h"

#include <gtest/gtest.h>

using namespace ub;

namespace {

NodeList many(const std::string& type, int n) {
  NodeList out;
  for (int i = 0; i < n; ++i) out.push_back(make_node(type, "c", Pos{}));
  return out;
}

std::string refusal(const NodeList& nodes, int subitem = 0, int radiobutton = 0) {
  try {
    check_id_capacity(nodes, subitem, radiobutton);
  } catch (const InputError& e) {
    return e.what();
  }
  return "";
}

}  // namespace

TEST(IdCapacity, EachTypeHoldsWhatItsRangeHolds) {
  // textview ids 50001..50999 end where the edit fields begin.
  EXPECT_EQ(refusal(many("textview", 999)), "");
  EXPECT_EQ(refusal(many("textview", 1000)),
            "the page needs 1000 textview ids, more than their range holds: at most 999; split the page");
  // Buttons and edit fields: as many as the logic file names callbacks for.
  EXPECT_EQ(refusal(many("button", 9999)), "");
  EXPECT_EQ(refusal(many("button", 10000)),
            "the page needs 10000 button ids, more than their range holds: at most 9999; split the page");
  EXPECT_EQ(refusal(many("edittext", 1000)),
            "the page needs 1000 edittext ids, more than their range holds: at most 999; split the page");
  // Children count with their type, wherever they stand.
  NodeList nested = many("window", 1);
  nested[0]->children = many("radiogroup", 100);
  EXPECT_EQ(refusal(nested),
            "the page needs 100 radiogroup ids, more than their range holds: at most 99; split the page");
}

TEST(IdCapacity, ListPartsAndRadioButtonsShareOneNumber) {
  EXPECT_EQ(refusal({}, 25999, 399), "");
  EXPECT_EQ(refusal({}, 26000, 0),
            "the page needs 26000 list-item part ids, more than their range holds: at most 25999; split the page");
  // A radio button after 400 list parts would take a checkbox's id.
  EXPECT_EQ(refusal({}, 400, 401),
            "the page needs 401 radio button ids, more than their range holds: at most 399; split the page");
}
