// Plain shapes from exact area coverage: every pixel gets the fraction of its square
// that the shape covers, so edges and corners are smooth without supersampling whole
// pictures. Colour stays the shape's own colour up to the edge (straight alpha, no halo).
#pragma once

#include <optional>
#include <string>

#include "gen_res/image.h"

namespace gen_res {

// Coverage (0..255) of a w x h rounded rectangle with corner radius `radius`; the
// radius is clamped to half the shorter side. `ss` is accepted for callers that
// name a supersampling factor: exact coverage is what supersampling tends to.
Mask coverage_mask(int w, int h, double radius, int ss = 8);

// A rounded rectangle filled with `fill`, its alpha scaled by the coverage.
Image rounded_rect_cov(int w, int h, double radius, Rgba fill, int ss = 8);

// A rounded rectangle with a border ring of width `border_w` in `border` around a
// `fill` interior whose corner radius shrinks by the border width.
Image bordered_cov(int w, int h, double radius, Rgba fill, Rgba border, double border_w, int ss = 8);

// The shape of a registry entry: bordered when a border is given.
Image rounded_rect_ss(int w, int h, double radius, Rgba fill, std::optional<Rgba> border = {},
                      double border_w = 1, int ss = 8);

// Writes img as out_dir/name (PNG) and returns that path.
std::string save(const Image& img, const std::string& out_dir, const std::string& name);

// Per-pixel coverage in [0, 1] of the rounded rectangle [x0, x1] x [y0, y1] (real
// bounds, radius r) on a w x h grid, row-major. Exposed for the recipes and tests.
void rrect_coverage(int w, int h, double x0, double y0, double x1, double y1, double r, std::vector<float>& out);

}  // namespace gen_res
