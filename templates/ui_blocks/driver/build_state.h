// What `compose build` keeps in the project's tool folder .compose/ between builds: per
// page the stamps of every file it read and what it wrote, and every picture a build
// wrote, so an unchanged page is not composed again and --prune removes only the tool's
// own pictures.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_digest.h"

namespace ub {

// A file as a build system sees it: modification time and size. A missing file has size -1.
struct FileStamp {
  std::string path;
  long long mtime_ns = 0, size = -1;
  bool operator==(const FileStamp&) const = default;
};

FileStamp stamp_of(const std::string& path);
// True when the file on disk still has the recorded stamp.
bool unchanged(const FileStamp& s);

struct PageStamp {
  std::string config;              // the build's request: spec, page, sizes, layout place, theme
  std::vector<std::string> sizes;    // "800x480", as composed
  std::vector<std::string> layouts;  // the layout of each size, relative to the project
  std::vector<FileStamp> inputs;   // every file the page's run read, the tool itself included
  std::map<std::string, std::string> outputs;   // file written (relative to the project) -> digest
  std::map<std::string, std::string> pictures;  // picture as the page drew it -> digest
  std::map<std::string, std::string> renamed;   // picture as drawn -> name written (when it differs)
};

struct BuildState {
  std::map<std::string, PageStamp> pages;      // by page name
  std::map<std::string, std::string> written;  // every picture a build wrote -> its digest
};

// A missing or unreadable state reads as empty: every page is composed again.
BuildState read_build_state(const std::string& path);
std::string build_state_text(const BuildState& s);

}  // namespace ub
