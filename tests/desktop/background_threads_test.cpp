// Work run off the GUI thread and handed back: every result arrives, on the receiver's thread,
// and a receiver that goes while work is in flight waits for it and hears nothing afterwards.

#include "desktop/background.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace vesko::desktop {
namespace {

// A page's shape: it owns its pool and waits for it before it goes.
class Receiver : public QObject {
 public:
  ~Receiver() override { pool.waitForDone(); }
  QThreadPool pool;
};

TEST(BackgroundThreadsTest, EveryResultArrivesOnTheReceiversThread) {
  Receiver receiver;
  receiver.pool.setMaxThreadCount(4);
  constexpr int kTasks = 200;
  std::atomic<int> ranOffMain{0};
  int arrived = 0;
  long long sum = 0;
  bool allOnMain = true;
  QThread* const main = QThread::currentThread();
  for (int i = 0; i < kTasks; ++i) {
    runInBackground(
        receiver.pool, &receiver,
        [i, main, &ranOffMain] {
          if (QThread::currentThread() != main) ranOffMain.fetch_add(1);
          return std::make_unique<int>(i * 2);  // move-only results are handed over too
        },
        [&, main](std::unique_ptr<int> value) {
          allOnMain = allOnMain && QThread::currentThread() == main;
          sum += *value;
          ++arrived;
        });
  }
  QElapsedTimer timer;
  timer.start();
  while (arrived < kTasks && timer.elapsed() < 20'000)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  EXPECT_EQ(arrived, kTasks);
  EXPECT_EQ(ranOffMain.load(), kTasks);
  EXPECT_TRUE(allOnMain);
  EXPECT_EQ(sum, static_cast<long long>(kTasks) * (kTasks - 1));
}

TEST(BackgroundThreadsTest, AReceiverThatGoesHearsNothingMore) {
  std::atomic<int> finished{0};
  int heard = 0;
  {
    Receiver receiver;
    receiver.pool.setMaxThreadCount(2);
    for (int i = 0; i < 8; ++i)
      runInBackground(
          receiver.pool, &receiver,
          [&finished] {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            finished.fetch_add(1);
            return 1;
          },
          [&heard](int) { ++heard; });
  }
  // The receiver waited for its work before it went.
  EXPECT_EQ(finished.load(), 8);
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
