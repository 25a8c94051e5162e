// The helpers of the checks a block gets before composing: reading integers with the
// block named, and counts bounded by what fits. A failure is bad input (InputError
// naming the block by its JSON path and type).
#pragma once

#include <functional>
#include <string>

#include "base/values.h"
#include "spec/metrics.h"
#include "spec/page_limits.h"

namespace ub {

// A block and where it stands in spec.json, for the messages.
struct LimitWhere {
  const Json& blk;
  std::string path;  // page.blocks[3].blocks[1]

  // Bad input about the whole block, or about one of its keys ("items[2].icon").
  [[noreturn]] void fail(const std::string& what) const;
  [[noreturn]] void fail_at(const std::string& key, const std::string& what) const;
};

// The message of bad input at a JSON path: "spec.json: <path>: <what> (<type>)", the type
// of the block holding the value when it has one.
std::string input_at(const std::string& path, const Json& blk, const std::string& what);

struct LimitCheck {
  const Metrics& m;
  long long room;  // the content height one block may take
  // Checks a block inside a container; returns its least height.
  std::function<long long(const LimitWhere&)> nested;

  // The integer of a key read with a default ("a false value gives def").
  long long int_key(const LimitWhere& w, const char* key, long long def) const;
  // The count of a key that may not exceed `most`; the reason says what the limit comes from.
  void at_most(const LimitWhere& w, const std::string& key, long long n, long long most,
               const std::string& reason) const;
  // Rows of things stacked in the content: count × pitch must fit the scroll room.
  long long stacked(const LimitWhere& w, const char* key, long long n, long long pitch) const;
};

// Entries of a list value; absent or false gives none; the builders refuse other types.
size_t list_size(const Json& blk, const char* key);

}  // namespace ub
