#pragma once
// The arithmetic of an accessibility read, apart from the bus so that it can be tested alone:
// toolkits count text offsets in different units (GTK in code points, Qt in UTF-16 units), and
// the word chooser wants UTF-16 indexes. Pure functions; any thread.

#include <cstdint>
#include <optional>
#include <string_view>

#include "app/geometry.h"
#include "app/screen_text.h"

namespace vesko::atspi {

enum class OffsetUnit { codePoints, utf16Units };

// The unit a toolkit counts offsets in, from its AT-SPI toolkit name ("GTK", "Qt", "Gecko"…).
// AT-SPI itself counts characters, so every toolkit but Qt is taken at its word.
OffsetUnit offsetUnitOf(std::string_view toolkitName);

// The characters read around the pointer's: 200 on either side, cut at the text's ends.
// `count` not positive means the toolkit did not say how long the text is.
struct Span {
  std::int64_t start = 0;
  std::int64_t end = 0;
  bool empty() const { return end <= start; }
};
Span spanAround(std::int64_t offset, std::int64_t count);

// Whether the point is on the character whose box is `box`: inside it or within 2 points of it.
// A point further out is in the margin beside the text, where nothing is read.
bool onCharacter(const ScreenRect& box, ScreenPoint point);

// `utf8` is the text a toolkit gave for the offsets from `start`; `offset` is the pointer's
// character in the same unit. Gives the text as UTF-16 and the UTF-16 index of that character,
// or nothing when the offset lies outside the text or the text is not valid UTF-8.
std::optional<TextAtPoint> textAtOffset(std::string_view utf8, std::int64_t start,
                                        std::int64_t offset, OffsetUnit unit);

// Whether a line read is worth a lookup at `index`: the character there is a letter (of any
// script, kana and Thai included) or a Han ideograph. Spaces, digits and punctuation are not.
bool isLetterOrHanAt(std::u16string_view text, std::size_t index);

}  // namespace vesko::atspi
