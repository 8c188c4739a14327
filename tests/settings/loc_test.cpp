#include "settings/loc.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dict/cedict.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

// A store in a fresh folder, a dictionary that is not loaded, the built-in tables.
struct LocFixture {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  CEDict dictionary;
  HantCache hant{dictionary};
  LocTables tables;

  Loc make(std::vector<std::string> preferred) {
    return Loc(settings, tables, hant, std::move(preferred));
  }
  void setUiLang(const char* value) {
    if (value) settings.overrideForRun("uiLang", std::string(value));
  }
};

TEST(LocTest, InterfaceLanguageFromTheSettingAndTheSystem) {
  struct Row {
    const char* uiLang;  // nullptr: absent
    std::vector<std::string> preferred;
    const char* language;
    bool traditional;
    const char* locale;
    const char* content;
  };
  const Row rows[] = {
      {nullptr, {"fr-CA"}, "fr", false, "fr_FR", "fr"},
      {nullptr, {"de-DE"}, "en", false, "en_US", "en"},
      {nullptr, {"zh-Hant-TW"}, "zh", true, "zh_TW", "zh"},
      {nullptr, {"zh-HK"}, "zh", false, "zh_CN", "zh"},  // Hong Kong reads simplified, on purpose
      {nullptr, {"zh-TW"}, "zh", true, "zh_TW", "zh"},
      {nullptr, {"zh-MO"}, "zh", true, "zh_TW", "zh"},
      {nullptr, {"zh-Hans-CN", "zh-Hant"}, "zh", false, "zh_CN", "zh"},
      {nullptr, {}, "fr", false, "fr_FR", "fr"},
      {nullptr, {"th-TH", "fr-FR"}, "th", false, "th_TH", "en"},
      {nullptr, {"ru-RU"}, "ru", false, "ru_RU", "en"},
      {nullptr, {"pl"}, "pl", false, "pl_PL", "en"},
      {nullptr, {"ja-JP", "fr-FR"}, "en", false, "en_US", "en"},  // only the first language counts
      {"auto", {"en-GB"}, "en", false, "en_US", "en"},
      {"zh-Hant", {"fr-FR"}, "zh", true, "zh_TW", "zh"},
      {"zh", {"zh-TW"}, "zh", false, "zh_CN", "zh"},
      {"en", {"zh-TW"}, "en", false, "en_US", "en"},
      {"de", {"fr-FR"}, "de", false, "fr_FR", "de"},  // another stored code passes through
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.uiLang ? row.uiLang : "(absent)") + " / " +
                 (row.preferred.empty() ? "(none)" : row.preferred.front()));
    LocFixture f;
    f.setUiLang(row.uiLang);
    Loc loc = f.make(row.preferred);
    EXPECT_EQ(loc.uiLanguage(), row.language);
    EXPECT_EQ(loc.isTraditional(), row.traditional);
    EXPECT_EQ(loc.localeIdentifier(), row.locale);
    EXPECT_EQ(loc.contentLanguage(), row.content);
  }
}

TEST(LocTest, TranslatesIntoTheInterfaceLanguage) {
  struct Row {
    std::vector<std::string> preferred;
    const char* expected;
  };
  // With uiLang absent, as the edge cases of the system language require.
  const Row rows[] = {
      {{"fr-CA"}, "Réponse vide."},     {{"de-DE"}, "Empty answer."},
      {{"zh-Hant-TW"}, "回答是空的。"}, {{"zh-CN"}, "回答为空。"},
      {{"pl-PL"}, "Pusta odpowiedź."},  {{"ru-RU"}, "Пустой ответ."},
      {{"th-TH"}, "ไม่ได้รับคำตอบ"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.preferred.front());
    LocFixture f;
    EXPECT_EQ(f.make(row.preferred).t("Réponse vide."), row.expected);
  }
}

TEST(LocTest, TextInNoTableIsShownAsIs) {
  for (const char* ui : {"fr", "en", "zh", "zh-Hant", "th", "ru", "pl", "de"}) {
    SCOPED_TRACE(ui);
    LocFixture f;
    f.setUiLang(ui);
    Loc loc = f.make({});
    EXPECT_EQ(loc.t("Texte que personne n'a traduit"), "Texte que personne n'a traduit");
    // A formatted text finds no row: the format string is what is translated.
    EXPECT_EQ(loc.t("Niveau 2 sur 6"), "Niveau 2 sur 6");
  }
}

TEST(LocTest, ChangeOfTheSettingAppliesToTheNextText) {
  LocFixture f;
  Loc loc = f.make({"fr-FR"});
  EXPECT_EQ(loc.t("Corriger"), "Corriger");
  ASSERT_TRUE(f.settings.set("uiLang", std::string("en")));
  EXPECT_EQ(loc.t("Corriger"), "Correct");
  ASSERT_TRUE(f.settings.set("uiLang", std::string("zh-Hant")));
  EXPECT_EQ(loc.t("Corriger"), "訂正");
}

