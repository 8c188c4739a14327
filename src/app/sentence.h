#pragma once
// The sentence that holds a word, kept with the word and shown under it. Stateless; any thread.

#include <cstddef>
#include <string>
#include <string_view>

namespace vesko {

// The sentence around UTF-16 `index`: cut at ".!?。！？", newline and "…" (a closing delimiter
// stays with its sentence), then trimmed. A text of only delimiters and space gives itself.
std::u16string sentenceAround(std::u16string_view text, std::ptrdiff_t index);

// The sentence of `text` that holds `word` (matched without regard to case) nearest the middle of
// the text, for readers that give a block of text without a reliable index. A sentence of more
// than 260 characters is cut to 120 units before the word and 140 after, with "…" where it was
// cut.
std::u16string sentenceForWord(std::u16string_view word, std::u16string_view text);

// The first place at or after `from` where `needle` occurs in `haystack`, comparing case-folded
// code points; npos when there is none.
std::size_t findCaseless(std::u16string_view haystack, std::u16string_view needle,
                         std::size_t from = 0);

}  // namespace vesko
