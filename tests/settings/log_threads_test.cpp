// The log under concurrent writers and a reader, for ThreadSanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "settings/log.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

// Four threads log while a fifth reads `recent` and another flips the `debugLog` switch: every
// read holds at most 400 whole lines, and each thread's lines keep their order.
TEST(LogThreadsTest, ConcurrentLogAndRecent) {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  constexpr int kThreads = 4;
  constexpr int kEach = 300;
  std::atomic<int> badReads{0};
  std::atomic<bool> running{true};
  {
    Log log(dir.path() / "debug.log", settings, clock);
    std::thread reader([&] {
      while (running.load()) {
        std::string text = log.recent(TimePoint{});
        auto count = text.empty() ? 0 : std::count(text.begin(), text.end(), '\n') + 1;
        if (count > 400) ++badReads;
      }
    });
    std::thread switcher([&] {
      for (int i = 0; running.load(); ++i) settings.overrideForRun("debugLog", i % 2 == 0);
    });
    std::vector<std::thread> writers;
    for (int t = 0; t < kThreads; ++t)
      writers.emplace_back([&, t] {
        for (int i = 0; i < kEach; ++i) {
          log.log("t" + std::to_string(t) + " " + std::to_string(i));
          clock.advance(std::chrono::milliseconds(1));
        }
      });
    for (auto& writer : writers) writer.join();

    std::string all = log.recent(TimePoint{});
    running = false;
    reader.join();
    switcher.join();

    // Within the last 400 lines, each thread's numbers only go up.
    std::vector<int> last(kThreads, -1);
    std::size_t count = 0;
    std::size_t start = 0;
    while (start < all.size()) {
      auto end = all.find('\n', start);
      std::string line =
          all.substr(start, end == std::string::npos ? std::string::npos : end - start);
      ++count;
      int thread = line[11] - '0';
      int number = std::stoi(line.substr(13));
      EXPECT_GT(number, last[static_cast<std::size_t>(thread)]) << line;
      last[static_cast<std::size_t>(thread)] = number;
      if (end == std::string::npos) break;
      start = end + 1;
    }
    EXPECT_EQ(count, 400u);
  }
  EXPECT_EQ(badReads.load(), 0);
}

}  // namespace
}  // namespace vesko
