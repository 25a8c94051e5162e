// compose build --prune: removes the pictures of resources/images that a build wrote and
// that no layout of the project names any more (the pictures of removed blocks).
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace ub {

// The picture names every layout under root/ui names: each text value "images/<name>",
// and each text without a '/' (a bare picture name). Throws InputError naming a layout
// that cannot be read, so that nothing is removed on a partial view.
std::set<std::string> pictures_named(const std::string& root);

struct PruneOutcome {
  std::vector<std::string> removed;    // picture names, sorted
  std::vector<std::string> forgotten;  // no longer the tool's: gone, or changed by someone else
};

// Under the project lock: removes each picture of `written` (name -> digest of what the
// build wrote) that no layout names and that still holds what the build wrote; takes
// removed and foreign pictures out of `written`. Files the tool did not write are never
// touched.
PruneOutcome prune_pictures(const std::string& root, std::map<std::string, std::string>& written);

}  // namespace ub
