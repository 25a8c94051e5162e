#include "http_reader.h"

#include <string>
#include <string_view>

#include "serve/http_request.h"
#include "serve/preview_state.h"
#include "serve/site.h"

namespace fuzz {

namespace {

using serve::ParseResult;
using serve::ParseState;

// Small bounds, so that inputs of a few kilobytes reach every one of them.
serve::HttpLimits limits() {
  serve::HttpLimits l;
  l.max_request_line = 256;
  l.max_header_bytes = 512;
  l.max_headers = 8;
  l.max_body = 64;
  return l;
}

bool same(const ParseResult& a, const ParseResult& b) {
  if (a.state != b.state || a.status != b.status || a.head_size != b.head_size) return false;
  const serve::HttpRequest &x = a.request, &y = b.request;
  return x.method == y.method && x.target == y.target && x.path == y.path && x.query == y.query &&
         x.minor == y.minor && x.headers == y.headers && x.content_length == y.content_length &&
         x.keep_alive == y.keep_alive;
}

// What a complete request must hold, whatever the bytes were.
std::string broken_bound(const ParseResult& r, size_t size, const serve::HttpLimits& l) {
  if (r.state != ParseState::complete) return "";
  const serve::HttpRequest& q = r.request;
  if (r.head_size > size) return "head longer than the input";
  if (q.content_length > l.max_body) return "body over the bound accepted";
  if (q.headers.size() > l.max_headers) return "more headers than the bound";
  if (q.target.empty() || q.target[0] != '/') return "target not in origin form";
  if (q.path.find('\0') != std::string::npos) return "NUL in the path";
  if (q.minor >= 1 && !q.header("host")) return "HTTP/1.1 without Host";
  return "";
}

}  // namespace

Outcome read_http(const uint8_t* data, size_t size) {
  const std::string_view in(reinterpret_cast<const char*>(data), size);
  const serve::HttpLimits l = limits();
  try {
    const ParseResult whole = serve::parse_request(in, l);
    if (std::string what = broken_bound(whole, size, l); !what.empty()) return {true, what};
    // The bytes as they may arrive: a prefix that is complete or refused reads as the whole.
    for (size_t cut : {size / 3, size / 2, size - size / 5, size ? size - 1 : 0}) {
      const ParseResult part = serve::parse_request(in.substr(0, cut), l);
      if (part.state != ParseState::incomplete && !same(part, whole))
        return {true, "the first " + std::to_string(cut) + " bytes read otherwise than the whole"};
    }
    if (whole.state == ParseState::complete) {
      static serve::PreviewState state({"spec"});
      static const serve::Site site(state, "/nonexistent/fuzz-project/resources/images", 8765);
      const serve::Answer a = site.answer(whole.request);
      if (!a.wait && !a.body) return {true, "an answer without a body"};
    }
  } catch (const std::exception& e) {
    return {true, e.what()};
  }
  return {};
}

}  // namespace fuzz
