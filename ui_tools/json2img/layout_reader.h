// Reads a layout JSON into the layout model in one pass over its text, through the
// simdjson parser, without building a document: each control record becomes a Control
// as it is read. The whole text is validated as JSON; text that is not is refused with
// the line and column of the fault.
#pragma once

#include <string>
#include <string_view>

#include "json2img/layout_model.h"

namespace layout {

// JSON nested deeper than this is refused (controls themselves stop at kMaxDepth).
constexpr int kMaxJsonDepth = 1000;

struct ReadOptions {
  // Collect Layout::text_findings: every "text", "hintText" and "passwordChar" of any
  // mapping in the document that holds a character outside the engine's font.
  bool text_findings = false;
};

// Throws SyntaxError for text that is no valid JSON (or nests deeper than kMaxJsonDepth),
// LayoutError for a layout that cannot be used (no resolution, a position that is no
// number, controls nested deeper than kMaxDepth, a control key given twice in one record),
// each with a message that says where.
Layout read_layout_text(std::string_view text, const ReadOptions& options = {});
// The same for a file, read without holding its text twice; LayoutError when it cannot
// be read.
Layout read_layout_file(const std::string& path, const ReadOptions& options = {});

}  // namespace layout
