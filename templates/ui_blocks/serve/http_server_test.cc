#include "serve/http_server.h"

#include <gtest/gtest.h>
#include <httplib.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "serve/http_test_client.h"
#include "test_support.h"

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using namespace servetest;

namespace {

serve::RunOutcome good(const std::string& text, const std::string& png) {
  serve::RunOutcome r;
  r.ok = true;
  r.notes = {"TextTitle is long"};
  r.layout = nlohmann::ordered_json::parse(R"({"id":0,"resolution":{"width":320,"height":240},
    "textview__1":{"caption":"TextTitle","position":{"left":16,"top":4,"width":200,"height":24},"text":")" +
                                           text + R"("}})");
  r.png = png;
  return r;
}

// A server on a free port with short time limits, over a project with one picture.
struct ServerFixture : ::testing::Test {
  fs::path dir = ubtest::temp_dir("serve_http");
  serve::PreviewState state{{"spec"}};
  std::unique_ptr<serve::HttpServer> server;
  std::thread thread;
  int port = 0;
  std::unique_ptr<httplib::Client> client;
  std::vector<int> fds;

  void start(serve::ServerLimits limits) {
    fs::create_directories(dir / "resources" / "images");
    std::ofstream(dir / "resources" / "images" / "card.png") << "CARD";
    server = std::make_unique<serve::HttpServer>(state, (dir / "resources" / "images").string(), limits);
    port = server->listen(0);
    ASSERT_GT(port, 0);
    thread = std::thread([this] { server->run(); });
    client = std::make_unique<httplib::Client>("127.0.0.1", port);
    client->set_read_timeout(30, 0);
  }
  void SetUp() override {
    serve::ServerLimits limits;
    limits.idle_timeout = 1s;
    limits.request_timeout = 1s;
    limits.poll_timeout = 1s;
    limits.max_connections = 16;
    start(limits);
  }
  void TearDown() override {
    for (int fd : fds) close(fd);
    server->stop();
    thread.join();
    fs::remove_all(dir);
  }
  int open_connection() {
    const int fd = connect_to(port);
    fds.push_back(fd);
    return fd;
  }
  std::string request(const std::string& path) {
    return "GET " + path + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) + "\r\n\r\n";
  }
  // A normal client is answered, whatever the others do.
  void expect_answered() {
    auto res = client->Get("/");
    ASSERT_TRUE(res);
    EXPECT_EQ(res->status, 200);
  }
};

TEST_F(ServerFixture, ThePageItsStateAndThePreview) {
  state.update(0, good("Hello", "PNG1"));
  auto page = client->Get("/");
  ASSERT_TRUE(page);
  EXPECT_EQ(page->status, 200);
  EXPECT_NE(page->body.find("/state?after="), std::string::npos);

  auto res = client->Get("/state");
  ASSERT_TRUE(res);
  auto st = nlohmann::json::parse(res->body);
  const auto& s = st["sizes"][0];
  EXPECT_EQ(s["width"], 320);
  EXPECT_EQ(s["notes"][0], "TextTitle is long");
  EXPECT_EQ(s["controls"][0]["caption"], "TextTitle");
  EXPECT_EQ(s["controls"][0]["notes"], nlohmann::json::array({0}));
  auto png = client->Get(s["png"].get<std::string>());
  ASSERT_TRUE(png);
  EXPECT_EQ(png->body, "PNG1");
  EXPECT_EQ(client->Get("/images/card.png")->status, 404);  // not a PNG
}

TEST_F(ServerFixture, ARefusedRunKeepsTheLastGoodPreview) {
  state.update(0, good("Hello", "PNG1"));
  serve::RunOutcome refused;
  refused.stop = "[X] 未知块类型：togle_row\n  at page.blocks[2] (togle_row Block3)";
  state.update(0, refused);
  auto st = nlohmann::json::parse(client->Get("/state")->body);
  const auto& s = st["sizes"][0];
  EXPECT_EQ(s["stop"], refused.stop);  // both lines; the page shows it with its line breaks
  EXPECT_FALSE(s["ok"]);
  EXPECT_EQ(s["controls"][0]["text"], "Hello");
  EXPECT_EQ(client->Get(s["png"].get<std::string>())->body, "PNG1");
}

