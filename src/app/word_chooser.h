#pragma once
// The word at the pointer: given the text a screen reader found and the UTF-16 index of the
// character under the pointer, decides the language, cuts the word by that language's rules,
// finds its dictionary form and entries and the sentence that holds it. Created once at start-up
// with the shared dictionaries; `detect` and `lookup` are const and safe to call from any number
// of read threads at once. `SkippedLanguage` is written by reads and read by the controller.

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "app/hover_result.h"
#include "app/language.h"
#include "app/language_data.h"
#include "dict/cedict.h"

namespace vesko {

// The last language whose script a read recognised but that the learner does not study, so that
// the controller can say why nothing showed. Owned by the controller; written on read threads and
// read on the main thread, hence atomic.
class SkippedLanguage {
 public:
  void set(Language language) {
    code_.store(static_cast<int>(language), std::memory_order_relaxed);
  }
  void clear() { code_.store(kNone, std::memory_order_relaxed); }
  std::optional<Language> get() const {
    const int code = code_.load(std::memory_order_relaxed);
    if (code == kNone) return std::nullopt;
    return static_cast<Language>(code);
  }

 private:
  static constexpr int kNone = -1;
  std::atomic<int> code_{kNone};
};

// The two texts the chooser puts into results. They are interface texts: the caller passes them
// translated; the defaults are the French originals.
struct ChooserTexts {
  std::string dictionaryForm = "forme du dictionnaire";
  std::string probableName = "nom propre (translittération probable)";
};

class WordChooser {
 public:
  WordChooser(const CEDict& cedict, const LanguageData& data, SkippedLanguage& skipped,
              ChooserTexts texts = {});
  WordChooser(const WordChooser&) = delete;
  WordChooser& operator=(const WordChooser&) = delete;

  // The language of the word at `index`, or nothing; a recognised language the learner does not
  // study is written to the SkippedLanguage.
  std::optional<Language> detect(std::u16string_view text, std::ptrdiff_t index,
                                 const Snapshot& snapshot) const;
  // The word at `index` read as `language`, with its entries and sentence; nothing for a word that
  // no rule can cut or that the language's dictionary does not hold. A language without a
  // dictionary (Thai) gives the word with no entries.
  std::optional<HoverResult> lookup(std::u16string_view text, std::ptrdiff_t index,
                                    Language language, const Snapshot& snapshot) const;
  // `detect` then `lookup`.
  std::optional<HoverResult> read(std::u16string_view text, std::ptrdiff_t index,
                                  const Snapshot& snapshot) const;

  // Whether the word at `index` is Polish: its diacritics, the Polish headwords, then the
  // recogniser over its sentence.
  bool isPolish(std::u16string_view text, std::ptrdiff_t index) const;
  // "en" or "fr" when the word is a headword of one of the two languages only.
  std::optional<Language> headwordLanguage(std::u16string_view word) const;
  // French or English by the recogniser over the whole text, weighed against `preference`.
  std::string guessLatin(std::u16string_view text, std::string_view preference) const;
  // A run of name-transliteration characters around `index` that the dictionary does not know.
  std::optional<HoverResult::Chinese> guessName(std::u16string_view text, std::size_t index) const;

 private:
  std::optional<Language> decideHan(std::u16string_view text, char32_t c,
                                    const Snapshot& snapshot) const;
  std::optional<Language> skip(Language language) const;
  std::optional<HoverResult> chinese(std::u16string_view text, std::size_t index) const;
  std::optional<HoverResult> japanese(std::u16string_view text, std::size_t index) const;
  std::optional<HoverResult> thai(std::u16string_view text, std::size_t index) const;
  std::optional<HoverResult> inflected(std::u16string_view text, std::size_t index,
                                       Language language, const Snapshot& snapshot) const;

  const CEDict& cedict_;
  const LanguageData& data_;
  SkippedLanguage& skipped_;
  ChooserTexts texts_;
};

}  // namespace vesko
