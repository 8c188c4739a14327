#include "app/line_at.h"

#include "text/unicode.h"

namespace vesko {

std::optional<TextAtPoint> lineAt(const std::vector<OCRLine>& lines, ScreenPoint point) {
  for (const OCRLine& line : lines) {
    if (line.charRects.size() != text::characterCount(line.text)) continue;
    std::size_t start = 0;
    for (const ScreenRect& box : line.charRects) {
      if (box.contains(point)) return TextAtPoint{line.text, start, box};
      start = text::nextCharacter(line.text, start);
    }
  }
  return std::nullopt;
}

}  // namespace vesko
