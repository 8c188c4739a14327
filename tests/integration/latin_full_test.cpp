// The English and French data as scripts/fetch-dicts-en-fr leaves them.
// Skipped when the data is absent, unless VESKO_REQUIRE_DATA is set (as CI does), where absence
// is a failure.

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <memory>

#include "dict/language_dictionaries.h"
#include "dict/english_conjugator.h"
#include "dict/french_conjugator.h"
#include "dict/word_list_headwords.h"
#include "dict/wordnet_dictionary.h"
#include "settings/resources.h"

namespace vesko {
namespace {

class LatinDataTest : public ::testing::Test {
 protected:
  static std::filesystem::path folder() { return Resources::folder(); }

  void SetUp() override {
    const auto root = folder();
    const std::filesystem::path needed[] = {
        root / "en/wordnet/index.verb", root / "en/words.txt", root / "fr/words.txt",
        root / "fr/freedict-fra-eng.index", root / "fr/verbiste/verbs-fr.xml"};
    for (const auto& path : needed) {
      if (std::filesystem::exists(path)) continue;
      if (std::getenv("VESKO_REQUIRE_DATA")) FAIL() << path << " missing";
      GTEST_SKIP() << "run scripts/fetch-dicts-en-fr for the English and French data";
    }
  }
};

TEST_F(LatinDataTest, English) {
  WordNetDictionary wordnet(folder() / "en/wordnet");
  ASSERT_FALSE(wordnet.loadError());
  EXPECT_GT(wordnet.lemmaCount(), 140'000u);
  const auto go = wordnet.lookup("go");
  ASSERT_EQ(go.size(), 1u);
  EXPECT_TRUE(go[0].defs[0].starts_with("(v) ")) << go[0].defs[0];
  EXPECT_FALSE(wordnet.lookup("ice cream").empty());

  EnglishConjugator conjugator(wordnet);
  struct Row {
    const char* word;
    const char* base;
  };
  // "The children were running to the biggest houses" read word by word.
  const Row rows[] = {{"children", "child"}, {"were", "be"},   {"running", "run"},
                      {"biggest", "big"},    {"houses", "house"}, {"was", "be"},
                      {"better", "good"},    {"studies", "study"}, {"the", ""},
                      {"house", ""},         {"to", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    const auto base = conjugator.baseForm(row.word);
    EXPECT_EQ(base ? base->word : "", row.base);
  }

  WordListHeadwords headwords(folder() / "en/words.txt", wordnet);
  ASSERT_FALSE(headwords.loadError());
  EXPECT_TRUE(headwords.contains("houses"));
  EXPECT_TRUE(headwords.contains("serendipity"));
  EXPECT_FALSE(headwords.contains("maison"));
}

TEST_F(LatinDataTest, French) {
  const auto french = makeFrenchDictionary(folder());
  const LazyDictionary& dict = *french;
  ASSERT_FALSE(dict.error());
  const auto aller = dict.lookup("aller");
  ASSERT_FALSE(aller.empty());
  EXPECT_EQ(aller[0].reading, "ale");
  EXPECT_NE(std::find(aller[0].defs.begin(), aller[0].defs.end(), "go, ride, travel"),
            aller[0].defs.end());
  EXPECT_FALSE(dict.lookup("maison").empty());

  FrenchConjugator conjugator(folder() / "fr/verbiste/verbs-fr.xml",
                              folder() / "fr/verbiste/conjugation-fr.xml");
  ASSERT_FALSE(conjugator.loadError());
  EXPECT_GT(conjugator.verbCount(), 7'000u);
  struct Row {
    const char* word;
    const char* base;
  };
  // "Nous sommes allés à Paris et nous mangions dans des maisons qu'ils avaient achetées."
  const Row rows[] = {{"sommes", "être"},     {"allés", "aller"},  {"mangions", "manger"},
                      {"avaient", "avoir"},   {"achetées", "acheter"}, {"finissons", "finir"},
                      {"prendrait", "prendre"}, {"nous", ""},       {"maisons", ""},
                      {"manger", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    const auto base = conjugator.baseForm(row.word);
    EXPECT_EQ(base ? base->word : "", row.base);
  }

  WordListHeadwords headwords(folder() / "fr/words.txt", dict);
  ASSERT_FALSE(headwords.loadError());
  EXPECT_TRUE(headwords.contains("pommes"));
  EXPECT_TRUE(headwords.contains("aujourd'hui"));
  EXPECT_FALSE(headwords.contains("the"));
}

}  // namespace
}  // namespace vesko