// A traditional reader of a text that only the simplified table has sees the simplified text
// until the dictionary has loaded, then its conversion, which is kept.
TEST(LocTest, TraditionalFallsBackOnConvertedSimplifiedOnceTheDictionaryLoads) {
  // clang-format off
  const LocRow simplified[] = {{"Apprendre", "学习中国"}, {"Servir", "服务"}};
  const LocRow traditional[] = {{"Servir", "伺服"}};
  // clang-format on
  LocTables tables({std::span<const LocRow>(), simplified, traditional, {}, {}, {}});
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  settings.overrideForRun("uiLang", std::string("zh-Hant"));
  CEDict dictionary;
  HantCache hant(dictionary);
  Loc loc(settings, tables, hant, {});

  EXPECT_EQ(loc.t("Apprendre"), "学习中国");
  EXPECT_EQ(hant.size(), 0u);  // nothing kept before the load

  ASSERT_TRUE(dictionary.load(testing::testData("cedict_small.txt"),
                              testing::testData("unihan_small.tsv")));
  EXPECT_EQ(loc.t("Apprendre"), "學習中國");
  EXPECT_EQ(loc.t("Apprendre"), "學習中國");
  EXPECT_EQ(hant.size(), 1u);
  EXPECT_EQ(loc.t("Servir"), "伺服");  // a traditional row wins over any conversion
  EXPECT_EQ(loc.t("Absent"), "Absent");

  settings.overrideForRun("uiLang", std::string("zh"));
  EXPECT_EQ(loc.t("Apprendre"), "学习中国");
  // AI answers name their sections in the answer language, whatever the interface's.
  EXPECT_EQ(loc.t("Apprendre", "zh-Hant"), "學習中國");
  EXPECT_EQ(loc.t("Apprendre", "en"), "Apprendre");
}

TEST(LocTest, AnswerLanguageTitles) {
  LocFixture f;
  f.setUiLang("ru");
  Loc loc = f.make({});
  EXPECT_EQ(loc.t("Sens", "en"), "Meaning");
  EXPECT_EQ(loc.t("Sens", "zh-Hans"), "意思");
  EXPECT_EQ(loc.t("Grammaire", "zh-Hant"), "文法");
  EXPECT_EQ(loc.t("Grammaire", "zh-Hans"), "语法");
  EXPECT_EQ(loc.t("Sens", "fr"), "Sens");
}

TEST(LocTest, DefinitionLanguage) {
  struct Row {
    const char* uiLang;
    const char* code;
    const char* stored;  // defLang.<code>; nullptr: absent
    std::optional<std::string> expected;
  };
  const Row rows[] = {
      {"fr", "zh", "orig", std::nullopt}, {"zh-Hant", "zh", nullptr, "zh-Hant"},
      {"zh", "zh", "auto", "zh-Hans"},    {"fr", "ja", nullptr, "fr"},
      {"th", "ja", nullptr, "th"},        {"fr", "ja", "en", "en"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.uiLang) + " " + row.code);
    LocFixture f;
    f.setUiLang(row.uiLang);
    if (row.stored)
      f.settings.overrideForRun("defLang." + std::string(row.code), std::string(row.stored));
    EXPECT_EQ(f.make({}).definitionLanguage(row.code), row.expected);
  }
}

TEST(LocTest, LanguageNamedInFrenchForPrompts) {
  const std::pair<const char*, const char*> rows[] = {
      {"en", "anglais"}, {"zh", "chinois simplifié"}, {"zh-Hant", "chinois traditionnel (Taïwan)"},
      {"ru", "russe"},   {"pl", "polonais"},          {"fr", "français"},
  };
  for (const auto& [ui, name] : rows) {
    SCOPED_TRACE(ui);
    LocFixture f;
    f.setUiLang(ui);
    EXPECT_EQ(f.make({}).languageNameForPrompts(), name);
  }
}

TEST(LocTest, PickerTranslatesOnlyItsFirstLabel) {
  LocFixture f;
  f.setUiLang("en");
  auto choices = f.make({}).interfaceLanguageChoices();
  ASSERT_EQ(choices.size(), 8u);
  EXPECT_EQ(choices[0], (std::pair<std::string, std::string>{"Automatic (Mac language)", "auto"}));
  EXPECT_EQ(choices[1], (std::pair<std::string, std::string>{"Français", "fr"}));
  EXPECT_EQ(choices[4], (std::pair<std::string, std::string>{"中文（繁體）", "zh-Hant"}));
  EXPECT_EQ(choices[7], (std::pair<std::string, std::string>{"Polski", "pl"}));
}

}  // namespace
}  // namespace vesko
