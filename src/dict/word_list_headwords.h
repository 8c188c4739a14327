#pragma once
// A language's headword set: the lowercase words of a word list (wamerican-large, wfrench) and
// every headword of the language's dictionary. Capitalised entries of the list are names and are
// left out ("Paris" is not a French word for this purpose). The list is read on first use.
// Holds a reference to the dictionary, which must outlive it; safe for concurrent readers.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "dict/lazy.h"
#include "dict/word_dictionary.h"
#include "dict/word_list.h"

namespace vesko {

class WordListHeadwords final : public HeadwordSet {
 public:
  WordListHeadwords(std::filesystem::path wordList, const WordDictionary& dictionary);

  bool contains(std::string_view lowercased) const override;

  // Reads the list now if not read yet; the reason when it cannot be read (the dictionary's
  // headwords still count then).
  std::optional<std::string> loadError() const;
  std::size_t listSize() const { return list_.get().words.size(); }

 private:
  struct List {
    WordList words;
    std::string error;
  };
  std::filesystem::path path_;
  const WordDictionary& dictionary_;
  Lazy<List> list_;
};

}  // namespace vesko
