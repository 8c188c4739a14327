// The offset arithmetic of the accessibility reader: toolkits' units, the span read around the
// pointer, the margin beside a character and the letter check of a line read.

#include "platform/linux/atspi/toolkit_text.h"

#include <gtest/gtest.h>

#include <string>

#include "text/unicode.h"

namespace vesko::atspi {
namespace {

TEST(ToolkitTextTest, OffsetsBecomeUtf16IndexesPerToolkit) {
  struct Row {
    const char* name;
    const char* text;
    std::int64_t start;
    std::int64_t offset;
    OffsetUnit unit;
    std::optional<std::size_t> index;
  };
  // 𠀀 (U+20000) takes two UTF-16 units: GTK counts it as one character, Qt as two.
  const Row rows[] = {
      {"GTK, plain Han", "我们学习", 10, 12, OffsetUnit::codePoints, 2},
      {"GTK, after an astral character", "𠀀学习", 0, 1, OffsetUnit::codePoints, 2},
      {"GTK, astral under the pointer", "a𠀀b", 0, 1, OffsetUnit::codePoints, 1},
      {"Qt, after an astral character", "𠀀学习", 0, 2, OffsetUnit::utf16Units, 2},
      {"Qt, second half of a pair", "a𠀀b", 0, 2, OffsetUnit::utf16Units, 1},
      {"Thai vowel counts as a character", "กินข้าว", 0, 4, OffsetUnit::codePoints, 4},
      {"offset before the text", "abc", 5, 4, OffsetUnit::codePoints, std::nullopt},
      {"offset at the end", "abc", 0, 3, OffsetUnit::codePoints, std::nullopt},
      {"Qt offset at the end", "ab", 0, 2, OffsetUnit::utf16Units, std::nullopt},
      {"not UTF-8", "ab\xff", 0, 0, OffsetUnit::codePoints, std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto found = textAtOffset(row.text, row.start, row.offset, row.unit);
    ASSERT_EQ(found.has_value(), row.index.has_value());
    if (!found) continue;
    EXPECT_EQ(found->index, *row.index);
    EXPECT_EQ(found->text, *text::fromUtf8(row.text));
  }
}

TEST(ToolkitTextTest, ToolkitNamesChooseTheUnit) {
  EXPECT_EQ(offsetUnitOf("Qt"), OffsetUnit::utf16Units);
  EXPECT_EQ(offsetUnitOf("GTK"), OffsetUnit::codePoints);
  EXPECT_EQ(offsetUnitOf("Gecko"), OffsetUnit::codePoints);
  EXPECT_EQ(offsetUnitOf(""), OffsetUnit::codePoints);
}

TEST(ToolkitTextTest, SpanIsTwoHundredCharactersEachSideCutAtTheEnds) {
  struct Row {
    std::int64_t offset, count, start, end;
  };
  const Row rows[] = {
      {50, 1000, 0, 250},                       // the pointer on character 50 of 1,000
      {500, 1000, 300, 700},                    // in the middle
      {990, 1000, 790, 1000}, {10, 0, 0, 210},  // length unknown: unlimited
      {10, -1, 0, 210},                         // a failed count too
      {0, 0, 0, 200},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.offset);
    const Span span = spanAround(row.offset, row.count);
    EXPECT_EQ(span.start, row.start);
    EXPECT_EQ(span.end, row.end);
  }
  EXPECT_FALSE(spanAround(5, 3).empty());     // the pointer past a short text still reads it
  EXPECT_TRUE(spanAround(500, 100).empty());  // but not from 200 characters beyond its end
}

TEST(ToolkitTextTest, PointMustBeWithinTwoPointsOfTheCharacter) {
  const ScreenRect box{100, 50, 20, 30};
  struct Row {
    ScreenPoint point;
    bool on;
  };
  const Row rows[] = {
      {{110, 60}, true}, {{122, 60}, true},   {{123, 60}, false},  // 3 points to the right
      {{98, 60}, true},  {{97.5, 60}, false}, {{110, 48}, true},  {{110, 82.5}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.point.x);
    EXPECT_EQ(onCharacter(box, row.point), row.on) << row.point.y;
  }
  EXPECT_FALSE(onCharacter(ScreenRect{}, {0, 0}));  // a toolkit that gives no box
}

TEST(ToolkitTextTest, OnlyLettersAndHanAreWorthALookup) {
  struct Row {
    const char* text;
    bool worth;
  };
  const Row rows[] = {
      {"学", true}, {"か", true}, {"カ", true}, {"々", true},  {"ก", true},  {"é", true},
      {"Ж", true},  {" ", false}, {"7", false}, {"。", false}, {",", false}, {"\n", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(isLetterOrHanAt(*text::fromUtf8(row.text), 0), row.worth);
  }
  EXPECT_FALSE(isLetterOrHanAt(u"a", 1));
}

}  // namespace
}  // namespace vesko::atspi
