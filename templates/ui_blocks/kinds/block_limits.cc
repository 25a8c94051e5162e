#include "kinds/block_limits.h"

#include <algorithm>

namespace ub {

namespace {

// The type the block's spec gives, for the message; "" when it gives no text.
std::string given_type(const BlockRecord& b) {
  const Json& t = given_value(b, "type");
  return t.is_string() ? t.get<std::string>() : "";
}

}  // namespace

std::string input_at(const std::string& path, const std::string& type, const std::string& what) {
  return cat("spec.json: ", path, ": ", what, type.empty() ? "" : cat(" (", type, ")"));
}

void fail(const BlockRecord& b, const std::string& what) { throw InputError(input_at(b.path, given_type(b), what)); }

void fail_at(const BlockRecord& b, const std::string& key, const std::string& what) {
  throw InputError(input_at(b.path + "." + key, given_type(b), what));
}

long long LimitCheck::int_key(const BlockRecord& b, const char* key) const {
  const Json& v = value(b, key);
  if (!truthy(v)) return 0;
  try {
    return int_of(v);
  } catch (const InputError& e) {
    // A number fails on its range, anything else on its kind.
    fail_at(b, key, v.is_number() ? std::string(e.what()) : "expected a whole number, got " + shown_value(v));
  }
}

void LimitCheck::at_most(const BlockRecord& b, const std::string& key, long long n, long long most,
                         const std::string& reason) const {
  if (n > most) fail_at(b, key, cat(n, " is more than fits: at most ", most, " ", reason));
}

long long LimitCheck::stacked(const BlockRecord& b, const char* key, long long n, long long pitch) const {
  pitch = std::max<long long>(pitch, 1);
  at_most(b, key, n, room / pitch,
          cat("fit in the ", kScrollScreens, " screens one block may take (", room, " px at ", pitch, " px each)"));
  return n * pitch;
}

size_t list_size(const BlockRecord& b, const char* key) {
  const Json& v = value(b, key);
  return v.is_array() ? v.size() : 0;
}

}  // namespace ub
