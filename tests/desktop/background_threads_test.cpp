// Work run off the GUI thread and handed back: every result arrives, on the GUI thread, and an
// owner that goes while work is in flight drops what has not started, waits for what runs and
// hears nothing afterwards.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <thread>

#include "desktop/background.h"

namespace vesko::desktop {
namespace {

bool eventually(const std::function<bool()>& done) {
  QElapsedTimer timer;
  timer.start();
  while (!done()) {
    if (timer.elapsed() > 20'000) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

TEST(BackgroundThreadsTest, EveryResultArrivesOnTheGuiThread) {
  Background background(4);
  constexpr int kTasks = 200;
  const std::thread::id gui = std::this_thread::get_id();
  std::atomic<int> ranOffGui{0};
  int arrived = 0;
  long long sum = 0;
  bool allOnGui = true;
  for (int i = 0; i < kTasks; ++i) {
    background.run(
        [i, gui, &ranOffGui] {
          if (std::this_thread::get_id() != gui) ranOffGui.fetch_add(1);
          return std::make_unique<int>(i * 2);  // move-only results are handed over too
        },
        [&, gui](std::unique_ptr<int> value) {
          allOnGui = allOnGui && std::this_thread::get_id() == gui;
          sum += *value;
          ++arrived;
        });
  }
  ASSERT_TRUE(eventually([&] { return arrived == kTasks; })) << arrived;
  EXPECT_EQ(ranOffGui.load(), kTasks);
  EXPECT_TRUE(allOnGui);
  EXPECT_EQ(sum, static_cast<long long>(kTasks) * (kTasks - 1));
  EXPECT_TRUE(eventually([&] { return !background.busy(); }));
}

TEST(BackgroundThreadsTest, AHandBackMayStartMoreWork) {
  Background background(1);
  std::optional<int> last;
  std::function<void(int)> next = [&](int n) {
    if (n == 5) {
      last = n;
      return;
    }
    background.run([n] { return n + 1; }, next);
  };
  next(0);
  ASSERT_TRUE(eventually([&] { return last.has_value(); }));
  EXPECT_EQ(*last, 5);
}

TEST(BackgroundThreadsTest, AnOwnerThatGoesHearsNothingMore) {
  std::atomic<int> started{0};
  std::atomic<int> finished{0};
  int heard = 0;
  {
    Background background(2);
    for (int i = 0; i < 20; ++i)
      background.run(
          [&] {
            started.fetch_add(1);
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            finished.fetch_add(1);
            return 1;
          },
          [&heard](int) { ++heard; });
    ASSERT_TRUE(eventually([&] { return started.load() >= 1; }));
  }
  // What ran was waited for; what had not started never will.
  EXPECT_EQ(finished.load(), started.load());
  EXPECT_LT(started.load(), 20);
  for (int i = 0; i < 10; ++i) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  EXPECT_EQ(heard, 0);
}

}  // namespace
}  // namespace vesko::desktop

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
