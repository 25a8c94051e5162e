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
  std::string depfile;            // a Make-style depfile of the run's inputs
  std::string tokens;             // a theme: a tokens file laid over the library's _tokens.json
  // For compose build, not shown in the help: commit into this folder instead of the
  // project (which is still read), and write a run record there.
  std::string stage;
  std::string run_record;
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
std::string help_text();   // usage, description, every option's help and the subcommands

// Why a --font value cannot be used (no such file, not a file), or nothing. An empty
// value counts as not given.
std::optional<std::string> font_problem(const std::optional<std::string>& font);

// Help and usage of the subcommands that have no parser of their own here.
std::string schema_usage();
std::string schema_help();
std::string serve_help();

// Text wrapped at 100 columns: the first line goes on from column `col`, the others start
// after `indent` blanks; ends with LF.
// Columns a text takes on a terminal (wide CJK characters count two).
size_t display_width(const std::string& s);
std::string wrap_text(const std::string& text, size_t indent = 0, size_t col = 0);
// Word-wrapped help lines: "  head" padded to 24 columns, then the help text wrapped
// at 100 columns (a head too long for its column gets a line of its own).
std::string help_item(const std::string& head, const std::string& help);

}  // namespace ub
