// Test helpers of the row family: a named, scanned page and lookups in node lists.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "page_bench.h"
#include "rows/rows.h"

namespace rowtest {

// A page bench whose row family is scanned, as a run does before any block.
inline std::unique_ptr<ubtest::PageBench> page(int w, int h, Json blocks) {
  auto c = ubtest::bench(w, h, std::move(blocks));
  c->scan();
  return c;
}

inline const ub::BlockRecord& block(ubtest::PageBench& c, size_t i) { return c.block(i); }

inline std::vector<std::string> captions(const ub::NodeList& nodes) {
  std::vector<std::string> out;
  for (const auto& n : nodes) out.push_back(n->caption);
  return out;
}

inline const ub::Node* find(const ub::NodeList& nodes, const std::string& caption) {
  for (const auto& n : nodes)
    if (n->caption == caption) return n.get();
  return nullptr;
}

// The message of the stop raised by f, or "" when it does not stop.
template <class F>
std::string stop_message(F f) {
  try {
    f();
  } catch (const ub::StopError& e) {
    return e.what();
  }
  return "";
}

inline const std::vector<std::pair<int, int>> kSizes = {{320, 240}, {480, 272}, {800, 480}, {1024, 600}};

}  // namespace rowtest
