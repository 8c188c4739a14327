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

bool parseDictionaryLine(std::string_view line, DictionaryLine& out) {
  if (line.empty() || line.front() == '#') return false;
  const std::size_t open = line.find('[');
  if (open == std::string_view::npos) return false;
  const std::size_t close = line.find(']', open + 1);
  if (close == std::string_view::npos) return false;

  // Headwords: the first two space-separated words before the "[". They are a few bytes long:
  // a plain loop beats a library search per word.
  std::array<std::string_view, 2> headwords;
  std::size_t words = 0;
  std::size_t word = std::string_view::npos;
  for (std::size_t i = 0; i <= open; ++i) {
    if (i == open || line[i] == ' ') {
      if (word != std::string_view::npos) {
        if (words < 2) headwords[words] = line.substr(word, i - word);
        ++words;
      }
      word = std::string_view::npos;
    } else if (word == std::string_view::npos) {
      word = i;
    }
  }
  if (words < 2) return false;
  out.trad = headwords[0];
  out.simp = headwords[1];
  out.pinyin = line.substr(open + 1, close - open - 1);

  out.defs.clear();
  std::string_view rest = line.substr(close + 1);
  while (true) {
    const std::size_t slash = rest.find('/');
    const std::string_view gloss = trimmed(rest.substr(0, slash));
    if (!gloss.empty()) out.defs.push_back(gloss);
    if (slash == std::string_view::npos) break;
    rest.remove_prefix(slash + 1);
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
