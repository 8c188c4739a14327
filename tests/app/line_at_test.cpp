#include "app/line_at.h"

#include <gtest/gtest.h>

#include "app/ocr_boxes.h"

namespace vesko {
namespace {

// A line at y 100…120 whose characters are each 10 points wide from x 0.
OCRLine evenLine(std::u16string text, std::size_t characters, double y = 100) {
  OCRLine line{std::move(text), {0, y, 10.0 * static_cast<double>(characters), 20}, {}};
  line.charRects = divideEvenly(line.rect, characters);
  return line;
}

TEST(LineAtTest, FindsTheCharacterUnderThePoint) {
  // "a𠀀b": the middle character is a surrogate pair, so b starts at UTF-16 index 3.
  const std::vector<OCRLine> lines{evenLine(u"chat", 4, 50), evenLine(u"a\U00020000b", 3),
                                   evenLine(u"e\u0301t\u00e9", 3, 150)};
  struct Row {
    const char* name;
    ScreenPoint point;
    std::optional<std::pair<std::u16string, std::size_t>> expected;
  };
  const Row rows[] = {
      {"first letter of the first line", {1, 55}, {{u"chat", 0}}},
      {"last letter", {39, 60}, {{u"chat", 3}}},
      {"surrogate pair", {15, 110}, {{u"a\U00020000b", 1}}},
      {"after the surrogate pair", {25, 110}, {{u"a\U00020000b", 3}}},
      {"after a combining accent", {15, 160}, {{u"e\u0301t\u00e9", 2}}},
      {"right of the line", {45, 55}, std::nullopt},
      {"between two lines", {5, 85}, std::nullopt},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const auto found = lineAt(lines, row.point);
    ASSERT_EQ(found.has_value(), row.expected.has_value());
    if (!found) continue;
    EXPECT_EQ(found->text, row.expected->first);
    EXPECT_EQ(found->index, row.expected->second);
    ASSERT_TRUE(found->charRect);
    EXPECT_TRUE(found->charRect->contains(row.point));
  }
}

TEST(LineAtTest, FirstLineWinsAndMalformedLinesAreSkipped) {
  OCRLine broken = evenLine(u"garbage", 7);
  broken.charRects.pop_back();  // one box short: its indexes cannot be trusted
  const std::vector<OCRLine> lines{broken, evenLine(u"学习中文", 4), evenLine(u"xxxx", 4)};
  const auto found = lineAt(lines, {25, 110});
  ASSERT_TRUE(found);
  EXPECT_EQ(found->text, u"学习中文");
  EXPECT_EQ(found->index, 2u);
  EXPECT_FALSE(lineAt({}, {25, 110}));
}

}  // namespace
}  // namespace vesko
