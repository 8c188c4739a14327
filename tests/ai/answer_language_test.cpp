#include "ai/answer_language.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dict/cedict.h"
#include "settings/loc.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

TEST(AnswerLanguageTest, EverySystemTextNamesItsOwnLanguageOnly) {
  for (const auto& row : kAnswerLanguages) {
    SCOPED_TRACE(std::string(row.code));
    for (const std::string& system :
         {teacherSystemText(row.code), chineseTeacherSystemText(row.code)}) {
      for (const auto& other : kAnswerLanguages) {
        bool named = system.find(answerMarker(other.code)) != std::string::npos;
        EXPECT_EQ(named, other.code == row.code) << other.code << " in: " << system;
      }
    }
  }
}

TEST(AnswerLanguageTest, SystemTextsCloseWithTheMarkerInTheirScript) {
  EXPECT_EQ(teacherSystemText("en"),
            "You are a kind language teacher. Always answer in English, short and concrete, with "
            "no introduction and no questions. If the question imposes a format with headings, "
            "follow it exactly. (Réponds en anglais)");
  EXPECT_EQ(chineseTeacherSystemText("zh-Hant"),
            "你是一位親切的中文老師。請一律用繁體中文（台灣）回答，每行簡短，不要標題和開場白。"
            "（Réponds en chinois traditionnel (Taïwan)）");
  EXPECT_EQ(teacherSystemText("fr"),
            "Tu es un professeur de langues bienveillant. Réponds en français, de façon courte et "
            "concrète, sans introduction ni question. Quand la question impose un format avec des "
            "titres, respecte-le exactement.");
  EXPECT_EQ(chineseTeacherSystemText("th"),
            "คุณเป็นครูสอนภาษาจีนที่ใจดี ตอบเป็นภาษาไทยเสมอ เป็นบรรทัดสั้น ๆ "
            "ไม่มีหัวเรื่องและไม่ต้องเกริ่นนำ (Réponds en thaï)");
}

TEST(AnswerLanguageTest, WrapsOnlyWhenTheSystemTextAsksForTheLanguage) {
  struct Row {
    const char* code;
    std::string system;
    const char* expected;
  };
  const std::vector<Row> rows{
      {"en", teacherSystemText("en"),
       "[Answer in English]\nQuestion ?\n\n(IMPORTANT: write every explanation in English, never "
       "in French; quoted words, example sentences, corrected sentences and requested "
       "translations stay in their own language.)"},
      {"fr", chineseTeacherSystemText("fr"),
       "[Réponds en français]\nQuestion ?\n\n(IMPORTANT : toutes les explications en français ; "
       "les mots cités, les exemples, la phrase corrigée et les traductions demandées restent "
       "dans leur langue.)"},
      {"zh-Hans", teacherSystemText("zh-Hans"),
       "【请用简体中文回答】\nQuestion ?\n\n（重要：所有解释一律用简体中文写，绝不用法语或英语；"
       "引用的词语、例句、改正后的句子和要求的翻译保持原来的语言。）"},
      // A translator's system text asks for no language: the user text goes as it is.
      {"en",
       "Tu es un traducteur précis. Réponds uniquement par le texte demandé, sans commentaire.",
       "Question ?"},
      // The system text of another language: no tag for a language it does not ask for.
      {"zh-Hant", teacherSystemText("zh-Hans"), "Question ?"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.code) + " / " + row.system);
    EXPECT_EQ(wrapForAnswerLanguage(row.code, row.system, "Question ?"), row.expected);
  }
}

TEST(AnswerLanguageTest, ParagraphsOtherThanFrenchAndEnglishForbidBoth) {
  // Each says, in its own words, "never in French or English"; the names differ per language.
  const std::vector<std::pair<const char*, std::vector<const char*>>> rows{
      {"pl", {"po francusku", "po angielsku"}},
      {"ru", {"по-французски", "по-английски"}},
      {"th", {"ภาษาฝรั่งเศส", "ภาษาอังกฤษ"}},
      {"zh-Hans", {"法语", "英语"}},
      {"zh-Hant", {"法語", "英語"}},
  };
  for (const auto& [code, words] : rows) {
    SCOPED_TRACE(code);
    std::string_view paragraph = importantParagraph(code);
    for (const char* word : words) EXPECT_NE(paragraph.find(word), std::string_view::npos) << word;
  }
}

TEST(AnswerLanguageTest, UnknownCodesAnswerInFrench) {
  EXPECT_EQ(answerLanguageCode("de"), "fr");
  EXPECT_EQ(answerLanguageCode("zh"), "fr");  // Chinese must say its script
  EXPECT_EQ(answerTag("de"), "[Réponds en français]\n");
  EXPECT_EQ(answerLanguageName("zh-Hant"), "chinois traditionnel (Taïwan)");
}

TEST(AnswerLanguageTest, ChosenFromTheInterfaceLanguage) {
  struct Row {
    const char* uiLang;  // nullptr: absent
    std::vector<std::string> preferred;
    const char* expected;
  };
  const std::vector<Row> rows{
      {nullptr, {"fr-CA"}, "fr"},
      {nullptr, {"de-DE"}, "en"},
      {nullptr, {"zh-Hant-TW"}, "zh-Hant"},
      {nullptr, {"zh-HK"}, "zh-Hans"},
      {"zh", {}, "zh-Hans"},
      {"zh-Hant", {}, "zh-Hant"},
      {"th", {}, "th"},
      {"ru", {}, "ru"},
      {"pl", {}, "pl"},
      {"en", {}, "en"},
      {"de", {}, "fr"},  // a stored code with no table shows French texts: answers follow
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.uiLang ? row.uiLang : "(absent)");
    testing::TempDir dir;
    testing::FakeClock clock;
    Settings settings(dir.path() / "settings.json", clock);
    CEDict dictionary;
    HantCache hant(dictionary);
    LocTables tables;
    if (row.uiLang) settings.overrideForRun("uiLang", std::string(row.uiLang));
    Loc loc(settings, tables, hant, row.preferred);
    EXPECT_EQ(answerLanguage(loc), row.expected);
  }
}

TEST(LanguageAskTest, SendsTheWrappedTextWithBudgetAndModel) {
  struct Sent {
    std::string system, user;
    int maxTokens = 0;
    std::optional<std::string> model;
  } sent;
  LanguageAsk ask([&sent](std::string system, std::string user, int maxTokens,
                          std::optional<std::string> model) {
    sent = {system, user, maxTokens, model};
    std::promise<AIAnswer> promise;
    promise.set_value(AIAnswer{"ok"});
    return promise.get_future();
  });
  auto answer = ask.ask("ru", teacherSystemText("ru"), "Слово", 420, "claude-sonnet").get();
  EXPECT_EQ(answer.text, "ok");
  EXPECT_EQ(sent.system, teacherSystemText("ru"));
  EXPECT_EQ(sent.user, answerTag("ru") + "Слово\n\n" + std::string(importantParagraph("ru")));
  EXPECT_EQ(sent.maxTokens, 420);
  EXPECT_EQ(sent.model, "claude-sonnet");
}

}  // namespace
}  // namespace vesko
