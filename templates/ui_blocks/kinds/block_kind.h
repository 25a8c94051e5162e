// A block type as the composer knows it: its name and caption prefix, where it may
// stand, how the page flow treats it, and how it is checked, planned and built.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/values.h"
#include "controls/node.h"
#include "kinds/block_limits.h"
#include "kinds/block_record.h"

namespace ub {

struct Build;
struct Metrics;
struct PageContext;

// How the page flow treats a top-level block.
enum class Flow {
  Content,  // laid out in the content flow at the cursor
  Title,    // builds the title band; at most one
  TopBand,  // takes the title band's place (toolbar)
  NavBand,  // fixed band standing on the bottom bar
  Footer,   // the bottom bar
  Dialog,   // hidden overlay at the root
  Toast,    // hidden overlay at the root, above the dialogs
};

// Where a block may stand (bit set).
enum Place : unsigned { kOnPage = 1, kInCard = 2, kInForm = 4 };

// The page-wide row family: plain rows share text box and end reserve, field rows add a
// band of their own below the text.
enum class RowFamily { None, Plain, Field };

// Where a builder puts a block: left edge, top and width (content flow or container).
struct Spot {
  int x = 0, y = 0, w = 0;
};

// A kind's build entry for a builder that takes the spot's left and top (at_xy) or its
// left, top and width (at_xyw) as numbers, as builders called from other builders do.
template <int (*F)(Build&, const BlockRecord&, NodeList&, int, int)>
int at_xy(Build& bd, const BlockRecord& blk, NodeList& parent, Spot s) {
  return F(bd, blk, parent, s.x, s.y);
}
template <int (*F)(Build&, const BlockRecord&, NodeList&, int, int, int)>
int at_xyw(Build& bd, const BlockRecord& blk, NodeList& parent, Spot s) {
  return F(bd, blk, parent, s.x, s.y, s.w);
}

struct BlockKind {
  const char* type;    // name in spec.json and in the block library
  const char* prefix;  // caption prefix of a block without a name
  unsigned places = kOnPage;
  Flow flow = Flow::Content;
  bool group_gap = false;     // the page flow puts a group gap above it
  bool holds_blocks = false;  // a container whose `blocks` are rows
  unsigned takes = 0;         // a container: the place bit of the blocks it takes
  RowFamily family = RowFamily::None;
  // Height inside a container; must equal what the builder takes. Null: one row.
  int (*planned_height)(const PageContext&, const BlockRecord&) = nullptr;
  // Room the row needs at its right end, shared page-wide by the family. Null: none.
  int (*end_reserve)(const Metrics&, const BlockRecord&) = nullptr;
  // Checks before composing; returns the least height the block takes. Null: one text line.
  long long (*limits)(const LimitCheck&, const BlockRecord&) = nullptr;
  // Builds the block into parent at the spot; returns the new bottom y: the spot's y plus
  // the height the block takes (a fixed band or overlay returns its own bottom edge). Every
  // build_* function of rows/ and page_blocks/ returns the same.
  int (*build)(Build&, const BlockRecord&, NodeList&, Spot) = nullptr;
};

// True when the block's type is this kind.
bool is_kind(const Json& blk, const BlockKind& k);
inline bool is_kind(const BlockRecord& b, const BlockKind& k) { return b.kind == &k; }

// Every kind, looked up by name.
class KindTable {
 public:
  explicit KindTable(std::vector<const BlockKind*> kinds);
  // The kind of a type value; null for an unknown name or a value that is no text.
  const BlockKind* find(const Json& type) const;
  const BlockKind* find(const std::string& type) const;
  // The kind of a block's `type`; null as above.
  const BlockKind* of(const Json& blk) const;
  // The first kind the flow treats this way.
  const BlockKind& with_flow(Flow f) const;
  const std::vector<const BlockKind*>& all() const { return kinds_; }

 private:
  const BlockKind* find_name(std::string_view type) const;

  std::vector<const BlockKind*> kinds_;
  // Open addressing on a cheap mix of the name's length and three letters; a quarter full,
  // so a lookup mostly compares one name.
  struct Slot {
    std::string_view name;
    const BlockKind* kind = nullptr;
  };
  std::vector<Slot> slots_;
  size_t mask_ = 0;
};

}  // namespace ub
