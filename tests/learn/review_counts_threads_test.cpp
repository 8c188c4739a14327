// The day's tally raised at once from several threads and from two settings objects on one file,
// as the desktop app and the command line do: no card is lost.

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "learn/review_counts.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

TEST(ReviewCountsThreadsTest, NoRaiseIsLost) {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings app(dir.path() / "settings.json", clock);
  Settings commandLine(dir.path() / "settings.json", clock);
  ReviewCounts appCounts(app, clock), commandLineCounts(commandLine, clock);
  constexpr int kThreads = 4, kRaises = 20;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&, t] {
      ReviewCounts& counts = t % 2 ? appCounts : commandLineCounts;
      for (int i = 0; i < kRaises; ++i)
        EXPECT_TRUE(counts.raise(i % 4 ? CardAge::oldCard : CardAge::newCard));
    });
  for (auto& thread : threads) thread.join();
  app.reloadIfChanged();
  const DailyCounts expected{kThreads * kRaises * 3 / 4, kThreads * kRaises / 4};
  EXPECT_EQ(appCounts.today(), expected);
}

}  // namespace
}  // namespace vesko
