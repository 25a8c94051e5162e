// The command line of compose: options, help texts and the hand-written parser.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "driver/screen_sizes.h"

namespace ub {

struct Options {
  std::string spec;
  std::string project;
  std::string page = "main";
  bool render = false;
  bool check = false;
  std::optional<std::string> font;
  bool json_only = false;
  bool no_logic = false;
  std::string ui_layout = "auto";
  std::vector<ScreenSize> sizes;  // empty: the spec's own size
  bool render_full = false;       // the preview shows the whole scroll content
  bool show_hidden = false;       // the preview shows hidden dialogs and toasts
  bool write_conflicts = false;   // a conflicting logic merge is written with conflict markers
};

// A usage error: main prints the usage and the message to stderr and exits 2.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// What the parse asks for: a run, or the help text (printed to stdout, exit 0).
struct ParseResult {
  bool help = false;
  Options opts;
};

// args without the program name. Throws UsageError.
ParseResult parse_args(const std::vector<std::string>& args);

std::string usage_text();  // "usage: compose ..." with a final LF
std::string help_text();   // usage, description and every option's help

}  // namespace ub
