// Test helpers for the page-level builders: a page bench at a screen size, blocks numbered
// by hand, node look-up by caption and the message of a stop.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "page_bench.h"
#include "page_blocks/page_blocks.h"

namespace pbtest {

using ubtest::bench;

// A block as a page reads it, numbered `seq` (see ubtest::Named).
inline ubtest::Named named(Json blk, int seq) { return ubtest::Named(std::move(blk), seq); }

// Depth-first search by caption.
inline ub::NodePtr find(const ub::NodeList& nodes, const std::string& caption) {
  for (const auto& nd : nodes) {
    if (nd->caption == caption) return nd;
    if (auto hit = find(nd->children, caption)) return hit;
  }
  return nullptr;
}

inline ub::NodePtr must_find(const ub::NodeList& nodes, const std::string& caption) {
  auto nd = find(nodes, caption);
  if (!nd) ADD_FAILURE() << "no node " << caption;
  return nd ? nd : std::make_shared<ub::Node>();
}

inline std::vector<std::string> captions(const ub::NodeList& nodes) {
  std::vector<std::string> out;
  for (const auto& nd : nodes) out.push_back(nd->caption);
  return out;
}

inline std::string bg_name(const ub::Node& nd) {
  const Json bg = nd.payload.find("backgroundPic").to_json();
  std::string pic = bg.is_string() ? bg.get<std::string>() : "";
  return pic.rfind("images/", 0) == 0 ? pic.substr(7) : pic;
}

inline long long color0(const ub::Node& nd) { return nd.payload.find("colorTab").to_json()["color0"].get<long long>(); }

inline std::tuple<int, int, int, int> ltwh(const ub::Node& nd) {
  return {nd.pos.left, nd.pos.top, nd.pos.width, nd.pos.height};
}

// The message of the stop that f raises, or "" when it does not stop.
inline std::string stop_message(const std::function<void()>& f) {
  try {
    f();
  } catch (const ub::StopError& e) {
    return e.what();
  }
  return "";
}

}  // namespace pbtest
