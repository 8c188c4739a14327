#pragma once
// What one read of the screen yields: a Chinese dictionary hit or a word of another language.
// "Nothing" is an empty std::optional<HoverResult>, never a case. Plain copyable values; strings
// are UTF-8, positions are UTF-16 indexes into the text the reader gave.

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "app/language.h"
#include "dict/entry.h"
#include "dict/word_dictionary.h"

namespace vesko {

struct HoverResult {
  struct Chinese {
    std::string word;       // the headword as it stands in the text
    std::size_t start = 0;  // UTF-16 range of the word in the text
    std::size_t length = 0;
    std::vector<Entry> entries;
    std::string sentence;
    friend bool operator==(const Chinese&, const Chinese&) = default;
  };
  struct Word {
    std::string word;  // as cut from the text
    Language language = Language::fr;
    std::size_t start = 0;
    std::size_t length = 0;
    std::optional<BaseForm> base;       // the dictionary form and how it was found
    std::optional<std::string> elided;  // French: what the elided article expands to ("le")
    std::vector<WordEntry> entries;     // empty when the language has no dictionary (Thai)
    std::string sentence;
    friend bool operator==(const Word&, const Word&) = default;
  };

  std::variant<Chinese, Word> value;

  const Chinese* chinese() const { return std::get_if<Chinese>(&value); }
  const Word* word() const { return std::get_if<Word>(&value); }
  friend bool operator==(const HoverResult&, const HoverResult&) = default;
};

}  // namespace vesko
