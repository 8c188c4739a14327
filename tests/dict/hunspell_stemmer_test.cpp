#include "dict/hunspell_stemmer.h"

#include <gtest/gtest.h>

#include <set>

#include "support/temp_dir.h"

namespace vesko {
namespace {

using testing::testData;

class FixedHeadwords final : public HeadwordSet {
 public:
  explicit FixedHeadwords(std::set<std::string, std::less<>> words) : words_(std::move(words)) {}
  bool contains(std::string_view lowercased) const override { return words_.contains(lowercased); }

 private:
  std::set<std::string, std::less<>> words_;
};

std::string lemmaOf(const Conjugator& stemmer, const char* word) {
  auto base = stemmer.baseForm(word);
  if (!base) return "-";
  EXPECT_EQ(base->note, "forme fléchie de « " + base->word + " »");
  return base->word;
}

// The Polish fixture is in ISO-8859-2, as pl_PL is: words travel through the converter both ways.
TEST(HunspellStemmerTest, PolishInItsOwnEncoding) {
  // "kota" is also a word of its own in the fixture, as many forms are in pl_PL.
  const FixedHeadwords headwords({"kot", "dom", "książka"});
  auto stemmer = HunspellStemmer::load(testData("hunspell/tiny_pl.aff"),
                                       testData("hunspell/tiny_pl.dic"), &headwords);
  ASSERT_TRUE(stemmer.has_value()) << stemmer.error();
  struct Row {
    const char* word;
    const char* lemma;  // "-": no base form
  };
  const Row rows[] = {
      {"kota", "kot"},        {"kotem", "kot"},     {"domy", "dom"},
      {"książki", "książka"}, {"książką", "książka"},
      {"kot", "-"},     // already the dictionary form
      {"psa", "-"},     // pies is no headword here
      {"kotu", "-"},    // no such rule
      {"żółw", "-"},    // unknown
      {"кота", "-"},    // not representable in ISO-8859-2
      {"", "-"},
      {"\xff\xfe", "-"},  // not UTF-8
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    EXPECT_EQ(lemmaOf(**stemmer, row.word), row.lemma);
  }
}

TEST(HunspellStemmerTest, WithoutHeadwordsAnyOtherStemIsTheBase) {
  auto stemmer = HunspellStemmer::load(testData("hunspell/tiny_pl.aff"),
                                       testData("hunspell/tiny_pl.dic"), nullptr);
  ASSERT_TRUE(stemmer.has_value());
  EXPECT_EQ(lemmaOf(**stemmer, "psa"), "pies");
  EXPECT_EQ(lemmaOf(**stemmer, "kota"), "kot");
}

TEST(HunspellStemmerTest, RussianInUtf8) {
  const FixedHeadwords headwords({"книга", "кошка", "кот", "книги"});
  auto stemmer = HunspellStemmer::load(testData("hunspell/tiny_ru.aff"),
                                       testData("hunspell/tiny_ru.dic"), &headwords);
  ASSERT_TRUE(stemmer.has_value()) << stemmer.error();
  struct Row {
    const char* word;
    const char* lemma;
  };
  const Row rows[] = {
      // A headword can still be a form of another one.
      {"книги", "книга"}, {"книгу", "книга"}, {"кошки", "кошка"}, {"кота", "кот"},
      {"книга", "-"},     {"собаки", "-"},    {"kota", "-"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    EXPECT_EQ(lemmaOf(**stemmer, row.word), row.lemma);
  }
}

TEST(HunspellStemmerTest, MissingFiles) {
  EXPECT_FALSE(HunspellStemmer::load(testData("hunspell/none.aff"),
                                     testData("hunspell/tiny_ru.dic"), nullptr)
                   .has_value());
  EXPECT_FALSE(HunspellStemmer::load(testData("hunspell/tiny_ru.aff"),
                                     testData("hunspell/none.dic"), nullptr)
                   .has_value());
}

}  // namespace
}  // namespace vesko
