#include "app/hover_notices.h"

#include <gtest/gtest.h>

#include <string>

#include "dict/cedict.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

TEST(HoverNoticesTest, SkippedLanguageSaysWhyInTheInterfaceLanguage) {
  struct Row {
    const char* uiLang;
    Language language;
    bool readWithKey;
    const char* text;
  };
  const Row rows[] = {
      {"fr", Language::th, false, "thaï n'est pas dans « Tes langues » : Réglages → Langues"},
      {"fr", Language::ru, true, "russe se lit en maintenant la touche"},
      {"en", Language::pl, false, "Polish is not in “Your languages”: Settings → Languages"},
      {"en", Language::ja, true, "Japanese is read while the key is held"},
      {"zh", Language::th, true, "泰语按住按键时才会读取"},
  };
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  CEDict dictionary;
  HantCache hant(dictionary);
  LocTables tables;
  const Loc loc(settings, tables, hant, {"fr-FR"});
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    settings.overrideForRun("uiLang", std::string(row.uiLang));
    EXPECT_EQ(skippedLanguageText(loc, row.language, row.readWithKey), row.text);
  }
}

}  // namespace
}  // namespace vesko
