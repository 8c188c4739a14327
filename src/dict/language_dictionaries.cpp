#include "dict/language_dictionaries.h"

#include "dict/dictd.h"
#include "dict/edict.h"
#include "dict/hunspell_stemmer.h"
#include "dict/reversed_mueller.h"

namespace vesko {
namespace {

// Widens a loader's result to the interface the lazy wrapper holds.
template <typename Base, typename Derived>
std::expected<std::unique_ptr<Base>, std::string> widened(
    std::expected<std::unique_ptr<Derived>, std::string> loaded) {
  if (!loaded) return std::unexpected(std::move(loaded.error()));
  return std::unique_ptr<Base>(std::move(*loaded));
}

}  // namespace

std::unique_ptr<LazyDictionary> makeJapaneseDictionary(const std::filesystem::path& resources) {
  return std::make_unique<LazyDictionary>([resources] {
    return widened<WordDictionary>(
        EdictDictionary::load(resources / "ja" / "edict.txt", resources / "ja" / "kanjidic.txt"));
  });
}

std::unique_ptr<LazyDictionary> makeFrenchDictionary(const std::filesystem::path& resources) {
  return std::make_unique<LazyDictionary>([resources] {
    return widened<WordDictionary>(DictdDictionary::load(
        resources / "fr" / "freedict-fra-eng.index", resources / "fr" / "freedict-fra-eng.dict.dz"));
  });
}

std::unique_ptr<LazyDictionary> makePolishDictionary(const std::filesystem::path& resources) {
  return std::make_unique<LazyDictionary>([resources] {
    return widened<WordDictionary>(DictdDictionary::load(
        resources / "pl" / "freedict-pol-eng.index", resources / "pl" / "freedict-pol-eng.dict.dz"));
  });
}

std::unique_ptr<LazyConjugator> makePolishConjugator(const std::filesystem::path& resources,
                                                     const HeadwordSet& headwords) {
  return std::make_unique<LazyConjugator>([resources, &headwords] {
    return widened<Conjugator>(HunspellStemmer::load(
        resources / "hunspell" / "pl_PL.aff", resources / "hunspell" / "pl_PL.dic", &headwords));
  });
}

std::unique_ptr<LazyDictionary> makeRussianDictionary(const std::filesystem::path& resources) {
  return std::make_unique<LazyDictionary>([resources] {
    return widened<WordDictionary>(ReversedMuellerDictionary::load(
        resources / "ru" / "mueller7.index", resources / "ru" / "mueller7.dict.dz"));
  });
}

std::unique_ptr<LazyConjugator> makeRussianConjugator(const std::filesystem::path& resources,
                                                      const HeadwordSet& headwords) {
  return std::make_unique<LazyConjugator>([resources, &headwords] {
    return widened<Conjugator>(HunspellStemmer::load(
        resources / "hunspell" / "ru_RU.aff", resources / "hunspell" / "ru_RU.dic", &headwords));
  });
}

}  // namespace vesko
