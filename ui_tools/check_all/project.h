// A Moraine project as the checks see it: its layout files, read and flattened, its
// pictures and its logic sources.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "design_lint/design_lint.h"
#include "json2img/layout_model.h"

namespace check {

struct LayoutFile {
  std::string rel;      // relative to the project root, e.g. ui/main.json
  std::string page;     // the file name without .json
  std::string res_dir;  // "480x272" for ui/480x272/*.json, empty for ui/*.json
  layout::Layout lay;   // with the character scan's findings
  std::string error;    // why the file is unusable; empty when it was read
  bool ok() const { return error.empty(); }
};

struct Project {
  Project() = default;
  Project(Project&&) = default;
  Project& operator=(Project&&) = default;
  Project(const Project&) = delete;

  std::string root;
  std::vector<LayoutFile> layouts;  // flat ones first, each group sorted by name
  lint::Settings lint;              // from the design tokens, handed in by the driver
  // The design lint's decoded pictures, filled as its rules ask for them.
  mutable std::shared_ptr<lint::PictureCache> lint_pictures;

  std::string images_dir() const { return root + "/resources/images"; }
  std::string logic_rel(const std::string& page) const { return "src/logic/" + page + "Logic.cc"; }
  // The names called or defined in the page's logic source (identifiers followed by
  // "(", comments left out); nullopt when the file is missing or leads out of the project.
  const std::optional<std::unordered_set<std::string>>& logic_calls(const std::string& page) const;

 private:
  mutable std::map<std::string, std::optional<std::unordered_set<std::string>>> logic_;
};

// Reads every layout under root/ui. Unreadable layouts, and layouts that lead out of
// the project through a symbolic link, are kept with their error.
Project load_project(const std::string& root);
// Reads one layout file as check_all does; an unusable one gets its error.
void read_layout(LayoutFile& lf, const std::string& path);

// C and C++ comments replaced by blanks; string and character literals kept.
std::string strip_comments(const std::string& code);
// The whole identifiers of code that are followed by "(" (blanks between allowed).
std::unordered_set<std::string> callables(const std::string& code);
// True when code holds name as a whole identifier followed by "(".
bool defines_callback(const std::string& code, const std::string& name);

}  // namespace check
