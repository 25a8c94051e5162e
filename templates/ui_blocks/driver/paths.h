// Where the program finds its block library, the sibling tools and the repository.
#pragma once

#include <string>

namespace ub {

struct Paths {
  std::string here;      // the program's own directory
  std::string repo;      // two levels above here
  std::string ui_tools;  // repo/ui_tools if it exists, else beside the repository
};

// Resolved once from the executable's location unless init_paths was called first.
const Paths& paths();
void init_paths(const std::string& here);

// The block library: $TVUITOOL_BLOCKS when set and not empty, else here/blocks.
std::string blocks_dir();

}  // namespace ub
