// Make-style dependency files, as compilers write them with -MD: the targets, a colon and
// every file the run read, so Make and Ninja run compose again when one of them changes.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ub {

// One path as Make and Ninja read it: blanks, '#' and '$' escaped. A path holding a line
// break cannot be written and throws InputError.
std::string depfile_path(const std::string& path);

// "t1 t2: d1 \\\n  d2\n": each dependency once, in the order given.
std::string depfile_text(const std::vector<std::string>& targets, const std::vector<std::string>& deps);

// The files one run reads, in the order read: the spec, the block library (its token file
// and every block definition), the required-keys table, the icon index and each icon
// picture the page used, and the render font when there is one; a theme (tokens file)
// follows the library's token file. Paths are absolute.
std::vector<std::string> run_inputs(const std::string& spec, const std::string& blocks_dir,
                                    const std::string& required_keys, const std::vector<std::string>& icon_files,
                                    const std::optional<std::string>& font, const std::string& theme = "");

}  // namespace ub
