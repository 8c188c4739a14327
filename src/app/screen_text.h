#pragma once
// What the two readers of the screen give the hover read: the text around a point with the UTF-16
// index of the character under it. The accessibility reader asks the application; the screen
// reader captures a strip and recognises it. Both block and run only on a read's background
// thread; implementations say whether one object may serve overlapping reads.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/geometry.h"

namespace vesko {

struct TextAtPoint {
  std::u16string text;
  std::size_t index = 0;               // UTF-16 index of the character under the point
  std::optional<ScreenRect> charRect;  // that character's box, when the reader knows it
  friend bool operator==(const TextAtPoint&, const TextAtPoint&) = default;
};

// One recognised line, in global screen points; one rectangle per UTF-16 unit of `text` would be
// wrong for surrogate pairs, so `charRects` has one rectangle per grapheme cluster, in order.
struct OCRLine {
  std::u16string text;
  ScreenRect rect;
  std::vector<ScreenRect> charRects;
  friend bool operator==(const OCRLine&, const OCRLine&) = default;
};

class AccessibilityReader {
 public:
  virtual ~AccessibilityReader() = default;
  // The text and index under `point`, or nothing (no application text there, a time-out, the
  // point in a margin beside the text). Reasons go to the diagnostic log.
  virtual std::optional<TextAtPoint> read(ScreenPoint point) = 0;
};

class ScreenReader {
 public:
  virtual ~ScreenReader() = default;
  // The lines recognised in the strip around `point` for each recognition-mode key ("latin",
  // "zh-Hans", …), possibly from the cache; empty when nothing could be captured or read.
  virtual std::vector<OCRLine> read(ScreenPoint point, std::span<const std::string> modes) = 0;
};

}  // namespace vesko
