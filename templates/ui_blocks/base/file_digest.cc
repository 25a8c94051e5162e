#include "base/file_digest.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>

namespace ub {

namespace {

constexpr uint64_t kFnvStart = 1469598103934665603ULL;

uint64_t fnv(uint64_t h, const unsigned char* p, size_t n) {
  for (size_t i = 0; i < n; ++i) h = (h ^ p[i]) * 1099511628211ULL;
  return h;
}

std::string hex_of(uint64_t h) {
  char hex[17];
  std::snprintf(hex, sizeof hex, "%016llx", (unsigned long long)h);
  return hex;
}

}  // namespace

std::string file_digest(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return "";
  uint64_t h = kFnvStart;
  unsigned char buf[1 << 16];
  bool ok = true;
  while (true) {
    const ssize_t n = ::read(fd, buf, sizeof buf);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) ok = false;
    if (n <= 0) break;
    h = fnv(h, buf, (size_t)n);
  }
  ::close(fd);
  return ok ? hex_of(h) : "";
}

std::string text_digest(std::string_view bytes) {
  return hex_of(fnv(kFnvStart, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
}

}  // namespace ub
