#include "dict/edict.h"

#include <gtest/gtest.h>

#include "dict/edict_line.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using testing::testData;

std::vector<std::string> strings(const std::vector<std::string_view>& views) {
  return {views.begin(), views.end()};
}

TEST(EdictLineTest, Lines) {
  struct Row {
    const char* line;
    bool accepted;
    std::vector<std::string> kanji, kana, glosses;
  };
  const Row rows[] = {
      {"食べる [たべる] /(v1,vt) (1) to eat/(2) to live on (e.g. a salary)/(P)/", true,
       {"食べる"}, {"たべる"}, {"to eat", "to live on (e.g. a salary)"}},
      {"かわいい /(adj-i) cute/", true, {}, {"かわいい"}, {"cute"}},
      {"会う(P);逢う(iK) [あう(P)] /(v5u) to meet/", true, {"会う", "逢う"}, {"あう"}, {"to meet"}},
      {"がが芋 [ががいも] /(n) (uk) rough potato (Metaplexis japonica)/", true, {"がが芋"},
       {"ががいも"}, {"rough potato (Metaplexis japonica)"}},
      {"行く [いく] /{ling} (v5k-s) to go/EntL1578850X/\r", true, {"行く"}, {"いく"}, {"to go"}},
      {"  余白  [よはく]  / blank space /", true, {"余白"}, {"よはく"}, {"blank space"}},
      // Not entries.
      {"", false, {}, {}, {}},
      {"# 食べる [たべる] /to eat/", false, {}, {}, {}},
      {"　？？？ /EDICT, EDICT_SUB(P)/Created: 2021-02-03/", false, {}, {}, {}},
      {"食べる [たべる]", false, {}, {}, {}},
      {"食べる [たべる /to eat/", false, {}, {}, {}},
      {"食べる たべる] /to eat/", false, {}, {}, {}},
      {"[たべる] /to eat/", false, {}, {}, {}},
      {"食べる [] /to eat/", false, {}, {}, {}},
      {"食べる [たべる] //(P)/ /", false, {}, {}, {}},
      {"食 べる [たべる] /to eat/", false, {}, {}, {}},
      {"二重 [[にじゅう]] /doubled/", false, {}, {}, {}},
      {" /to eat/", false, {}, {}, {}},
  };
  EdictLine parsed;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.line);
    ASSERT_EQ(parseEdictLine(row.line, parsed), row.accepted);
    if (!row.accepted) continue;
    EXPECT_EQ(strings(parsed.kanji), row.kanji);
    EXPECT_EQ(strings(parsed.kana), row.kana);
    EXPECT_EQ(strings(parsed.glosses), row.glosses);
  }
}

TEST(KanjidicLineTest, Lines) {
  struct Row {
    const char* line;
    bool accepted;
    std::vector<std::string> on, kun, meanings;
  };
  const Row rows[] = {
      // Name readings after T1 are not readings of the word.
      {"猫 472D U732b B94 Wmyo ビョウ ねこ T1 ね {cat} ", true, {"ビョウ"}, {"ねこ"}, {"cat"}},
      {"鬱 735D U9b31 ウツ ふさ.ぐ -しげ.る {gloom} {deep melancholy}", true, {"ウツ"},
       {"ふさ.ぐ", "-しげ.る"}, {"gloom", "deep melancholy"}},
      {"# KANJIDIC header {not a kanji}", false, {}, {}, {}},
      {"無 4C35 U7121 ム ブ な.い", false, {}, {}, {}},      // no English meaning
      {"x 0000 ア {latin letter}", false, {}, {}, {}},       // not a kanji
      {"猫猫 472D ビョウ {two characters}", false, {}, {}, {}},
      {"猫 472D ビョウ {unclosed", false, {}, {}, {}},
      // Found by fuzzing: braces out of place.
      {"猫 472D ビョウ {ca {cat}", false, {}, {}, {}},
      {"鬱 735D ウツ しげ.{る {gloom}", false, {}, {}, {}},
      {"鬱 735D ウツ しげ.る} {gloom}", false, {}, {}, {}},
      {"猫", false, {}, {}, {}},
  };
  KanjidicLine parsed;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.line);
    ASSERT_EQ(parseKanjidicLine(row.line, parsed), row.accepted);
    if (!row.accepted) continue;
    EXPECT_EQ(strings(parsed.onReadings), row.on);
    EXPECT_EQ(strings(parsed.kunReadings), row.kun);
    EXPECT_EQ(strings(parsed.meanings), row.meanings);
  }
}

class EdictDictionaryTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    auto loaded = EdictDictionary::load(testData("edict_small.txt"), testData("kanjidic_small.txt"));
    ASSERT_TRUE(loaded.has_value()) << loaded.error();
    dict_ = loaded->release();
  }
  static void TearDownTestSuite() { delete dict_; }
  static EdictDictionary* dict_;
};
EdictDictionary* EdictDictionaryTest::dict_ = nullptr;

TEST_F(EdictDictionaryTest, Lookups) {
  struct Row {
    const char* word;
    std::vector<WordEntry> expected;
  };
  const Row rows[] = {
      {"食べる", {{"食べる", "たべる", {"to eat", "to live on (e.g. a salary)"}}}},
      {"たべる", {{"食べる", "たべる", {"to eat", "to live on (e.g. a salary)"}}}},
      // Two entries for one written form keep the file's order.
      {"猫",
       {{"猫", "ねこ", {"cat (esp. the domestic cat, Felis catus)", "shamisen"}},
        {"猫", "ねこま", {"cat"}}}},
      {"かわいい", {{"かわいい", "かわいい", {"cute", "adorable"}}}},
      // The second written form is its own headword; the entry's readings are all shown.
      {"逢う", {{"逢う", "あう・おう", {"to meet", "to encounter"}}}},
      {"おう", {{"会う", "おう", {"to meet", "to encounter"}}}},
      // Keys are lowercased, so the lowercased full-width form finds it.
      {"ｔシャツ", {{"Ｔシャツ", "ティーシャツ", {"T-shirt"}}}},
      {"行く", {{"行く", "いく", {"to go"}}}},
      // A kanji EDICT lacks falls back to KANJIDIC, on and kun readings together.
      {"鬱", {{"鬱", "ウツ、ふさ.ぐ、うっ.する、しげ.る", {"gloom", "depression", "melancholy"}}}},
      {"亜", {{"亜", "ア、つ.ぐ", {"Asia", "rank next"}}}},
      // Misses, and what the malformed lines would have given.
      {"食べ", {}},
      {"cat", {}},
      {"", {}},
      {"Ｔシャツ", {}},
      {"壊れ", {}},
      {"空", {}},
      {"無効", {}},
      {"二重", {}},
      {"無", {}},  // in KANJIDIC without an English meaning
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    EXPECT_EQ(dict_->lookup(row.word), row.expected);
    EXPECT_EQ(dict_->contains(row.word), !row.expected.empty());
  }
}

TEST_F(EdictDictionaryTest, CountsSkippedLines) {
  EXPECT_EQ(dict_->stats().entries, 7u);
  // The header, the comment, and the five malformed lines (one with a bad byte).
  EXPECT_EQ(dict_->stats().skippedLines, 8u);
  EXPECT_EQ(dict_->stats().kanji, 3u);
}

TEST(EdictDictionaryLoadTest, MissingFiles) {
  EXPECT_FALSE(EdictDictionary::load(testData("no-such-edict.txt"), {}).has_value());
  // Without KANJIDIC there is simply no fallback.
  auto loaded = EdictDictionary::load(testData("edict_small.txt"), testData("no-such-kanjidic"));
  ASSERT_TRUE(loaded.has_value());
  EXPECT_TRUE((*loaded)->lookup("鬱").empty());
  EXPECT_FALSE((*loaded)->lookup("猫").empty());
}

}  // namespace
}  // namespace vesko
