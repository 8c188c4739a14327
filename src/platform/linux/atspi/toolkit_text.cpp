#include "platform/linux/atspi/toolkit_text.h"

#include <unicode/uchar.h>

#include <algorithm>

#include "text/unicode.h"

namespace vesko::atspi {
namespace {

constexpr std::int64_t kSpanHalf = 200;
constexpr double kCharacterMargin = 2;

bool isSurrogateLead(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isSurrogateTrail(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

OffsetUnit offsetUnitOf(std::string_view toolkitName) {
  return toolkitName == "Qt" ? OffsetUnit::utf16Units : OffsetUnit::codePoints;
}

Span spanAround(std::int64_t offset, std::int64_t count) {
  Span span{std::max<std::int64_t>(0, offset - kSpanHalf), offset + kSpanHalf};
  if (count > 0) span.end = std::min(span.end, count);
  return span;
}

bool onCharacter(const ScreenRect& box, ScreenPoint point) {
  // A line's end has a box of no width; a toolkit that has no box at all says 0×0.
  if (box.width <= 0 && box.height <= 0) return false;
  return box.grownBy(kCharacterMargin, kCharacterMargin).contains(point);
}

std::optional<TextAtPoint> textAtOffset(std::string_view utf8, std::int64_t start,
                                        std::int64_t offset, OffsetUnit unit) {
  if (offset < start) return std::nullopt;
  auto text = text::fromUtf8(utf8);
  if (!text) return std::nullopt;
  const auto wanted = static_cast<std::uint64_t>(offset - start);
  std::size_t index = 0;
  if (unit == OffsetUnit::utf16Units) {
    if (wanted >= text->size()) return std::nullopt;
    index = static_cast<std::size_t>(wanted);
    // Qt can point at the second half of a pair; the character starts one unit before.
    if (index > 0 && isSurrogateTrail((*text)[index])) --index;
  } else {
    for (std::uint64_t counted = 0; counted < wanted; ++counted) {
      if (index >= text->size()) return std::nullopt;
      const bool pair = isSurrogateLead((*text)[index]) && index + 1 < text->size() &&
                        isSurrogateTrail((*text)[index + 1]);
      index += pair ? 2 : 1;
    }
    if (index >= text->size()) return std::nullopt;
  }
  return TextAtPoint{std::move(*text), index, std::nullopt};
}

bool isLetterOrHanAt(std::u16string_view text, std::size_t index) {
  if (index >= text.size()) return false;
  const char32_t c = text::codePointAt(text, index);
  return text::isHan(c) || u_isalpha(static_cast<UChar32>(c));
}

}  // namespace vesko::atspi
