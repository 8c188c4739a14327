#pragma once
// A dictionary in dictd's format (FreeDict): an index of "headword<TAB>offset<TAB>length" lines,
// offsets and lengths in dictd's base64 digits, into a gzip-compressed text of entries. An entry
// starts with a line naming the headword (with its pronunciation between slashes and its part of
// speech in angle brackets, where given); each following line is one sense ("1. fare" → "fare").
// Both files are read on the first lookup and the text is kept uncompressed in memory (the
// FreeDict files are a few megabytes at most). Malformed index lines are skipped.
// Immutable once loaded: safe for concurrent readers (the load runs once, std::call_once).

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dict/lazy.h"
#include "dict/word_dictionary.h"

namespace vesko {

// One decoded index line.
struct DictdIndexLine {
  std::string_view headword;
  uint64_t offset = 0;
  uint64_t length = 0;
};
// Nothing when the line does not have three fields or its numbers are not dictd base64.
std::optional<DictdIndexLine> parseDictdIndexLine(std::string_view line);
// Reads an entry's text as the senses of `headword`: the pronunciation (without its slashes) as
// the reading, the sense lines as defs. Nothing when no sense remains.
std::optional<WordEntry> parseDictdEntry(std::string_view headword, std::string_view text);

class DictdDictionary final : public WordDictionary {
 public:
  DictdDictionary(std::filesystem::path index, std::filesystem::path dictDz);

  // Headwords are matched lowercased: "Paris" is found as "paris".
  std::vector<WordEntry> lookup(std::string_view lowercased) const override;
  bool contains(std::string_view lowercased) const override;

  // Loads now if not loaded yet; the reason when the files cannot be read.
  std::optional<std::string> loadError() const;
  std::size_t headwordCount() const { return data_.get().keys.size(); }

 private:
  struct Key {
    std::string lowercased;
    std::string headword;
    uint32_t offset;
    uint32_t length;
  };
  struct Data {
    std::string text;        // the whole uncompressed dictionary
    std::vector<Key> keys;   // sorted by lowercased headword, then by offset
    std::string error;
  };
  static Data load(const std::filesystem::path& index, const std::filesystem::path& dictDz);

  std::filesystem::path index_;
  std::filesystem::path dictDz_;
  Lazy<Data> data_;
};

}  // namespace vesko
