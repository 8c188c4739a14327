#include "app/installed_language_data.h"

#include <system_error>

#include "dict/english_conjugator.h"
#include "dict/fasttext_recognizer.h"
#include "dict/french_conjugator.h"
#include "dict/language_dictionaries.h"
#include "dict/lazy_dictionary.h"
#include "dict/word_list_headwords.h"
#include "dict/wordnet_dictionary.h"

namespace vesko {
namespace {

bool present(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

}  // namespace

// Members that refer to another (a headword set to its dictionary) come after it.
struct InstalledLanguageData::Data {
  explicit Data(const std::filesystem::path& r)
      : hasJapanese(present(r / "ja")),
        hasFrench(present(r / "fr")),
        hasEnglish(present(r / "en")),
        hasPolish(present(r / "pl")),
        hasRussian(present(r / "ru")),
        hasRecognizer(present(r / "lang" / "lid.176.ftz")),
        japanese(makeJapaneseDictionary(r)),
        french(makeFrenchDictionary(r)),
        frenchWords(r / "fr" / "words.txt", *french),
        frenchConjugator(r / "fr" / "verbiste" / "verbs-fr.xml",
                         r / "fr" / "verbiste" / "conjugation-fr.xml"),
        english(r / "en" / "wordnet"),
        englishWords(r / "en" / "words.txt", english),
        englishConjugator(english),
        polish(makePolishDictionary(r)),
        polishStemmer(makePolishConjugator(r, *polish)),
        russian(makeRussianDictionary(r)),
        russianStemmer(makeRussianConjugator(r, *russian)),
        recognizer(r / "lang" / "lid.176.ftz") {}

  const bool hasJapanese, hasFrench, hasEnglish, hasPolish, hasRussian, hasRecognizer;
  std::unique_ptr<LazyDictionary> japanese;
  std::unique_ptr<LazyDictionary> french;
  WordListHeadwords frenchWords;
  FrenchConjugator frenchConjugator;
  WordNetDictionary english;
  WordListHeadwords englishWords;
  EnglishConjugator englishConjugator;
  std::unique_ptr<LazyDictionary> polish;
  std::unique_ptr<LazyConjugator> polishStemmer;
  std::unique_ptr<LazyDictionary> russian;
  std::unique_ptr<LazyConjugator> russianStemmer;
  FastTextRecognizer recognizer;
};

InstalledLanguageData::InstalledLanguageData(const std::filesystem::path& resources)
    : data_(std::make_unique<Data>(resources)) {}

InstalledLanguageData::~InstalledLanguageData() = default;

const WordDictionary* InstalledLanguageData::dictionary(Language language) const {
  const Data& d = *data_;
  switch (language) {
    case Language::ja: return d.hasJapanese ? d.japanese.get() : nullptr;
    case Language::fr: return d.hasFrench ? d.french.get() : nullptr;
    case Language::en: return d.hasEnglish ? &d.english : nullptr;
    case Language::pl: return d.hasPolish ? d.polish.get() : nullptr;
    case Language::ru: return d.hasRussian ? d.russian.get() : nullptr;
    case Language::zh:  // the CEDict serves Chinese
    case Language::th:  // no Thai–English source exists
      return nullptr;
  }
  return nullptr;
}

const HeadwordSet* InstalledLanguageData::headwords(Language language) const {
  const Data& d = *data_;
  switch (language) {
    case Language::fr: return d.hasFrench ? &d.frenchWords : nullptr;
    case Language::en: return d.hasEnglish ? &d.englishWords : nullptr;
    case Language::pl: return d.hasPolish ? d.polish.get() : nullptr;
    case Language::ru: return d.hasRussian ? d.russian.get() : nullptr;
    case Language::ja: return d.hasJapanese ? d.japanese.get() : nullptr;
    case Language::zh:
    case Language::th:
      return nullptr;
  }
  return nullptr;
}

const Conjugator* InstalledLanguageData::conjugator(Language language) const {
  const Data& d = *data_;
  switch (language) {
    case Language::fr: return d.hasFrench ? &d.frenchConjugator : nullptr;
    case Language::en: return d.hasEnglish ? &d.englishConjugator : nullptr;
    case Language::pl: return d.hasPolish ? d.polishStemmer.get() : nullptr;
    case Language::ru: return d.hasRussian ? d.russianStemmer.get() : nullptr;
    case Language::ja:
    case Language::zh:
    case Language::th:
      return nullptr;
  }
  return nullptr;
}

const LanguageRecognizer* InstalledLanguageData::recognizer() const {
  return data_->hasRecognizer ? &data_->recognizer : nullptr;
}

}  // namespace vesko
