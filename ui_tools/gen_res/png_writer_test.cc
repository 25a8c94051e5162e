#include "gen_res/png_writer.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "gen_res/shapes.h"

namespace gen_res {
namespace {

const PngForm kAllForms[] = {PngForm::palette, PngForm::grey, PngForm::grey_alpha, PngForm::rgb, PngForm::rgba};

void set(Image& img, int x, int y, Rgba c) {
  uint8_t* p = img.at(x, y);
  p[0] = (uint8_t)c.r, p[1] = (uint8_t)c.g, p[2] = (uint8_t)c.b, p[3] = (uint8_t)c.a;
}

// One colour whose alpha runs across the picture, as anti-aliased shapes have.
Image one_colour_ramp(int w, int h, Rgba c) {
  Image img(w, h);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) set(img, x, y, {c.r, c.g, c.b, (x * 7 + y * 3) % 256});
  return img;
}

// Every pixel its own colour: more than 256 colours, with alpha.
Image many_colours(int w, int h, bool opaque) {
  Image img(w, h);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) set(img, x, y, {x * 5 % 256, y * 11 % 256, (x * y) % 256, opaque ? 255 : (x + y) % 256});
  return img;
}

// The picture in form f, or nothing when that form cannot hold it.
std::optional<std::string> encoded_as(const Image& img, PngForm f) {
  try {
    return encode_png_as(img, f);
  } catch (const std::invalid_argument&) {
    return std::nullopt;
  }
}

PngForm form_of(const std::string& png, int* depth = nullptr) {
  PngForm f{};
  int d = 0;
  EXPECT_TRUE(png_header_form(png, f, d));
  if (depth) *depth = d;
  return f;
}

void expect_same_pixels(const Image& want, const std::string& png) {
  Image got = decode_png(png);
  ASSERT_EQ(got.w, want.w);
  ASSERT_EQ(got.h, want.h);
  EXPECT_TRUE(got.px == want.px);
}

TEST(PngWriter, EveryFormThatHoldsThePixelsDecodesToThem) {
  Image grey_opaque(9, 5, {0, 0, 0, 255});
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 9; ++x) {
      int v = (x * 29 + y * 13) % 256;
      set(grey_opaque, x, y, {v, v, v, 255});
    }
  Image grey_alpha = grey_opaque;
  set(grey_alpha, 3, 2, {40, 40, 40, 17});
  set(grey_alpha, 0, 0, {0, 0, 0, 0});
  Image coloured = one_colour_ramp(33, 7, {22, 119, 255, 255});
  // Transparent pixels of different colours stay different.
  Image hidden(4, 1);
  set(hidden, 1, 0, {255, 0, 0, 0});
  set(hidden, 2, 0, {0, 255, 0, 0});
  for (const Image* img : {&grey_opaque, &grey_alpha, &coloured, &hidden}) {
    int held = 0;
    for (PngForm f : kAllForms)
      if (std::optional<std::string> png = encoded_as(*img, f)) {
        ++held;
        EXPECT_EQ(form_of(*png), f);
        expect_same_pixels(*img, *png);
      }
    EXPECT_GE(held, 2);
    expect_same_pixels(*img, encode_png(*img));
  }
}

TEST(PngWriter, FormsThatCannotHoldThePixelsAreRefused) {
  Image coloured = one_colour_ramp(8, 8, {22, 119, 255, 255});
  for (PngForm f : {PngForm::grey, PngForm::grey_alpha, PngForm::rgb})
    EXPECT_THROW(encode_png_as(coloured, f), std::invalid_argument) << (int)f;
  EXPECT_THROW(encode_png_as(many_colours(20, 20, true), PngForm::palette), std::invalid_argument);
}

