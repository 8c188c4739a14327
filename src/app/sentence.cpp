#include "app/sentence.h"

#include <unicode/uchar.h>

#include <algorithm>

#include "text/unicode.h"

namespace vesko {
namespace {

constexpr std::u16string_view kDelimiters = u".!?。！？\n…";
constexpr std::size_t kLongSentence = 261;  // characters
constexpr std::size_t kBeforeWord = 120;    // UTF-16 units kept before the word when clipping
constexpr std::size_t kAfterWord = 140;

bool isDelimiter(char16_t unit) {
  if (unit >= 0xD800 && unit <= 0xDFFF) return false;
  return kDelimiters.find(unit) != std::u16string_view::npos;
}

bool isSpace(char16_t unit) {
  return u_isUWhiteSpace(unit) || unit == u'\n' || unit == u'\r';
}

bool isLead(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isTrail(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::size_t codePointLength(std::u16string_view text, std::size_t i) {
  return isLead(text[i]) && i + 1 < text.size() && isTrail(text[i + 1]) ? 2 : 1;
}

char32_t folded(std::u16string_view text, std::size_t i) {
  return static_cast<char32_t>(
      u_foldCase(static_cast<UChar32>(text::codePointAt(text, i)), U_FOLD_CASE_DEFAULT));
}

bool matchesAt(std::u16string_view haystack, std::size_t at, std::u16string_view needle) {
  std::size_t i = at, j = 0;
  while (j < needle.size()) {
    if (i >= haystack.size() || folded(haystack, i) != folded(needle, j)) return false;
    i += codePointLength(haystack, i);
    j += codePointLength(needle, j);
  }
  return true;
}

}  // namespace

std::size_t findCaseless(std::u16string_view haystack, std::u16string_view needle,
                         std::size_t from) {
  if (needle.empty()) return std::u16string_view::npos;
  for (std::size_t at = from; at < haystack.size(); ++at) {
    if (isTrail(haystack[at]) && at > 0 && isLead(haystack[at - 1])) continue;
    if (matchesAt(haystack, at, needle)) return at;
  }
  return std::u16string_view::npos;
}

std::u16string sentenceAround(std::u16string_view text, std::ptrdiff_t index) {
  if (text.empty()) return std::u16string(text);
  const std::size_t pos = std::min<std::size_t>(
      text.size() - 1, static_cast<std::size_t>(std::max<std::ptrdiff_t>(index, 0)));
  std::size_t start = pos;
  while (start > 0 && !isDelimiter(text[start - 1])) --start;
  std::size_t end = pos;
  while (end < text.size()) {
    if (isDelimiter(text[end++])) break;
  }
  while (start < end && isSpace(text[start])) ++start;
  while (end > start && isSpace(text[end - 1])) --end;
  if (start == end) return std::u16string(text);
  return std::u16string(text.substr(start, end - start));
}

std::u16string sentenceForWord(std::u16string_view word, std::u16string_view text) {
  const std::size_t middle = text.size() / 2;
  std::size_t best = middle;
  std::size_t bestDistance = std::u16string_view::npos;
  for (std::size_t at = findCaseless(text, word); at != std::u16string_view::npos;
       at = findCaseless(text, word, at + 1)) {
    const std::size_t distance = at > middle ? at - middle : middle - at;
    if (distance < bestDistance) {  // strictly: on a tie the earlier occurrence stays
      best = at;
      bestDistance = distance;
    }
  }
  std::u16string sentence = sentenceAround(text, static_cast<std::ptrdiff_t>(best));
  if (text::characterCount(sentence) < kLongSentence) return sentence;

  std::size_t p = findCaseless(sentence, word);
  if (p == std::u16string_view::npos) p = sentence.size() / 2;
  std::size_t from = p > kBeforeWord ? p - kBeforeWord : 0;
  std::size_t to = std::min(sentence.size(), p + kAfterWord);
  // Clip inside whole code points, so that no half of a surrogate pair is left at either end.
  if (from > 0 && from < sentence.size() && isTrail(sentence[from]) && isLead(sentence[from - 1]))
    ++from;
  if (to < sentence.size() && to > from && isTrail(sentence[to]) && isLead(sentence[to - 1])) --to;
  std::u16string clipped;
  if (from > 0) clipped += u'…';
  clipped.append(sentence, from, to - from);
  if (to < sentence.size()) clipped += u'…';
  return clipped;
}

}  // namespace vesko
