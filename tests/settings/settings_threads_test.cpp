// The store under concurrent readers and writers of one process, for ThreadSanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "settings/settings.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

// Readers on other threads see every value whole while writers change it; counters raised from
// several threads through `update` lose no raise.
TEST(SettingsThreadsTest, ReadersSeeWholeValuesAndUpdatesLoseNothing) {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  const std::vector<std::string> languages = {"auto", "zh-Hant", "en", "pl"};

  constexpr int kWriters = 3;
  constexpr int kRaises = 40;
  std::atomic<bool> writing{true};
  std::atomic<int> oddValues{0};
  std::vector<std::thread> readers;
  for (int r = 0; r < 2; ++r) {
    readers.emplace_back([&] {
      while (writing.load()) {
        auto language = settings.text("uiLang");
        if (std::find(languages.begin(), languages.end(), language) == languages.end()) ++oddValues;
        if (settings.integer("review.oldCount") < 0) ++oddValues;
      }
    });
  }
  std::vector<std::thread> writers;
  for (int w = 0; w < kWriters; ++w) {
    writers.emplace_back([&, w] {
      for (int i = 0; i < kRaises; ++i) {
        auto raised =
            settings.update("review.oldCount",
                            [](std::optional<SettingValue> current) -> std::optional<SettingValue> {
                              return (current ? std::get<long long>(*current) : 0) + 1;
                            });
        EXPECT_TRUE(raised);
        EXPECT_TRUE(
            settings.set("uiLang", languages[static_cast<std::size_t>(w + i) % languages.size()]));
      }
    });
  }
  for (auto& writer : writers) writer.join();
  writing = false;
  for (auto& reader : readers) reader.join();

  EXPECT_EQ(oddValues.load(), 0);
  EXPECT_EQ(settings.integer("review.oldCount"), kWriters * kRaises);
  EXPECT_EQ(Settings(dir.path() / "settings.json", clock).integer("review.oldCount"),
            kWriters * kRaises);
}

}  // namespace
}  // namespace vesko
