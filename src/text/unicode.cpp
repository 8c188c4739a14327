#include "text/unicode.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utext.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <cstring>
#include <memory>

namespace vesko::text {
namespace {

enum class Break { yes, no, unknown };

int graphemeClass(char32_t c) {
  return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_GRAPHEME_CLUSTER_BREAK);
}

// Most text is made of characters that stand alone (Han, kana, Latin letters): the boundary
// between them needs no state. Only when the left side is not such a plain character do we hand
// the question to ICU, which knows the rest of the rules (Hangul, emoji, regional indicators).
Break quickBreak(char32_t left, char32_t right) {
  int leftClass;
  if (left < 0x80) {
    if (left == '\r') return right == '\n' ? Break::no : Break::yes;
    if (left < 0x20 || left == 0x7F) return Break::yes;
    leftClass = U_GCB_OTHER;
  } else if (isHan(left)) {
    leftClass = U_GCB_OTHER;
  } else {
    leftClass = graphemeClass(left);
  }
  if (leftClass == U_GCB_CONTROL || leftClass == U_GCB_LF) return Break::yes;
  if (leftClass == U_GCB_CR) return right == '\n' ? Break::no : Break::yes;
  if (leftClass != U_GCB_OTHER) return Break::unknown;
  if (right < 0x300 || isHan(right)) return Break::yes;  // these never extend a character
  int rightClass = graphemeClass(right);
  if (rightClass == U_GCB_EXTEND || rightClass == U_GCB_ZWJ || rightClass == U_GCB_SPACING_MARK)
    return Break::no;
  return Break::yes;
}

std::size_t codePointLength(std::u16string_view text, std::size_t index) {
  if (U16_IS_LEAD(text[index]) && index + 1 < text.size() && U16_IS_TRAIL(text[index + 1])) return 2;
  return 1;
}

std::size_t previousCodePointStart(std::u16string_view text, std::size_t index) {
  if (index >= 2 && U16_IS_TRAIL(text[index - 1]) && U16_IS_LEAD(text[index - 2])) return index - 2;
  return index - 1;
}

// One character break iterator per thread: creating one costs microseconds, resetting it on a
// new text costs nothing.
icu::BreakIterator* characterIterator(std::u16string_view text) {
  struct Cache {
    std::unique_ptr<icu::BreakIterator> iterator;
    UText utext = UTEXT_INITIALIZER;
    Cache() {
      UErrorCode status = U_ZERO_ERROR;
      iterator.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
      if (U_FAILURE(status)) iterator.reset();
    }
    ~Cache() { utext_close(&utext); }
  };
  thread_local Cache cache;
  if (!cache.iterator) return nullptr;
  UErrorCode status = U_ZERO_ERROR;
  utext_openUChars(&cache.utext, text.data(), static_cast<int64_t>(text.size()), &status);
  cache.iterator->setText(&cache.utext, status);
  return U_SUCCESS(status) ? cache.iterator.get() : nullptr;
}

bool isBoundary(std::u16string_view text, std::size_t index) {
  if (index == 0 || index >= text.size()) return true;
  if (U16_IS_TRAIL(text[index]) && U16_IS_LEAD(text[index - 1])) return false;
  std::size_t before = previousCodePointStart(text, index);
  switch (quickBreak(codePointAt(text, before), codePointAt(text, index))) {
    case Break::yes: return true;
    case Break::no: return false;
    case Break::unknown: break;
  }
  icu::BreakIterator* it = characterIterator(text);
  return it ? it->isBoundary(static_cast<int32_t>(index)) : true;
}

}  // namespace

bool isValidUtf8(std::string_view utf8) {
  // Written out rather than through U8_NEXT: dictionaries are validated whole at every start,
  // and the byte-range checks below are what the Unicode standard's table 3-7 allows.
  const auto* p = reinterpret_cast<const uint8_t*>(utf8.data());
  const std::size_t n = utf8.size();
  std::size_t i = 0;
  while (i < n) {
    if (i + 8 <= n) {
      uint64_t word;
      std::memcpy(&word, p + i, 8);
      if ((word & 0x8080808080808080ULL) == 0) {
        i += 8;
        continue;
      }
    }
    const uint8_t lead = p[i];
    if (lead < 0x80) {
      ++i;
      continue;
    }
    auto continuation = [&](std::size_t at, uint8_t low = 0x80, uint8_t high = 0xBF) {
      return at < n && p[at] >= low && p[at] <= high;
    };
    if (lead < 0xC2) return false;
    if (lead < 0xE0) {
      if (!continuation(i + 1)) return false;
      i += 2;
    } else if (lead < 0xF0) {
      const uint8_t low = lead == 0xE0 ? 0xA0 : 0x80;   // no overlongs
      const uint8_t high = lead == 0xED ? 0x9F : 0xBF;  // no surrogates
      if (!continuation(i + 1, low, high) || !continuation(i + 2)) return false;
      i += 3;
    } else if (lead < 0xF5) {
      const uint8_t low = lead == 0xF0 ? 0x90 : 0x80;
      const uint8_t high = lead == 0xF4 ? 0x8F : 0xBF;  // nothing past U+10FFFF
      if (!continuation(i + 1, low, high) || !continuation(i + 2) || !continuation(i + 3))
        return false;
      i += 4;
    } else {
      return false;
    }
  }
  return true;
}

