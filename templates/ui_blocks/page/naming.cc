#include "page/naming.h"

#include "kinds/registry.h"

namespace ub {

namespace {

// The caption prefix of a block without a name.
std::string prefix_of(const Json& blk) {
  const BlockKind* k = block_kinds().of(blk);
  return k ? k->prefix : "Block";
}

}  // namespace

Json& name_block(FlowState& flow, Json& blk) {
  if (!blk.is_object())
    throw InputError(cat("a block must be a JSON object, got ", type_name(blk), ": ", blk.dump()));
  int seq = flow.next_seq();
  blk["_seq"] = seq;
  // An explicit name wins; the number is consumed either way.
  const Json& own = get(blk, "name");
  blk["_name"] = truthy(own) ? to_text(own) : cat(prefix_of(blk), seq);
  return blk;
}

void name_tree(FlowState& flow, Json& blocks, const std::string& path) {
  if (!truthy(blocks)) return;
  if (!blocks.is_array())
    throw InputError(cat("\"blocks\" must be a list of blocks, got ", type_name(blocks), ": ", blocks.dump()));
  for (size_t i = 0; i < blocks.size(); ++i) {
    // Room for the three keys written below at once: a mapping's keys are copied as it grows.
    if (blocks[i].is_object()) blocks[i].get_ref<Json::object_t&>().reserve(blocks[i].size() + 3);
    Json& blk = name_block(flow, blocks[i]);
    const std::string at = cat(path, "[", i, "]");
    blk["_path"] = at;
    const BlockKind* k = block_kinds().of(blk);
    if (k && k->holds_blocks) {
      auto it = blk.find("blocks");
      if (it != blk.end()) name_tree(flow, *it, at + ".blocks");
    }
  }
}

}  // namespace ub
