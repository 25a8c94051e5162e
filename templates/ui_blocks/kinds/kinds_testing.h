// Test helper of the block kinds: what composing a page of blocks stops with.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "page_bench.h"

namespace ub {

// The message a page of these blocks at w x h is refused with, or "" when it composes.
// `project_root`: where the page's shipped pictures are read.
inline std::string refusal_of(const Json& blocks, int w = 800, int h = 480, const std::string& project_root = "") {
  try {
    Composer(ubtest::page_spec(w, h, blocks), "main", ubtest::installation(), nullptr, project_root).layout();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

// The notes of a page of these blocks at w x h that say a text does not fit its box.
inline std::vector<std::string> unfit_texts(const Json& blocks, int w, int h, const std::string& project_root = "") {
  Composer c(ubtest::page_spec(w, h, blocks), "main", ubtest::installation(), nullptr, project_root);
  c.layout();
  std::vector<std::string> out;
  for (const auto& note : c.notes().all())
    if (note.find("文案过长") != std::string::npos) out.push_back(note);
  return out;
}

}  // namespace ub
