// The page's blocks read into records before anything is composed. Every block gets a
// page-wide number in reading order, through containers, so captions formed from numbers
// never repeat between cards; its caption base is its own name or its kind's prefix and
// number, and its place in spec.json is kept for the messages.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/values.h"
#include "kinds/block_kind.h"
#include "kinds/block_record.h"

namespace ub {

struct PageRecords {
  std::vector<BlockRecord> blocks;  // page.blocks, in order
  // The title band made from page.title when the page has neither a page_title nor a
  // toolbar block; numbered after every block.
  std::optional<BlockRecord> title;
  // page.footer read as a bottom_actions block when it is a mapping; numbered after the
  // title only when the page has no bottom_actions block (otherwise it is only checked).
  std::optional<BlockRecord> footer;

  // What the records point into besides the spec and the library.
  std::map<const BlockKind*, KindKeys> keys;
  std::unique_ptr<Json> title_block;
};

// Reads the blocks of `page` (a mapping whose blocks take_page has checked) against the
// library. A toolbar without a title takes page.title.
PageRecords read_page_records(const Json& page, const std::map<std::string, Json>& library, const KindTable& kinds);

}  // namespace ub
