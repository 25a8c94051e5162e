// Node basics: the position record, moving a subtree, construction.
#include "controls/node.h"

namespace ub {

Json Pos::to_json() const {
  Json j = Json::object();
  j["left"] = left;
  j["top"] = top;
  j["width"] = width;
  j["height"] = height;
  return j;
}

void Node::shift(int dy) {
  pos.top += dy;
  for (auto& c : children) c->shift(dy);
}

NodePtr make_node(std::string type, std::string caption, Pos pos, Json payload, NodeList children) {
  if (!payload.is_object()) payload = Json::object();
  return std::make_shared<Node>(Node{std::move(type), std::move(caption), pos, std::move(payload), std::move(children)});
}

}  // namespace ub
