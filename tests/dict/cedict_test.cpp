#include "dict/cedict.h"

#include <gtest/gtest.h>

#include "support/temp_dir.h"
#include "text/unicode.h"

namespace vesko {
namespace {

using testing::testData;

std::u16string u16(std::string_view utf8) { return *text::fromUtf8(utf8); }
std::string u8(std::u16string_view utf16) { return text::toUtf8(utf16); }

std::vector<std::string> defsOf(const Entries& entries, std::size_t i = 0) {
  return entries[i].toEntry().defs;
}

class CEDictTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dict_ = new CEDict;
    auto stats = dict_->load(testData("cedict_small.txt"), testData("unihan_small.tsv"));
    ASSERT_TRUE(stats.has_value());
    stats_ = *stats;
  }
  static void TearDownTestSuite() { delete dict_; }

  static std::string wordAt(std::string_view text, std::ptrdiff_t index) {
    auto t = u16(text);
    auto match = dict_->wordAt(t, index);
    return match ? u8(match->word) + "@" + std::to_string(match->start) : "none";
  }

  static CEDict* dict_;
  static LoadStats stats_;
};
CEDict* CEDictTest::dict_ = nullptr;
LoadStats CEDictTest::stats_;

TEST_F(CEDictTest, BothFormsReachTheSameEntry) {
  auto trad = dict_->lookup(u"中國");
  auto simp = dict_->lookup(u"中国");
  ASSERT_EQ(trad.size(), 1u);
  ASSERT_EQ(simp.size(), 1u);
  EXPECT_EQ(trad[0].toEntry(), simp[0].toEntry());
  EXPECT_EQ(trad[0].toEntry(), (Entry{"中國", "中国", "Zhong1 guo2", {"China"}}));
  // A line whose two forms are the same is stored once.
  EXPECT_EQ(dict_->lookup(u"中").size(), 1u);
}

TEST_F(CEDictTest, SkipsLinesThatAreNotEntries) {
  for (const char16_t* key : {u"这行没有方括号", u"單詞", u"方括號", u"方括号", u"#!", u""}) {
    SCOPED_TRACE(u8(key));
    EXPECT_TRUE(dict_->lookup(key).empty());
  }
  // Comments are not counted; the three malformed lines near the end of the fixture are.
  EXPECT_EQ(stats_.skippedLines, 3u);
  // Headwords are split on runs of spaces; glosses are trimmed and empty ones dropped.
  ASSERT_EQ(dict_->lookup(u"空格").size(), 1u);
  EXPECT_EQ(defsOf(dict_->lookup(u"空格")), (std::vector<std::string>{"space", "blank"}));
}

TEST_F(CEDictTest, FormSharedBySeveralEntriesListsThemInFileOrder) {
  auto entries = dict_->lookup(u"只");
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].trad(), "隻");
  EXPECT_EQ(entries[1].trad(), "只");
  EXPECT_EQ(entries[2].trad(), "衹");
}

