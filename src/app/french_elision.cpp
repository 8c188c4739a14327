#include "app/french_elision.h"

#include <unicode/uchar.h>

#include <string>

#include "app/french_elision_table.h"
#include "text/unicode.h"

namespace vesko {
namespace {

bool isApostrophe(char16_t unit) {
  return unit == u'\'' || unit == u'\u2019';
}

// Lowercase for the table: the elided forms are ASCII, so anything else simply fails to match.
std::u16string asciiLower(std::u16string_view s) {
  std::u16string out(s);
  for (auto& c : out)
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  return out;
}

}  // namespace

bool isLetter(char32_t c) {
  const auto cp = static_cast<UChar32>(c);
  return u_isUAlphabetic(cp) || (U_GET_GC_MASK(cp) & U_GC_M_MASK) != 0;
}

std::optional<ElidedWord> findElision(std::u16string_view text, std::size_t index) {
  if (index >= text.size() || !isLetter(text::codePointAt(text, index))) return std::nullopt;
  std::size_t start = index;
  while (start > 0 && (isApostrophe(text[start - 1]) || isLetter(text[start - 1]))) --start;
  std::size_t end = index;
  while (end < text.size() && (isApostrophe(text[end]) || isLetter(text[end]))) ++end;

  const std::u16string_view span = text.substr(start, end - start);
  std::size_t apostrophe = 0;
  while (apostrophe < span.size() && !isApostrophe(span[apostrophe])) ++apostrophe;
  if (apostrophe == span.size()) return std::nullopt;

  const std::u16string before = asciiLower(span.substr(0, apostrophe));
  const std::u16string_view after = span.substr(apostrophe + 1);
  if (after.empty() || !isLetter(text::codePointAt(after, 0))) return std::nullopt;
  const std::u16string afterLower = asciiLower(after);

  for (const auto& elision : french::kElisions) {
    if (before != elision.elided) continue;
    if (elision.elided == u"c" && afterLower == french::kEnglishAfterC) return std::nullopt;
    std::u16string_view expanded = elision.expanded;
    if (elision.elided == u"s") {
      for (auto si : french::kSiBefore)
        if (afterLower == si) expanded = french::kSi;
    }
    const std::size_t wordStart = start + apostrophe + 1;
    return ElidedWord{{wordStart, end}, expanded};
  }
  return std::nullopt;
}

}  // namespace vesko
