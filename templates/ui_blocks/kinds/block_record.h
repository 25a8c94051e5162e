// A block of the page read once, before anything is composed, against its type's entry in
// the block library: its kind, caption base, number and place in spec.json, its keys with
// the library's defaults filled in, and a container's own blocks. Builders read a block
// only through the small typed functions below; nothing is written into the spec.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/values.h"

namespace ub {

struct BlockKind;

// One key a block type reads, as its library entry declares it.
// True when a library declaration's "type" (one name or a list of names) holds `type`.
bool has_type(const Json& decl, const char* type);

struct KeyDecl {
  std::string_view name;             // the key, held by the library entry
  const Json* def = nullptr;         // its default; null: none
  bool truth = false;                // a truth value: a present false stays false
  const Json* entry_keys = nullptr;  // a list of records: the declarations of their keys
  const Json* decl = nullptr;        // the whole declaration, held by the library entry
};
using KindKeys = std::vector<KeyDecl>;

// The keys of a library entry ("keys": {name: {type, default, ...}}), in its order. A key
// is a truth value when its type is "boolean" or ["boolean", "integer"].
KindKeys kind_keys(const Json& library_entry);

struct BlockRecord {
  const BlockKind* kind = nullptr;  // null: no kind has the block's type
  const Json* raw = nullptr;        // the block as spec.json gives it, for messages
  const KindKeys* keys = nullptr;   // its type's keys in the library; null: the library lacks the type
  // Per key: the value given, or the library's default where the given one is false
  // (for a truth value: where it is absent); null for neither. The declared keys in the
  // library's order, then any a page rule sets (a toolbar's title from page.title).
  std::vector<std::pair<std::string_view, const Json*>> values;
  std::string name;    // caption base: the block's own name, or its kind's prefix and number
  int seq = 0;         // page-wide number in reading order; 0 for a block the page does not use
  bool named = false;  // the name is the block's own
  std::string path;    // place in spec.json: "page.blocks[3].blocks[1]"
  std::vector<BlockRecord> blocks;  // a container's blocks
};

// A record of `raw` with the values of `keys` (null: a type the library lacks, whose keys
// are all read as given); kind, name, number, place and blocks are left to the caller.
BlockRecord read_record(const Json& raw, const BlockKind* kind, const KindKeys* keys);

// The value of a key: filled as above. A key the type's library entry does not declare is
// bad input about the library; the keys of a type the library lacks are read as given.
const Json& value(const BlockRecord& b, std::string_view key);
// The value as spec.json gives it (null when absent), for messages and the rare rule that
// tells an absent key from a false one.
const Json& given_value(const BlockRecord& b, std::string_view key);
// Sets a key's value (a default a page rule computes); `v` must outlive the record.
void set_value(BlockRecord& b, std::string_view key, const Json* v);

// Typed readings of a value. A false value reads as "", false, 0 and an empty list.
bool is_set(const BlockRecord& b, std::string_view key);  // the value is true
std::string text(const BlockRecord& b, std::string_view key);
bool flag(const BlockRecord& b, std::string_view key);
long long integer(const BlockRecord& b, std::string_view key);
double number(const BlockRecord& b, std::string_view key);
// A list: any other true value is bad input (KeyError naming the key).
const Json& list(const BlockRecord& b, std::string_view key);

// What stands for the block in captions formed from its number: its own name when it has
// one, else the number ("Banner3Icon", "BannerAlertIcon").
std::string caption_id(const BlockRecord& b);
// The block's type for messages: its kind's, else the text given ("?" for none).
std::string type_text(const BlockRecord& b);

// One entry of a list key (items, actions...): a mapping, or a plain value that stands
// for one of its keys (a grid tile's text, a toolbar action's icon).
struct Entry {
  const Json* value = nullptr;
  std::string_view plain_key;
  const Json* keys = nullptr;  // the library's declarations of an entry's keys; null: none
};

// The entries of a list key; a false value gives none, anything else that is no list is
// bad input (KeyError).
std::vector<Entry> entries(const BlockRecord& b, std::string_view key, std::string_view plain_key);

// An entry's key as given: a mapping's member (null when absent), or the plain value
// for the key it stands for.
const Json& given_value(const Entry& e, std::string_view key);
// The text of an entry's key: the value given when it is true (a plain value turned into
// text, when that is not empty), else the library's default, else "".
std::string text(const Entry& e, std::string_view key);
bool is_set(const Entry& e, std::string_view key);  // text(e, key) is not empty
// The text of a key that may be absent (an icon state): none when absent or null.
std::optional<std::string> optional_text(const Entry& e, std::string_view key);

}  // namespace ub