TEST_F(CEDictTest, SupplementRules) {
  struct Row {
    const char16_t* key;
    std::vector<std::string> defs;  // of the first entry; empty: no entry
  };
  const Row rows[] = {
      // Only cross-references: "lit. " + the supplement's definition comes first.
      {u"钟", {"lit. clock; bell", "surname Zhong", "variant of 鐘|钟[zhong1]"}},
      // A real gloss already: the supplement is ignored.
      {u"命", {"life", "fate"}},
      {u"只", {"CL:個|个[ge4]"}},
      // Unknown characters are added, even when they only began a longer headword.
      {u"一", {"one; a, an; alone"}},
      {u"㐀", {"hillock"}},
      {u"𠀁", {"the second character"}},
      {u"㐁", {"(rare character: an old component, almost never used alone)"}},
      // No pinyin and no definition, too few fields, or more than one character: ignored.
      {u"㐂", {}},
      {u"㐃", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(u8(row.key));
    auto entries = dict_->lookup(row.key);
    if (row.defs.empty()) {
      EXPECT_TRUE(entries.empty());
      continue;
    }
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ(defsOf(entries), row.defs);
  }
  EXPECT_EQ(dict_->lookup(u"研究").size(), 1u);
  EXPECT_EQ(dict_->lookup(u"㐀")[0].toEntry(), (Entry{"㐀", "㐀", "qiu1", {"hillock"}}));
  EXPECT_EQ(stats_.supplementGlossed, 1u);
  EXPECT_EQ(stats_.supplementAdded, 4u);
}

TEST_F(CEDictTest, SupplementReplacesACopyNotTheSharedEntry) {
  // 鍾 and 钟 share one entry; glossing it under 钟 must leave 鍾 as the file has it.
  EXPECT_EQ(defsOf(dict_->lookup(u"鍾")),
            (std::vector<std::string>{"surname Zhong", "variant of 鐘|钟[zhong1]"}));
  EXPECT_EQ(dict_->lookup(u"钟")[0].trad(), "鍾");
}

TEST_F(CEDictTest, MaxLenIsCappedAt12) {
  EXPECT_EQ(dict_->maxLen(), 12);
  // The 13-character headword is stored but can never be matched inside a text.
  EXPECT_EQ(dict_->lookup(u"一二三四五六七八九十百千万").size(), 1u);
  auto prefix = dict_->lookupPrefix(u"一二三四五六七八九十百千万");
  ASSERT_TRUE(prefix);
  EXPECT_EQ(u8(prefix->word), "一");
}

TEST_F(CEDictTest, LookupPrefixTakesTheLongestWord) {
  struct Row {
    const char* text;
    const char* word;  // "" for none
  };
  const Row rows[] = {
      {"研究生命", "研究生"}, {"中国人", "中国"}, {"中", "中"},       {"学习", "学习"},
      {"卡拉OK吧", "卡拉OK"}, {"卡拉", ""},       {"Ab中国", ""},     {"", ""},
      {"𠀀𠀁x", "𠀀𠀁"},      {"㐀", "㐀"},       {"，中国", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    const auto text = u16(row.text);
    auto match = dict_->lookupPrefix(text);
    EXPECT_EQ(match ? u8(match->word) : "", row.word);
  }
}

TEST_F(CEDictTest, WordAtComparesTwoSegmentations) {
  struct Row {
    const char* text;
    std::ptrdiff_t index;
    const char* expected;  // word@start
  };
  const Row rows[] = {
      // 研究生命: forward 研究生|命, backward 研究|生命; equal counts, equal singles but the
      // forward reading has one: backward wins.
      {"研究生命", 0, "研究@0"},
      {"研究生命", 1, "研究@0"},
      {"研究生命", 2, "生命@2"},
      {"研究生命", 3, "生命@2"},
      // 和服务: 和服|务 against 和|服务.
      {"和服务", 0, "和@0"},
      {"和服务", 1, "服务@1"},
      {"和服务", 2, "服务@1"},
      // 结婚的和尚未结婚的: 和尚 against 尚未.
      {"结婚的和尚未结婚的", 3, "和@3"},
      {"结婚的和尚未结婚的", 4, "尚未@4"},
      {"结婚的和尚未结婚的", 5, "尚未@4"},
      {"结婚的和尚未结婚的", 0, "结婚@0"},
      {"结婚的和尚未结婚的", 8, "的@8"},
      // The run stops at non-Han characters.
      {"我研究生命。和服务", 7, "服务@7"},
      {"我研究生命。和服务", 6, "和@6"},
      {"Hello 研究生命 world", 8, "生命@8"},
      // Latin letters: only the direct candidate, which needs a Han first character.
      {"Hello 研究", 1, "none"},
      {"卡拉OK", 2, "none"},
      // Outside the text.
      {"研究", 2, "none"},
      {"研究", -1, "none"},
      {"", 0, "none"},
      // Characters outside the BMP: indexes are UTF-16, so 𠀁 starts at 2.
      {"𠀀𠀁", 0, "𠀀𠀁@0"},
      {"𠀀𠀁", 2, "𠀀𠀁@0"},
      {"𠀀𠀁", 3, "𠀀𠀁@0"},
      {"研𠀀𠀁究", 1, "𠀀𠀁@1"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.text) + " @ " + std::to_string(row.index));
    EXPECT_EQ(wordAt(row.text, row.index), row.expected);
  }
}

TEST_F(CEDictTest, WordAtLooksAtMostTwentyFourCharactersEachSide) {
  // 50 unknown characters around 生命: the run is cut, the word is still found.
  std::string pad;
  for (int i = 0; i < 25; ++i) pad += "㐂";
  std::string text = pad + "研究生命" + pad;
  EXPECT_EQ(wordAt(text, 27), "生命@27");
  EXPECT_EQ(wordAt(text, 25), "研究@25");
}

TEST_F(CEDictTest, SegmentGivesTheTextBack) {
  struct Row {
    const char* text;
    std::vector<std::string> pieces;
  };
  const Row rows[] = {
      {"研究生命", {"研究生", "命"}},
      {"我学习中文。", {"我", "学习", "中", "文", "。"}},
      {"ab 中国", {"a", "b", " ", "中国"}},
      {"卡拉OK!", {"卡拉OK", "!"}},
      {"卡拉", {"卡", "拉"}},
      {"e\u0301中国", {"e\u0301", "中国"}},
      {"", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    auto text = u16(row.text);
    std::vector<std::string> pieces;
    std::u16string joined;
    for (auto piece : dict_->segment(text)) {
      pieces.push_back(u8(piece));
      joined += piece;
    }
    EXPECT_EQ(pieces, row.pieces);
    EXPECT_EQ(joined, text);
  }
}

TEST_F(CEDictTest, DictionaryWordsAreDistinctAndLimited) {
  auto text = u16("中国研究生命。中国卡拉OK一");
  std::vector<std::string> words;
  for (const auto& w : dict_->dictionaryWords(text, 50)) words.push_back(u8(w.word));
  EXPECT_EQ(words, (std::vector<std::string>{"中国", "研究生", "卡拉OK"}));
  EXPECT_EQ(dict_->dictionaryWords(text, 2).size(), 2u);
  EXPECT_TRUE(dict_->dictionaryWords(text, 0).empty());
}

TEST_F(CEDictTest, ConvertsCharacterByCharacterFirstLineWins) {
  EXPECT_EQ(u8(dict_->convert(u"学习中国只", true)), "學習中國隻");
  EXPECT_EQ(u8(dict_->convert(u"學習中國衹隻", false)), "学习中国只只");
  // Words are not converted as words, and unknown characters pass through.
  EXPECT_EQ(u8(dict_->convert(u"服务x😀", true)), "服務x😀");
}

TEST(CEDictLoadTest, EmptyUntilLoaded) {
  CEDict dict;
  EXPECT_FALSE(dict.loaded());
  EXPECT_EQ(dict.maxLen(), 1);
  EXPECT_FALSE(dict.wordAt(u"中国", 0));
  EXPECT_FALSE(dict.lookupPrefix(u"中国"));
  EXPECT_TRUE(dict.lookup(u"中国").empty());
  EXPECT_EQ(dict.segment(u"中国").size(), 2u);
  EXPECT_TRUE(dict.dictionaryWords(u"中国", 5).empty());
  EXPECT_EQ(dict.convert(u"国", true), u"国");
}

TEST(CEDictLoadTest, BadMainFileLeavesItEmpty) {
  struct Row {
    const char* file;
    LoadError error;
  };
  const Row rows[] = {
      {"bad/01-invalid-utf8.txt", LoadError::invalidUtf8},
      {"bad/02-encoded-surrogate.txt", LoadError::invalidUtf8},
      {"missing.txt", LoadError::unreadable},
      {"", LoadError::unreadable},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    CEDict dict;
    auto result = dict.load(row.file[0] ? testData(row.file) : "", testData("unihan_small.tsv"));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), row.error);
    EXPECT_FALSE(dict.loaded());
    EXPECT_TRUE(dict.lookup(u"一").empty());  // the supplement was not read either
  }
}

