// What a read returns once the language is known: the Chinese word or probable name, the
// Japanese dictionary form, the French elided word, base forms, and the word alone where a
// language has no dictionary.

#include <gtest/gtest.h>

#include <string>

#include "app/word_chooser.h"
#include "support/fake_language_data.h"
#include "support/temp_dir.h"
#include "text/unicode.h"

namespace vesko {
namespace {

using testing::FakeConjugator;
using testing::FakeDictionary;
using testing::FakeLanguageData;

std::u16string u16(std::string_view s) {
  return *text::fromUtf8(s);
}

std::ptrdiff_t indexOf(const std::u16string& text, std::string_view at) {
  return static_cast<std::ptrdiff_t>(text.find(u16(at)));
}

class WordLookupTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(cedict_.load(testing::testData("cedict_names.txt"), ""));
    japanese_.add("食べる", "to eat", "たべる")
        .add("行く", "to go", "いく")
        .add("人人", "everyone")
        .add("日本", "Japan", "にほん")
        .add("学生", "student", "がくせい");
    french_.add("école", "school").add("manger", "to eat").add("il", "he");
    frenchConjugator_.add("mangeons", "manger", "présent, 1re personne du pluriel");
    english_.add("run", "to run");
    englishConjugator_.add("ran", "run", "past tense");
    russian_.add("привет", "hello");
    thai_.add("ข้าวผัด", "fried rice").add("ข้าว", "rice");
    data_.dictionaries = {{Language::ja, &japanese_},
                          {Language::fr, &french_},
                          {Language::en, &english_},
                          {Language::ru, &russian_}};
    data_.conjugators = {{Language::fr, &frenchConjugator_}, {Language::en, &englishConjugator_}};
    snapshot_.zh = snapshot_.ja = snapshot_.fr = snapshot_.en = snapshot_.th = snapshot_.ru = true;
  }

  std::optional<HoverResult> look(const std::u16string& text, std::string_view at,
                                  Language language) {
    return chooser_.lookup(text, indexOf(text, at), language, snapshot_);
  }

  CEDict cedict_;
  FakeDictionary japanese_, french_, english_, russian_, thai_;
  FakeConjugator frenchConjugator_, englishConjugator_;
  FakeLanguageData data_;
  SkippedLanguage skipped_;
  WordChooser chooser_{cedict_, data_, skipped_};
  Snapshot snapshot_;
};

TEST_F(WordLookupTest, Chinese) {
  struct Row {
    const char* text;
    const char* at;
    const char* word;  // "" for no result
    std::size_t start;
    const char* pinyin;
    const char* def;
  };
  const Row rows[] = {
      {"我学习。你呢", "习", "学习", 1, "xue2 xi2", "to learn"},
      {"我說喬納森是", "納", "喬納森", 2, "qiao2 na4 sen1",
       "nom propre (translittération probable)"},
      {"我说乔纳森是", "乔", "乔纳森", 2, "qiao2 na4 sen1",
       "nom propre (translittération probable)"},
      {"我和马克思", "克", "马克思", 2, "Ma3 ke4 si1", "Marx"},  // a dictionary word, not a name
      {"我马是", "马", "马", 1, "ma3", "horse"},                 // one name character is no name
      {"我是", "是", "是", 1, "shi4", "to be"},
      {"我鬱", "鬱", "", 0, "", ""},  // not in the dictionary
      {"我们", "们", "", 0, "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.text) + " @" + row.at);
    auto result = look(u16(row.text), row.at, Language::zh);
    ASSERT_EQ(result.has_value(), row.word[0] != 0);
    if (!result) continue;
    const auto* hit = result->chinese();
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->word, row.word);
    EXPECT_EQ(hit->start, row.start);
    ASSERT_FALSE(hit->entries.empty());
    EXPECT_EQ(hit->entries[0].pinyin, row.pinyin);
    EXPECT_EQ(hit->entries[0].defs[0], row.def);
  }
  auto name = look(u16("我說喬納森是"), "納", Language::zh)->chinese()->entries[0];
  EXPECT_EQ(name.trad, "喬納森");
  EXPECT_EQ(name.simp, "乔纳森");
}

TEST_F(WordLookupTest, ChineseBeforeTheDictionaryLoadsFindsNothing) {
  CEDict empty;
  WordChooser chooser(empty, data_, skipped_);
  EXPECT_FALSE(chooser.lookup(u"学习", 0, Language::zh, snapshot_));
}

