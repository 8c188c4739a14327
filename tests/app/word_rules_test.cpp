// The rules that cut a word out of a text: French elision, Japanese dictionary forms, the locale
// tokenizer (Thai has no spaces), and the sentence kept with the word.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/french_elision.h"
#include "app/french_elision_table.h"
#include "app/japanese_form_tables.h"
#include "app/japanese_forms.h"
#include "app/sentence.h"
#include "app/word_tokenizer.h"
#include "text/unicode.h"

namespace vesko {
namespace {

std::string u8(std::u16string_view s) {
  return text::toUtf8(s);
}
std::u16string u16(std::string_view s) {
  return *text::fromUtf8(s);
}

TEST(FrenchElisionTest, Table) {
  struct Row {
    const char* text;
    std::size_t index;
    const char* word;  // "" when the rule finds nothing
    const char* expanded;
  };
  const Row rows[] = {
      {"l'école", 2, "école", "le"},
      {"l'école", 0, "école", "le"},  // on the elided letter
      {"L’École", 3, "École", "le"},  // right single quotation mark, capitals
      {"s'ils", 3, "ils", "si"},
      {"s'il", 0, "il", "si"},
      {"S'IL", 3, "IL", "si"},
      {"s'est", 2, "est", "se"},
      {"s'ilote", 2, "ilote", "se"},  // only "il" and "ils" make "si"
      {"c'mon", 3, "", ""},
      {"C'mon", 0, "", ""},
      {"c'est", 3, "est", "ce"},
      {"jusqu'à", 6, "à", "jusque"},
      {"lorsqu'on", 7, "on", "lorsque"},
      {"puisqu'elle", 0, "elle", "puisque"},
      {"qu'aujourd'hui", 4, "aujourd'hui", "que"},
      {"d'n", 2, "n", "de"},
      {"aujourd'hui", 2, "", ""},
      {"avion", 1, "", ""},
      {"l'", 0, "", ""},
      {"l'2", 0, "", ""},
      {"l' école", 3, "", ""},
      {"l'école", 1, "", ""},  // the apostrophe is no letter
      {"l'école", 7, "", ""},  // past the end
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.text) + " @" + std::to_string(row.index));
    const std::u16string text = u16(row.text);
    auto found = findElision(text, row.index);
    ASSERT_EQ(found.has_value(), row.word[0] != 0);
    if (!found) continue;
    EXPECT_EQ(u8(text.substr(found->word.start, found->word.length())), row.word);
    EXPECT_EQ(u8(found->expanded), row.expanded);
  }
}

TEST(FrenchElisionTest, ElidedFormsAreLowercaseAndDistinct) {
  for (std::size_t i = 0; i < std::size(french::kElisions); ++i) {
    const auto& elision = french::kElisions[i];
    SCOPED_TRACE(u8(elision.elided));
    EXPECT_TRUE(elision.expanded.starts_with(elision.elided));
    for (char16_t c : elision.elided) EXPECT_TRUE(c >= u'a' && c <= u'z');
    for (std::size_t j = i + 1; j < std::size(french::kElisions); ++j)
      EXPECT_NE(elision.elided, french::kElisions[j].elided);
  }
}

