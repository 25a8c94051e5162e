// The two readers the fuzz targets drive, in-process: the page reader (spec.json text to
// layout document) and the layout reader of the sibling tools. The regression test
// replays every input that once made one of them fail through the same functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

struct Outcome {
  bool unexpected = false;  // a failure other than a refusal with a clear message
  std::string what;
};

// Points the program at the block library of the checkout (ub_dir is templates/ui_blocks).
void setup(const std::string& ub_dir);

// spec text -> Composer -> layout document and its text, the logic captions and the
// chart pictures. A refused page (StopError) or bad input (InputError) is expected;
// any other exception is not.
Outcome read_page(const uint8_t* data, size_t size);

// layout text -> the layout model, the inventory of json2img and every check_all rule on
// a project that holds only this layout. Unexpected: the reader and the JSON library
// disagree on whether the text is JSON (beyond the reader's nesting bound), or anything
// other than a refusal of the layout is thrown.
Outcome read_layout(const uint8_t* data, size_t size);

}  // namespace fuzz
