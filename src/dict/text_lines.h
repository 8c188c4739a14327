#pragma once
// Small helpers the dictionary readers share: blank trimming (their files come with stray spaces,
// tabs and the carriage returns of CRLF lines around fields) and walking the lines of a text.
// Stateless; any thread.

#include <cstddef>
#include <string_view>

namespace vesko {

constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

constexpr std::string_view trimmedBlanks(std::string_view s) {
  while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && isBlank(s.back())) s.remove_suffix(1);
  return s;
}

// Calls fn(line, offset of the line in text) for each line ending in LF or at the end; a CR
// before the LF stays on the line, for trimmedBlanks to take.
template <typename Fn>
void forEachLineFeedLine(std::string_view text, Fn&& fn) {
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    fn(text.substr(start, end - start), start);
    start = end + 1;
  }
}

}  // namespace vesko
