// The helpers of the checks a block gets before composing: reading integers with the
// block named, and counts bounded by what fits. A failure is bad input (InputError
// naming the block by its JSON path and type).
#pragma once

#include <functional>
#include <string>

#include "base/values.h"
#include "kinds/block_record.h"
#include "spec/metrics.h"
#include "spec/page_limits.h"

namespace ub {

// The message of bad input at a JSON path: "spec.json: <path>: <what> (<type>)", with the
// type when there is one.
std::string input_at(const std::string& path, const std::string& type, const std::string& what);

// Bad input about a whole block, or about one of its keys ("items[2].icon"), named by its
// place and the type its spec gives.
[[noreturn]] void fail(const BlockRecord& b, const std::string& what);
[[noreturn]] void fail_at(const BlockRecord& b, const std::string& key, const std::string& what);

struct LimitCheck {
  const Metrics& m;
  long long room;  // the content height one block may take
  // Checks a block inside a container; returns its least height.
  std::function<long long(const BlockRecord&)> nested;

  // The integer of a key's value (a false value gives 0).
  long long int_key(const BlockRecord& b, const char* key) const;
  // The count of a key that may not exceed `most`; the reason says what the limit comes from.
  void at_most(const BlockRecord& b, const std::string& key, long long n, long long most,
               const std::string& reason) const;
  // Rows of things stacked in the content: count × pitch must fit the scroll room.
  long long stacked(const BlockRecord& b, const char* key, long long n, long long pitch) const;
};

// Entries of a key's list value; anything else gives none (the builders refuse it).
size_t list_size(const BlockRecord& b, const char* key);

}  // namespace ub
