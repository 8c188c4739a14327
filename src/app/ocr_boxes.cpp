#include "app/ocr_boxes.h"

#include <algorithm>

#include "text/unicode.h"

namespace vesko {
namespace {

bool isEastAsian(char32_t c) {
  return text::isHan(c) || (c >= 0x3000 && c <= 0x30FF) || (c >= 0xAC00 && c <= 0xD7AF) ||
         (c >= 0xFF00 && c <= 0xFFEF);
}

// Mostly Chinese or Japanese: more than half of the characters.
bool isEastAsianLine(std::u16string_view line) {
  std::size_t eastAsian = 0, all = 0;
  for (std::size_t i = 0; i < line.size(); i = text::nextCharacter(line, i)) {
    const char32_t c = text::codePointAt(line, i);
    if (c == u' ') continue;
    ++all;
    if (isEastAsian(c)) ++eastAsian;
  }
  return all > 0 && 2 * eastAsian > all;
}

char32_t lastCodePoint(std::u16string_view s) {
  return s.empty() ? 0 : text::codePointAt(s, text::characterStart(s, s.size() - 1));
}

}  // namespace

bool isUnspacedScript(char32_t c) {
  return isEastAsian(c) || (c >= 0x0E00 && c <= 0x0E7F);
}

std::vector<ScreenRect> divideEvenly(const ScreenRect& box, std::size_t count) {
  std::vector<ScreenRect> boxes;
  boxes.reserve(count);
  const double width = count == 0 ? 0 : box.width / static_cast<double>(count);
  for (std::size_t i = 0; i < count; ++i)
    boxes.push_back({box.x + width * static_cast<double>(i), box.y, width, box.height});
  return boxes;
}

OCRLine assembleLine(std::span<const RecognizedWord> words, const ScreenRect& lineBox) {
  OCRLine line;
  line.rect = lineBox;
  // Each word's boxes, before the line knows whether it is East Asian.
  std::vector<ScreenRect> spacedBoxes;
  double previousRight = lineBox.x;
  for (const RecognizedWord& word : words) {
    if (word.text.empty()) continue;
    const ScreenRect box{word.box.x, lineBox.y, word.box.width, lineBox.height};
    if (!line.text.empty()) {
      const bool joined = isUnspacedScript(lastCodePoint(line.text)) &&
                          isUnspacedScript(text::codePointAt(word.text, 0));
      if (!joined) {
        line.text += u' ';
        const double left = std::min(previousRight, box.x);
        spacedBoxes.push_back({left, lineBox.y, std::max(0.0, box.x - left), lineBox.height});
      }
    }
    line.text += word.text;
    for (const ScreenRect& r : divideEvenly(box, text::characterCount(word.text)))
      spacedBoxes.push_back(r);
    previousRight = std::max(previousRight, box.right());
  }
  // A word starting with a combining mark would merge with the one before it: the counts then
  // disagree and the even division is the safe answer.
  const std::size_t count = text::characterCount(line.text);
  if (isEastAsianLine(line.text) || spacedBoxes.size() != count) {
    // The words' extent rather than the line box, which may carry a margin of blank pixels.
    double left = lineBox.right(), right = lineBox.x;
    for (const RecognizedWord& word : words) {
      if (word.text.empty()) continue;
      left = std::min(left, word.box.x);
      right = std::max(right, word.box.right());
    }
    if (right <= left) left = lineBox.x, right = lineBox.right();
    line.charRects = divideEvenly({left, lineBox.y, right - left, lineBox.height}, count);
  } else {
    line.charRects = std::move(spacedBoxes);
  }
  return line;
}

}  // namespace vesko
