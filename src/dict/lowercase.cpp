#include "dict/lowercase.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>

#include "text/unicode.h"

namespace vesko {

std::string lowercase(std::string_view utf8) {
  // Most headwords are lowercase ASCII already; ICU is only needed past it.
  if (std::all_of(utf8.begin(), utf8.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
      })) {
    std::string out(utf8);
    for (char& c : out)
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
  }
  if (!text::isValidUtf8(utf8)) return std::string(utf8);
  icu::UnicodeString s = icu::UnicodeString::fromUTF8(
      icu::StringPiece(utf8.data(), static_cast<int32_t>(utf8.size())));
  s.toLower(icu::Locale::getRoot());
  std::string out;
  s.toUTF8String(out);
  return out;
}

}  // namespace vesko
