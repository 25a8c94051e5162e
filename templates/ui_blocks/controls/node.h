// The control tree and its serialisation into control records.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/values.h"
#include "controls/emit_layer.h"

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
  Json payload = Json::object();
  NodeList children;

  // Moves this node and, recursively, its children down by dy.
  void shift(int dy);
  // The full control record; empties payload.
  Json to_ctrl(const std::string& key, int n);
};

NodePtr make_node(std::string type, std::string caption, Pos pos, Json payload = Json::object(),
                  NodeList children = {});

// Control key -> record, one counter per type across the whole forest, pre-order.
Json serialize(NodeList& nodes, const EmitLayer& required_keys);

constexpr int SUBITEM_ID_BASE = 24000;
constexpr int RADIOBUTTON_ID_BASE = 94100;

}  // namespace ub
