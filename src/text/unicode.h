#pragma once
// Unicode helpers shared by every subsystem: UTF-8/UTF-16 conversion, user-perceived characters
// (extended grapheme clusters) and the Han test. Texts travel through the core as UTF-16 so that
// the indexes the screen readers hand in can be used as they are.
// Stateless; safe on any thread (ICU fallbacks keep one break iterator per thread).

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vesko::text {

// Decodes UTF-8; nothing when the bytes are not valid UTF-8 (overlongs and surrogates included).
std::optional<std::u16string> fromUtf8(std::string_view utf8);
bool isValidUtf8(std::string_view utf8);
// Lone surrogates are written as U+FFFD.
std::string toUtf8(std::u16string_view utf16);

// The code point starting at `index`; a lone surrogate is returned as itself.
char32_t codePointAt(std::u16string_view text, std::size_t index);

// A character counts as Chinese when its first scalar lies in U+3400–U+9FFF, U+F900–U+FAFF or
// U+20000–U+2FA1F.
constexpr bool isHan(char32_t c) {
  return (c >= 0x3400 && c <= 0x9FFF) || (c >= 0xF900 && c <= 0xFAFF) ||
         (c >= 0x20000 && c <= 0x2FA1F);
}
// The Han test applied to the character starting at `index`.
inline bool isHanAt(std::u16string_view text, std::size_t index) {
  return index < text.size() && isHan(codePointAt(text, index));
}

// User-perceived characters. `index` is a UTF-16 index; positions returned are UTF-16 indexes on
// character boundaries.
std::size_t nextCharacterSlow(std::u16string_view text, std::size_t index);
// End of the character at `index`.
inline std::size_t nextCharacter(std::u16string_view text, std::size_t index) {
  // Printable ASCII and Han stand alone, and nothing below U+0300 extends a character: most text
  // needs no table at all.
  if (index + 1 < text.size()) {
    const char16_t c = text[index];
    const char16_t d = text[index + 1];
    if (((c >= 0x20 && c < 0x7F) || isHan(c)) && (d < 0x300 || isHan(d))) return index + 1;
  }
  return nextCharacterSlow(text, index);
}
std::size_t previousCharacter(std::u16string_view text, std::size_t index);  // start of the char before
std::size_t characterStart(std::u16string_view text, std::size_t index);     // start of the char holding index
std::size_t characterCount(std::u16string_view text);
std::size_t characterCount(std::string_view utf8);  // of valid UTF-8

// Columns a terminal gives the text: two for wide and full-width characters, none for marks.
std::size_t displayWidth(std::string_view utf8);

}  // namespace vesko::text