TEST(CEDictLoadTest, BadBytesFarIntoALargeFileStillFailTheLoad) {
  // The file is read in stretches of lines by two threads: a bad byte in any stretch, including
  // the last one and one cut right at a stretch's end, must fail the whole load.
  std::string lines;
  for (int i = 0; i < 3000; ++i) lines += "中國 中国 [Zhong1 guo2] /China " + std::to_string(i) + "/\n";
  for (std::size_t at : {std::size_t{0}, lines.size() / 2, lines.size() - 1, lines.size()}) {
    SCOPED_TRACE(at);
    std::string content = lines;
    content.insert(at, "\xE4\xB8");  // a character cut short
    testing::TempDir dir;
    CEDict dict;
    auto result = dict.load(dir.write("d.txt", content), "");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), LoadError::invalidUtf8);
    EXPECT_FALSE(dict.loaded());
  }
  testing::TempDir dir;
  CEDict dict;
  auto result = dict.load(dir.write("d.txt", lines), "");
  ASSERT_TRUE(result);
  EXPECT_EQ(result->entries, 3000u);
  EXPECT_EQ(dict.lookup(u"中国").size(), 3000u);
  EXPECT_EQ(dict.lookup(u"中国")[2999].def(0), "China 2999");
}

TEST(CEDictLoadTest, EmptyFileLoadsEmpty) {
  testing::TempDir dir;
  CEDict dict;
  auto result = dict.load(dir.write("d.txt", ""), dir.write("s.tsv", ""));
  ASSERT_TRUE(result);
  EXPECT_EQ(result->entries, 0u);
  EXPECT_TRUE(dict.loaded());
  EXPECT_FALSE(dict.wordAt(u"中国", 0));
}

