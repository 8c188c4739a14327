#pragma once
// Where the word chooser finds each language's dictionary, headword set, conjugator and the
// language recogniser. Owned by whoever wires the dictionaries (main, the CLI, a test); it outlives
// the chooser. Getters are called on the read thread and may load a dictionary on first use, so an
// implementation must be safe for concurrent callers. Null means the language has no such data.

#include "app/language.h"
#include "dict/word_dictionary.h"

namespace vesko {

class LanguageData {
 public:
  virtual ~LanguageData() = default;
  // Lookup by lowercased headword. Chinese is not asked: it has the CEDict.
  virtual const WordDictionary* dictionary(Language language) const = 0;
  // The French and English headword sets that decide a Latin word's language.
  virtual const HeadwordSet* headwords(Language language) const = 0;
  // The dictionary form of an inflected word (French, English, Polish, Russian).
  virtual const Conjugator* conjugator(Language language) const = 0;
  virtual const LanguageRecognizer* recognizer() const = 0;
};

// No data for any language: every word is cut but finds no entries.
class NoLanguageData final : public LanguageData {
 public:
  const WordDictionary* dictionary(Language) const override { return nullptr; }
  const HeadwordSet* headwords(Language) const override { return nullptr; }
  const Conjugator* conjugator(Language) const override { return nullptr; }
  const LanguageRecognizer* recognizer() const override { return nullptr; }
};

}  // namespace vesko
