#pragma once
// The lemma of an inflected Polish or Russian word, by Hunspell's stemmer on the language's
// Hunspell dictionary: "kota" → "kot", "книги" → "книга". The note says which form was found, in
// French, the interface language the word chooser's notes are written in ("forme fléchie de
// « kot »"). Hunspell keeps state while it analyses a word, so calls are serialised by a mutex:
// safe to call from any thread.

#include <expected>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "dict/word_dictionary.h"

class Hunspell;
struct UConverter;

namespace vesko {

class HunspellStemmer final : public Conjugator {
 public:
  // When `headwords` is given (it must outlive the stemmer), the first stem that is a headword
  // wins and a word none of whose stems is a headword has no base form. A headword may still have
  // one: the reversed Russian dictionary lists "книги" (under "books"), which is also the genitive
  // of книга; the word chooser decides which to show.
  static std::expected<std::unique_ptr<HunspellStemmer>, std::string> load(
      const std::filesystem::path& aff, const std::filesystem::path& dic,
      const HeadwordSet* headwords);
  ~HunspellStemmer() override;

  // `word` is lowercased UTF-8.
  std::optional<BaseForm> baseForm(std::string_view word) const override;

 private:
  HunspellStemmer() = default;
  std::optional<std::string> toDictionary(std::string_view utf8) const;
  std::string fromDictionary(std::string_view bytes) const;

  const HeadwordSet* headwords_ = nullptr;
  mutable std::mutex mutex_;
  // Both guarded by mutex_. No converter when the dictionary is in UTF-8 already.
  std::unique_ptr<Hunspell> hunspell_;
  UConverter* converter_ = nullptr;
};

}  // namespace vesko
