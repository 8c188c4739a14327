#include "ai/answer_sections.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "ai/answer_language.h"
#include "dict/cedict.h"
#include "settings/loc.h"
#include "support/fake_clock.h"
#include "support/french_texts.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using Texts = testing::FrenchTexts;

using Sections = std::vector<AnswerSection>;

TEST(AITitlesTest, EveryLanguageHasFifteenDistinctTitles) {
  Texts texts;
  for (const auto& language : kAnswerLanguages) {
    SCOPED_TRACE(std::string(language.code));
    AITitles titles(texts.loc, language.code);
    std::set<std::string> seen;
    for (const auto& row : kAILabels) {
      const std::string& title = titles[row.label];
      EXPECT_FALSE(title.empty());
      EXPECT_TRUE(seen.insert(title).second) << "twice: " << title;
      EXPECT_EQ(titles.labelTitled(title), row.label);
      // Scripts other than Latin cannot share a title with French: a French one is a missing row.
      if (language.code == "ru" || language.code == "th" || language.code.starts_with("zh"))
        EXPECT_NE(title, row.french);
    }
  }
}

TEST(AnswerSectionsTest, FrenchAnswerToAWordInItsSentence) {
  Texts texts;
  const std::string answer =
      "Phrase : 他们 + 都 + 被 + 押 + 入牢房 = sujet + adverbe + passif + verbe + complément\n"
      "**押** (yā) : verbe, « escorter sous garde », se construit avec 入.\n"
      "Ici : ils ont tous été conduits en prison.\n"
      "\n"
      "Autres sens : gager, mettre en gage.\n"
      "Expression : 押入牢房 = jeter en prison";
  EXPECT_EQ(
      parseSections(answer, AITitles(texts.loc, "fr")),
      (Sections{{AILabel::phrase,
                 "他们 + 都 + 被 + 押 + 入牢房 = sujet + adverbe + passif + verbe + complément\n"
                 "**押** (yā) : verbe, « escorter sous garde », se construit avec 入."},
                {AILabel::here,
                 "ils ont tous été conduits en prison.\n\nAutres sens : gager, mettre en "
                 "gage."},
                {AILabel::expression, "押入牢房 = jeter en prison"}}));
}

TEST(AnswerSectionsTest, ChineseAnswerWithBracketsAndFullWidthColons) {
  Texts texts;
  const std::string answer =
      "好的，下面是说明。\n"
      "【字面意思】：画蛇 + 添足 = 画一条蛇 + 加上脚\n"
      "**画** (huà)：画\n"
      "（意思）：做多余的事，反而坏事。\n"
      "此处: 说他做了多余的事。\n"
      "例句：你这样解释是画蛇添足。Nǐ zhèyàng jiěshì shì huàshé-tiānzú. Ton explication est "
      "superflue.";
  EXPECT_EQ(parseSections(answer, AITitles(texts.loc, "zh-Hans")),
            (Sections{{std::nullopt, "好的，下面是说明。"},
                      {AILabel::literal, "画蛇 + 添足 = 画一条蛇 + 加上脚\n**画** (huà)：画"},
                      {AILabel::meaning, "做多余的事，反而坏事。"},
                      {AILabel::here, "说他做了多余的事。"},
                      {AILabel::example,
                       "你这样解释是画蛇添足。Nǐ zhèyàng jiěshì shì huàshé-tiānzú. Ton explication "
                       "est superflue."}}));
}

TEST(AnswerSectionsTest, RussianAndEnglishAnswers) {
  Texts texts;
  struct Row {
    const char* language;
    std::string answer;
    Sections expected;
  };
  const std::vector<Row> rows{
      {"ru",
       "Предложение: They + asked for + payment + upfront\r\n"
       "Смысл: заранее, авансом.\r\n"
       "### Выражение: pay upfront = платить вперёд\r\n",
       {{AILabel::phrase, "They + asked for + payment + upfront"},
        {AILabel::meaning, "заранее, авансом."},
        {AILabel::expression, "pay upfront = платить вперёд"}}},
      // A title the answer language does not use ("Sens") is chatter, not a section.
      {"en",
       "Sure! Here is the explanation.\n"
       "Sens : wrong language heading\n"
       "Meaning: in advance.\n"
       "note: the word is an adverb\n"
       "EXPRESSION: pay upfront = pay in advance",
       {{std::nullopt, "Sure! Here is the explanation.\nSens : wrong language heading"},
        {AILabel::meaning, "in advance.\nnote: the word is an adverb"},
        {AILabel::expression, "pay upfront = pay in advance"}}},
      {"th",
       "ความหมาย : ล่วงหน้า\nสำนวน : pay upfront = จ่ายล่วงหน้า",
       {{AILabel::meaning, "ล่วงหน้า"}, {AILabel::expression, "pay upfront = จ่ายล่วงหน้า"}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.language);
    EXPECT_EQ(parseSections(row.answer, AITitles(texts.loc, row.language)), row.expected);
  }
}

TEST(AnswerSectionsTest, AnswersWithoutTitlesAndMessagesStayWhole) {
  Texts texts;
  AITitles titles(texts.loc, "fr");
  EXPECT_EQ(parseSections("Un adverbe : « d'avance ».\nRien d'autre.", titles),
            (Sections{{std::nullopt, "Un adverbe : « d'avance ».\nRien d'autre."}}));
  // A message about a failure is never parsed, even when it looks like titled lines.
  const std::string message =
      "⚠️ Sens : la clé Claude est refusée.\nExpression : vérifiez-la.";
  EXPECT_EQ(parseSections(message, titles), (Sections{{std::nullopt, message}}));
  EXPECT_EQ(parseSections("", titles), Sections{});
  EXPECT_EQ(parseSections("\n \nSens :\n\n", titles), Sections{});
}

TEST(AnswerSectionsTest, HostileAnswersDoNotBreakTheParser) {
  Texts texts;
  AITitles titles(texts.loc, "fr");
  std::string huge(200'000, ':');
  huge += "\nSens : fin";
  auto sections = parseSections(huge, titles);
  ASSERT_EQ(sections.size(), 2u);
  EXPECT_EQ(sections[1], (AnswerSection{AILabel::meaning, "fin"}));
  // Broken UTF-8 and a lone full-width colon's first bytes are kept as text, not read as titles.
  const std::string broken = "\xEF\xBC\nSens\xEF\xBC\x9A ok\n\xFF\xFE : x";
  sections = parseSections(broken, titles);
  ASSERT_EQ(sections.size(), 2u);
  EXPECT_EQ(sections[0], (AnswerSection{std::nullopt, "\xEF\xBC"}));
  EXPECT_EQ(sections[1], (AnswerSection{AILabel::meaning, "ok\n\xFF\xFE : x"}));
}

}  // namespace
}  // namespace vesko
