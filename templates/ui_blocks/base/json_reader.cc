#include "base/json_reader.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

namespace ub {

namespace {

// SAX handler building the document. An open object's members gather in a buffer of its
// depth (movable pairs: the object's own vector would deep-copy its members each time it
// grows, its keys being const) and move into the object, reserved once, when it closes;
// duplicates are merged then.
class LinearBuilder {
 public:
  LinearBuilder(Json& root, int max_depth) : root_(root), max_depth_(max_depth) {}

  bool null() { return put(nullptr); }
  bool boolean(bool v) { return put(v); }
  bool number_integer(Json::number_integer_t v) { return put(v); }
  bool number_unsigned(Json::number_unsigned_t v) { return put(v); }
  bool number_float(Json::number_float_t v, const std::string&) { return put(v); }
  bool string(std::string& v) { return put(std::move(v)); }
  bool binary(Json::binary_t& v) { return put(Json::binary(std::move(v))); }

  bool start_object(std::size_t) { return open(Json::object()); }
  bool start_array(std::size_t) { return open(Json::array()); }

  bool key(std::string& k) {
    auto& buffer = pending_[stack_.size() - 1];
    buffer.emplace_back(std::move(k), nullptr);
    slot_ = &buffer.back().second;
    return true;
  }

  bool end_object() {
    auto& buffer = pending_[stack_.size() - 1];
    auto& object = stack_.back()->get_ref<Json::object_t&>();
    Json::object_t::Container& members = object;
    members.reserve(buffer.size());
    for (auto& [k, v] : buffer) members.emplace_back(std::move(k), std::move(v));
    buffer.clear();
    merge_duplicates(object);
    stack_.pop_back();
    return true;
  }
  bool end_array() {
    stack_.pop_back();
    return true;
  }

  template <class Exception>
  bool parse_error(std::size_t position, const std::string& last_token, const Exception& ex) {
    // The position lies just after the token.
    failed_at = position >= last_token.size() ? position - last_token.size() : 0;
    throw ex;
  }

  std::size_t failed_at = 0;  // byte offset of the token a parse error stopped at

 private:
  Json* place(Json&& v) {
    if (stack_.empty()) {
      root_ = std::move(v);
      return &root_;
    }
    Json& top = *stack_.back();
    if (top.is_array()) {
      auto& items = top.get_ref<Json::array_t&>();
      items.push_back(std::move(v));
      return &items.back();
    }
    *slot_ = std::move(v);
    return slot_;
  }
  bool put(Json&& v) {
    place(std::move(v));
    return true;
  }
  bool open(Json&& container) {
    if (max_depth_ > 0 && static_cast<int>(stack_.size()) >= max_depth_)
      throw JsonTooDeep("nests deeper than " + std::to_string(max_depth_) + " levels");
    stack_.push_back(place(std::move(container)));
    if (pending_.size() < stack_.size()) pending_.resize(stack_.size());
    return true;
  }

  // The first occurrence of a key keeps its place and takes the last value.
  static void merge_duplicates(Json::object_t& object) {
    using Members = Json::object_t::Container;
    Members& members = object;
    if (members.size() < 2) return;
    std::unordered_map<std::string_view, size_t> first;
    first.reserve(members.size());
    bool dup = false;
    for (size_t i = 0; i < members.size(); ++i)
      if (!first.emplace(members[i].first, i).second) dup = true;
    if (!dup) return;
    Members merged;
    merged.reserve(first.size());  // keeps the pointers below valid
    std::vector<Json*> at(members.size(), nullptr);
    for (size_t i = 0; i < members.size(); ++i) {
      const size_t f = first.at(members[i].first);
      if (f == i) {
        merged.emplace_back(members[i].first, std::move(members[i].second));
        at[i] = &merged.back().second;
      } else {
        *at[f] = std::move(members[i].second);
      }
    }
    members.swap(merged);
  }

  Json& root_;
  int max_depth_;
  std::vector<Json*> stack_;
  // Members of the open object at each depth; kept between objects for their capacity.
  std::vector<std::vector<std::pair<std::string, Json>>> pending_;
  Json* slot_ = nullptr;
};

}  // namespace

Json read_json(std::string_view text, int max_depth, TextPlace* failed_at) {
  Json root;
  LinearBuilder b(root, max_depth);
  try {
    Json::sax_parse(text.begin(), text.end(), &b);
  } catch (const Json::exception&) {
    if (failed_at) {
      const std::string_view before = text.substr(0, std::min(b.failed_at, text.size()));
      const size_t nl = before.rfind('\n');
      failed_at->line = 1 + (size_t)std::count(before.begin(), before.end(), '\n');
      failed_at->column = 1 + cp_len(std::string(nl == std::string_view::npos ? before : before.substr(nl + 1)));
    }
    throw;
  }
  return root;
}

}  // namespace ub
