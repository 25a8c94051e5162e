// An append-only text buffer for the layout writer. A large page's layout is hundreds of
// millions of small appends, so each is an inline copy into room made ahead of it.
#pragma once

#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

namespace ub {

class TextOut {
 public:
  explicit TextOut(size_t room = 1 << 16) { grow(room); }

  // Inlined: the writer calls these a few million times a large page.
  [[gnu::always_inline]] void put(std::string_view s) {
    room(s.size());
    std::memcpy(p_, s.data(), s.size());
    p_ += s.size();
  }
  [[gnu::always_inline]] void put(char c) {
    room(1);
    *p_++ = c;
  }
  [[gnu::always_inline]] void spaces(size_t n) {
    room(n);
    std::memset(p_, ' ', n);
    p_ += n;
  }
  [[gnu::always_inline]] void integer(long long v) {
    room(24);
    if ((unsigned long long)v < 10) {  // most numbers of a layout are flags, sizes and -1
      *p_++ = char('0' + v);
    } else if (v == -1) {
      *p_++ = '-';
      *p_++ = '1';
    } else {
      p_ = std::to_chars(p_, p_ + 24, v).ptr;
    }
  }
  void unsigned_integer(unsigned long long v) {
    room(24);
    p_ = std::to_chars(p_, p_ + 24, v).ptr;
  }

  size_t size() const { return (size_t)(p_ - buf_.data()); }
  std::string_view view() const { return {buf_.data(), size()}; }
  void clear() { p_ = buf_.data(); }
  // The text; the buffer is left empty.
  std::string take() {
    buf_.resize(size());
    std::string out = std::move(buf_);
    buf_.clear();
    grow(0);
    return out;
  }

 private:
  [[gnu::always_inline]] void room(size_t n) {
    if ((size_t)(end_ - p_) < n) grow(n);
  }
  // The buffer is kept at its full size and written through p_: no append checks a length.
  void grow(size_t n) {
    const size_t used = buf_.empty() ? 0 : size();
    buf_.resize(std::max(buf_.size() * 2, used + n + 256));
    p_ = buf_.data() + used;
    end_ = buf_.data() + buf_.size();
  }

  std::string buf_;
  char* p_ = nullptr;
  char* end_ = nullptr;
};

}  // namespace ub
