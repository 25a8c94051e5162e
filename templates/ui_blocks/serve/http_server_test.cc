#include "serve/http_server.h"

#include <gtest/gtest.h>
#include <httplib.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "test_support.h"

namespace fs = std::filesystem;
using namespace std::chrono_literals;

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

// A server on a free port over a temporary project with one picture and one secret beside it.
struct ServeFixture : ::testing::Test {
  fs::path dir = ubtest::temp_dir("serve_http");
  serve::PreviewState state{{"spec"}};
  std::unique_ptr<serve::HttpServer> server;
  std::thread thread;
  std::unique_ptr<httplib::Client> client;

  void SetUp() override {
    fs::create_directories(dir / "resources" / "images");
    std::ofstream(dir / "resources" / "images" / "card.png") << "CARD";
    std::ofstream(dir / "resources" / "images" / "notes.txt") << "TEXT";
    std::ofstream(dir / "resources" / "secret.png") << "SECRET";
    server = std::make_unique<serve::HttpServer>(state, (dir / "resources" / "images").string(), 2s);
    const int port = server->bind(0);
    ASSERT_GT(port, 0);
    thread = std::thread([this] { server->run(); });
    client = std::make_unique<httplib::Client>("127.0.0.1", port);
    client->set_url_encode(false);  // send the paths exactly as written
  }
  void TearDown() override {
    state.close();
    server->stop();
    thread.join();
    fs::remove_all(dir);
  }
  int status(const std::string& path) {
    auto res = client->Get(path);
    return res ? res->status : -1;
  }
};

TEST_F(ServeFixture, ThePageItsStateAndThePreview) {
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
  const std::string url = s["png"];
  auto png = client->Get(url);
  ASSERT_TRUE(png);
  EXPECT_EQ(png->body, "PNG1");
  EXPECT_EQ(client->Get("/images/card.png")->body, "CARD");
}

TEST_F(ServeFixture, ARefusedRunKeepsTheLastGoodPreview) {
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

TEST_F(ServeFixture, LongPollingAnswersAsSoonAsTheStateChanges) {
  state.update(0, good("Old", "PNG1"));
  const long v = state.version();
  std::thread later([this] {
    std::this_thread::sleep_for(200ms);
    state.update(0, good("New", "PNG2"));
  });
  const auto t0 = std::chrono::steady_clock::now();
  auto res = client->Get("/state?after=" + std::to_string(v));
  const auto waited = std::chrono::steady_clock::now() - t0;
  later.join();
  ASSERT_TRUE(res);
  EXPECT_EQ(nlohmann::json::parse(res->body)["sizes"][0]["controls"][0]["text"], "New");
  EXPECT_GE(waited, 150ms);
  EXPECT_LT(waited, 1500ms);
}

TEST_F(ServeFixture, EverythingElseIs404) {
  EXPECT_EQ(status("/preview/0.png"), 404);  // nothing composed yet
  for (const char* path :
       {"/../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "/%2E%2E%2F%2E%2E%2Fetc%2Fpasswd", "/..%2f..%2fetc%2fpasswd",
        "//etc/passwd", "/etc/passwd", "/images/../secret.png", "/images/..%2fsecret.png", "/images/%2e%2e%2fsecret.png",
        "/images/%252e%252e%252fsecret.png", "/images/", "/images", "/images/notes.txt", "/images/missing.png",
        "/images/card.png/", "/preview/", "/preview/1.png", "/preview/../images/card.png", "/index.html", "/resources/"})
    EXPECT_EQ(status(path), 404) << path;
}

}  // namespace
