#include "app/ocr_boxes.h"

#include <gtest/gtest.h>

#include "text/unicode.h"

namespace vesko {
namespace {

constexpr ScreenRect kLine{0, 100, 400, 24};

TEST(OCRBoxesTest, ChineseLineIsDividedEvenlyOverItsWords) {
  // Word splits inside Chinese are the recogniser's guesses: the text joins without spaces, and
  // the words' extent (20…220) is shared equally, whatever the words' own boxes say.
  const std::vector<RecognizedWord> words{{u"我们", {20, 104, 90, 16}},
                                          {u"一起学习。", {95, 102, 125, 18}}};
  const OCRLine line = assembleLine(words, kLine);
  EXPECT_EQ(line.text, u"我们一起学习。");
  EXPECT_EQ(line.rect, kLine);
  ASSERT_EQ(line.charRects.size(), 7u);
  for (std::size_t i = 0; i < 7; ++i) {
    SCOPED_TRACE(i);
    EXPECT_NEAR(line.charRects[i].x, 20 + 200.0 / 7 * static_cast<double>(i), 1e-9);
    EXPECT_NEAR(line.charRects[i].width, 200.0 / 7, 1e-9);
    EXPECT_EQ(line.charRects[i].y, kLine.y);
    EXPECT_EQ(line.charRects[i].height, kLine.height);
  }
}

TEST(OCRBoxesTest, LatinWordsAreDividedAmongTheirLetters) {
  const std::vector<RecognizedWord> words{{u"Le", {10, 104, 20, 16}},
                                          {u"chat", {40, 104, 40, 16}},
                                          {u"\u00e9t\u00e9", {90, 104, 30, 16}}};
  const OCRLine line = assembleLine(words, kLine);
  EXPECT_EQ(line.text, u"Le chat \u00e9t\u00e9");
  struct Row {
    std::size_t box;
    double x, width;
  };
  const Row rows[] = {
      {0, 10, 10}, {1, 20, 10},                 // L e
      {2, 30, 10},                              // the space fills the gap
      {3, 40, 10}, {6, 70, 10},                 // c … t
      {7, 80, 10}, {8, 90, 10}, {10, 110, 10},  // space, é t é
  };
  ASSERT_EQ(line.charRects.size(), text::characterCount(line.text));
  for (const Row& row : rows) {
    SCOPED_TRACE(row.box);
    EXPECT_DOUBLE_EQ(line.charRects[row.box].x, row.x);
    EXPECT_DOUBLE_EQ(line.charRects[row.box].width, row.width);
    EXPECT_EQ(line.charRects[row.box].height, kLine.height);
  }
}

TEST(OCRBoxesTest, OddWordsKeepOneBoxPerCharacter) {
  struct Row {
    const char* name;
    std::vector<RecognizedWord> words;
    std::u16string text;
  };
  const Row rows[] = {
      {"Thai words join without spaces",
       {{u"สวัสดี", {0, 0, 60, 10}}, {u"ครับ", {62, 0, 40, 10}}},
       u"สวัสดีครับ"},
      {"Latin word beside Chinese keeps its space",
       {{u"学习", {0, 0, 40, 10}}, {u"OK", {50, 0, 20, 10}}},
       u"学习 OK"},
      {"a word starting with a combining accent",
       {{u"e", {0, 0, 10, 10}}, {u"\u0301x", {20, 0, 10, 10}}},
       u"e \u0301x"},
      {"empty words are dropped", {{u"", {0, 0, 10, 10}}, {u"a", {20, 0, 10, 10}}}, u"a"},
      {"no words", {}, u""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const OCRLine line = assembleLine(row.words, kLine);
    EXPECT_EQ(line.text, row.text);
    EXPECT_EQ(line.charRects.size(), text::characterCount(line.text));
  }
}

}  // namespace
}  // namespace vesko
