// Node basics: the position record, moving a subtree, construction.
#include "controls/node.h"

namespace ub {

Json Pos::to_json() const { return object_of("left", left, "top", top, "width", width, "height", height); }

void Node::shift(int dy) {
  pos.top += dy;
  for (auto& c : children) c->shift(dy);
}

NodePtr make_node(std::string type, std::string caption, Pos pos, Json payload, NodeList children) {
  return make_node(std::move(type), std::move(caption), pos, Payload(std::move(payload)), std::move(children));
}

NodePtr make_node(std::string type, std::string caption, Pos pos, Payload payload, NodeList children) {
  return std::make_shared<Node>(Node{std::move(type), std::move(caption), pos, std::move(payload), std::move(children)});
}

void claim_nodes(const NodeList& nodes, size_t from, int place) {
  for (size_t i = from; i < nodes.size(); ++i) {
    Node& n = *nodes[i];
    if (n.place >= 0) continue;
    n.place = place;
    claim_nodes(n.children, 0, place);
  }
}

std::string with_places(std::string msg, const std::vector<const Node*>& nodes,
                        const std::vector<std::string>& places) {
  std::vector<bool> said(places.size());
  for (const Node* n : nodes) {
    if (!n || n->place < 0 || n->place >= (int)places.size() || said[n->place]) continue;
    said[n->place] = true;
    msg += "\n" + places[n->place];
  }
  return msg;
}

}  // namespace ub
