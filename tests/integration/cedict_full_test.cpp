// The real CC-CEDICT and Unihan data, as scripts/fetch-data leaves them. Skipped when the data
// is absent, unless VESKO_REQUIRE_DATA is set (as CI does), where absence is a failure.

#include <gtest/gtest.h>

#include <cstdlib>

#include "dict/cedict.h"
#include "dict/pinyin.h"
#include "settings/resources.h"
#include "text/unicode.h"

namespace vesko {
namespace {

class FullDictionaryTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    auto cedict = Resources::find("cedict", "txt");
    auto unihan = Resources::find("unihan", "tsv");
    if (cedict.empty() || unihan.empty()) return;
    dict_ = new CEDict;
    auto result = dict_->load(cedict, unihan);
    if (result) stats_ = *result;
  }
  static void TearDownTestSuite() { delete dict_; }

  void SetUp() override {
    if (dict_) return;
    if (std::getenv("VESKO_REQUIRE_DATA")) FAIL() << "resources/cedict.txt or unihan.tsv missing";
    GTEST_SKIP() << "run scripts/fetch-data for the full dictionaries";
  }

  static std::string wordAt(std::string_view text, std::ptrdiff_t index) {
    auto t = *text::fromUtf8(text);
    auto match = dict_->wordAt(t, index);
    return match ? text::toUtf8(match->word) : "";
  }

  static CEDict* dict_;
  static LoadStats stats_;
};
CEDict* FullDictionaryTest::dict_ = nullptr;
LoadStats FullDictionaryTest::stats_;

TEST_F(FullDictionaryTest, LoadsEverything) {
  EXPECT_TRUE(dict_->loaded());
  EXPECT_GT(stats_.entries, 120'000u);
  EXPECT_LT(stats_.skippedLines, 10u);
  EXPECT_TRUE(stats_.supplementRead);
  EXPECT_GT(stats_.supplementAdded, 20'000u);
  EXPECT_EQ(dict_->maxLen(), 12);
}

TEST_F(FullDictionaryTest, KnownWords) {
  auto learn = dict_->lookup(u"学习");
  ASSERT_FALSE(learn.empty());
  EXPECT_EQ(learn[0].trad(), "學習");
  EXPECT_EQ(Pinyin::marked(learn[0].pinyin()), "xué xí");
  EXPECT_FALSE(dict_->lookup(u"中國").empty());
  EXPECT_EQ(text::toUtf8(dict_->convert(u"学习汉语", true)), "學習漢語");
  EXPECT_EQ(text::toUtf8(dict_->convert(u"學習漢語", false)), "学习汉语");
}

TEST_F(FullDictionaryTest, WordsInRealSentences) {
  struct Row {
    const char* sentence;
    std::ptrdiff_t index;
    const char* word;
  };
  const Row rows[] = {
      {"我们在大学学习中文。", 5, "学习"},
      {"我们在大学学习中文。", 3, "大学"},
      {"他是研究生命科学的。", 4, "生命科学"},
      {"他是研究生命科学的。", 2, "研究"},
      {"今天天气很好，我们去公园散步吧。", 10, "公园"},
      {"中华人民共和国成立于1949年。", 2, "中华人民共和国"},
      {"這是一本很有意思的書。", 6, "有意思"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.sentence) + " @ " + std::to_string(row.index));
    EXPECT_EQ(wordAt(row.sentence, row.index), row.word);
  }
}

}  // namespace
}  // namespace vesko
