// The AI page's choices and sentences: backup providers, where a key comes from (and that the key
// itself is never in the sentence), the outcome of a save, and the local server's address.

#include "ai/ai_choices.h"

#include <gtest/gtest.h>

#include "dict/cedict.h"
#include "settings/hant_cache.h"
#include "support/fake_clock.h"
#include "support/french_texts.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using Texts = testing::FrenchTexts;

TEST(AIChoicesTest, BackupChoicesAreNoneThenTheKeyedProviders) {
  const auto choices = backupProviderChoices();
  ASSERT_EQ(choices.size(), 4u);
  EXPECT_EQ(choices[0].value, 0);
  for (std::size_t i = 1; i < choices.size(); ++i) {
    auto provider = providerAt(choices[i].value);
    ASSERT_TRUE(provider);
    EXPECT_TRUE(usesKey(*provider));
    EXPECT_EQ(choices[i].label, providerRow(*provider).label);
  }
  struct Row {
    long long stored;
    std::size_t choice;
  };
  // Only 1–3 count as a backup; the local model and the relay are shown as none.
  const Row rows[] = {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 0}, {-1, 0}, {17, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.stored);
    EXPECT_EQ(backupProviderChoice(row.stored), row.choice);
  }
}

TEST(AIChoicesTest, KeySourceNamesWhereNeverWhat) {
  Texts texts;
  struct Row {
    AIProvider provider;
    FoundKey found;
    std::string expected;
  };
  const Row rows[] = {
      {AIProvider::claude,
       {"sk-ant-secret", FoundKey::Source::store, {}},
       "Clé enregistrée dans le trousseau."},
      {AIProvider::deepseek,
       {"sk-ds-secret", FoundKey::Source::environment, {}},
       "Clé lue dans la variable d'environnement DEEPSEEK_API_KEY."},
      {AIProvider::openai, {"", FoundKey::Source::none, {}}, "Pas de clé."},
      {AIProvider::openai,
       {"sk-oa-secret", FoundKey::Source::environment, "no Secret Service on the session bus"},
       "Clé lue dans la variable d'environnement OPENAI_API_KEY. Le trousseau ne répond pas : no "
       "Secret Service on the session bus"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.expected);
    const std::string text = keySourceText(row.provider, row.found, texts.loc);
    EXPECT_EQ(text, row.expected);
    if (!row.found.key.empty()) {
      EXPECT_EQ(text.find(row.found.key), std::string::npos);
    }
  }
}

TEST(AIChoicesTest, KeySourceInTheInterfaceLanguage) {
  Texts texts;
  texts.settings.overrideForRun("uiLang", std::string("en"));
  const std::string text =
      keySourceText(AIProvider::claude, {"k", FoundKey::Source::environment, {}}, texts.loc);
  EXPECT_NE(text.find("ANTHROPIC_API_KEY"), std::string::npos);
  EXPECT_EQ(text.find("variable d'environnement"), std::string::npos) << text;
}

TEST(AIChoicesTest, SaveOutcome) {
  Texts texts;
  EXPECT_EQ(keySavedText(false, {}, texts.loc), "Clé enregistrée.");
  EXPECT_EQ(keySavedText(true, {}, texts.loc), "Clé effacée.");
  const std::string refused =
      keySavedText(false, std::unexpected(SecretStoreError{"the keyring is locked"}), texts.loc);
  EXPECT_TRUE(refused.starts_with("Le trousseau n'a pas pu garder la clé :"));
  EXPECT_NE(refused.find("the keyring is locked"), std::string::npos);
}

TEST(AIChoicesTest, LocalModelAddress) {
  struct Row {
    std::string_view given;
    std::optional<std::string_view> kept;
  };
  const Row rows[] = {
      {"http://127.0.0.1:11434/v1", "http://127.0.0.1:11434/v1"},
      {"  https://llm.example.org/v1/ \n", "https://llm.example.org/v1/"},
      {"HTTP://localhost:8080", "HTTP://localhost:8080"},
      {"", std::nullopt},
      {"127.0.0.1:11434/v1", std::nullopt},
      {"ftp://host/v1", std::nullopt},
      {"http://", std::nullopt},
      {"http:///v1", std::nullopt},
      {"http://:8080/v1", std::nullopt},
      {"http://local host/v1", std::nullopt},
      {"file:///etc/passwd", std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.given);
    auto checked = checkedLocalModelURL(row.given);
    if (row.kept) {
      ASSERT_TRUE(checked) << checked.error();
      EXPECT_EQ(*checked, *row.kept);
    } else {
      ASSERT_FALSE(checked);
      EXPECT_FALSE(checked.error().empty());
    }
  }
  // The default address is accepted as it is.
  EXPECT_TRUE(checkedLocalModelURL(findSettingKey("localModelURL")->text));
}

}  // namespace
}  // namespace vesko
