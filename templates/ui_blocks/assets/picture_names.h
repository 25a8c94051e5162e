// Rules for the names under which pictures are registered: a name must be a plain file
// name the file system can hold, and one name must never stand for two pictures.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "assets/registry.h"
#include "spec/notes.h"

namespace ub {

// The file system holds 255 bytes per name; the rest is room for the suffix of the
// temporary file every picture is first written to.
constexpr size_t kMaxPictureName = 200;

// Refuses (StopError) a name that holds a path separator or a NUL, is empty, "." or "..",
// or is longer than kMaxPictureName bytes.
void check_picture_name(const std::string& name);

// Eight hex digits that change with any of the values: for names of pictures drawn
// from data.
std::string data_digest(const std::vector<double>& data);

// Entries that draw the same picture.
bool same_picture(const Asset& a, const Asset& b);



// Checks the name, stores a under it and notes a replaced different picture.
void put_picture(AssetMap& assets, Notes& notes, const std::string& name, Asset a);

}  // namespace ub
