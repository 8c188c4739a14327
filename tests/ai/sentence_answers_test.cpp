// Answers as the models write them, in several answer languages, read back by the parsers of the
// translation, analysis and correction formats.

#include "ai/sentence_answers.h"

#include <gtest/gtest.h>

#include "dict/cedict.h"
#include "settings/loc.h"
#include "support/fake_clock.h"
#include "support/french_texts.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using Texts = testing::FrenchTexts;

const Texts& texts() {
  static const Texts made;
  return made;
}
const AITitles kFrench(texts().loc, "fr");
const AITitles kEnglish(texts().loc, "en");
const AITitles kChinese(texts().loc, "zh-Hans");

TEST(TranslationAnswer, LinesPerLanguagePiecesAndExpression) {
  const std::string answer =
      "anglais : He's a **petty** person.\n"
      "chinois simplifié ： 他这个人很**小家子气**。\n"
      "Nuance : 小家子氣 is mildly critical.\n"
      "Pieces : 小 = small · 家子 = household · 氣 = manner\n"
      "Expression : 小家子氣 = petty, narrow-minded";
  auto read = parseTranslation(answer, {"anglais", "chinois simplifié", "English"}, kEnglish);
  ASSERT_TRUE(read);
  ASSERT_EQ(read->translations.size(), 2u);
  EXPECT_EQ(read->translations[0], (TranslationLine{"anglais", "He's a **petty** person."}));
  EXPECT_EQ(read->translations[1],
            (TranslationLine{"chinois simplifié", "他这个人很**小家子气**。"}));
  EXPECT_EQ(read->nuance, "小家子氣 is mildly critical.");
  ASSERT_EQ(read->parts.size(), 3u);
  EXPECT_EQ(read->parts[1], (Gloss{"家子", "household"}));
  EXPECT_EQ(read->expression, (Gloss{"小家子氣", "petty, narrow-minded"}));
  EXPECT_FALSE(read->partOf);
  EXPECT_TRUE(read->other.empty());
}

TEST(TranslationAnswer, APieceOfALargerExpression) {
  const std::string answer =
      "⚠︎ Fait partie de : 小家子氣\n"
      "English: **petty**\n"
      "Expression: 小家子氣 = mesquin, étriqué";
  auto read = parseTranslation(answer, {"anglais", "English"}, kFrench);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->partOf, "小家子氣");
  ASSERT_EQ(read->translations.size(), 1u);
  EXPECT_EQ(read->translations[0].text, "**petty**");
  EXPECT_EQ(read->expression, (Gloss{"小家子氣", "mesquin, étriqué"}));
}

TEST(TranslationAnswer, OneWordHasNoExpressionNorPieces) {
  auto read = parseTranslation("anglais : cat\nчешский — kočka\nрусский - кошка",
                               {"anglais", "русский"}, kFrench);
  ASSERT_TRUE(read);
  EXPECT_FALSE(read->expression);
  EXPECT_TRUE(read->parts.empty());
  ASSERT_EQ(read->translations.size(), 2u);
  EXPECT_EQ(read->translations[1], (TranslationLine{"русский", "кошка"}));
  // A language that was not asked for is kept as an unread line, not as a translation.
  EXPECT_EQ(read->other, std::vector<std::string>{"чешский — kočka"});
}

TEST(TranslationAnswer, NamesMatchWithoutCaseOrBrackets) {
  const std::string answer =
      "**Anglais** : It's raining.\n"
      "【Chinois traditionnel (Taïwan)】：下雨了。\n"
      "РУССКИЙ: Идёт дождь.\n"
      "【拆分】：下 = descendre · 雨 = pluie";
  auto read =
      parseTranslation(answer, {"anglais", "chinois traditionnel (Taïwan)", "русский"}, kChinese);
  ASSERT_TRUE(read);
  ASSERT_EQ(read->translations.size(), 3u);
  // Each line is given the requested name its head stands for.
  EXPECT_EQ(read->translations[0], (TranslationLine{"anglais", "It's raining."}));
  EXPECT_EQ(read->translations[1], (TranslationLine{"chinois traditionnel (Taïwan)", "下雨了。"}));
  EXPECT_EQ(read->translations[2].text, "Идёт дождь.");
  ASSERT_EQ(read->parts.size(), 2u);
  EXPECT_EQ(read->parts[0], (Gloss{"下", "descendre"}));
}

