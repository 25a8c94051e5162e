// The head of one HTTP/1.x request, read from the bytes a connection has received so far.
// Every bound is checked on what has arrived, so a request that is too long is refused
// before the rest of it is read, and a body is judged by its declared length alone.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace serve {

struct HttpLimits {
  size_t max_request_line = 8 * 1024;   // longer: 414
  size_t max_header_bytes = 16 * 1024;  // the header lines together; longer: 431
  size_t max_headers = 64;              // more: 431
  size_t max_body = 64 * 1024;          // a larger declared body, or one of unknown length: 413
};

struct HttpRequest {
  std::string method;  // "GET"
  std::string target;  // as sent: "/state?after=3"
  std::string path;    // the target before '?', percent-decoded
  std::string query;   // the target after '?', as sent
  int minor = 1;       // HTTP/1.<minor>
  std::vector<std::pair<std::string, std::string>> headers;  // names in lower case, values trimmed
  size_t content_length = 0;
  bool keep_alive = true;

  // The value of a header (name in lower case), or nullptr.
  const std::string* header(std::string_view name) const;
};

enum class ParseState { incomplete, complete, bad };

struct ParseResult {
  ParseState state = ParseState::incomplete;
  int status = 0;       // bad: 400, 413, 414, 431, 505
  size_t head_size = 0;  // complete: bytes of the head; the body follows
  HttpRequest request;  // complete
};

// Reads the request head at the start of `in`. Incomplete while the head has not ended and
// no bound is passed yet; bad, with the status to answer, as soon as one is.
ParseResult parse_request(std::string_view in, const HttpLimits& limits);

// The value of `key` in a query ("a=1&after=3"), percent-decoded; false when absent.
bool query_value(std::string_view query, std::string_view key, std::string& value);

// "%2e%2E" → "..", false on a bad escape or a decoded NUL.
bool percent_decode(std::string_view in, std::string& out);

}  // namespace serve
