#pragma once
// What the word chooser needs from the dictionaries of the languages other than Chinese: a lookup
// by lowercased headword, headword sets, conjugators that give a word's dictionary form, and a
// recogniser that weighs which language a text is in. Texts are UTF-8. Implementations are
// immutable once built and safe for concurrent readers.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

// One entry of a dictionary other than the Chinese one.
struct WordEntry {
  std::string headword;
  std::string reading;            // kana for Japanese; empty where the source gives none
  std::vector<std::string> defs;  // glosses in source order, none empty
  // True when the entry was made by reading a dictionary of the other direction (English →
  // Russian read backwards): its glosses are the headwords of that dictionary.
  bool reversed = false;

  friend bool operator==(const WordEntry&, const WordEntry&) = default;
};

class WordDictionary {
 public:
  virtual ~WordDictionary() = default;
  // Entries whose headword, lowercased, is `lowercased`; empty when there is none.
  virtual std::vector<WordEntry> lookup(std::string_view lowercased) const = 0;
  virtual bool contains(std::string_view lowercased) const = 0;
};

class HeadwordSet {
 public:
  virtual ~HeadwordSet() = default;
  virtual bool contains(std::string_view lowercased) const = 0;
};

// A word's dictionary form: the infinitive of a conjugated French verb, the base form of an
// English word, the lemma of a Polish or Russian form.
struct BaseForm {
  std::string word;
  std::string note;  // how the form was read ("participe passé de …"); may be empty
  friend bool operator==(const BaseForm&, const BaseForm&) = default;
};

class Conjugator {
 public:
  virtual ~Conjugator() = default;
  // Nothing when the word is already a dictionary form or is not known.
  virtual std::optional<BaseForm> baseForm(std::string_view word) const = 0;
};

struct LanguageGuess {
  std::string language;  // "fr", "en", "pl"
  double probability;    // over the candidate languages, summing to at most 1
};

class LanguageRecognizer {
 public:
  virtual ~LanguageRecognizer() = default;
  // The most probable of `candidates` for `text`, most probable first, at most `maximum`.
  virtual std::vector<LanguageGuess> hypotheses(std::string_view text,
                                                std::span<const std::string_view> candidates,
                                                std::size_t maximum) const = 0;
};

}  // namespace vesko
