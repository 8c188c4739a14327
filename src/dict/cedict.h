#pragma once
// The Chinese–English dictionary every Chinese hover rests on: which dictionary word covers the
// character at an index, segmentation, the distinct words of a passage, and character-by-character
// simplified/traditional conversion. One instance is created at start-up and filled once by `load`,
// usually on a background thread; until the load has finished every lookup finds nothing.
// Thread contract: `load` once, from any thread; every other member is safe for concurrent readers
// at any time. Results borrow from the dictionary and stay valid for its lifetime.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dict/entry.h"

namespace vesko {

namespace cedict_detail {
struct Tables;
}

// A borrowed view of one entry of a loaded dictionary.
class EntryRef {
 public:
  std::string_view trad() const;
  std::string_view simp() const;
  std::string_view pinyin() const;
  std::size_t defCount() const;
  std::string_view def(std::size_t i) const;
  Entry toEntry() const;

 private:
  friend class Entries;
  EntryRef(const cedict_detail::Tables* tables, uint32_t index) : tables_(tables), index_(index) {}
  const cedict_detail::Tables* tables_;
  uint32_t index_;
};

// The entries that bear one headword form, in file order.
class Entries {
 public:
  Entries() = default;
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  EntryRef operator[](std::size_t i) const { return EntryRef(tables_, indexes_[i]); }
  std::vector<Entry> toVector() const;

  class Iterator {
   public:
    EntryRef operator*() const { return EntryRef(tables_, *at_); }
    Iterator& operator++() {
      ++at_;
      return *this;
    }
    bool operator==(const Iterator& other) const { return at_ == other.at_; }

   private:
    friend class Entries;
    Iterator(const cedict_detail::Tables* tables, const uint32_t* at) : tables_(tables), at_(at) {}
    const cedict_detail::Tables* tables_;
    const uint32_t* at_;
  };
  Iterator begin() const { return Iterator(tables_, indexes_); }
  Iterator end() const { return Iterator(tables_, indexes_ + count_); }

 private:
  friend class CEDict;
  Entries(const cedict_detail::Tables* tables, const uint32_t* indexes, std::size_t count)
      : tables_(tables), indexes_(indexes), count_(count) {}
  const cedict_detail::Tables* tables_ = nullptr;
  const uint32_t* indexes_ = nullptr;
  std::size_t count_ = 0;
};

// A dictionary word found in a text; `word` is a view into that text.
struct WordMatch {
  std::u16string_view word;
  Entries entries;
  std::size_t start = 0;  // UTF-16 index of the word's first character
};

struct FoundWord {
  std::u16string_view word;
  Entries entries;
};

struct LoadStats {
  std::size_t entries = 0;         // lines of the main file that made an entry
  std::size_t skippedLines = 0;    // non-empty, non-comment lines that were not entries
  std::size_t keys = 0;            // distinct headword forms
  std::size_t supplementAdded = 0; // characters the supplement added
  std::size_t supplementGlossed = 0; // characters whose cross-references gained a "lit. " gloss
  bool supplementRead = false;
};

enum class LoadError { unreadable, invalidUtf8, alreadyLoaded };

class CEDict {
 public:
  // Headwords longer than this many characters are kept but never matched inside a text.
  static constexpr int kMaxWordLength = 12;

  CEDict();
  ~CEDict();
  CEDict(const CEDict&) = delete;
  CEDict& operator=(const CEDict&) = delete;

  // Reads the main file, then the supplement. A main file that cannot be read or is not UTF-8
  // leaves the dictionary empty; a bad supplement only loses the supplement. The tables are built
  // aside and published as one unit at the end.
  std::expected<LoadStats, LoadError> load(const std::filesystem::path& cedict,
                                           const std::filesystem::path& unihan);

  bool loaded() const;
  // Length in characters of the longest headword, capped at kMaxWordLength; 1 before loading.
  int maxLen() const;

  // The entries of exactly this headword form (traditional or simplified).
  Entries lookup(std::u16string_view word) const;
  // The longest dictionary word that begins at the first character of `text`, when that
  // character is Han.
  std::optional<WordMatch> lookupPrefix(std::u16string_view text) const;
  // The dictionary word that covers the character at UTF-16 `index`.
  std::optional<WordMatch> wordAt(std::u16string_view text, std::ptrdiff_t index) const;
  // `text` cut into dictionary words and single characters; concatenated they give it back.
  std::vector<std::u16string_view> segment(std::u16string_view text) const;
  // The distinct words of two or more characters, left to right, at most `limit`.
  std::vector<FoundWord> dictionaryWords(std::u16string_view text, std::size_t limit) const;
  // Character by character through the simplified→traditional or traditional→simplified table.
  std::u16string convert(std::u16string_view text, bool toTraditional) const;

 private:
  const cedict_detail::Tables* tables() const { return tables_.load(std::memory_order_acquire); }

  // Written once, by `load`, before `tables_` is published; read-only afterwards.
  std::unique_ptr<const cedict_detail::Tables> owned_;
  std::atomic<const cedict_detail::Tables*> tables_{nullptr};
  std::atomic<bool> loading_{false};
};

}  // namespace vesko
