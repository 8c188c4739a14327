#pragma once
// The Japanese, French, Polish and Russian dictionaries and stemmers as the word chooser uses
// them, each loading lazily from the files the fetch scripts leave in the resources folder.
// Thai has no dictionary at all (no Thai–English source exists): the word chooser returns the
// tokenised Thai word with empty entries. Creating these costs nothing; see dict/lazy_dictionary.h
// for the thread contract.

#include <filesystem>
#include <memory>

#include "dict/lazy_dictionary.h"

namespace vesko {

// EDICT, with KANJIDIC for single kanji EDICT lacks (resources/ja/).
std::unique_ptr<LazyDictionary> makeJapaneseDictionary(const std::filesystem::path& resources);

// FreeDict French–English (resources/fr/).
std::unique_ptr<LazyDictionary> makeFrenchDictionary(const std::filesystem::path& resources);

// FreeDict Polish–English (resources/pl/); also the Polish headword set.
std::unique_ptr<LazyDictionary> makePolishDictionary(const std::filesystem::path& resources);
// Hunspell's Polish stemmer (resources/hunspell/pl_PL.*), keeping stems that are headwords of
// `headwords`, which must outlive it (the Polish dictionary).
std::unique_ptr<LazyConjugator> makePolishConjugator(const std::filesystem::path& resources,
                                                     const HeadwordSet& headwords);

// Mueller's English–Russian dictionary read backwards (resources/ru/).
std::unique_ptr<LazyDictionary> makeRussianDictionary(const std::filesystem::path& resources);
// Hunspell's Russian stemmer (resources/hunspell/ru_RU.*), as for Polish.
std::unique_ptr<LazyConjugator> makeRussianConjugator(const std::filesystem::path& resources,
                                                      const HeadwordSet& headwords);

}  // namespace vesko