std::optional<std::u16string> fromUtf8(std::string_view utf8) {
  if (utf8.size() > static_cast<std::size_t>(INT32_MAX)) return std::nullopt;
  std::u16string out(utf8.size(), u'\0');
  int32_t written = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8(out.data(), static_cast<int32_t>(out.size()), &written, utf8.data(),
                static_cast<int32_t>(utf8.size()), &status);
  if (U_FAILURE(status) && status != U_STRING_NOT_TERMINATED_WARNING) return std::nullopt;
  out.resize(static_cast<std::size_t>(written));
  return out;
}

std::string toUtf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size() * 3);
  for (std::size_t i = 0; i < utf16.size();) {
    char32_t c = codePointAt(utf16, i);
    i += codePointLength(utf16, i);
    if (U_IS_SURROGATE(c)) c = 0xFFFD;
    char buffer[4];
    int32_t n = 0;
    [[maybe_unused]] UBool error = false;  // the buffer always has room
    U8_APPEND(reinterpret_cast<uint8_t*>(buffer), n, 4, static_cast<UChar32>(c), error);
    out.append(buffer, static_cast<std::size_t>(n));
  }
  return out;
}

char32_t codePointAt(std::u16string_view text, std::size_t index) {
  char16_t unit = text[index];
  if (U16_IS_LEAD(unit) && index + 1 < text.size() && U16_IS_TRAIL(text[index + 1]))
    return static_cast<char32_t>(U16_GET_SUPPLEMENTARY(unit, text[index + 1]));
  return unit;
}

std::size_t nextCharacterSlow(std::u16string_view text, std::size_t index) {
  if (index >= text.size()) return text.size();
  std::size_t left = index;
  std::size_t right = index + codePointLength(text, index);
  while (right < text.size()) {
    switch (quickBreak(codePointAt(text, left), codePointAt(text, right))) {
      case Break::yes: return right;
      case Break::no:
        left = right;
        right += codePointLength(text, right);
        continue;
      case Break::unknown: {
        icu::BreakIterator* it = characterIterator(text);
        if (!it) return right;
        int32_t next = it->following(static_cast<int32_t>(index));
        return next == icu::BreakIterator::DONE ? text.size() : static_cast<std::size_t>(next);
      }
    }
  }
  return text.size();
}

std::size_t previousCharacter(std::u16string_view text, std::size_t index) {
  if (index == 0) return 0;
  if (index > text.size()) index = text.size();
  std::size_t start = previousCodePointStart(text, index);
  if (start == 0) return 0;
  if (quickBreak(codePointAt(text, previousCodePointStart(text, start)), codePointAt(text, start)) ==
      Break::yes)
    return start;
  icu::BreakIterator* it = characterIterator(text);
  if (!it) return start;
  int32_t previous = it->preceding(static_cast<int32_t>(index));
  return previous == icu::BreakIterator::DONE ? 0 : static_cast<std::size_t>(previous);
}

std::size_t characterStart(std::u16string_view text, std::size_t index) {
  if (index >= text.size()) return text.size();
  if (isBoundary(text, index)) return index;
  return previousCharacter(text, index);
}

std::size_t characterCount(std::u16string_view text) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); i = nextCharacter(text, i)) ++count;
  return count;
}

std::size_t characterCount(std::string_view utf8) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
  const int32_t length = static_cast<int32_t>(utf8.size());
  std::size_t count = 0;
  UChar32 previous = -1;
  for (int32_t i = 0; i < length;) {
    UChar32 c;
    U8_NEXT(bytes, i, length, c);
    if (c < 0) c = 0xFFFD;
    if (previous >= 0) {
      Break b = quickBreak(static_cast<char32_t>(previous), static_cast<char32_t>(c));
      if (b == Break::unknown) {
        auto utf16 = fromUtf8(utf8);
        return utf16 ? characterCount(*utf16) : count;
      }
      if (b == Break::no) {
        previous = c;
        continue;
      }
    }
    ++count;
    previous = c;
  }
  return count;
}

std::size_t displayWidth(std::string_view utf8) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
  const int32_t length = static_cast<int32_t>(utf8.size());
  std::size_t width = 0;
  for (int32_t i = 0; i < length;) {
    UChar32 c;
    U8_NEXT(bytes, i, length, c);
    if (c < 0) {
      ++width;
      continue;
    }
    if (c < 0x300) {
      width += c >= 0x20 ? 1 : 0;
      continue;
    }
    int8_t category = u_charType(c);
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK || category == U_FORMAT_CHAR)
      continue;
    int eaw = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    width += (eaw == U_EA_WIDE || eaw == U_EA_FULLWIDTH) ? 2 : 1;
  }
  return width;
}

}  // namespace vesko::text
