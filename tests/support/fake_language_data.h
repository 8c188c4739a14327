#pragma once
// Dictionaries, headword sets, conjugators and a recogniser held in memory, for the word chooser's
// tests. Filled by the test before use; read-only afterwards.

#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/language_data.h"

namespace vesko::testing {

class FakeDictionary final : public WordDictionary {
 public:
  FakeDictionary& add(const std::string& headword, const std::string& gloss,
                      const std::string& reading = "") {
    entries_[headword].push_back(WordEntry{headword, reading, {gloss}, false});
    return *this;
  }
  std::vector<WordEntry> lookup(std::string_view lowercased) const override {
    auto it = entries_.find(std::string(lowercased));
    return it == entries_.end() ? std::vector<WordEntry>{} : it->second;
  }
  bool contains(std::string_view lowercased) const override {
    return entries_.count(std::string(lowercased)) > 0;
  }

 private:
  std::map<std::string, std::vector<WordEntry>> entries_;
};

class FakeHeadwords final : public HeadwordSet {
 public:
  FakeHeadwords(std::initializer_list<std::string> words) : words_(words) {}
  bool contains(std::string_view lowercased) const override {
    return words_.count(std::string(lowercased)) > 0;
  }

 private:
  std::set<std::string> words_;
};

class FakeConjugator final : public Conjugator {
 public:
  FakeConjugator& add(const std::string& form, const std::string& base, const std::string& note) {
    forms_[form] = BaseForm{base, note};
    return *this;
  }
  std::optional<BaseForm> baseForm(std::string_view word) const override {
    auto it = forms_.find(std::string(word));
    if (it == forms_.end()) return std::nullopt;
    return it->second;
  }

 private:
  std::map<std::string, BaseForm> forms_;
};

// Answers every text with the same hypotheses, filtered to the candidates asked for.
class FakeRecognizer final : public LanguageRecognizer {
 public:
  std::vector<LanguageGuess> guesses;
  mutable int calls = 0;

  std::vector<LanguageGuess> hypotheses(std::string_view,
                                        std::span<const std::string_view> candidates,
                                        std::size_t maximum) const override {
    ++calls;
    std::vector<LanguageGuess> out;
    for (const auto& guess : guesses) {
      for (auto candidate : candidates)
        if (candidate == guess.language && out.size() < maximum) out.push_back(guess);
    }
    return out;
  }
};

class FakeLanguageData final : public LanguageData {
 public:
  std::map<Language, const WordDictionary*> dictionaries;
  std::map<Language, const HeadwordSet*> headwordSets;
  std::map<Language, const Conjugator*> conjugators;
  const LanguageRecognizer* languageRecognizer = nullptr;

  const WordDictionary* dictionary(Language language) const override {
    auto it = dictionaries.find(language);
    return it == dictionaries.end() ? nullptr : it->second;
  }
  const HeadwordSet* headwords(Language language) const override {
    auto it = headwordSets.find(language);
    return it == headwordSets.end() ? nullptr : it->second;
  }
  const Conjugator* conjugator(Language language) const override {
    auto it = conjugators.find(language);
    return it == conjugators.end() ? nullptr : it->second;
  }
  const LanguageRecognizer* recognizer() const override { return languageRecognizer; }
};

// A few words in every language, so that each lookup path can find something: what the random
// and fuzzed reads of the word chooser run against. Not copyable: `data` points into it.
struct SmallLanguages {
  FakeDictionary japanese, french, english, polish, russian, thai;
  FakeHeadwords englishWords{"cat", "the", "c'mon"}, frenchWords{"école", "the"};
  FakeConjugator conjugator;
  FakeRecognizer recognizer;
  FakeLanguageData data;

  SmallLanguages() {
    japanese.add("食べる", "to eat").add("行く", "to go").add("人人", "everyone");
    french.add("école", "school").add("il", "he");
    english.add("cat", "cat").add("the", "the");
    polish.add("kot", "cat").add("żółw", "tortoise");
    russian.add("привет", "hello");
    thai.add("ภาษา", "language").add("ข้าว", "rice");
    conjugator.add("cats", "cat", "plural");
    recognizer.guesses = {{"pl", 0.5}, {"en", 0.3}, {"fr", 0.2}};
    data.dictionaries = {{Language::ja, &japanese}, {Language::fr, &french},
                         {Language::en, &english},  {Language::pl, &polish},
                         {Language::ru, &russian},  {Language::th, &thai}};
    data.headwordSets = {{Language::en, &englishWords}, {Language::fr, &frenchWords}};
    data.conjugators = {{Language::en, &conjugator}};
    data.languageRecognizer = &recognizer;
  }
  SmallLanguages(const SmallLanguages&) = delete;
  SmallLanguages& operator=(const SmallLanguages&) = delete;
};

}  // namespace vesko::testing
