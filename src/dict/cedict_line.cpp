#include "dict/cedict_line.h"

#include <array>

#include "text/unicode.h"

namespace vesko {
namespace {

std::string_view trimmed(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

}  // namespace

// One pass over the bytes, no library searches: the fields are a few bytes apart, and at more
// than 100,000 lines per load the calls would cost more than the scanning.
bool parseDictionaryLine(std::string_view line, DictionaryLine& out) {
  if (line.empty() || line.front() == '#') return false;
  const char* const begin = line.data();
  const char* const end = begin + line.size();

  // Headwords: the first two space-separated words before the first "[".
  std::array<std::string_view, 2> headwords;
  std::size_t words = 0;
  const char* p = begin;
  const char* word = nullptr;
  for (; p != end && *p != '['; ++p) {
    if (*p == ' ') {
      if (word && words < 2) headwords[words] = std::string_view(word, static_cast<std::size_t>(p - word));
      if (word) ++words;
      word = nullptr;
    } else if (!word) {
      word = p;
    }
  }
  if (p == end) return false;
  if (word) {
    if (words < 2) headwords[words] = std::string_view(word, static_cast<std::size_t>(p - word));
    ++words;
  }
  if (words < 2) return false;

  const char* const pinyin = ++p;
  while (p != end && *p != ']') ++p;
  if (p == end) return false;
  out.trad = headwords[0];
  out.simp = headwords[1];
  out.pinyin = std::string_view(pinyin, static_cast<std::size_t>(p - pinyin));

  out.defs.clear();
  const char* gloss = ++p;
  for (;; ++p) {
    if (p == end || *p == '/') {
      std::string_view piece = trimmed(std::string_view(gloss, static_cast<std::size_t>(p - gloss)));
      if (!piece.empty()) out.defs.push_back(piece);
      if (p == end) break;
      gloss = p + 1;
    }
  }
  return true;
}

bool parseSupplementLine(std::string_view line, SupplementLine& out) {
  std::size_t first = line.find('\t');
  if (first == std::string_view::npos) return false;
  std::size_t second = line.find('\t', first + 1);
  if (second == std::string_view::npos) return false;
  std::size_t third = line.find('\t', second + 1);
  out.character = line.substr(0, first);
  out.pinyin = line.substr(first + 1, second - first - 1);
  out.definition = line.substr(second + 1, third == std::string_view::npos ? third : third - second - 1);
  return !out.character.empty() && text::characterCount(out.character) == 1;
}

bool isCrossReference(std::string_view gloss) {
  for (std::string_view marker : {"used in", "variant of", "old variant", "see ", "surname", "CL:"})
    if (gloss.starts_with(marker)) return true;
  return false;
}

}  // namespace vesko