TEST_F(WordLookupTest, Japanese) {
  struct Row {
    const char* text;
    const char* at;
    const char* word;  // "" for no result
    const char* base;  // "" when the surface is the headword
  };
  const Row rows[] = {
      {"私は食べていました。", "食", "食べていました", "食べる"},
      {"私は食べていました。", "べ", "食べていました", "食べる"},
      {"昨日行った", "行", "行った", "行く"},
      {"人々が来た", "人", "人々", ""},
      {"人々が来た", "々", "人々", ""},
      {"日本の学生です", "学", "学生", ""},
      {"日本の学生です", "日", "日本", ""},
      {"猫が", "猫", "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.text) + " @" + row.at);
    auto result = look(u16(row.text), row.at, Language::ja);
    ASSERT_EQ(result.has_value(), row.word[0] != 0);
    if (!result) continue;
    const auto* word = result->word();
    ASSERT_NE(word, nullptr);
    EXPECT_EQ(word->word, row.word);
    EXPECT_EQ(word->language, Language::ja);
    EXPECT_FALSE(word->entries.empty());
    if (row.base[0]) {
      ASSERT_TRUE(word->base);
      EXPECT_EQ(word->base->word, row.base);
      EXPECT_EQ(word->base->note, std::string(" → ") + row.base + "  (forme du dictionnaire)");
    } else {
      EXPECT_FALSE(word->base);
    }
  }
}

TEST_F(WordLookupTest, OtherLanguages) {
  struct Row {
    const char* text;
    const char* at;
    Language language;
    const char* word;  // "" for no result
    const char* headword;
    const char* base;
    const char* elided;
  };
  const Row rows[] = {
      {"Voici l'école.", "é", Language::fr, "école", "école", "", "le"},
      {"Voici l'école.", "l'", Language::fr, "école", "école", "", "le"},
      {"Nous mangeons.", "mangeons", Language::fr, "mangeons", "manger", "manger", ""},
      {"s'il vient", "il", Language::fr, "il", "il", "", "si"},
      {"Voici la gare.", "gare", Language::fr, "", "", "", ""},  // a dictionary miss
      {"He ran home.", "ran", Language::en, "ran", "run", "run", ""},
      {"Run!", "R", Language::en, "Run", "run", "", ""},
      {"Привет, мир", "ри", Language::ru, "Привет", "привет", "", ""},
      {"Cześć", "C", Language::pl, "Cześć", "", "", ""},  // no Polish dictionary yet
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.text) + " @" + row.at);
    auto result = look(u16(row.text), row.at, row.language);
    ASSERT_EQ(result.has_value(), row.word[0] != 0);
    if (!result) continue;
    const auto* word = result->word();
    ASSERT_NE(word, nullptr);
    EXPECT_EQ(word->word, row.word);
    EXPECT_EQ(word->language, row.language);
    if (row.headword[0]) {
      ASSERT_FALSE(word->entries.empty());
      EXPECT_EQ(word->entries[0].headword, row.headword);
    } else {
      EXPECT_TRUE(word->entries.empty());
    }
    EXPECT_EQ(word->base ? word->base->word : "", row.base);
    EXPECT_EQ(word->elided.value_or(""), row.elided);
    EXPECT_EQ(word->sentence, row.text);
  }
}

TEST_F(WordLookupTest, BaseFormHiddenWithoutConjugationUnlessItFoundTheEntry) {
  french_.add("mangeons", "we eat");
  snapshot_.conj = false;
  auto direct = look(u"Nous mangeons.", "mangeons", Language::fr);
  ASSERT_TRUE(direct);
  EXPECT_FALSE(direct->word()->base);
  snapshot_.conj = true;
  EXPECT_TRUE(look(u"Nous mangeons.", "mangeons", Language::fr)->word()->base);
  snapshot_.conj = false;
  auto throughBase = look(u"He ran.", "ran", Language::en);
  ASSERT_TRUE(throughBase);
  EXPECT_EQ(throughBase->word()->base->word, "run");
}

TEST_F(WordLookupTest, ThaiWithoutDictionaryGivesTheWordAlone) {
  const std::u16string text = u16("ฉันชอบกินข้าวผัดมาก");
  auto result = look(text, "กิน", Language::th);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->word()->word, "กิน");
  EXPECT_EQ(result->word()->start, 6u);
  EXPECT_TRUE(result->word()->entries.empty());
}

TEST_F(WordLookupTest, ThaiDictionaryMatchesAPhraseOfSeveralWords) {
  data_.dictionaries[Language::th] = &thai_;
  const std::u16string text = u16("ฉันชอบกินข้าวผัดมาก");
  auto result = look(text, "ข้าว", Language::th);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->word()->word, "ข้าวผัด");
  EXPECT_FALSE(look(text, "กิน", Language::th));  // a miss in a dictionary that exists
}

TEST_F(WordLookupTest, ReadCombinesDetectAndLookup) {
  snapshot_.en = false;
  auto result = chooser_.read(u"Voici l'école.", 8, snapshot_);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->word()->word, "école");
  EXPECT_FALSE(chooser_.read(u"Voici l'école.", 5, snapshot_));  // on the space
}

}  // namespace
}  // namespace vesko
