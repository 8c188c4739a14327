// The choices the settings window offers for the hover: that each stored value finds its choice
// back, that every key the window writes is one the settings know, and the delay's bounds.

#include "app/settings_choices.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>

#include "app/pointer.h"
#include "settings/loc.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

TEST(SettingsChoicesTest, EveryLookedUpLanguageHasItsOwnModeKey) {
  std::set<Language> languages;
  for (const auto& row : kStudiedLanguages) {
    SCOPED_TRACE(row.modeKey);
    EXPECT_TRUE(languages.insert(row.language).second);
    EXPECT_EQ(row.modeKey, "mode." + std::string(languageCode(row.language)));
    const SettingKey* key = findSettingKey(row.modeKey);
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->kind, SettingKind::integer);
    EXPECT_FALSE(isFamily(*key));
    EXPECT_FALSE(row.name.empty());
  }
  EXPECT_EQ(languages.size(), 7u);
}

TEST(SettingsChoicesTest, StoredModeFindsItsChoice) {
  struct Row {
    long long stored;
    std::size_t choice;
  };
  const Row rows[] = {{0, 0}, {1, 1}, {2, 2}, {3, 2}, {-1, 2}, {99, 2}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.stored);
    EXPECT_EQ(readingModeChoice(row.stored), row.choice);
  }
  // Writing the chosen value back gives the mode the hover reads.
  for (std::size_t i = 0; i < kReadingModeChoices.size(); ++i)
    EXPECT_EQ(readingModeChoice(kReadingModeChoices[i].value), i);
}

TEST(SettingsChoicesTest, TriggerKeyChoicesMatchTheKeysTheHoverWaitsFor) {
  // The label names the key whose bit the hover tests for that stored value.
  struct Row {
    std::string_view label;
    std::uint8_t bit;
  };
  const Row rows[] = {{"Alt", kAlt}, {"Ctrl", kControl}, {"Maj", kShift}, {"Super", kSuper}};
  ASSERT_EQ(std::size(rows), kTriggerKeyChoices.size());
  for (std::size_t i = 0; i < kTriggerKeyChoices.size(); ++i) {
    SCOPED_TRACE(kTriggerKeyChoices[i].label);
    EXPECT_EQ(kTriggerKeyChoices[i].label, rows[i].label);
    EXPECT_EQ(triggerModifiers(kTriggerKeyChoices[i].value), rows[i].bit);
    EXPECT_EQ(triggerKeyChoice(kTriggerKeyChoices[i].value), i);
  }
  // Any value other than 1–3 is Alt, as the hover reads it; the default is shown as Alt too.
  for (long long stored : {0LL, 4LL, 5LL, -3LL}) {
    SCOPED_TRACE(stored);
    EXPECT_EQ(kTriggerKeyChoices[triggerKeyChoice(stored)].label, "Alt");
  }
  EXPECT_EQ(triggerKeyChoice(static_cast<long long>(findSettingKey("modifier")->number)), 0u);
}

TEST(SettingsChoicesTest, PreferenceChoicesFallBackOnUnknownValues) {
  EXPECT_EQ(textChoice(kLatinPreferenceChoices, "fr", 1), 0u);
  EXPECT_EQ(textChoice(kLatinPreferenceChoices, "en", 0), 1u);
  EXPECT_EQ(textChoice(kLatinPreferenceChoices, "de", 1), 1u);
  EXPECT_EQ(textChoice(kHanPreferenceChoices, "ja", 0), 1u);
  EXPECT_EQ(textChoice(kHanPreferenceChoices, "", 0), 0u);
  // The defaults are among the choices.
  EXPECT_EQ(textChoice(kLatinPreferenceChoices, findSettingKey("prefLatin")->text, 9), 1u);
  EXPECT_EQ(textChoice(kHanPreferenceChoices, findSettingKey("prefHan")->text, 9), 0u);
}

TEST(SettingsChoicesTest, InterfaceLanguageFindsItsPickerLine) {
  std::vector<std::pair<std::string, std::string>> choices;
  for (const auto& language : kInterfaceLanguages)
    choices.emplace_back(std::string(language.label), std::string(language.value));
  for (std::size_t i = 0; i < choices.size(); ++i) {
    SCOPED_TRACE(choices[i].second);
    EXPECT_EQ(interfaceLanguageChoice(choices, choices[i].second), i);
  }
  EXPECT_EQ(interfaceLanguageChoice(choices, "de"), 0u);
  EXPECT_EQ(interfaceLanguageChoice(choices, "zh-hant", 3), 3u);  // values are matched exactly
}

TEST(SettingsChoicesTest, DelayStaysWithinItsBounds) {
  struct Row {
    double given;
    double kept;
  };
  const Row rows[] = {
      {0.1, 0.1}, {0.02, 0.02}, {0.0, 0.02},  {-5, 0.02},
      {2.0, 2.0}, {30.0, 2.0},  {0.55, 0.55}, {std::numeric_limits<double>::infinity(), 2.0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.given);
    EXPECT_DOUBLE_EQ(boundedDelay(row.given), row.kept);
  }
  EXPECT_DOUBLE_EQ(boundedDelay(std::nan("")), 0.1);
  // The default itself is offered.
  EXPECT_DOUBLE_EQ(boundedDelay(findSettingKey("delay")->number), findSettingKey("delay")->number);
}

TEST(SettingsChoicesTest, EveryWriteErrorHasItsOwnText) {
  std::set<std::string_view> texts;
  for (auto error : {SettingsError::unknownKey, SettingsError::wrongType, SettingsError::unreadable,
                     SettingsError::writeFailed}) {
    auto text = settingsErrorText(error);
    EXPECT_FALSE(text.empty());
    EXPECT_TRUE(texts.insert(text).second) << text;
  }
}

TEST(SettingsChoicesTest, ChoicesAreStoredWithTheKeysType) {
  // What the window writes for each choice is accepted by the settings as it stands.
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  for (const auto& row : kStudiedLanguages)
    for (const auto& choice : kReadingModeChoices) {
      SCOPED_TRACE(row.modeKey);
      ASSERT_TRUE(settings.set(row.modeKey, choice.value));
      EXPECT_EQ(readingModeChoice(settings.integer(row.modeKey)), readingModeChoice(choice.value));
    }
  for (const auto& choice : kTriggerKeyChoices) ASSERT_TRUE(settings.set("modifier", choice.value));
  for (const auto& choice : kLatinPreferenceChoices)
    ASSERT_TRUE(settings.set("prefLatin", std::string(choice.value)));
  for (const auto& choice : kHanPreferenceChoices)
    ASSERT_TRUE(settings.set("prefHan", std::string(choice.value)));
  ASSERT_TRUE(settings.set("delay", boundedDelay(0.5)));
  EXPECT_DOUBLE_EQ(settings.real("delay"), 0.5);
}

}  // namespace
}  // namespace vesko
