// The control tree: typed nodes with a position, payload fields and children.
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
};

NodePtr make_node(std::string type, std::string caption, Pos pos, Json payload = Json::object(),
                  NodeList children = {});

constexpr int SUBITEM_ID_BASE = 24000;
constexpr int RADIOBUTTON_ID_BASE = 94100;

}  // namespace ub
