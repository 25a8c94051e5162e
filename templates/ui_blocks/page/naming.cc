// Page-wide block numbering: every block gets _seq and _name in reading order, through
// containers, so captions derived from names never repeat between cards; and _path, its
// place in spec.json for the messages.
#include "compose.h"
#include "kinds/registry.h"

namespace ub {

namespace {

// The caption prefix of a block without a name.
std::string prefix_of(const Json& blk) {
  const BlockKind* k = block_kinds().of(blk);
  return k ? k->prefix : "Block";
}

}  // namespace

int Composer::next_seq() { return ++seq_; }

Json& Composer::name_block(Json& blk) {
  if (!blk.is_object())
    throw InputError(cat("a block must be a JSON object, got ", type_name(blk), ": ", blk.dump()));
  int seq = next_seq();
  blk["_seq"] = seq;
  // An explicit name wins; the number is consumed either way.
  const Json& own = get(blk, "name");
  blk["_name"] = truthy(own) ? to_text(own) : cat(prefix_of(blk), seq);
  return blk;
}

void Composer::name_tree(Json& blocks, const std::string& path) {
  if (!truthy(blocks)) return;
  if (!blocks.is_array())
    throw InputError(cat("\"blocks\" must be a list of blocks, got ", type_name(blocks), ": ", blocks.dump()));
  for (size_t i = 0; i < blocks.size(); ++i) {
    Json& blk = name_block(blocks[i]);
    const std::string at = cat(path, "[", i, "]");
    blk["_path"] = at;
    const BlockKind* k = block_kinds().of(blk);
    if (k && k->holds_blocks) {
      auto it = blk.find("blocks");
      if (it != blk.end()) name_tree(*it, at + ".blocks");
    }
  }
}

}  // namespace ub
