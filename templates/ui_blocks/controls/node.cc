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
  auto n = std::make_shared<Node>();
  n->type = std::move(type);
  n->caption = std::move(caption);
  n->pos = pos;
  n->payload = (payload.is_object() && !payload.empty()) ? std::move(payload) : Json::object();
  n->children = std::move(children);
  return n;
}

}  // namespace ub
