// The project file compose.json of `compose build`: which spec makes which page at which
// sizes, and the project's theme. Read, checked with located messages, and described by
// a JSON Schema of its own.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/values.h"
#include "driver/screen_sizes.h"

namespace ub {

inline constexpr const char* kProjectFileName = "compose.json";

struct PageEntry {
  size_t index = 0;        // place in "pages", for messages
  std::string spec;        // as written, relative to the project
  std::string spec_path;   // absolute
  std::string page;        // the page name: "page", else the default of a single run
  bool named = false;      // "page" was given
  std::vector<ScreenSize> sizes;  // empty: the spec's own resolution
};

struct ProjectFile {
  std::string path;  // the file, absolute
  std::string root;  // the project: the file's directory
  std::vector<PageEntry> pages;
  std::optional<std::string> theme;  // absolute; a tokens file every page is composed with
  std::string ui_layout = "auto";    // auto, flat or res
};

// The project file's document checked against its rules. Messages start with the file's
// path and the place in it ("compose.json: pages[1].sizes[0]: ..."). Paths are resolved
// against root; whether the files exist is checked by read_project_file.
ProjectFile project_from_json(const Json& doc, const std::string& path, const std::string& root);

// Reads and checks the project file at path (its directory is the project). Throws
// InputError for an unreadable or malformed file, a broken rule, a missing spec, a missing
// theme or one that the library's tokens do not take (see spec/theme.h).
ProjectFile read_project_file(const std::string& path);

// The JSON Schema (draft 2020-12) of the project file.
Json project_file_schema();

}  // namespace ub