TEST(JapaneseFormsTest, Candidates) {
  struct Row {
    const char* surface;
    std::vector<const char*> inOrder;  // must appear, in this order
    std::vector<const char*> never;
  };
  const std::vector<Row> rows = {
      {"食べていました", {"食べて", "食べる"}, {}},
      {"行った", {"行く"}, {"行う"}},
      {"行って", {"行く"}, {"行う"}},
      {"行っています", {"行って", "行く"}, {"行う"}},
      {"言った", {"言う", "言つ", "言る"}, {}},
      {"食べます", {"食べる"}, {}},
      {"書きます", {"書く", "書きる"}, {}},
      {"泳ぎました", {"泳ぐ"}, {}},
      {"話しません", {"話す"}, {}},
      {"待ちましょう", {"待つ"}, {}},
      {"死にませんでした", {"死ぬ"}, {}},
      {"遊びたい", {"遊ぶ"}, {}},
      {"読みたくない", {"読む"}, {}},
      {"帰りたかった", {"帰る"}, {}},
      {"買いたくなかった", {"買う"}, {}},
      {"します", {"する"}, {}},
      {"勉強します", {"勉強する"}, {}},
      {"きます", {"くる"}, {}},
      {"来ます", {"来る"}, {}},
      {"読んで", {"読む", "読ぶ", "読ぬ"}, {}},
      {"泳いだ", {"泳ぐ"}, {}},
      {"書いて", {"書く"}, {}},
      {"話した", {"話す", "話する"}, {}},
      {"見た", {"見る"}, {}},
      {"見られる", {"見る"}, {}},
      {"食べれば", {"食べる"}, {}},
      {"食べない", {"食べる"}, {}},
      {"食べなかった", {"食べる"}, {}},
      {"高かった", {"高い"}, {}},
      {"高くない", {"高い"}, {}},
      {"高ければ", {"高い"}, {}},
      {"高さ", {"高い"}, {}},
      {"飲んでいます", {"飲んで", "飲む"}, {}},
      // An ending as long as the word makes no candidate.
      {"た", {}, {"る"}},
      {"ます", {}, {"る", "う"}},
      {"ない", {}, {"る"}},
      {"猫", {}, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.surface);
    auto candidates = japaneseCandidates(u16(row.surface));
    std::vector<std::string> words;
    for (const auto& c : candidates) words.push_back(u8(c));
    std::vector<std::string> sorted = words;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end()) << "duplicates";
    EXPECT_EQ(std::find(words.begin(), words.end(), row.surface), words.end());
    auto from = words.begin();
    for (const char* expected : row.inOrder) {
      auto at = std::find(from, words.end(), expected);
      EXPECT_NE(at, words.end()) << expected << " missing or out of order";
      if (at != words.end()) from = at + 1;
    }
    for (const char* unexpected : row.never)
      EXPECT_EQ(std::find(words.begin(), words.end(), unexpected), words.end()) << unexpected;
    if (row.inOrder.empty() && std::string_view(row.surface) == "猫") {
      EXPECT_TRUE(words.empty());
    }
  }
  // The first two candidates of a progressive form are its te-form and then the verb.
  auto progressive = japaneseCandidates(u"食べていました");
  ASSERT_GE(progressive.size(), 2u);
  EXPECT_EQ(progressive[0], u"食べて");
  EXPECT_EQ(progressive[1], u"食べる");
  EXPECT_EQ(japaneseCandidates(u"行った").front(), u"行く");
}

TEST(JapaneseFormsTest, IterationMarks) {
  struct Row {
    const char16_t* text;
    std::size_t from, to;
    const char16_t* expected;
  };
  const Row rows[] = {
      {u"人々", 0, 2, u"人人"},     {u"時々刻々", 0, 4, u"時時刻刻"},
      {u"人々々", 0, 3, u"人人人"}, {u"々人", 0, 2, u"々人"},  // nothing before it: it stays
      {u"人々", 1, 2, u"人"},    // the character before lies outside the range
      {u"𠀀々", 0, 3, u"𠀀𠀀"},  // a character outside the BMP is copied whole
      {u"人々", 2, 2, u""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(u8(row.text));
    EXPECT_EQ(withIterationMarksSpelled(row.text, row.from, row.to), row.expected);
  }
}

TEST(JapaneseFormsTest, TablesHaveNoEmptyEndingsAndGodanRowsAreDistinct) {
  for (const auto& rule : japanese::kFormRules) {
    SCOPED_TRACE(u8(rule.removed));
    EXPECT_FALSE(rule.removed.empty());
    if (rule.then == japanese::Then::addEndings) {
      EXPECT_FALSE(rule.endings[0].empty());
    }
  }
  for (std::size_t i = 0; i < std::size(japanese::kGodanRows); ++i)
    for (std::size_t j = i + 1; j < std::size(japanese::kGodanRows); ++j)
      EXPECT_NE(japanese::kGodanRows[i].continuative, japanese::kGodanRows[j].continuative);
}

TEST(WordTokenizerTest, Words) {
  struct Row {
    const char* locale;
    const char* text;
    std::ptrdiff_t index;
    const char* word;  // "" for none
  };
  const Row rows[] = {
      // Thai is written without spaces; ICU's dictionary finds the words.
      {"th", "ฉันชอบกินข้าวผัดมาก", 0, "ฉัน"},
      {"th", "ฉันชอบกินข้าวผัดมาก", 4, "ชอบ"},
      {"th", "ฉันชอบกินข้าวผัดมาก", 7, "กิน"},
      {"th", "ฉันชอบกินข้าวผัดมาก", 10, "ข้าว"},
      {"th", "ฉันชอบกินข้าวผัดมาก", 13, "ผัด"},
      {"th", "ฉันชอบกินข้าวผัดมาก", 18, "มาก"},
      {"fr", "Bonjour, le monde !", 14, "monde"},
      {"fr", "Bonjour, le monde !", 7, ""},
      {"fr", "Bonjour, le monde !", 8, ""},
      {"fr", "l'école", 3, "l'école"},
      {"pl", "Mały żółw", 6, "żółw"},
      {"en", "don't", 0, "don't"},
      {"en", "a 𝒳yz b", 2, "𝒳yz"},
      {"en", "cat", 3, ""},
      {"en", "cat", -1, ""},
      {"en", "", 0, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.locale) + " " + row.text + " @" + std::to_string(row.index));
    const std::u16string text = u16(row.text);
    auto word = tokenWord(text, row.index, row.locale);
    EXPECT_EQ(word ? u8(*word) : "", row.word);
  }
}

