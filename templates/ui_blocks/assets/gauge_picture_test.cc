#include "assets/gauge_picture.h"

#include <gtest/gtest.h>

#include <cmath>

#include "assets/registry.h"

using namespace ub;

namespace {

const Rgba kTrack{200, 200, 200, 255}, kValue{0, 0, 255, 255}, kLimit{255, 0, 0, 255};

Rgba at(const gen_res::Image& img, double x, double y) {
  const uint8_t* p = img.at((int)x, (int)y);
  return {p[0], p[1], p[2], p[3]};
}

// The pixel on the middle of the ring at a share of the range.
Rgba on_ring(const gen_res::Image& img, int stroke, double share) {
  const double c = img.w / 2.0, r = (img.w - stroke) / 2.0, a = gauge_angle(share) * M_PI / 180;
  return at(img, c + r * std::cos(a), c + r * std::sin(a));
}

TEST(GaugePicture, ValueArcOverTheTrackAndTheLimitTick) {
  const gen_res::Image img = gauge_image(gauge_entry(120, 12, 400, 800, kTrack, kValue, kLimit));
  ASSERT_EQ(img.w, 120);
  ASSERT_EQ(img.h, 120);
  EXPECT_EQ(on_ring(img, 12, 0.0), kValue);
  EXPECT_EQ(on_ring(img, 12, 0.2), kValue);
  EXPECT_EQ(on_ring(img, 12, 0.38), kValue);
  EXPECT_EQ(on_ring(img, 12, 0.46), kTrack);
  EXPECT_EQ(on_ring(img, 12, 0.6), kTrack);
  EXPECT_EQ(on_ring(img, 12, 0.8), kLimit);
  EXPECT_EQ(on_ring(img, 12, 1.0), kTrack);
  // Open at the bottom, empty in the middle and in the corners.
  EXPECT_EQ(at(img, 60, 116).a, 0);
  EXPECT_EQ(at(img, 60, 60).a, 0);
  EXPECT_EQ(at(img, 1, 1).a, 0);
}

TEST(GaugePicture, NoValueNoLimitIsTheTrackAlone) {
  const gen_res::Image img = gauge_image(gauge_entry(64, 6, 0, -1, kTrack, kValue, kLimit));
  for (double share : {0.0, 0.25, 0.5, 0.8, 1.0}) EXPECT_EQ(on_ring(img, 6, share), kTrack) << share;
  const gen_res::Image full = gauge_image(gauge_entry(64, 6, 1000, -1, kTrack, kValue, kLimit));
  for (double share : {0.0, 0.5, 1.0}) EXPECT_EQ(on_ring(full, 6, share), kValue) << share;
}

}  // namespace
