// Interface texts drawn from several threads while the dictionary loads, for ThreadSanitizer:
// the tables' first use, the HantCache and the dictionary's handover all meet here.

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "dict/cedict.h"
#include "settings/loc.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

TEST(LocThreadsTest, TraditionalReadersWhileTheDictionaryLoads) {
  // clang-format off
  const LocRow simplified[] = {{"Apprendre", "学习中国"}, {"Servir", "服务"}};
  // clang-format on
  LocTables tables({std::span<const LocRow>(), simplified, {}, {}, {}, {}});
  LocTables builtIn;
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  settings.overrideForRun("uiLang", std::string("zh-Hant"));
  CEDict dictionary;
  HantCache hant(dictionary);
  Loc loc(settings, tables, hant, {});
  Loc builtInLoc(settings, builtIn, hant, {});

  std::atomic<bool> loaded{false};
  std::atomic<int> wrong{0};
  std::vector<std::thread> readers;
  for (int r = 0; r < 3; ++r) {
    readers.emplace_back([&] {
      // Until the load has ended, and a while after.
      for (int afterLoad = 0; afterLoad < 500; afterLoad += loaded.load() ? 1 : 0) {
        bool after = loaded.load();
        auto learn = loc.t("Apprendre");
        auto serve = loc.t("Servir");
        // Before the load ends either text may show; once it has ended, only the conversion.
        if (learn != "學習中國" && (after || learn != "学习中国")) ++wrong;
        if (serve != "服務" && (after || serve != "服务")) ++wrong;
        if (builtInLoc.t("Corriger") != "訂正") ++wrong;
      }
    });
  }
  ASSERT_TRUE(dictionary.load(testing::testData("cedict_small.txt"),
                              testing::testData("unihan_small.tsv")));
  loaded = true;
  for (auto& reader : readers) reader.join();
  EXPECT_EQ(wrong.load(), 0);
  EXPECT_EQ(loc.t("Apprendre"), "學習中國");
  EXPECT_EQ(loc.t("Servir"), "服務");
  EXPECT_EQ(hant.size(), 2u);
}

}  // namespace
}  // namespace vesko