TEST(WordTokenizerTest, ThaiBoundariesAfterAWord) {
  const std::u16string text = u16("ฉันชอบกินข้าวผัดมาก");
  EXPECT_EQ(WordTokenizer::followingBoundaries(text, 9, "th", 3),
            (std::vector<std::size_t>{13, 16, 19}));
  EXPECT_TRUE(WordTokenizer::followingBoundaries(text, 19, "th", 3).empty());
}

TEST(SentenceTest, Around) {
  struct Row {
    const char* name;
    std::u16string text;
    std::ptrdiff_t index;
    std::u16string expected;
  };
  const std::vector<Row> rows = {
      {"middle sentence", u"Il pleut. Je lis un livre! Fin", 13, u"Je lis un livre!"},
      {"on the delimiter", u"Il pleut. Je lis", 8, u"Il pleut."},
      {"Chinese full stops", u"我学习。你呢？好", 4, u"你呢？"},
      {"newline", u"line one\nline two", 12, u"line two"},
      {"ellipsis", u"attends…bon", 9, u"bon"},
      {"negative index is the start", u"A. B", -5, u"A."},
      {"index past the end is the last unit", u"A. B", 99, u"B"},
      {"only space gives the text", u"   ", 1, u"   "},
      {"only a delimiter", u"...", 1, u"."},
      {"empty", u"", 0, u""},
      {"surrogate pairs", u"𠀀𠀁。好𠀀", 5, u"好𠀀"},
      {"inside a surrogate pair", u"x𠀀y. z", 2, u"x𠀀y."},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(sentenceAround(row.text, row.index), row.expected);
  }
}

bool wellFormed(std::u16string_view s) {
  for (std::size_t i = 0; i < s.size(); ++i) {
    const bool lead = (s[i] & 0xFC00) == 0xD800, trail = (s[i] & 0xFC00) == 0xDC00;
    if (trail) return false;
    if (lead) {
      if (i + 1 >= s.size() || (s[i + 1] & 0xFC00) != 0xDC00) return false;
      ++i;
    }
  }
  return true;
}

TEST(SentenceTest, ForWord) {
  const std::u16string x150(150, u'x');
  const std::u16string long300 = x150 + u"cat" + std::u16string(147, u'y');
  const std::u16string early = std::u16string(10, u'x') + u"cat" + std::u16string(287, u'y');
  const std::u16string late = std::u16string(290, u'x') + u"cat" + std::u16string(7, u'y');
  struct Row {
    const char* name;
    std::u16string word;
    std::u16string text;
    std::u16string expected;
  };
  const std::vector<Row> rows = {
      {"nearest the middle", u"cat", u"cat. xx cat. cat", u"xx cat."},
      {"case-insensitive", u"CAT", u"a. xx Cat. b", u"xx Cat."},
      {"tie keeps the earlier", u"ab", u"p.AB.qab", u"AB."},
      {"absent: the middle", u"zzz", u"One. Two. Three", u"Two."},
      {"300 characters clipped on both sides", u"cat", long300,
       u"…" + long300.substr(30, 260) + u"…"},
      {"clip that starts at 0", u"cat", early, early.substr(0, 150) + u"…"},
      {"clip that reaches the end", u"cat", late, u"…" + late.substr(170)},
      {"260 characters stay whole", u"cat", std::u16string(257, u'x') + u"cat",
       std::u16string(257, u'x') + u"cat"},
      {"261 characters are clipped", u"cat", std::u16string(258, u'x') + u"cat",
       u"…" + std::u16string(120, u'x') + u"cat"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(sentenceForWord(row.word, row.text), row.expected);
  }
}

TEST(SentenceTest, ClipNeverSplitsASurrogatePair) {
  std::u16string text;
  for (int i = 0; i < 150; ++i) text += u"𠀀";
  text += u"xcat";
  for (int i = 0; i < 150; ++i) text += u"𠀁";
  const std::u16string clipped = sentenceForWord(u"cat", text);
  EXPECT_TRUE(clipped.starts_with(u"…"));
  EXPECT_TRUE(clipped.ends_with(u"…"));
  EXPECT_TRUE(wellFormed(clipped));
  EXPECT_NE(clipped.find(u"xcat"), std::u16string::npos);
  EXPECT_LE(text::characterCount(clipped), 262u);
}

}  // namespace
}  // namespace vesko