TEST(PngWriter, LowBitDepthsForFewColoursAndCoarseGreys) {
  struct Case {
    std::vector<Rgba> colours;
    PngForm form;
    int depth;
  };
  const std::vector<Case> cases = {
      {{{22, 119, 255, 255}, {0, 0, 0, 0}}, PngForm::palette, 1},
      {{{22, 119, 255, 255}, {22, 119, 255, 90}, {22, 119, 255, 0}}, PngForm::palette, 2},
      {{{0, 0, 0, 255}, {255, 255, 255, 255}}, PngForm::grey, 1},
      {{{0, 0, 0, 255}, {85, 85, 85, 255}, {170, 170, 170, 255}, {255, 255, 255, 255}}, PngForm::grey, 2},
      {{{0, 0, 0, 255}, {17, 17, 17, 255}, {34, 34, 34, 255}, {51, 51, 51, 255}, {68, 68, 68, 255}}, PngForm::grey, 4},
  };
  for (const Case& c : cases) {
    Image img(40, 12);
    for (int y = 0; y < img.h; ++y)
      for (int x = 0; x < img.w; ++x) set(img, x, y, c.colours[(x / 3 + y) % c.colours.size()]);
    std::string png = encode_png(img);
    int depth = 0;
    PngForm f = form_of(png, &depth);
    EXPECT_TRUE(f == c.form || f == PngForm::palette) << c.colours.size();
    if (f != c.form) form_of(png = encode_png_as(img, c.form), &depth);
    EXPECT_EQ(depth, c.depth) << c.colours.size();
    expect_same_pixels(img, png);
  }
}

TEST(PngWriter, DegenerateAndTinySizes) {
  for (auto [w, h] : std::vector<std::pair<int, int>>{{1, 1}, {1, 7}, {7, 1}, {2, 2}, {3, 1}, {9, 2}}) {
    Image img = one_colour_ramp(w, h, {200, 10, 10, 255});
    set(img, 0, 0, {1, 2, 3, 4});
    for (PngForm f : {PngForm::palette, PngForm::rgba}) expect_same_pixels(img, encode_png_as(img, f));
    expect_same_pixels(img, encode_png(img));
  }
  // A zero-sized picture still makes a file, transparent, one pixel high or wide where
  // a side is 0: an empty card's w x 0 box gets a w x 1 picture.
  for (auto [w, h, gw, gh] : std::vector<std::tuple<int, int, int, int>>{{0, 0, 1, 1}, {0, 5, 1, 5}, {768, 0, 768, 1}}) {
    Image got = decode_png(encode_png(Image(w, h)));
    EXPECT_EQ(std::tuple(got.w, got.h, (int)got.at(gw - 1, gh - 1)[3]), std::tuple(gw, gh, 0));
  }
}

TEST(PngWriter, ChosenFormIsTheSmallestForTypicalPictures) {
  Image bordered = rounded_rect_ss(120, 48, 12, {255, 255, 255, 255}, Rgba{220, 220, 220, 255}, 1, 8);
  Image pill = rounded_rect_cov(300, 32, 16, {22, 119, 255, 255}, 8);
  Image scrim(256, 150, {0, 0, 0, 120});
  Image grey_ramp(64, 64);
  for (int y = 0; y < 64; ++y)
    for (int x = 0; x < 64; ++x) set(grey_ramp, x, y, {x * 4, x * 4, x * 4, 255});
  Image photo = many_colours(40, 30, true), clear_photo = many_colours(40, 30, false);
  for (const Image* img : {&bordered, &pill, &scrim, &grey_ramp, &photo, &clear_photo}) {
    std::string best = encode_png(*img);
    expect_same_pixels(*img, best);
    for (PngForm f : kAllForms)
      if (std::optional<std::string> png = encoded_as(*img, f)) {
        EXPECT_LE(best.size(), png->size()) << img->w << "x" << img->h << " form " << (int)f;
      }
  }
  // One colour with anti-aliased edges is what most pictures are: a palette of it wins.
  EXPECT_EQ(form_of(encode_png(pill)), PngForm::palette);
  // More than 256 colours go to true colour, with alpha only when needed.
  EXPECT_EQ(form_of(encode_png(photo)), PngForm::rgb);
  EXPECT_EQ(form_of(encode_png(clear_photo)), PngForm::rgba);
}

TEST(PngWriter, SameBytesEveryTime) {
  Image img = rounded_rect_ss(200, 60, 10, {22, 119, 255, 255}, Rgba{0, 0, 0, 255}, 2, 8);
  std::string a = encode_png(img);
  // Encoding other pictures in between leaves no trace in the next one.
  encode_png(many_colours(50, 50, false));
  encode_png(Image(0, 0));
  EXPECT_EQ(a, encode_png(img));
}

TEST(PngWriter, HeaderAndDecodeRejectNonPng) {
  PngForm f;
  int d;
  EXPECT_FALSE(png_header_form("not a png at all, not even close..", f, d));
  EXPECT_THROW(decode_png("\x89PNG\r\n\x1a\n garbage"), std::runtime_error);
}

}  // namespace
}  // namespace gen_res
