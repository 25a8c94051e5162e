#include "controls/box_sizes.h"

namespace ub {

namespace {

const Node* first_negative(const NodeList& nodes) {
  for (const auto& n : nodes) {
    if (n->pos.width < 0 || n->pos.height < 0) return n.get();
    if (const Node* c = first_negative(n->children)) return c;
  }
  return nullptr;
}

}  // namespace

void check_box_sizes(const NodeList& nodes, int W, int H) {
  const Node* n = first_negative(nodes);
  if (!n) return;
  throw ScreenTooSmall(cat("spec.json: resolution: ", W, "x", H, " is too small for this page: ",
                           n->caption.empty() ? n->type : n->caption, " gets a box of ", n->pos.width, "x",
                           n->pos.height),
                       n->caption, n->pos);
}

}  // namespace ub
