// Themes: a tokens file laid over the library's _tokens.json. A theme gives only the
// tokens it changes; mappings are merged key by key at every depth, any other value
// (a number, a colour, the font ladder) replaces the library's. A theme adds no token:
// every name it gives must be one the library has, with a value of the same form.
#pragma once

#include <string>

#include "base/values.h"

namespace ub {

// Largest values of a Whole token (pixels, font sizes) and of a Number token (ratios).
inline constexpr int kMaxWholeToken = 10000;
inline constexpr int kMaxNumberToken = 10;

// The forms a token takes, told by its place and the library's value.
enum class TokenForm {
  Group,       // a mapping of tokens
  Colour,      // under "color": "#RRGGBB" or "#RRGGBBAA"
  Whole,       // a whole number of at least 0 (1 for base_screen and the ladder)
  Number,      // any number of at least 0
  SpacerName,  // a text naming an entry of "spacer"
  Ladder,      // a non-empty list of whole font sizes
};

// The form of the token at `path` ("color.fg1", "size.pad_l_wide") whose library value is
// `lib`. Throws InputError for a library value of no known form.
TokenForm token_form(const std::string& path, const Json& lib);

// The smallest value a Whole or Number token takes.
int token_minimum(const std::string& path);

// The library's tokens with `theme` laid over them. `file` names the theme in messages:
// "<file>: color.fg1: expected a colour ...". A theme that is no mapping, names a token
// the library does not have (with the nearest name), or gives a value of the wrong form
// throws InputError; the library's tokens are left as they were.
Json lay_theme(const Json& library, const Json& theme, const std::string& file);

// Reads the tokens file at path: missing, unreadable and malformed files throw InputError
// naming it (with line and column for a syntax error).
Json read_tokens_file(const std::string& path);

// The JSON Schema (draft 2020-12) of a tokens file, made from the library's tokens: every
// token the library has, with its form, its library value as default and what it means.
Json tokens_schema(const Json& library);

// What the token or group at `path` means, for the schema; empty when nothing is written.
std::string token_description(const std::string& path);

}  // namespace ub
