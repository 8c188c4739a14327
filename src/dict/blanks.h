#pragma once
// Blank trimming for the dictionary readers, whose files come with stray spaces, tabs and the
// carriage returns of CRLF lines around their fields. Stateless; any thread.

#include <string_view>

namespace vesko {

constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

constexpr std::string_view trimmedBlanks(std::string_view s) {
  while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && isBlank(s.back())) s.remove_suffix(1);
  return s;
}

}  // namespace vesko
