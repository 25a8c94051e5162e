// Rules for the names under which pictures are registered: a name must be a plain file
// name the file system can hold, and one name never stands for two different pictures.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "assets/registry.h"
#include "gen_res/image.h"

namespace ub {

// The file system holds 255 bytes per name; the rest is room for the suffix of the
// temporary file every picture is first written to (and a variant's "_n").
constexpr size_t kMaxPictureName = 200;

// Refuses (StopError) a name that holds a path separator or a NUL, is empty, "." or "..",
// or is longer than kMaxPictureName bytes.
void check_picture_name(const std::string& name);

// FNV-1a (64-bit) over a picture's sides (4 little-endian bytes each) and its pixels.
uint64_t pixel_digest(const gen_res::Image& img);

// Eight hex digits of FNV-1a over the little-endian bits of every value, folded to 32 bits
// as (h >> 32) ^ h: for names of pictures drawn from data.
std::string data_digest(const std::vector<double>& data);

// Entries with the same drawing parameters (which draw the same picture).
bool same_picture(const Asset& a, const Asset& b);

// Draws an entry, to tell pictures of different parameters apart by their pixels.
using Painter = std::function<gen_res::Image(const Asset&)>;

// The pictures of a page by name. A name that holds a different picture gives the later
// one the first name of the form stem "_" n ".png" (n = 2, 3, ...) that is free or holds
// that same picture, so registration order decides which keeps the plain name. Entries of
// different parameters are the same picture when `paint` draws them alike (without a
// painter, when their parameters agree). Names of `earlier` (the sizes composed before in
// the same run) count as taken by their pictures.
class PictureRegistry {
 public:
  explicit PictureRegistry(const AssetMap* earlier = nullptr, Painter paint = {})
      : earlier_(earlier), paint_(std::move(paint)) {}

  // Checks the name, registers `a` and returns the name it stands under.
  const std::string& put(const std::string& name, Asset a);
  const AssetMap& all() const { return own_; }

 private:
  // The pixels of the picture being registered, drawn when first needed.
  struct Pixels {
    uint64_t digest = 0;
    gen_res::Image image;
  };
  const Asset* taken(const std::string& name) const;
  const std::string& keep(const std::string& name, Asset a);
  const std::string& variant_of(const std::string& name, Asset a, std::optional<Pixels>& mine);
  // Whether the name (taken) holds a's picture.
  bool holds(const std::string& name, const Asset& a, std::optional<Pixels>& mine);
  // What variants are found by: the digest of the pixels with a painter, else the
  // parameters' hash.
  uint64_t key_of(const Asset& a, std::optional<Pixels>& mine);
  uint64_t key_of_taken(const std::string& name);

  AssetMap own_;
  const AssetMap* earlier_;
  Painter paint_;
  std::unordered_map<std::string, uint64_t> drawn_;  // digests of the names' pictures drawn to compare
  // Per stem whose plain name holds another picture: the variants found taken so far
  // (n = 2 .. next - 1, by the key of their pictures), and the next n to try.
  struct Variants {
    int next = 2;
    std::unordered_multimap<uint64_t, int> taken;
  };
  std::unordered_map<std::string, Variants> variants_;
};

}  // namespace ub
