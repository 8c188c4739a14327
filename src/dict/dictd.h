#pragma once
// Dictionaries in dictd's format (an .index of headwords and a gzip-compressed .dict.dz of entry
// bodies): `DictdFile` reads the pair into memory, `DictdDictionary` serves a FreeDict dictionary
// (Polish–English) by lowercased headword, and its headwords are the language's headword set.
// Both are built whole by their `load`, then immutable: safe for concurrent readers.

#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dict/key_table.h"
#include "dict/word_dictionary.h"

namespace vesko {

class DictdFile {
 public:
  struct Entry {
    std::string_view headword;  // as the index writes it
    std::string_view body;
  };

  // The .dict file may be gzip-compressed (.dict.dz: dictzip is gzip with an extra header field)
  // or plain. It is decompressed whole: random access by dictzip chunks would save its few
  // megabytes at the price of a decompression per lookup. Index lines that are malformed, point
  // outside the text or describe the database itself are skipped.
  static std::expected<DictdFile, std::string> load(const std::filesystem::path& index,
                                                    const std::filesystem::path& dict);

  const std::vector<Entry>& entries() const { return entries_; }
  std::size_t skippedLines() const { return skippedLines_; }
  std::size_t textBytes() const { return text_->size(); }

 private:
  DictdFile() = default;
  // Held apart so that the views in entries_ stay valid when the DictdFile moves.
  std::unique_ptr<std::string> index_ = std::make_unique<std::string>();
  std::unique_ptr<std::string> text_ = std::make_unique<std::string>();
  std::vector<Entry> entries_;  // views into *index_ and *text_
  std::size_t skippedLines_ = 0;
};

// Gzip (one or several members) to bytes; nothing when the data is not valid gzip or would
// inflate past `limit` bytes.
std::optional<std::string> gunzip(std::string_view compressed, std::size_t limit);

// A FreeDict dictionary: headword, pronunciation as the reading, one definition per sense.
class DictdDictionary final : public WordDictionary, public HeadwordSet {
 public:
  static std::expected<std::unique_ptr<DictdDictionary>, std::string> load(
      const std::filesystem::path& index, const std::filesystem::path& dict);

  std::vector<WordEntry> lookup(std::string_view lowercased) const override;
  bool contains(std::string_view lowercased) const override;

  std::size_t entryCount() const { return file_.entries().size(); }
  std::size_t skippedLines() const { return file_.skippedLines(); }

 private:
  explicit DictdDictionary(DictdFile file) : file_(std::move(file)) {}
  DictdFile file_;
  KeyTable headwords_;  // lowercased headword → entry
};

}  // namespace vesko
