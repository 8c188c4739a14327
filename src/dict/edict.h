#pragma once
// The Japanese–English dictionary: EDICT, looked up by any written (kanji) form and any kana
// form, with KANJIDIC answering for a single kanji that EDICT has no entry for.
// Built whole by `load`, then immutable: safe for concurrent readers. Usually reached through a
// LazyDictionary (dict/lazy_dictionary.h), which loads it the first time Japanese is looked up.

#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dict/key_table.h"
#include "dict/mapped_file.h"
#include "dict/word_dictionary.h"

namespace vesko {

struct EdictStats {
  std::size_t entries = 0;       // EDICT lines that made an entry
  std::size_t skippedLines = 0;  // non-empty EDICT lines that did not
  std::size_t kanji = 0;         // KANJIDIC characters
};

class EdictDictionary final : public WordDictionary, public HeadwordSet {
 public:
  // `kanjidic` may be empty (no single-kanji fallback). Malformed lines are skipped; an EDICT
  // file that cannot be read is an error, described for the log.
  static std::expected<std::unique_ptr<EdictDictionary>, std::string> load(
      const std::filesystem::path& edict, const std::filesystem::path& kanjidic);

  // Entries in file order. The headword is the written form looked up (else the first one); the
  // reading is the kana form looked up, or all of the entry's kana forms joined by "・".
  std::vector<WordEntry> lookup(std::string_view lowercased) const override;
  bool contains(std::string_view lowercased) const override;

  const EdictStats& stats() const { return stats_; }

 private:
  explicit EdictDictionary(MappedFile file) : file_(std::move(file)) {}
  WordEntry entryAt(uint32_t offset, std::string_view lookedUp) const;

  MappedFile file_;
  KeyTable forms_;  // lowercased written and kana forms → offset of their line in file_
  std::unordered_map<std::string, WordEntry> kanjidic_;
  EdictStats stats_;
};

}  // namespace vesko
