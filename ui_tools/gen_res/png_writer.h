// Lossless PNG encoding that picks, per picture, the smallest form decoding to exactly
// the same RGBA pixels: palette (with transparency), grey, grey+alpha, RGB or RGBA, at
// the lowest bit depth that holds the values, with the better of a few filter choices.
// The bytes depend on the pixels alone (deterministic).
#pragma once

#include <string>

#include "gen_res/image.h"

namespace gen_res {

enum class PngForm { palette, grey, grey_alpha, rgb, rgba };

// The smallest form. A zero-sized image is written as one transparent pixel.
std::string encode_png(const Image& img);
// For pictures that are shown once and thrown away: RGB (RGBA when not opaque), one
// filter, a cheap compression (zlib's run-length strategy); many times faster than
// encode_png, for about twice its bytes.
std::string encode_png_fast(const Image& img);
// One given form (at its lowest bit depth); throws std::invalid_argument if that form
// cannot hold the pixels exactly (more than 256 colours, colour in a grey form, alpha in
// an opaque form).
std::string encode_png_as(const Image& img, PngForm form);

// Colour type and bit depth of PNG bytes, read from the header; false if they are no PNG.
bool png_header_form(const std::string& png, PngForm& form, int& depth);
// RGBA pixels of PNG bytes; throws std::runtime_error on failure.
Image decode_png(const std::string& png);

}  // namespace gen_res
