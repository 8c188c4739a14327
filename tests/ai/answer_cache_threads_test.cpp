// The kept answers asked for and written from several question threads at once.

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "ai/answer_cache.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using testing::FakeClock;
using testing::TempDir;

TEST(AnswerCacheThreads, StoresAndFindsFromSeveralThreads) {
  TempDir dir;
  FakeClock clock;
  AnswerCache cache(dir.path() / AnswerCache::kFileName, clock);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([&cache, t] {
      for (int i = 0; i < 25; ++i) {
        const AnswerKey key{"corriger", std::to_string(t * 100 + i), "fr", "claude", ""};
        cache.store(key, "réponse " + key.text);
        EXPECT_EQ(cache.find(key), "réponse " + key.text);
      }
    });
  for (auto& thread : threads) thread.join();
  AnswerCache again(dir.path() / AnswerCache::kFileName, clock);
  EXPECT_EQ(again.find({"corriger", "324", "fr", "claude", ""}), "réponse 324");
}

}  // namespace
}  // namespace vesko
