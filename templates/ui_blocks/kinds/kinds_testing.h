// Test helper of the block kinds: what composing a page of blocks stops with.
#pragma once

#include <stdexcept>
#include <string>

#include "page_bench.h"

namespace ub {

// The message a page of these blocks at w x h is refused with, or "" when it composes.
inline std::string refusal_of(const Json& blocks, int w = 800, int h = 480) {
  try {
    ubtest::composer(ubtest::page_spec(w, h, blocks))->layout();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

}  // namespace ub
