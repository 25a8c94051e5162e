// The layout text written in pieces straight to its file, once the page has passed its
// checks: a large page's text is never held whole in memory.
#pragma once

#include <functional>
#include <string_view>

#include "controls/serialize.h"

namespace ub {

using TextSink = std::function<void(std::string_view)>;

// The records of write_layout (with the same refusals), without the text. With `plain`,
// also whether every text the layout would hold is valid UTF-8 without a forbidden
// character, so that writing it can neither fail nor be refused.
LayoutText index_layout(const NodeList& nodes, const EmitLayer& required_keys, bool* plain = nullptr);
// write_layout's text, handed to `put` in pieces of about a megabyte.
void stream_layout(const LayoutRoot& root, const NodeList& nodes, const EmitLayer& required_keys,
                   const TextSink& put);

// The layout of a composed page, checked as the page's layout() checks it. When its text
// can be written without a refusal, the text is left out and `streamed` is set: the
// caller writes it with stream_layout(root, layout.nodes, ...).
struct CheckedLayout {
  LayoutText layout;
  LayoutRoot root;
  bool streamed = false;
};

}  // namespace ub