TEST(TranslationAnswer, MessagesAndEmptyAnswersGiveNothing) {
  EXPECT_FALSE(parseTranslation("⚠️ Claude : clé refusée.", {"anglais"}, kFrench));
  EXPECT_FALSE(parseTranslation("  \n ", {"anglais"}, kFrench));
}

TEST(AnalysisAnswer, FrenchAnswerWithDoubtWordsGrammarAndExpression) {
  const std::string answer =
      "🤔 识户 n'est pas un mot : sans doute 识广, dans 见多识广\n"
      "Structure : 见多 + 识广 = verbe + complément, deux fois\n"
      "• 见 (jiàn) = voir ICI · verbe\n"
      "• **识** (shí) = connaître · verbe\n"
      "• 广 = large\n"
      "Grammaire : deux groupes verbe + adjectif en parallèle.\n"
      "Ex. 吃多喝少.\n"
      "Expression : 见多识广 = avoir beaucoup vu et beaucoup appris";
  auto read = parseAnalysis(answer, kFrench);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->doubt, "识户 n'est pas un mot : sans doute 识广, dans 见多识广");
  EXPECT_EQ(read->structure, "见多 + 识广 = verbe + complément, deux fois");
  ASSERT_EQ(read->words.size(), 3u);
  EXPECT_EQ(read->words[0], (AnalysisWord{"见 (jiàn)", "voir ICI", "verbe"}));
  EXPECT_EQ(read->words[1].word, "识 (shí)");
  EXPECT_EQ(read->words[2], (AnalysisWord{"广", "large", ""}));
  EXPECT_EQ(read->grammar, "deux groupes verbe + adjectif en parallèle.\nEx. 吃多喝少.");
  EXPECT_EQ(read->expression, (Gloss{"见多识广", "avoir beaucoup vu et beaucoup appris"}));
  EXPECT_TRUE(read->other.empty());
}

TEST(AnalysisAnswer, ChineseTitlesWithFullWidthColons) {
  const std::string answer = "【结构】：我 + 吃了 + 饭\n语法：了 表示完成。\n表达：吃饭 = 用餐";
  auto read = parseAnalysis(answer, kChinese);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->structure, "我 + 吃了 + 饭");
  EXPECT_EQ(read->grammar, "了 表示完成。");
  EXPECT_EQ(read->expression, (Gloss{"吃饭", "用餐"}));
}

TEST(CorrectionAnswer, ReadsTheCorrectedSentenceAndTheGrammarPoint) {
  struct Case {
    const char* name;
    const char* learner;
    const char* answer;
    const char* corrected;
    bool unchanged;
    const char* grammar;
  };
  for (const Case& c : {
           Case{"changed", "She don't like apples.",
                "She doesn't like apples.\n\nWith he/she/it, use \"doesn't\".",
                "She doesn't like apples.", false, "With he/she/it, use \"doesn't\"."},
           Case{"marked", "我吃了饭。", "我吃了饭。✓\n\n了 表示完成。", "我吃了饭。", true,
                "了 表示完成。"},
           Case{"only the final full stop differs", "Je suis allé au marché",
                "Je suis allé au marché.\n\nLa phrase est juste.", "Je suis allé au marché.", true,
                "La phrase est juste."},
           Case{"quoted and full-width", "我很喜欢看书", "「我很喜欢看书！」\n\n很 modifie 喜欢.",
                "「我很喜欢看书！」", true, "很 modifie 喜欢."},
           Case{"no grammar point", "Dzień dobry", "Dzień dobry ✓", "Dzień dobry", true, ""},
           Case{"a changed word", "Я иду в школа.", "Я иду в школу.\n\nВ + винительный падеж.",
                "Я иду в школу.", false, "В + винительный падеж."},
       }) {
    SCOPED_TRACE(c.name);
    auto read = parseCorrection(c.answer, c.learner);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->corrected, c.corrected);
    EXPECT_EQ(read->unchanged, c.unchanged);
    EXPECT_EQ(read->grammar, c.grammar);
  }
  EXPECT_FALSE(parseCorrection("⚠️ Pas de réseau.", "Bonjour"));
}

TEST(CorrectionAnswer, EndPunctuationIsTrimmedOnBothSidesOnly) {
  EXPECT_EQ(withoutEndPunctuation("「你好，世界！」\n"), "你好，世界");
  EXPECT_EQ(withoutEndPunctuation("\"Hi, there?\""), "Hi, there");
  EXPECT_EQ(withoutEndPunctuation("...;"), "");
}

}  // namespace
}  // namespace vesko
