#include "page/naming.h"

#include <charconv>

#include "kinds/registry.h"

namespace ub {

namespace {

// Room for `extra` more keys. The members are moved over by hand: the vector itself would
// copy each whole value as it grows (a member's move may throw, its key being const).
void make_room(Json::object_t& obj, size_t extra) {
  using Members = Json::object_t::Container;
  Members& members = obj;
  if (members.capacity() >= members.size() + extra) return;
  Members grown;
  grown.reserve(members.size() + extra);
  for (auto& [key, value] : members) grown.emplace_back(key, std::move(value));
  members.swap(grown);
}

void append_number(std::string& out, size_t n) {
  char buf[24];
  out.append(buf, std::to_chars(buf, buf + sizeof buf, n).ptr);
}

// Numbers a block whose kind is known (null: unknown or no type) and, given a path,
// writes its place. The keys it writes are found or added in one pass over the block.
Json& name_known(FlowState& flow, Json& blk, const BlockKind* k, const std::string* path) {
  if (!blk.is_object())
    throw InputError(cat("a block must be a JSON object, got ", type_name(blk), ": ", blk.dump()));
  int seq = flow.next_seq();
  auto& obj = blk.get_ref<Json::object_t&>();
  make_room(obj, 3);  // the values below stay in place while keys are added
  Json *own = nullptr, *seq_v = nullptr, *name_v = nullptr, *path_v = nullptr;
  for (auto& [key, value] : obj) {
    if (key == "name") own = &value;
    else if (key == "_seq") seq_v = &value;
    else if (key == "_name") name_v = &value;
    else if (key == "_path") path_v = &value;
  }
  const auto added = [&](const char* key) { return &obj.emplace_back(key, nullptr).second; };
  *(seq_v ? seq_v : added("_seq")) = seq;
  // An explicit name wins; the number is consumed either way.
  std::string name = own && truthy(*own) ? to_text(*own) : cat(k ? k->prefix : "Block", seq);
  *(name_v ? name_v : added("_name")) = std::move(name);
  if (path) *(path_v ? path_v : added("_path")) = *path;
  return blk;
}

// path holds the list's place; each block's index is appended to it and taken off again.
void name_list(FlowState& flow, Json& blocks, std::string& path) {
  if (!truthy(blocks)) return;
  if (!blocks.is_array())
    throw InputError(cat("\"blocks\" must be a list of blocks, got ", type_name(blocks), ": ", blocks.dump()));
  const size_t base = path.size();
  for (size_t i = 0; i < blocks.size(); ++i) {
    Json& blk = blocks[i];
    const BlockKind* k = block_kinds().of(blk);
    path += '[';
    append_number(path, i);
    path += ']';
    name_known(flow, blk, k, &path);
    if (k && k->holds_blocks) {
      auto it = blk.find("blocks");
      if (it != blk.end()) {
        path += ".blocks";
        name_list(flow, *it, path);
      }
    }
    path.resize(base);
  }
}

}  // namespace

Json& name_block(FlowState& flow, Json& blk) { return name_known(flow, blk, block_kinds().of(blk), nullptr); }

void name_tree(FlowState& flow, Json& blocks, const std::string& path) {
  std::string at = path;
  at.reserve(64);
  name_list(flow, blocks, at);
}

}  // namespace ub
