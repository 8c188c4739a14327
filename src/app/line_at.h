#pragma once
// Which recognised line and character lie under the pointer: what the read hands to the word
// chooser after a screen recognition, as it would hand accessibility text. Pure; any thread.

#include <optional>
#include <vector>

#include "app/geometry.h"
#include "app/screen_text.h"

namespace vesko {

// The first line (in the order given) with a character box containing `point`, with the UTF-16
// index where that character (grapheme cluster) starts and its box. Nothing when no character box
// contains the point, or when a line's boxes do not match its characters (a malformed line is
// skipped rather than trusted).
std::optional<TextAtPoint> lineAt(const std::vector<OCRLine>& lines, ScreenPoint point);

}  // namespace vesko