TEST_F(ServerFixture, LongPollsWaitWithoutHoldingTheServer) {
  state.update(0, good("Old", "PNG1"));
  const long v = state.version();
  std::vector<int> polls;
  for (int i = 0; i < 12; ++i) {
    polls.push_back(open_connection());
    ASSERT_TRUE(send_all(polls.back(), request("/state?after=" + std::to_string(v))));
  }
  expect_answered();  // twelve waiting polls, and the page is still served
  state.update(0, good("New", "PNG2"));
  for (int fd : polls) {
    const std::string answer = read_answer(fd, 30);
    ASSERT_EQ(status_of(answer), 200);
    const auto st = nlohmann::json::parse(body_of(answer));
    EXPECT_EQ(st["version"], v + 1);
    EXPECT_EQ(st["sizes"][0]["controls"][0]["text"], "New");
  }
  // With nothing new, a poll is answered with the same version when its time is up.
  const int fd = open_connection();
  ASSERT_TRUE(send_all(fd, request("/state?after=" + std::to_string(v + 1))));
  const std::string answer = read_answer(fd, 30);
  ASSERT_EQ(status_of(answer), 200);
  EXPECT_EQ(nlohmann::json::parse(body_of(answer))["version"], v + 1);
}

TEST_F(ServerFixture, SlowIdleAndSurplusConnectionsAreClosed) {
  const int slow = open_connection(), idle = open_connection();
  ASSERT_TRUE(send_all(slow, "GET / HTTP/1.1\r\nHo"));
  expect_answered();
  // The half-sent request is refused when its time is up, the idle one closed.
  const std::string refused = read_for(slow, 30);
  EXPECT_EQ(status_of(refused), 408) << refused;
  EXPECT_TRUE(closed_within(slow, 30));
  EXPECT_TRUE(closed_within(idle, 30));
  // More connections than allowed: the longest idle ones give way to new ones.
  for (int i = 0; i < 40; ++i) open_connection();
  expect_answered();
}

TEST_F(ServerFixture, RequestsOnOneConnectionAndItsEnd) {
  const int fd = open_connection();
  // Two requests at once, a HEAD among them: answered in order, the HEAD without a body.
  const std::string head = "HEAD /state HTTP/1.1\r\nHost: localhost:" + std::to_string(port) + "\r\n\r\n";
  ASSERT_TRUE(send_all(fd, head + request("/state")));
  const std::string both = read_for(fd, 30);  // until the server closes it, idle
  EXPECT_EQ(status_of(both), 200);
  const size_t second = both.find("HTTP/1.1 200", 1);
  ASSERT_NE(second, std::string::npos) << both;
  EXPECT_EQ(both.find("\r\n\r\n") + 4, second);  // nothing between the HEAD's head and the next answer
  EXPECT_TRUE(answer_complete(both.substr(second)));

  // A request, then the end of what the client sends: answered, then closed.
  const int half = open_connection();
  ASSERT_TRUE(send_all(half, request("/")));
  shutdown(half, SHUT_WR);
  EXPECT_EQ(status_of(read_answer(half, 30)), 200);
  EXPECT_TRUE(closed_within(half, 30));
}

TEST_F(ServerFixture, ABodyTooLargeIsRefusedBeforeItIsSent) {
  const int fd = open_connection();
  ASSERT_TRUE(send_all(fd, "POST /state HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                               "\r\nContent-Length: 1610612736\r\n\r\n"));
  // Not a byte of the body is sent: the answer comes all the same.
  const std::string answer = read_answer(fd, 30);
  EXPECT_EQ(status_of(answer), 413) << answer;
  EXPECT_NE(answer.find("Connection: close"), std::string::npos);
  // A small body is read and passed over.
  const int small = open_connection();
  ASSERT_TRUE(send_all(small, "POST /state HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                                  "\r\nContent-Length: 5\r\n\r\nhello" + request("/")));
  const std::string answers = read_for(small, 30);
  EXPECT_EQ(status_of(answers), 405);
  EXPECT_NE(answers.find("HTTP/1.1 200", 1), std::string::npos) << answers;
}

TEST(HttpServer, APortInUseIsAClearErrorNotASecondListener) {
  serve::PreviewState state{{"spec"}};
  serve::HttpServer first(state, "/nonexistent");
  const int port = first.listen(0);
  serve::HttpServer second(state, "/nonexistent");
  try {
    second.listen(port);
    FAIL() << "a second listener on port " << port;
  } catch (const serve::ListenError& e) {
    EXPECT_NE(std::string(e.what()).find("port " + std::to_string(port) + " is in use"), std::string::npos) << e.what();
  }
}

}  // namespace
