#pragma once
// The Russian dictionary: no Russian–English dictionary exists among our sources, so Mueller's
// English–Russian one is read backwards. Every Russian translation of an English headword becomes
// a Russian headword whose definitions are the English headwords that gave it, the headwords
// where it comes first in the body first ("кот" → cat, tomcat). Entries are marked `reversed`.
// "ё" and "е" are one letter here, as most Russian text writes them.
// Built whole by `load`, then immutable: safe for concurrent readers.

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dict/key_table.h"
#include "dict/word_dictionary.h"

namespace vesko {

class ReversedMuellerDictionary final : public WordDictionary, public HeadwordSet {
 public:
  // At most this many English headwords per Russian word: the commonest Russian words appear in
  // hundreds of bodies, and the bubble has room for a few.
  static constexpr std::size_t kMaxDefs = 12;

  static std::expected<std::unique_ptr<ReversedMuellerDictionary>, std::string> load(
      const std::filesystem::path& index, const std::filesystem::path& dict);

  std::vector<WordEntry> lookup(std::string_view lowercased) const override;
  bool contains(std::string_view lowercased) const override;

  std::size_t headwordCount() const { return headwords_.size(); }

 private:
  ReversedMuellerDictionary() = default;

  std::vector<std::string> english_;  // the English headwords, in index order
  struct Headword {
    std::string russian;           // as Mueller writes it, lowercased
    std::vector<uint32_t> english; // into english_, best first, at most kMaxDefs
  };
  std::vector<Headword> headwords_;
  KeyTable keys_;  // folded Russian word → into headwords_
};

// Lowercase with "ё" written "е".
std::string foldedRussian(std::string_view lowercased);

}  // namespace vesko
