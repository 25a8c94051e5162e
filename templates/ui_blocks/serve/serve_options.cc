#include "serve/serve_options.h"

#include <algorithm>
#include <cstdlib>

#include "driver/cli.h"

namespace serve {

namespace {

int to_int(const std::string& s, const std::string& what, int lo, int hi) {
  char* end = nullptr;
  long v = s.empty() ? -1 : std::strtol(s.c_str(), &end, 10);
  if (s.empty() || *end != '\0' || v < lo || v > hi)
    throw ub::UsageError("argument " + what + ": invalid value '" + s + "'");
  return static_cast<int>(v);
}

}  // namespace

std::string serve_usage() {
  return "usage: compose serve spec.json --project ROOT [--page NAME] [--sizes WxH[,WxH...]] [--port N]\n"
         "                     [--no-logic] [--tokens FILE]\n";
}

ServeOptions parse_serve_args(const std::vector<std::string>& args) {
  ServeOptions o;
  bool have_project = false;
  for (size_t i = 0; i < args.size(); ++i) {
    std::string a = args[i], value;
    bool inline_value = false;
    if (a.rfind("--", 0) == 0) {
      auto eq = a.find('=');
      if (eq != std::string::npos) {
        value = a.substr(eq + 1);
        a = a.substr(0, eq);
        inline_value = true;
      }
      auto take = [&]() {
        if (inline_value) return value;
        if (i + 1 >= args.size()) throw ub::UsageError("argument " + a + ": expected one argument");
        return args[++i];
      };
      if (a == "--no-logic" && !inline_value) {
        o.no_logic = true;
      } else if (a == "--project") {
        o.project = take();
        have_project = true;
      } else if (a == "--tokens") {
        o.tokens = take();
      } else if (a == "--page") {
        o.page = take();
      } else if (a == "--port") {
        o.port = to_int(take(), "--port", 0, 65535);
      } else if (a == "--sizes") {
        // "--sizes 800x480,480x272" or "--sizes 800x480 480x272".
        std::vector<std::string> words = {take()};
        while (!inline_value && i + 1 < args.size() && ub::looks_like_sizes(args[i + 1])) words.push_back(args[++i]);
        for (const auto& s : ub::parse_sizes(words))
          if (std::find(o.sizes.begin(), o.sizes.end(), s) == o.sizes.end()) o.sizes.push_back(s);
      } else {
        throw ub::UsageError("unrecognized argument: " + args[i]);
      }
    } else if (o.spec.empty()) {
      o.spec = a;
    } else {
      throw ub::UsageError("unrecognized argument: " + a);
    }
  }
  if (o.spec.empty()) throw ub::UsageError("the following arguments are required: spec");
  if (!have_project || o.project.empty()) throw ub::UsageError("the following arguments are required: --project");
  if (o.page.empty() || o.page.find('/') != std::string::npos || o.page[0] == '.')
    throw ub::UsageError("argument --page: invalid value '" + o.page + "'");
  return o;
}

}  // namespace serve
