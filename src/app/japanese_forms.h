#pragma once
// The dictionary forms a Japanese surface form may come from: 食べていました → 食べて, 食べる, …
// in the order the dictionary should be asked. Stateless; any thread.

#include <string>
#include <string_view>
#include <vector>

namespace vesko {

// Candidates for `surface`, without the surface itself, duplicates dropped (the first kept).
std::vector<std::u16string> japaneseCandidates(std::u16string_view surface);

// The continuative stem of a verb (食べ, 書き, し, 来) turned into its possible dictionary forms.
std::vector<std::u16string> dictionaryFormsOfStem(std::u16string_view stem);

// `text[from, to)` with each "々" replaced by the last character before it that was not itself
// "々", looked for in the whole text; a "々" at the very start stays.
std::u16string withIterationMarksSpelled(std::u16string_view text, std::size_t from,
                                         std::size_t to);

}  // namespace vesko
