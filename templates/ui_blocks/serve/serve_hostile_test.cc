// "compose serve" against hostile and careless clients, through real HTTP to the real
// program: each row is a request a web page, a script or a broken client may send, with
// the answer it must get; the fault tests are clients that try to take the server from
// everyone else. Bounds are in seconds and only say "answered", never how fast.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "serve/http_test_client.h"
#include "test_support.h"

namespace fs = std::filesystem;
using namespace servetest;

namespace {

// A project served by "compose serve --port 0", with a secret beside resources/images and
// links in it that lead out.
struct Served : ::testing::Test {
  fs::path dir = ubtest::temp_dir("serve_hostile");
  fs::path spec = dir / "spec.json";
  fs::path images = dir / "proj" / "resources" / "images";
  std::unique_ptr<ServeProcess> serve;
  int port = -1;

  void SetUp() override {
    fs::create_directories(dir);
    write_spec("t");
    serve = std::make_unique<ServeProcess>(COMPOSE_EXE, std::vector<std::string>{spec.string(), "--project",
                                                                                (dir / "proj").string(), "--port", "0"});
    port = serve->port();
    ASSERT_GT(port, 0) << serve->errors();
    std::ofstream(dir / "proj" / "resources" / "secret.png") << "SECRET";
    fs::create_symlink("/etc/passwd", images / "leak.png");
    fs::create_symlink("../secret.png", images / "up.png");
  }
  void TearDown() override {
    serve.reset();
    fs::remove_all(dir);
  }
  void write_spec(const std::string& title) {
    Json s = ubtest::page_spec(320, 240);
    s["page"]["title"] = title;
    std::ofstream(dir / "spec.tmp") << s.dump();
    fs::rename(dir / "spec.tmp", spec);
  }
  std::string host() const { return "127.0.0.1:" + std::to_string(port); }
  std::string request(const std::string& path, const std::string& headers = "") const {
    return "GET " + path + " HTTP/1.1\r\nHost: " + host() + "\r\n" + headers + "\r\n";
  }
  long version() {
    const std::string state = body_of(get(port, "/state"));
    return nlohmann::json::parse(state)["version"];
  }
  long rss_kb() {
    std::ifstream in("/proc/" + std::to_string(serve->pid()) + "/status");
    for (std::string line; std::getline(in, line);)
      if (line.rfind("VmRSS:", 0) == 0) return std::stol(line.substr(6));
    return -1;
  }
};

struct Row {
  std::string what;
  std::string request;  // "{HOST}" stands for the server's own host and port
  int status;
};

TEST_F(Served, HostileRequestsGetTheirAnswer) {
  std::string picture;
  for (const auto& e : fs::directory_iterator(images))
    if (!e.is_symlink() && e.path().extension() == ".png") picture = e.path().filename().string();
  ASSERT_FALSE(picture.empty());
  const std::vector<Row> rows = {
      {"a picture of the page", "GET /images/" + picture + " HTTP/1.1\r\nHost: {HOST}\r\n\r\n", 200},
      {"the same through localhost", "GET /images/" + picture + " HTTP/1.1\r\nHost: localhost:{PORT}\r\n\r\n", 200},
      {"a link in resources/images to /etc/passwd", "GET /images/leak.png HTTP/1.1\r\nHost: {HOST}\r\n\r\n", 404},
      {"a link to the project beside it", "GET /images/up.png HTTP/1.1\r\nHost: {HOST}\r\n\r\n", 404},
      {"an encoded way up", "GET /images/%2e%2e%2fsecret.png HTTP/1.1\r\nHost: {HOST}\r\n\r\n", 404},
      {"a way up in the path", "GET /images/../secret.png HTTP/1.1\r\nHost: {HOST}\r\n\r\n", 404},
      {"DNS rebinding: another site's name", "GET /state HTTP/1.1\r\nHost: evil.example:{PORT}\r\n\r\n", 403},
      {"DNS rebinding: its picture", "GET /images/" + picture + " HTTP/1.1\r\nHost: evil.example:{PORT}\r\n\r\n", 403},
      {"another port", "GET /state HTTP/1.1\r\nHost: 127.0.0.1:1\r\n\r\n", 403},
      {"no Host", "GET /state HTTP/1.1\r\n\r\n", 400},
      {"no Host, HTTP/1.0", "GET /state HTTP/1.0\r\n\r\n", 403},
      {"a body of 1.5 GB, not sent", "POST /state HTTP/1.1\r\nHost: {HOST}\r\nContent-Length: 1610612736\r\n\r\n", 413},
      {"a body of unknown length", "POST /state HTTP/1.1\r\nHost: {HOST}\r\nTransfer-Encoding: chunked\r\n\r\n", 413},
      {"a request line of 100 KB", "GET /" + std::string(100000, 'a') + " HTTP/1.1\r\nHost: {HOST}\r\n\r\n", 414},
      {"headers of 100 KB", "GET / HTTP/1.1\r\nHost: {HOST}\r\nX: " + std::string(100000, 'a') + "\r\n\r\n", 431},
      {"another method", "DELETE /state HTTP/1.1\r\nHost: {HOST}\r\n\r\n", 405},
      {"a path of its own", "GET /proj/spec.json HTTP/1.1\r\nHost: {HOST}\r\n\r\n", 404},
  };
  for (Row row : rows) {
    for (size_t at; (at = row.request.find("{HOST}")) != std::string::npos;) row.request.replace(at, 6, host());
    for (size_t at; (at = row.request.find("{PORT}")) != std::string::npos;)
      row.request.replace(at, 6, std::to_string(port));
    const std::string answer = ask(port, row.request, 30);
    EXPECT_EQ(status_of(answer), row.status) << row.what << ": " << answer.substr(0, 200);
    EXPECT_EQ(answer.find("root:"), std::string::npos) << row.what;
    EXPECT_EQ(answer.find("SECRET"), std::string::npos) << row.what;
  }
}

TEST_F(Served, ABodyIsNotReadIntoMemory) {
  const long before = rss_kb();
  const int fd = connect_to(port);
  ASSERT_TRUE(send_all(fd, "POST /state HTTP/1.1\r\nHost: " + host() + "\r\nContent-Length: 1610612736\r\n\r\n"));
  EXPECT_EQ(status_of(read_answer(fd, 30)), 413);
  // What the client sends anyway is dropped, and not for long.
  const std::string chunk(1 << 20, 'x');
  int sent = 0;
  while (sent < 256 && send_all(fd, chunk)) ++sent;
  close(fd);
  EXPECT_LT(sent, 256);
  EXPECT_LT(rss_kb() - before, 64 * 1024);
  EXPECT_EQ(status_of(get(port, "/")), 200);
}

TEST_F(Served, SlowAndIdleConnectionsDoNotBlockOthers) {
  // Sixteen clients sending their heads a byte at a time, and six hundred that only connect.
  std::vector<int> slow, idle;
  for (int i = 0; i < 16; ++i) {
    slow.push_back(connect_to(port));
    ASSERT_TRUE(send_all(slow.back(), "GET / HTTP/1.1\r\nHost: " + host() + "\r\nX-Slow: "));
  }
  for (int i = 0; i < 600; ++i) {
    const int fd = connect_to(port);
    ASSERT_GE(fd, 0) << i;
    idle.push_back(fd);
  }
  for (int fd : slow) send_all(fd, "a");
  EXPECT_EQ(status_of(get(port, "/")), 200);
  EXPECT_EQ(status_of(get(port, "/state")), 200);
  for (int fd : slow) close(fd);
  for (int fd : idle) close(fd);
}

TEST_F(Served, OpenPreviewTabsDoNotBlockOthers) {
  const long v = version();
  std::vector<int> polls;
  for (int i = 0; i < 12; ++i) {
    polls.push_back(connect_to(port));
    ASSERT_TRUE(send_all(polls.back(), request("/state?after=" + std::to_string(v))));
  }
  EXPECT_EQ(status_of(get(port, "/")), 200);
  write_spec("changed");
  for (int fd : polls) {
    const std::string answer = read_answer(fd, 60);
    ASSERT_EQ(status_of(answer), 200);
    EXPECT_GT(nlohmann::json::parse(body_of(answer))["version"].get<long>(), v);
    close(fd);
  }
}

TEST_F(Served, ASecondServeOnThePortExits1) {
  ServeProcess second(COMPOSE_EXE, {spec.string(), "--project", (dir / "second").string(), "--port",
                                    std::to_string(port)});
  EXPECT_EQ(second.wait(60), 1);
  const std::string err = second.errors();
  EXPECT_NE(err.find("compose: error: port " + std::to_string(port) + " is in use"), std::string::npos) << err;
  EXPECT_FALSE(fs::exists(dir / "second"));  // refused before composing
  EXPECT_EQ(status_of(get(port, "/")), 200);  // the first one serves on
}

}  // namespace
