// Access to the icon library components/icons: monochrome pictures (white, alpha =
// coverage) at fixed size tiers, an outlined form (state "off") and, where the icon
// set has one, a filled form (state "on"); index.json maps semantic tokens to records.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "gen_res/image.h"

namespace iconlib {

using Json = nlohmann::ordered_json;

// The size tiers of the library, largest first.
const std::vector<int>& tiers();

// The tier for a picture size: the largest tier not above the size, the smallest
// tier for sizes below it.
int tier_of(int size);
// The tier whose picture, reduced, fills a box of `size`: the smallest tier not below
// the size, the largest tier for sizes above it.
int tier_covering(int size);

// The library of one directory: its index read once by load(), its pictures read when
// first produced. A default Index is no library at all. Not copyable: the records are
// looked up in place.
class Index {
 public:
  Index() = default;
  Index(Index&&) = default;
  Index& operator=(Index&&) = default;
  Index(const Index&) = delete;
  Index& operator=(const Index&) = delete;

  // The library at dir (normally <repo>/components/icons); unavailable when its
  // index.json cannot be read or holds no "icons" mapping.
  static Index load(const std::string& dir);

  const std::string& root() const { return root_; }
  // True when the library's index loaded.
  bool available() const { return ok_; }

  // The record of a token (name, icon, category, style, states), or null when the
  // library has no such semantic name or is unavailable.
  const Json* find(const std::string& token) const;
  std::optional<Json> lookup(const std::string& token) const;

  // The files of the library read so far: index.json when it loaded, then each picture
  // in the order first read. For depfiles and build stamps.
  std::vector<std::string> files_read() const;

  // The token's picture at the tier of `size`, recoloured to `color` (alpha scaled by
  // the picture's coverage), with {name, tier, render}. A tier larger than the size is
  // reduced to size x size by area averaging, so the picture never exceeds the box.
  // state "on" takes the filled form where there is one. `tier`: the tier to take, 0 for
  // tier_of(size). Throws std::runtime_error for an unknown token or a missing picture.
  std::pair<gen_res::Image, Json> produce(const std::string& token, int size, gen_res::Rgba color,
                                          const std::optional<std::string>& state = {}, int tier = 0) const;

 private:
  std::string root_;
  bool ok_ = false;
  Json icons_;
  std::unordered_map<std::string_view, const Json*> by_token_;  // the records of icons_
  mutable std::map<std::string, gen_res::Image> pictures_;      // read once each, by file path
  mutable std::vector<std::string> read_order_;                  // the keys of pictures_, first read first
};

}  // namespace iconlib
