#include "spec/block_limits.h"

#include <algorithm>

namespace ub {

std::string LimitWhere::label() const {
  const Json& t = get(blk, "type");
  return path + " (" + (t.is_string() ? t.get<std::string>() : to_text(t)) + ")";
}

void LimitWhere::fail(const std::string& what) const { throw InputError("spec.json: " + label() + ": " + what); }

long long LimitCheck::int_key(const LimitWhere& w, const char* key, long long def) const {
  const Json& v = get(w.blk, key);
  if (!truthy(v)) return def;
  try {
    return int_of(v);
  } catch (const InputError& e) {
    w.fail(cat(key, ": ", e.what()));
  }
}

void LimitCheck::at_most(const LimitWhere& w, const std::string& what, long long n, long long most,
                         const std::string& reason) const {
  if (n > most) w.fail(cat(what, " ", n, " is more than fits: at most ", most, " ", reason));
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
