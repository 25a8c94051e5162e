#include "spec/block_limits.h"

#include <algorithm>

namespace ub {

std::string input_at(const std::string& path, const Json& blk, const std::string& what) {
  const Json& t = get(blk, "type");
  return cat("spec.json: ", path, ": ", what, t.is_string() ? cat(" (", t.get<std::string>(), ")") : "");
}

void LimitWhere::fail(const std::string& what) const { throw InputError(input_at(path, blk, what)); }

void LimitWhere::fail_at(const std::string& key, const std::string& what) const {
  throw InputError(input_at(path + "." + key, blk, what));
}

long long LimitCheck::int_key(const LimitWhere& w, const char* key, long long def) const {
  const Json& v = get(w.blk, key);
  if (!truthy(v)) return def;
  try {
    return int_of(v);
  } catch (const InputError& e) {
    // A number fails on its range, anything else on its kind.
    w.fail_at(key, v.is_number() ? std::string(e.what()) : "expected a whole number, got " + shown_value(v));
  }
}

void LimitCheck::at_most(const LimitWhere& w, const std::string& key, long long n, long long most,
                         const std::string& reason) const {
  if (n > most) w.fail_at(key, cat(n, " is more than fits: at most ", most, " ", reason));
}

long long LimitCheck::stacked(const LimitWhere& w, const char* key, long long n, long long pitch) const {
  pitch = std::max<long long>(pitch, 1);
  at_most(w, key, n, room / pitch,
          cat("fit in the ", kScrollScreens, " screens one block may take (", room, " px at ", pitch, " px each)"));
  return n * pitch;
}

size_t list_size(const Json& blk, const char* key) {
  const Json& v = get(blk, key);
  return v.is_array() ? v.size() : 0;
}

}  // namespace ub
