#pragma once
// The base form of an inflected English word, read as WordNet's own morphology reads it: the
// irregular forms of the exception lists first ("was" → "be", "better" → "good"), then the
// regular endings detached and checked against WordNet's lemmas ("running" → "run"). Notes are in
// French, the learner's interface language ("forme conjuguée de « run »").
// Holds a reference to the dictionary, which must outlive it; safe for concurrent readers.

#include <optional>
#include <string_view>

#include "dict/word_dictionary.h"
#include "dict/wordnet_dictionary.h"

namespace vesko {

class EnglishConjugator final : public Conjugator {
 public:
  explicit EnglishConjugator(const WordNetDictionary& wordnet) : wordnet_(wordnet) {}

  // Nothing when the word is a lemma of every part of speech that could have inflected it, or
  // when no reading of it leads to a lemma.
  std::optional<BaseForm> baseForm(std::string_view word) const override;

 private:
  const WordNetDictionary& wordnet_;
};

}  // namespace vesko