TEST(CEDictLoadTest, BadSupplementOnlyLosesTheSupplement) {
  for (const char* supplement : {"bad/03-invalid-utf8.tsv", "missing.tsv"}) {
    SCOPED_TRACE(supplement);
    CEDict dict;
    auto result = dict.load(testData("cedict_small.txt"), testData(supplement));
    ASSERT_TRUE(result);
    EXPECT_FALSE(result->supplementRead);
    EXPECT_TRUE(dict.loaded());
    EXPECT_EQ(defsOf(dict.lookup(u"钟")), (std::vector<std::string>{"surname Zhong", "variant of 鐘|钟[zhong1]"}));
    EXPECT_TRUE(dict.lookup(u"㐀").empty());
  }
}

TEST(CEDictLoadTest, AnyLineBreakAndNoFinalOne) {
  testing::TempDir dir;
  auto main = dir.write("d.txt",
                        "中國 中国 [Zhong1 guo2] /China/\r\n學習 学习 [xue2 xi2] /to learn/\r"
                        "研究 研究 [yan2 jiu1] /research/\xE2\x80\xA8生命 生命 [sheng1 ming4] /life/");
  auto supplement = dir.write("s.tsv", "㐀\tqiu1\thillock\r\n㐁\ttian3\tx");
  CEDict dict;
  auto stats = dict.load(main, supplement);
  ASSERT_TRUE(stats);
  EXPECT_EQ(stats->entries, 4u);
  EXPECT_EQ(stats->skippedLines, 0u);
  for (const char16_t* key : {u"中国", u"学习", u"研究", u"生命", u"㐀", u"㐁"}) {
    SCOPED_TRACE(u8(key));
    EXPECT_EQ(dict.lookup(key).size(), 1u);
  }
  EXPECT_EQ(defsOf(dict.lookup(u"生命")), std::vector<std::string>{"life"});
  EXPECT_EQ(dict.maxLen(), 2);
}

TEST(CEDictLoadTest, LoadsOnlyOnce) {
  CEDict dict;
  ASSERT_TRUE(dict.load(testData("cedict_small.txt"), ""));
  auto again = dict.load(testData("cedict_small.txt"), "");
  ASSERT_FALSE(again);
  EXPECT_EQ(again.error(), LoadError::alreadyLoaded);
  EXPECT_TRUE(dict.loaded());
}

}  // namespace
}  // namespace vesko
