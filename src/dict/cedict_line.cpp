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

// Splits on `separator` dropping empty pieces; returns how many were found, writing the first
// `out.size()` of them.
template <std::size_t N>
std::size_t splitWords(std::string_view s, char separator, std::array<std::string_view, N>& out) {
  std::size_t count = 0;
  while (!s.empty()) {
    std::size_t end = s.find(separator);
    std::string_view piece = s.substr(0, end);
    if (!piece.empty()) {
      if (count < N) out[count] = piece;
      ++count;
    }
    if (end == std::string_view::npos) break;
    s.remove_prefix(end + 1);
  }
  return count;
}

}  // namespace

bool parseDictionaryLine(std::string_view line, DictionaryLine& out) {
  if (line.empty() || line.front() == '#') return false;
  std::size_t open = line.find('[');
  if (open == std::string_view::npos) return false;
  std::size_t close = line.find(']', open + 1);
  if (close == std::string_view::npos) return false;

  std::array<std::string_view, 2> headwords;
  if (splitWords(line.substr(0, open), ' ', headwords) < 2) return false;
  out.trad = headwords[0];
  out.simp = headwords[1];
  out.pinyin = line.substr(open + 1, close - open - 1);

  out.defs.clear();
  std::string_view rest = line.substr(close + 1);
  while (true) {
    std::size_t slash = rest.find('/');
    std::string_view gloss = trimmed(rest.substr(0, slash));
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
