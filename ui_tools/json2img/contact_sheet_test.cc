#include "json2img/contact_sheet.h"

#include <gtest/gtest.h>

namespace {

const char* const kLatin = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

TEST(ContactSheet, PreviewsSideBySideUnderTheirLabels) {
  j2i::TextPainter tp("", kLatin);
  const gen_res::Image a(30, 20, {255, 0, 0, 255}), b(50, 40, {0, 0, 255, 255});
  const gen_res::Image sheet = j2i::contact_sheet({{"30x20", a}, {"50x40", b}}, tp);
  ASSERT_EQ(sheet.w, 30 + j2i::kSheetGap + 50);
  ASSERT_EQ(sheet.h, j2i::kSheetBand + 40);
  auto at = [&](int x, int y) {
    const uint8_t* p = sheet.at(x, y);
    return gen_res::Rgba{p[0], p[1], p[2], p[3]};
  };
  EXPECT_EQ(at(0, j2i::kSheetBand), (gen_res::Rgba{255, 0, 0, 255}));
  EXPECT_EQ(at(29, j2i::kSheetBand + 19), (gen_res::Rgba{255, 0, 0, 255}));
  EXPECT_EQ(at(30 + j2i::kSheetGap, j2i::kSheetBand), (gen_res::Rgba{0, 0, 255, 255}));
  const gen_res::Rgba ground = at(0, sheet.h - 1);  // under the lower preview
  EXPECT_EQ(at(30, j2i::kSheetBand), ground);        // the gap
  // Each label leaves ink in the band above its preview.
  for (int x0 : {0, 30 + j2i::kSheetGap}) {
    int ink = 0;
    for (int y = 0; y < j2i::kSheetBand; ++y)
      for (int x = x0; x < x0 + 30; ++x) ink += !(at(x, y) == ground);
    EXPECT_GT(ink, 10) << x0;
  }
}

}  // namespace
