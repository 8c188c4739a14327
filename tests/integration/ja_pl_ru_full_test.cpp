// The real Japanese, Polish and Russian data, as scripts/fetch-dicts-ja-pl-ru leaves it. Skipped
// when the data is absent, unless VESKO_REQUIRE_DATA is set, where absence is a failure.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

#include "dict/language_dictionaries.h"
#include "dict/lowercase.h"
#include "settings/resources.h"

namespace vesko {
namespace {

class JaPlRuDataTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = Resources::find("ja/edict", "txt").parent_path().parent_path();
    if (folder_.empty() || Resources::find("ru/mueller7", "index").empty() ||
        Resources::find("hunspell/pl_PL", "dic").empty())
      return;
    japanese_ = makeJapaneseDictionary(folder_).release();
    polish_ = makePolishDictionary(folder_).release();
    polishStems_ = makePolishConjugator(folder_, *polish_).release();
    russian_ = makeRussianDictionary(folder_).release();
    russianStems_ = makeRussianConjugator(folder_, *russian_).release();
  }
  static void TearDownTestSuite() {
    delete polishStems_;
    delete russianStems_;
    delete japanese_;
    delete polish_;
    delete russian_;
  }
  void SetUp() override {
    if (japanese_) return;
    if (std::getenv("VESKO_REQUIRE_DATA")) FAIL() << "the Japanese/Polish/Russian data is missing";
    GTEST_SKIP() << "run scripts/fetch-dicts-ja-pl-ru for the full dictionaries";
  }

  static bool anyDefIs(const std::vector<WordEntry>& entries, std::string_view def) {
    for (const auto& e : entries)
      if (std::find(e.defs.begin(), e.defs.end(), def) != e.defs.end()) return true;
    return false;
  }
  static bool anyDefHas(const std::vector<WordEntry>& entries, std::string_view part) {
    for (const auto& e : entries)
      for (const auto& d : e.defs)
        if (d.find(part) != std::string::npos) return true;
    return false;
  }

  static std::filesystem::path folder_;
  static LazyDictionary* japanese_;
  static LazyDictionary* polish_;
  static LazyConjugator* polishStems_;
  static LazyDictionary* russian_;
  static LazyConjugator* russianStems_;
};
std::filesystem::path JaPlRuDataTest::folder_;
LazyDictionary* JaPlRuDataTest::japanese_ = nullptr;
LazyDictionary* JaPlRuDataTest::polish_ = nullptr;
LazyConjugator* JaPlRuDataTest::polishStems_ = nullptr;
LazyDictionary* JaPlRuDataTest::russian_ = nullptr;
LazyConjugator* JaPlRuDataTest::russianStems_ = nullptr;

TEST_F(JaPlRuDataTest, Japanese) {
  ASSERT_TRUE(japanese_->load()) << japanese_->error().value_or("");
  struct Row {
    const char* word;
    const char* reading;
    const char* gloss;  // part of some definition
  };
  const Row rows[] = {
      {"食べる", "たべる", "to eat"},
      {"たべる", "たべる", "to eat"},
      {"猫", "ねこ", "cat"},
      {"日本語", "にほんご", "Japanese"},
      {"行く", "いく", "to go"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    auto entries = japanese_->lookup(row.word);
    ASSERT_FALSE(entries.empty());
    EXPECT_TRUE(std::any_of(entries.begin(), entries.end(),
                            [&](const WordEntry& e) { return e.reading == row.reading; }));
    EXPECT_TRUE(anyDefHas(entries, row.gloss));
  }
  EXPECT_TRUE(japanese_->lookup("食べた").empty());  // inflected: the word chooser's business
  EXPECT_TRUE(japanese_->lookup("cat").empty());
}

TEST_F(JaPlRuDataTest, Polish) {
  ASSERT_TRUE(polish_->load()) << polish_->error().value_or("");
  EXPECT_TRUE(anyDefHas(polish_->lookup("kot"), "cat"));
  EXPECT_TRUE(anyDefHas(polish_->lookup("dom"), "house"));
  EXPECT_TRUE(polish_->contains("książka"));
  EXPECT_FALSE(polish_->contains("kota"));

  struct Row {
    const char* form;
    const char* lemma;  // empty: no base form
  };
  const Row rows[] = {
      {"kota", "kot"},
      {"domy", "dom"},
      {"psa", "pies"},
      {"kotem", "kot"},
      {"książki", "książka"},
      {"kot", ""},       // already a headword
      {"xyzzyq", ""},    // unknown
      {"книги", ""},     // not Polish
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.form);
    auto base = polishStems_->baseForm(row.form);
    if (*row.lemma == '\0') {
      EXPECT_FALSE(base.has_value());
    } else {
      ASSERT_TRUE(base.has_value());
      EXPECT_EQ(base->word, row.lemma);
      EXPECT_EQ(base->note, std::string("forme fléchie de « ") + row.lemma + " »");
    }
  }
}

TEST_F(JaPlRuDataTest, Russian) {
  ASSERT_TRUE(russian_->load()) << russian_->error().value_or("");
  struct Row {
    const char* word;
    const char* english;
  };
  const Row rows[] = {
      {"книга", "book"}, {"кот", "cat"}, {"кошка", "cat"}, {"дом", "house"}, {"ёж", "hedgehog"},
      {"еж", "hedgehog"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    auto entries = russian_->lookup(row.word);
    ASSERT_FALSE(entries.empty());
    EXPECT_TRUE(entries[0].reversed);
    EXPECT_TRUE(anyDefIs(entries, row.english));
  }
  // Mueller lists "книги" under "books"; the stemmer still leads it to книга.
  EXPECT_TRUE(russian_->lookup("book").empty());

  auto base = russianStems_->baseForm("книги");
  ASSERT_TRUE(base.has_value());
  EXPECT_EQ(base->word, "книга");
  base = russianStems_->baseForm("кошки");
  ASSERT_TRUE(base.has_value());
  EXPECT_EQ(base->word, "кошка");
  EXPECT_FALSE(russianStems_->baseForm("книга").has_value());
  EXPECT_FALSE(russianStems_->baseForm("kota").has_value());
}

}  // namespace
}  // namespace vesko
