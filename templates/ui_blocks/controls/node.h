// The control tree: typed nodes with a position, payload fields and children.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/values.h"
#include "controls/emit_layer.h"
#include "controls/payload.h"

namespace ub {

struct Pos {
  int left = 0, top = 0, width = 0, height = 0;
  Json to_json() const;  // {"left","top","width","height"} in that order
};

struct Node;
using NodePtr = std::shared_ptr<Node>;
using NodeList = std::vector<NodePtr>;

struct Node {
  std::string type;
  std::string caption;
  Pos pos;
  Payload payload;
  NodeList children;
  int place = -1;  // the block that made the node: an index into the page's place lines

  // Moves this node and, recursively, its children down by dy.
  void shift(int dy);
};

NodePtr make_node(std::string type, std::string caption, Pos pos, Json payload = Json::object(),
                  NodeList children = {});
NodePtr make_node(std::string type, std::string caption, Pos pos, Payload payload, NodeList children = {});

// Gives `place` to nodes[from..] and to the nodes below them that have none yet. A
// node that has one is an inner block's, and so is everything below it.
void claim_nodes(const NodeList& nodes, size_t from, int place);

// `msg` and then, one a line, the place line (from `places`) of each node's block, each
// line once and in the order of the nodes; nodes without a place add nothing.
std::string with_places(std::string msg, const std::vector<const Node*>& nodes,
                        const std::vector<std::string>& places);

}  // namespace ub
