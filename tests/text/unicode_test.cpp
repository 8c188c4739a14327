#include "text/unicode.h"

#include <gtest/gtest.h>

#include <vector>

namespace vesko::text {
namespace {

std::vector<std::size_t> boundaries(std::u16string_view s) {
  std::vector<std::size_t> out{0};
  for (std::size_t i = 0; i < s.size();) out.push_back(i = nextCharacter(s, i));
  return out;
}

TEST(UnicodeTest, CharactersAreGraphemeClusters) {
  struct Row {
    const char* name;
    std::u16string text;
    std::vector<std::size_t> bounds;
  };
  const Row rows[] = {
      {"Han", u"中国", {0, 1, 2}},
      {"outside the BMP", u"𠀀中", {0, 2, 3}},
      {"combining accent", u"e\u0301t", {0, 2, 3}},
      {"CRLF is one", u"a\r\nb", {0, 1, 3, 4}},
      {"Thai vowel above", u"กิน", {0, 2, 3}},
      {"emoji ZWJ family", u"👨‍👩‍👧x", {0, 8, 9}},
      {"flags pair up", u"🇫🇷🇵🇱", {0, 4, 8}},
      {"Hangul jamo", u"\u1100\u1161\u11A8a", {0, 3, 4}},
      {"lone surrogate", std::u16string(1, char16_t(0xD800)) + u"a", {0, 1, 2}},
      {"halfwidth voiced mark", u"ｶﾞ", {0, 2}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(boundaries(row.text), row.bounds);
    EXPECT_EQ(characterCount(row.text), row.bounds.size() - 1);
    EXPECT_EQ(characterCount(toUtf8(row.text)), row.bounds.size() - 1);
    // Walking back finds the same boundaries.
    for (std::size_t k = row.bounds.size() - 1; k > 0; --k)
      EXPECT_EQ(previousCharacter(row.text, row.bounds[k]), row.bounds[k - 1]);
  }
}

TEST(UnicodeTest, CharacterStartSnapsInsideACluster) {
  std::u16string s = u"a𠀀e\u0301👨‍👩‍👧";
  EXPECT_EQ(characterStart(s, 0), 0u);
  EXPECT_EQ(characterStart(s, 2), 1u);  // low surrogate
  EXPECT_EQ(characterStart(s, 4), 3u);  // combining accent
  EXPECT_EQ(characterStart(s, 9), 5u);  // inside the ZWJ sequence
  EXPECT_EQ(characterStart(s, 99), s.size());
}

TEST(UnicodeTest, HanTest) {
  struct Row {
    char32_t c;
    bool han;
  };
  const Row rows[] = {{U'中', true},   {0x3400, true},  {0x9FFF, true},  {0xF900, true},
                      {0xFAFF, true},  {0x20000, true}, {0x2FA1F, true}, {0x33FF, false},
                      {0xA000, false}, {0x2FA20, false}, {U'あ', false}, {U'。', false},
                      {U'a', false}};
  for (const auto& row : rows) EXPECT_EQ(isHan(row.c), row.han) << std::hex << uint32_t(row.c);
}

TEST(UnicodeTest, Utf8Validation) {
  struct Row {
    std::string bytes;
    bool valid;
  };
  const Row rows[] = {
      {"plain ascii text, longer than eight bytes", true},
      {"中国 and more", true},
      {std::string("nul\0inside", 10), true},
      {"\xF0\xA0\x80\x80", true},
      {"\xFF", false},
      {"abcdefgh\x80", false},          // stray continuation after a fast stretch
      {"\xC0\xAF", false},              // overlong
      {"\xED\xA0\x80", false},          // encoded surrogate
      {"\xE4\xB8", false},              // truncated
      {"\xF4\x90\x80\x80", false},      // beyond U+10FFFF
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.bytes);
    EXPECT_EQ(isValidUtf8(row.bytes), row.valid);
    EXPECT_EQ(fromUtf8(row.bytes).has_value(), row.valid);
  }
  EXPECT_EQ(toUtf8(*fromUtf8("中𠀀é")), "中𠀀é");
  EXPECT_EQ(toUtf8(std::u16string(1, char16_t(0xDC00))), "\xEF\xBF\xBD");
}

TEST(UnicodeTest, DisplayWidth) {
  EXPECT_EQ(displayWidth("abc"), 3u);
  EXPECT_EQ(displayWidth("中国"), 4u);
  EXPECT_EQ(displayWidth("ｶ"), 1u);
  EXPECT_EQ(displayWidth("e\xCC\x81"), 1u);
  EXPECT_EQ(displayWidth("ní hǎo"), 6u);
}

}  // namespace
}  // namespace vesko::text
