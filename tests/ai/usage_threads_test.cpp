// Replies arrive on many threads at once: every one of them must be in the totals.

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "ai/usage.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

TEST(UsageThreadsTest, ConcurrentRepliesLoseNoCount) {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  AIUsage usage(settings, clock);
  // A second store on the same file, as the command line beside the desktop app would have.
  Settings other(dir.path() / "settings.json", clock);
  AIUsage otherUsage(other, clock);

  constexpr int kThreads = 4;
  constexpr int kReplies = 25;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&, t] {
      AIUsage& counter = t % 2 == 0 ? usage : otherUsage;
      for (int i = 0; i < kReplies; ++i)
        counter.record(t % 3 == 0 ? AIProvider::claude : AIProvider::deepseek,
                       R"({"model":"x","usage":{"input_tokens":3,"prompt_tokens":4,
                           "completion_tokens":5}})");
    });
  for (auto& thread : threads) thread.join();

  settings.reloadIfChanged();
  for (const auto& key : {dayKey(clock, clock.now()), monthKey(clock, clock.now())}) {
    SCOPED_TRACE(key);
    auto totals = usage.totals(key);
    EXPECT_DOUBLE_EQ(totals["calls"], kThreads * kReplies);
    EXPECT_DOUBLE_EQ(totals["in"], 7.0 * kThreads * kReplies);
    EXPECT_DOUBLE_EQ(totals["out"], 5.0 * kThreads * kReplies);
  }
}

}  // namespace
}  // namespace vesko
