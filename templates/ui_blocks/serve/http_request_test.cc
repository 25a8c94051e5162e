#include "serve/http_request.h"

#include <gtest/gtest.h>

namespace {

using serve::ParseState;
using serve::parse_request;

const serve::HttpLimits kLimits;

std::string request(const std::string& line, const std::string& headers = "Host: 127.0.0.1:8765\r\n") {
  return line + "\r\n" + headers + "\r\n";
}

TEST(HttpRequest, AGoodRequestAndWhatItSays) {
  const std::string text = request("GET /images/a%2Db.png?after=3&x HTTP/1.1",
                                   "Host: 127.0.0.1:8765\r\nX-Long:  padded value \t\r\nConnection: Keep-Alive, Close\r\n");
  const auto r = parse_request(text + "GET / HTTP/1.1\r\n", kLimits);
  ASSERT_EQ(r.state, ParseState::complete);
  EXPECT_EQ(r.head_size, text.size());  // the next request is left where it is
  const auto& q = r.request;
  EXPECT_EQ(std::tie(q.method, q.target, q.path, q.query, q.minor),
            std::tuple("GET", "/images/a%2Db.png?after=3&x", "/images/a-b.png", "after=3&x", 1));
  ASSERT_NE(q.header("x-long"), nullptr);
  EXPECT_EQ(*q.header("x-long"), "padded value");
  EXPECT_FALSE(q.keep_alive);
  std::string v;
  EXPECT_TRUE(serve::query_value(q.query, "after", v));
  EXPECT_EQ(v, "3");
  EXPECT_TRUE(serve::query_value(q.query, "x", v));
  EXPECT_EQ(v, "");
  EXPECT_FALSE(serve::query_value(q.query, "afte", v));
}

TEST(HttpRequest, ConnectionsStayOpenAsTheVersionSays) {
  EXPECT_TRUE(parse_request(request("GET / HTTP/1.1"), kLimits).request.keep_alive);
  EXPECT_FALSE(parse_request(request("GET / HTTP/1.0", ""), kLimits).request.keep_alive);
  EXPECT_TRUE(parse_request(request("GET / HTTP/1.0", "Connection: keep-alive\r\n"), kLimits).request.keep_alive);
  // Bare LF line ends and empty lines before the request are taken as well.
  const auto r = parse_request("\r\n\r\nGET /state HTTP/1.1\nHost: localhost:1\n\n", kLimits);
  EXPECT_EQ(r.state, ParseState::complete);
  EXPECT_EQ(r.request.path, "/state");
}

TEST(HttpRequest, RefusedWithTheStatusThatSaysWhy) {
  const std::string host = "Host: h\r\n";
  const std::vector<std::pair<std::string, int>> cases = {
      {request("GET /" + std::string(9000, 'a') + " HTTP/1.1"), 414},
      {"GET /" + std::string(9000, 'a'), 414},  // long before its end
      {request("GET / HTTP/1.1", host + "X: " + std::string(17000, 'v') + "\r\n"), 431},
      {"GET / HTTP/1.1\r\n" + host + "X: " + std::string(17000, 'v'), 431},  // long before its end
      {request("GET / HTTP/1.1", host + [] {
         std::string h;
         for (int i = 0; i < 65; ++i) h += "X" + std::to_string(i) + ": 1\r\n";
         return h;
       }()),
       431},
      {request("POST /state HTTP/1.1", host + "Content-Length: 1610612736\r\n"), 413},
      {request("POST /state HTTP/1.1", host + "Content-Length: 99999999999999999999999999\r\n"), 413},
      {request("POST /state HTTP/1.1", host + "Content-Length: 65537\r\n"), 413},
      {request("POST /state HTTP/1.1", host + "Transfer-Encoding: chunked\r\n"), 413},
      {request("POST /state HTTP/1.1", host + "Transfer-Encoding: chunked\r\nContent-Length: 3\r\n"), 400},
      {request("POST /state HTTP/1.1", host + "Content-Length: 3\r\nContent-Length: 4\r\n"), 400},
      {request("POST /state HTTP/1.1", host + "Content-Length: -1\r\n"), 400},
      {request("POST /state HTTP/1.1", host + "Content-Length: 0x10\r\n"), 400},
      {request("GET / HTTP/1.1", ""), 400},                            // no Host
      {request("GET / HTTP/1.1", host + host), 400},                   // two
      {request("GET / HTTP/2.0"), 505},
      {request("GET / HTTP/1.10"), 400},
      {request("GET / http/1.1"), 400},
      {request("GET  / HTTP/1.1"), 400},
      {request("GET / HTTP/1.1 x"), 400},
      {request("G(T / HTTP/1.1"), 400},
      {request("GET http://evil.example/ HTTP/1.1"), 400},
      {request("GET * HTTP/1.1"), 400},
      {request("GET /a\x01 HTTP/1.1"), 400},
      {request("GET /%zz HTTP/1.1"), 400},
      {request("GET /%2 HTTP/1.1"), 400},
      {request("GET /a%00.png HTTP/1.1"), 400},
      {request("GET / HTTP/1.1", host + " folded\r\n"), 400},
      {request("GET / HTTP/1.1", host + "X : 1\r\n"), 400},
      {request("GET / HTTP/1.1", host + "X: a\x01z\r\n"), 400},
      {request("GET / HTTP/1.1", host + "no colon\r\n"), 400},
  };
  for (const auto& [text, status] : cases) {
    const auto r = parse_request(text, kLimits);
    EXPECT_EQ(r.state, ParseState::bad) << text.substr(0, 80);
    EXPECT_EQ(r.status, status) << text.substr(0, 80);
  }
}

// What the server sees while a request arrives: every prefix waits for more, and the
// answer does not depend on how the bytes were split.
TEST(HttpRequest, PrefixesWaitAndBoundsHoldOnPartialInput) {
  const std::string text = request("GET /state?after=2 HTTP/1.1", "Host: localhost:80\r\nAccept: */*\r\n");
  for (size_t n = 0; n < text.size(); ++n)
    EXPECT_EQ(parse_request(text.substr(0, n), kLimits).state, ParseState::incomplete) << n;
  EXPECT_EQ(parse_request(text, kLimits).state, ParseState::complete);
  // A declared body is refused on the head alone: nothing of it has to arrive.
  const std::string big = request("POST /x HTTP/1.1", "Host: h\r\nContent-Length: 2000000000\r\n");
  EXPECT_EQ(parse_request(big, kLimits).status, 413);
  EXPECT_EQ(parse_request(big.substr(0, big.size() - 1), kLimits).state, ParseState::incomplete);
}

TEST(HttpRequest, PercentDecoding) {
  std::string out;
  EXPECT_TRUE(serve::percent_decode("%2e%2E%2fa+b%20", out));
  EXPECT_EQ(out, "../a+b ");
  for (const char* bad : {"%", "%2", "%g0", "a%0", "%00"}) EXPECT_FALSE(serve::percent_decode(bad, out)) << bad;
}

}  // namespace
