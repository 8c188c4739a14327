#pragma once
// French elision: in "l'école" the word is "école" and the "l'" stands for "le". Stateless; any
// thread.

#include <cstddef>
#include <optional>
#include <string_view>

#include "app/word_tokenizer.h"

namespace vesko {

struct ElidedWord {
  TextSpan word;                 // the part after the apostrophe
  std::u16string_view expanded;  // what the elided part stands for: "le", "si"
};

// The elided word around UTF-16 `index`, which must hold a letter; nothing when the letters and
// apostrophes around it do not start with one of the elided forms.
std::optional<ElidedWord> findElision(std::u16string_view text, std::size_t index);

// Letters as the word rules see them: alphabetic characters and the marks that attach to them.
bool isLetter(char32_t c);

}  // namespace vesko
