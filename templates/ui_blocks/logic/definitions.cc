#include "logic/definitions.h"

#include <algorithm>

namespace ub {

namespace {

bool ident_char(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'; }
bool ident_start(char c) { return ident_char(c) && !(c >= '0' && c <= '9'); }
bool blank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }

// The source with comments and the insides of string and character literals blanked out,
// line breaks kept, so brackets and names are only those of the code.
std::string code_only(std::string_view code) {
  std::string out(code);
  const size_t n = code.size();
  auto blank_out = [&](size_t from, size_t to) {
    for (size_t k = from; k < to && k < n; ++k)
      if (out[k] != '\n') out[k] = ' ';
  };
  size_t i = 0;
  while (i < n) {
    const char c = code[i];
    if (c == '/' && i + 1 < n && code[i + 1] == '/') {
      size_t end = code.find('\n', i);
      if (end == std::string_view::npos) end = n;
      blank_out(i, end);
      i = end;
    } else if (c == '/' && i + 1 < n && code[i + 1] == '*') {
      size_t end = code.find("*/", i + 2);
      end = end == std::string_view::npos ? n : end + 2;
      blank_out(i, end);
      i = end;
    } else if ((c == '"' || c == '\'') && !(i > 0 && ident_char(code[i - 1]) && c == '\'')) {
      // A literal ends at its closing quote or, unterminated, at the end of the line.
      size_t k = i + 1;
      while (k < n && code[k] != c && code[k] != '\n') k += code[k] == '\\' ? 2 : 1;
      k = std::min(k, n);
      blank_out(i + 1, k);
      i = k < n && code[k] == c ? k + 1 : k;
    } else {
      ++i;
    }
  }
  return out;
}

// The position of the bracket closing the one at `open`, or npos.
size_t closing(const std::string& s, size_t open, char o, char c) {
  int depth = 0;
  for (size_t k = open; k < s.size(); ++k) {
    if (s[k] == o) ++depth;
    else if (s[k] == c && --depth == 0) return k;
  }
  return std::string::npos;
}

size_t skip_blanks(const std::string& s, size_t k) {
  while (k < s.size() && blank(s[k])) ++k;
  return k;
}

}  // namespace

std::vector<FunctionDef> function_definitions(std::string_view source) {
  const std::string s = code_only(source);
  std::vector<size_t> line_starts = {0};
  for (size_t k = 0; k < s.size(); ++k)
    if (s[k] == '\n') line_starts.push_back(k + 1);
  auto line_of = [&](size_t at) {
    return (int)(std::upper_bound(line_starts.begin(), line_starts.end(), at) - line_starts.begin()) - 1;
  };

  std::vector<FunctionDef> defs;
  size_t i = 0;
  while (i < s.size()) {
    if (!ident_start(s[i]) || (i > 0 && ident_char(s[i - 1]))) {
      ++i;
      continue;
    }
    size_t end = i;
    while (end < s.size() && ident_char(s[end])) ++end;
    const size_t paren = skip_blanks(s, end);
    if (paren >= s.size() || s[paren] != '(') {
      i = end;
      continue;
    }
    const size_t params_end = closing(s, paren, '(', ')');
    if (params_end == std::string::npos) break;
    const size_t brace = skip_blanks(s, params_end + 1);
    if (brace >= s.size() || s[brace] != '{') {
      i = end;
      continue;
    }
    const size_t body_end = closing(s, brace, '{', '}');
    const size_t last = body_end == std::string::npos ? s.size() - 1 : body_end;
    defs.push_back({std::string(s.substr(i, end - i)), line_of(i), line_of(last)});
    i = last + 1;
  }
  return defs;
}

}  // namespace ub
