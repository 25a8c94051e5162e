#include "serve/site.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "test_support.h"

namespace fs = std::filesystem;

namespace {

const char kPng[] = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x02\0\0\0\x01\x08\x06\0\0\0";

std::string png_bytes() { return std::string(kPng, sizeof kPng - 1); }

serve::HttpRequest get(const std::string& target, const std::string& host = "127.0.0.1:8765",
                       const std::string& method = "GET") {
  const auto r = serve::parse_request(method + " " + target + " HTTP/1.1\r\nHost: " + host + "\r\n\r\n", {});
  EXPECT_EQ(r.state, serve::ParseState::complete) << target;
  return r.request;
}

TEST(Site, OnlyTheServerItselfIsAHost) {
  for (const char* ok : {"127.0.0.1:8765", "localhost:8765", "LocalHost:8765", "[::1]:8765"})
    EXPECT_TRUE(serve::host_allowed(ok, 8765)) << ok;
  // DNS rebinding: another name that resolves to this machine, another port, or a name
  // that merely starts or ends like ours.
  for (const char* bad : {"evil.example:8765", "127.0.0.1", "localhost", "127.0.0.1:8766", "127.0.0.1:87650",
                          "127.0.0.2:8765", "localhost.evil.example:8765", "evil-localhost:8765", "0.0.0.0:8765",
                          "[::ffff:127.0.0.1]:8765", "127.1:8765", "", ":8765"})
    EXPECT_FALSE(serve::host_allowed(bad, 8765)) << bad;
  EXPECT_TRUE(serve::host_allowed("localhost", 80));
}

// A project with pictures, and links in resources/images that lead in and out of it.
struct SiteFixture : ::testing::Test {
  fs::path dir = ubtest::temp_dir("serve_site");
  fs::path images = dir / "resources" / "images";
  serve::PreviewState state{{"spec"}};
  std::unique_ptr<serve::Site> site;

  void SetUp() override {
    fs::create_directories(images / "sub.png");
    std::ofstream(images / "card.png", std::ios::binary) << png_bytes();
    std::ofstream(images / "text.png") << "not a picture";
    std::ofstream(dir / "resources" / "secret.png", std::ios::binary) << png_bytes();
    fs::create_symlink("/etc/passwd", images / "leak.png");
    fs::create_symlink("../secret.png", images / "up.png");
    fs::create_symlink(dir / "resources" / "secret.png", images / "abs.png");
    fs::create_symlink("card.png", images / "alias.png");
    fs::create_symlink("missing.png", images / "dangling.png");
    mkfifo((images / "fifo.png").c_str(), 0600);
    site = std::make_unique<serve::Site>(state, images.string(), 8765);
  }
  void TearDown() override { fs::remove_all(dir); }
  int status(const serve::HttpRequest& req) { return site->answer(req).status; }
};

TEST_F(SiteFixture, PicturesOnlyFromInsideTheImagesDirectory) {
  auto a = site->answer(get("/images/card.png"));
  ASSERT_EQ(a.status, 200);
  EXPECT_EQ(*a.body, png_bytes());
  EXPECT_EQ(a.content_type, "image/png");
  EXPECT_EQ(*site->answer(get("/images/alias.png")).body, png_bytes());  // a link that stays inside
  for (const char* path : {"/images/leak.png", "/images/up.png", "/images/abs.png", "/images/dangling.png",
                           "/images/fifo.png", "/images/sub.png", "/images/text.png", "/images/missing.png",
                           "/images/../secret.png", "/images/%2e%2e%2fsecret.png", "/images/.hidden.png",
                           "/images/card.PNG", "/images/", "/images", "/images/sub.png/x.png", "/resources/secret.png",
                           "/preview/0.png", "/preview/x.png", "/preview/0001.png", "/etc/passwd", "//etc/passwd"})
    EXPECT_EQ(status(get(path)), 404) << path;
}

TEST_F(SiteFixture, HostMethodAndLongPolls) {
  EXPECT_EQ(status(get("/images/card.png", "evil.example:8765")), 403);
  EXPECT_EQ(status(get("/", "127.0.0.1:9999")), 403);
  EXPECT_EQ(status(get("/", "127.0.0.1:8765", "POST")), 405);
  EXPECT_EQ(status(get("/", "127.0.0.1:8765", "HEAD")), 200);
  EXPECT_EQ(status(get("/state?after=x")), 400);
  EXPECT_EQ(status(get("/state?after=1e3")), 400);

  const long v = state.version();
  auto wait = site->answer(get("/state?after=" + std::to_string(v)));
  EXPECT_TRUE(wait.wait);
  EXPECT_EQ(wait.after, v);
  auto now = site->answer(get("/state?after=" + std::to_string(v - 1)));
  EXPECT_FALSE(now.wait);
  EXPECT_EQ(now.body, state.snapshot()->body);  // the snapshot itself, not a copy
}

}  // namespace
