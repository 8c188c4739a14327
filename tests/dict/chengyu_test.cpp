#include "dict/chengyu.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/temp_dir.h"
#include "text/unicode.h"

namespace vesko {
namespace {

TEST(ChengyuTest, FourCharacterIdiomsOnly) {
  testing::TempDir dir;
  const auto file = dir.path() / "cedict.txt";
  std::ofstream(file) << "畫蛇添足 画蛇添足 [hua4 she2 tian1 zu2] /(idiom) to ruin by adding "
                         "something superfluous/\n"
                         "一帆風順 一帆风顺 [yi1 fan1 feng1 shun4] /smooth sailing/(idiom) "
                         "everything is going smoothly/\n"
                         "中華民國 中华民国 [Zhong1 hua2 Min2 guo2] /Republic of China/\n"
                         "不入虎穴，焉得虎子 不入虎穴，焉得虎子 [bu4 ru4 hu3 xue2 , yan1 de2 hu3 "
                         "zi3] /(idiom) nothing ventured, nothing gained/\n"
                         "對牛彈琴 对牛弹琴 [dui4 niu2 tan2 qin2] /(idiom) to cast pearls before "
                         "swine/\n";
  CEDict dictionary;
  ASSERT_TRUE(dictionary.load(file, {}).has_value());
  struct Row {
    std::u16string word;
    bool chengyu;
  };
  const Row rows[] = {
      {u"画蛇添足", true},
      {u"畫蛇添足", true},             // either script
      {u"一帆风顺", true},             // "(idiom)" in a later gloss
      {u"中华民国", false},            // four characters, no idiom
      {u"不入虎穴，焉得虎子", false},  // an idiom, not of four characters
      {u"对牛弹", false},
      {u"画蛇添足了", false},
      {u"ab对牛", false},
      {u"", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(text::toUtf8(row.word));
    EXPECT_EQ(isChengyu(dictionary, row.word), row.chengyu);
  }
}

}  // namespace
}  // namespace vesko
