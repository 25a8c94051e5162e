#include "serve/http_request.h"

#include <algorithm>
#include <cstring>

namespace serve {

namespace {

constexpr size_t npos = std::string_view::npos;

// The characters of a token: a method or a header name.
bool is_tchar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         (c != 0 && std::strchr("!#$%&'*+-.^_`|~", c) != nullptr);
}

bool is_token(std::string_view s) { return !s.empty() && std::all_of(s.begin(), s.end(), is_tchar); }

std::string lower(std::string_view s) {
  std::string out(s);
  for (char& c : out)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return out;
}

std::string_view trim(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

std::string_view without_cr(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

int hex(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// "GET /x HTTP/1.1" into the request; 0, or the status that refuses it.
int read_request_line(std::string_view line, HttpRequest& req) {
  const size_t sp1 = line.find(' ');
  const size_t sp2 = sp1 == npos ? npos : line.find(' ', sp1 + 1);
  if (sp2 == npos || line.find(' ', sp2 + 1) != npos) return 400;
  const std::string_view method = line.substr(0, sp1), target = line.substr(sp1 + 1, sp2 - sp1 - 1),
                         version = line.substr(sp2 + 1);
  if (!is_token(method)) return 400;
  if (target.empty() || target.front() != '/') return 400;  // only the origin form: "/path?query"
  for (char c : target)
    if (static_cast<unsigned char>(c) <= 0x20 || c == 0x7f) return 400;
  if (version.size() != 8 || version.substr(0, 5) != "HTTP/" || version[6] != '.' || hex(version[5]) < 0 ||
      hex(version[5]) > 9 || hex(version[7]) < 0 || hex(version[7]) > 9)
    return 400;
  if (version[5] != '1') return 505;
  req.method = std::string(method);
  req.target = std::string(target);
  req.minor = version[7] - '0';
  const size_t q = target.find('?');
  if (!percent_decode(target.substr(0, q), req.path)) return 400;
  if (q != npos) req.query = std::string(target.substr(q + 1));
  return 0;
}

// "name: value" into the request; 0, or the status that refuses it.
int read_header(std::string_view line, HttpRequest& req) {
  if (line.front() == ' ' || line.front() == '\t') return 400;  // obsolete line folding
  const size_t colon = line.find(':');
  if (colon == npos || !is_token(line.substr(0, colon))) return 400;  // no space before the colon either
  const std::string_view value = trim(line.substr(colon + 1));
  for (char c : value)
    if ((static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7f) return 400;
  req.headers.emplace_back(lower(line.substr(0, colon)), std::string(value));
  return 0;
}

// Host, the body's length and the connection's fate; 0, or the status that refuses them.
int read_framing(HttpRequest& req, const HttpLimits& limits) {
  int hosts = 0;
  bool have_length = false, chunked = false;
  for (const auto& [name, value] : req.headers) {
    if (name == "host") {
      ++hosts;
    } else if (name == "transfer-encoding") {
      chunked = true;
    } else if (name == "content-length") {
      if (value.empty() || !std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return 400;
      // Past max_body the exact number does not matter: refused either way.
      size_t n = 0;
      for (char c : value) n = std::min<size_t>(n * 10 + static_cast<size_t>(c - '0'), limits.max_body + 1);
      if (have_length && n != req.content_length) return 400;
      have_length = true;
      req.content_length = n;
    } else if (name == "connection") {
      const std::string v = lower(value);
      for (size_t at = 0; at <= v.size();) {
        size_t comma = std::min(v.find(',', at), v.size());
        const std::string_view option = trim(std::string_view(v).substr(at, comma - at));
        if (option == "close") req.keep_alive = false;
        if (option == "keep-alive" && req.minor == 0) req.keep_alive = true;
        at = comma + 1;
      }
    }
  }
  if (hosts > 1 || (hosts == 0 && req.minor >= 1)) return 400;
  if (chunked && have_length) return 400;
  if (chunked || req.content_length > limits.max_body) return 413;
  return 0;
}

}  // namespace

const std::string* HttpRequest::header(std::string_view name) const {
  for (const auto& [n, v] : headers)
    if (n == name) return &v;
  return nullptr;
}

ParseResult parse_request(std::string_view in, const HttpLimits& limits) {
  ParseResult r;
  auto refuse = [&r](int status) {
    r.state = ParseState::bad;
    r.status = status;
    r.request = HttpRequest();
    return r;
  };
  // Empty lines before a request are passed over; they count towards the request line.
  size_t start = 0;
  while (start < in.size() && (in[start] == '\r' || in[start] == '\n')) ++start;
  const size_t eol = in.find('\n', start);
  if (eol == npos) return in.size() > limits.max_request_line ? refuse(414) : r;
  if (eol > limits.max_request_line) return refuse(414);
  r.request.minor = 1;
  if (int status = read_request_line(without_cr(in.substr(start, eol - start)), r.request)) return refuse(status);
  r.request.keep_alive = r.request.minor >= 1;

  const size_t headers_start = eol + 1;
  for (size_t at = headers_start;;) {
    const size_t end = in.find('\n', at);
    if (end == npos) return in.size() - headers_start > limits.max_header_bytes ? refuse(431) : r;
    if (end + 1 - headers_start > limits.max_header_bytes) return refuse(431);
    const std::string_view line = without_cr(in.substr(at, end - at));
    at = end + 1;
    if (line.empty()) {
      r.head_size = at;
      break;
    }
    if (r.request.headers.size() == limits.max_headers) return refuse(431);
    if (int status = read_header(line, r.request)) return refuse(status);
  }
  if (int status = read_framing(r.request, limits)) return refuse(status);
  r.state = ParseState::complete;
  return r;
}

bool query_value(std::string_view query, std::string_view key, std::string& value) {
  for (size_t at = 0; at <= query.size();) {
    const size_t amp = std::min(query.find('&', at), query.size());
    const std::string_view pair = query.substr(at, amp - at);
    const size_t eq = pair.find('=');
    if (pair.substr(0, eq) == key) return percent_decode(eq == npos ? "" : pair.substr(eq + 1), value);
    at = amp + 1;
  }
  return false;
}

bool percent_decode(std::string_view in, std::string& out) {
  out.clear();
  out.reserve(in.size());
  for (size_t i = 0; i < in.size(); ++i) {
    if (in[i] != '%') {
      out += in[i];
      continue;
    }
    if (i + 2 >= in.size()) return false;
    const int hi = hex(in[i + 1]), lo = hex(in[i + 2]);
    if (hi < 0 || lo < 0 || (hi == 0 && lo == 0)) return false;
    out += static_cast<char>(hi * 16 + lo);
    i += 2;
  }
  return true;
}

}  // namespace serve
