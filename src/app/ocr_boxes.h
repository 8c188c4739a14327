#pragma once
// Builds a recognised line's text and per-character boxes from the recogniser's words. The
// recogniser's own character boxes are unreliable on Chinese and Japanese (off by up to a
// character), so a line written mostly in those scripts has its box divided evenly among its
// characters; elsewhere word boxes are accurate and each is divided among its letters, and a space
// takes the gap between its two words. Every box spans the line's height, so a pointer between a
// letter's top and the line's top still finds it. Pure; any thread.

#include <span>
#include <string>
#include <vector>

#include "app/geometry.h"
#include "app/screen_text.h"

namespace vesko {

struct RecognizedWord {
  std::u16string text;
  ScreenRect box;
};

// True for characters of scripts written without spaces between words, whose recognised word
// splits are not real spaces: Han, kana, Hangul, CJK punctuation and full-width forms, Thai.
bool isUnspacedScript(char32_t c);

// `count` boxes dividing `box` into equal widths, left to right.
std::vector<ScreenRect> divideEvenly(const ScreenRect& box, std::size_t count);

// One line from its words in reading order, within `lineBox` (its height is every box's height).
// Words with empty text are skipped; the result has one box per grapheme cluster of its text.
OCRLine assembleLine(std::span<const RecognizedWord> words, const ScreenRect& lineBox);

}  // namespace vesko
