#include "page/page_records.h"

namespace ub {

namespace {

class Reader {
 public:
  Reader(PageRecords& out, const std::map<std::string, Json>& library, const KindTable& kinds)
      : out_(out), library_(library), kinds_(kinds) {}

  // A block of the kind k (null: unknown) with the next number, its caption base and its
  // place; a container's blocks follow it in the numbering.
  BlockRecord read(const Json& raw, const BlockKind* k, const std::string& path, bool numbered = true) {
    BlockRecord b = read_record(raw, k, keys_of(k));
    b.path = path;
    const Json& own = get(raw, "name");
    // An explicit name wins; the number is consumed either way.
    b.named = truthy(own);
    if (numbered) {
      b.seq = ++seq_;
      b.name = b.named ? to_text(own) : cat(k ? k->prefix : "Block", b.seq);
    } else if (b.named) {
      b.name = to_text(own);
    }
    if (k && k->holds_blocks) list(get(raw, "blocks"), path + ".blocks", b.blocks);
    return b;
  }

  void list(const Json& blocks, const std::string& path, std::vector<BlockRecord>& into) {
    if (!blocks.is_array()) return;
    into.reserve(blocks.size());
    for (size_t i = 0; i < blocks.size(); ++i)
      into.push_back(read(blocks[i], kinds_.of(blocks[i]), cat(path, "[", i, "]")));
  }

 private:
  const KindKeys* keys_of(const BlockKind* k) {
    if (!k) return nullptr;
    auto def = library_.find(k->type);
    if (def == library_.end()) return nullptr;
    auto [it, fresh] = out_.keys.try_emplace(k);
    if (fresh) it->second = kind_keys(def->second);
    return &it->second;
  }

  PageRecords& out_;
  const std::map<std::string, Json>& library_;
  const KindTable& kinds_;
  int seq_ = 0;
};

bool has_flow(const std::vector<BlockRecord>& blocks, Flow f) {
  for (const BlockRecord& b : blocks)
    if (b.kind && b.kind->flow == f) return true;
  return false;
}

}  // namespace

PageRecords read_page_records(const Json& page, const std::map<std::string, Json>& library, const KindTable& kinds) {
  PageRecords out;
  Reader r(out, library, kinds);
  r.list(get(page, "blocks"), "page.blocks", out.blocks);

  const Json& title = get(page, "title");
  const bool toolbar = has_flow(out.blocks, Flow::TopBand);
  if (toolbar) {
    // The toolbar holds the title band: page.title is its title when it has none.
    for (BlockRecord& b : out.blocks)
      if (b.kind && b.kind->flow == Flow::TopBand && !is_set(b, "title") && truthy(title)) set_value(b, "title", &title);
  } else if (!has_flow(out.blocks, Flow::Title) && truthy(title)) {
    const BlockKind& k = kinds.with_flow(Flow::Title);
    out.title_block = std::make_unique<Json>(
        object_of("type", k.type, "title", title, "subtitle", get(page, "subtitle")));
    out.title = r.read(*out.title_block, &k, "page.title");
  }

  const Json& footer = get(page, "footer");
  if (footer.is_object()) {
    const bool used = truthy(footer) && !has_flow(out.blocks, Flow::Footer);
    out.footer = r.read(footer, &kinds.with_flow(Flow::Footer), "page.footer", used);
  }
  return out;
}

}  // namespace ub
