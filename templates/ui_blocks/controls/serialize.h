// The layout file written straight from the control tree, with the index of its
// control records that the later stages (caption checks, logic skeleton, report) read.
#pragma once

#include <string>
#include <vector>

#include "controls/emit_layer.h"
#include "controls/node.h"

namespace ub {

// One control record of the written layout, in pre-order.
struct ControlRef {
  const Node* node = nullptr;
  int n = 0;                             // the record's number within its type
  long long id = 0;                      // 0 when the record has none
  const std::string* caption = nullptr;  // null when the record has none
  std::string key() const { return node->type + "__" + std::to_string(n); }
};

// The root record's own fields.
struct LayoutRoot {
  int width = 0, height = 0;
  long long background = 0;
};

struct LayoutText {
  std::string text;  // the file's bytes
  NodeList nodes;    // keeps the records of `controls` alive
  std::vector<ControlRef> controls;
  size_t top_level = 0;  // records directly under the root
};

// Every record states its type's whole field set in a fixed order: payload keys replace
// defaults in place and new ones follow in payload order, then the required keys the
// table adds, then the children. One counter per type runs through the whole forest.
LayoutText write_layout(const LayoutRoot& root, const NodeList& nodes, const EmitLayer& required_keys);

}  // namespace ub
