#include "dict/pinyin.h"

#include <gtest/gtest.h>

namespace vesko {
namespace {

TEST(PinyinTest, MarksTheRightVowel) {
  struct Row {
    const char* numbered;
    const char* marked;
  };
  const Row rows[] = {
      {"nu:3", "nǚ"},         {"xiong2", "xióng"},     {"gou3", "gǒu"},   {"liu2", "liú"},
      {"ma5", "ma"},          {"r5", "r"},             {"Ai4", "Ài"},     {"ni3 hao3", "nǐ hǎo"},
      {"Zhong1 guo2", "Zhōng guó"}, {"lu:e4", "lüè"},  {"Lu:3", "Lǚ"},    {"gui4", "guì"},
      {"hua1", "huā"},        {"shui3", "shuǐ"},       {"er2", "ér"},     {"ou1", "ōu"},
      {"I1", "ī"},            {"U3", "ǔ"},             {"Ou1", "Ōu"},     {"m2", "m"},
      // Not pinyin at all, or no tone digit: left as written.
      {"xx5", "xx"},          {"A", "A"},              {"K", "K"},        {"·", "·"},
      {"  ni3   hao3 ", "nǐ hǎo"}, {"", ""},           {"va4", "và"},     {"v3", "v"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.numbered);
    EXPECT_EQ(Pinyin::marked(row.numbered), row.marked);
  }
}

TEST(PinyinTest, TonesOnePerSyllable) {
  EXPECT_EQ(Pinyin::tones("ni3 hao3"), (std::vector<int>{3, 3}));
  EXPECT_EQ(Pinyin::tones("ka3 la1 O K"), (std::vector<int>{3, 1, 0, 0}));
  EXPECT_EQ(Pinyin::tones("de5  ma1"), (std::vector<int>{5, 1}));
  EXPECT_TRUE(Pinyin::tones(" ").empty());
}

TEST(PinyinTest, ToneColours) {
  EXPECT_EQ(Pinyin::toneColor(1)->hex(), "#e33333");
  EXPECT_EQ(Pinyin::toneColor(2)->hex(), "#269e40");
  EXPECT_EQ(Pinyin::toneColor(3)->hex(), "#296bdb");
  EXPECT_EQ(Pinyin::toneColor(4)->hex(), "#9445cc");
  for (int tone : {0, 5, 6, -1}) EXPECT_FALSE(Pinyin::toneColor(tone)) << tone;
}

}  // namespace
}  // namespace vesko
