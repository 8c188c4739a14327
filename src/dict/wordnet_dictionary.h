#pragma once
// The English dictionary, on WordNet 3.0: the lemma index of each part of speech, the glosses of
// the synsets (read from the data files at the offsets the index gives) and the lists of
// irregular forms. The files are read on the first lookup; the data files are mapped, not copied.
// Immutable once loaded: safe for concurrent readers (the load runs once, std::call_once).

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dict/lazy.h"
#include "dict/mapped_file.h"
#include "dict/word_dictionary.h"
#include "dict/word_list.h"

namespace vesko {

enum class PartOfSpeech : uint8_t { noun, verb, adjective, adverb };
inline constexpr std::size_t kPartsOfSpeech = 4;

class WordNetDictionary final : public WordDictionary {
 public:
  // `folder` holds index.{noun,verb,adj,adv}, data.* and {noun,verb,adj,adv}.exc.
  explicit WordNetDictionary(std::filesystem::path folder);

  // One entry per lemma: its glosses, each prefixed with its part of speech ("(v) …"), the part
  // of speech with more tagged senses first. Multi-word lemmas are looked up with spaces.
  std::vector<WordEntry> lookup(std::string_view lowercased) const override;
  bool contains(std::string_view lowercased) const override;

  bool hasLemma(std::string_view lowercased, PartOfSpeech pos) const;
  // The base forms an irregular form has in the exception list of `pos` ("was" → "be").
  std::vector<std::string> exceptions(std::string_view lowercased, PartOfSpeech pos) const;

  // Loads now if not loaded yet; the reason when the database cannot be read.
  std::optional<std::string> loadError() const;
  std::size_t lemmaCount() const;

 private:
  struct Senses {
    uint32_t firstOffset = 0;  // into offsets_
    uint16_t count = 0;
    uint16_t tagged = 0;
  };
  struct Part {
    WordList lemmas;
    std::vector<Senses> senses;  // per lemma, in the lemmas' order
    std::vector<uint32_t> offsets;
    std::optional<MappedFile> data;
    WordList exceptionForms;
    std::vector<std::vector<std::string>> exceptionBases;  // per form
  };
  struct Database {
    std::array<Part, kPartsOfSpeech> parts;
    WordList allLemmas;
    std::string error;
  };
  static Database load(const std::filesystem::path& folder);

  std::filesystem::path folder_;
  Lazy<Database> db_;
};

}  // namespace vesko
