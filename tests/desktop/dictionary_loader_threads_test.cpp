// The dictionary's load on a thread of its own: lookups find nothing before it and the word after
// it, `finished` comes once and on the main thread, and an app that quits during the load waits
// for it rather than leaving the thread running. Run under the tsan preset.

#include "desktop/dictionary_loader.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <chrono>
#include <thread>

#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko::desktop {
namespace {

using namespace std::chrono_literals;

class DictionaryLoaderThreadsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    cedict_ = dir_.write("cedict.txt", "學習 学习 [xue2 xi2] /to learn/to study/\n");
  }

  int argc_ = 1;
  char name_[16] = "loader-test";
  char* argv_[2] = {name_, nullptr};
  QCoreApplication application_{argc_, argv_};
  testing::TempDir dir_;
  testing::FakeClock clock_;
  Settings settings_{dir_.path() / "settings.json", clock_};
  Log log_{dir_.path() / "debug.log", settings_, clock_};
  CEDict dictionary_;
  std::filesystem::path cedict_;
};

TEST_F(DictionaryLoaderThreadsTest, FinishesOnceOnTheMainThread) {
  DictionaryLoader loader(dictionary_, log_, cedict_, {});
  int finished = 0;
  bool onMainThread = true;
  QObject::connect(&loader, &DictionaryLoader::finished, [&](std::chrono::milliseconds took) {
    ++finished;
    onMainThread = QThread::currentThread() == QCoreApplication::instance()->thread();
    EXPECT_GE(took.count(), 0);
  });
  // Lookups are safe while it loads; they find nothing or the word, never half of it.
  while (!loader.loaded()) {
    const auto entries = dictionary_.lookup(u"学习");
    EXPECT_TRUE(entries.empty() || dictionary_.loaded());
  }
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (finished == 0 && std::chrono::steady_clock::now() < deadline)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  QCoreApplication::processEvents();
  EXPECT_EQ(finished, 1);
  EXPECT_TRUE(onMainThread);
  EXPECT_TRUE(dictionary_.loaded());
  EXPECT_FALSE(dictionary_.lookup(u"学习").empty());
}

TEST_F(DictionaryLoaderThreadsTest, AMissingDictionaryStillEndsTheWait) {
  // Resources found no file: the path is empty.
  DictionaryLoader loader(dictionary_, log_, {}, {});
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (!loader.loaded() && std::chrono::steady_clock::now() < deadline)
    std::this_thread::sleep_for(1ms);
  // The hover of the other languages must not wait for a dictionary that will never come.
  EXPECT_TRUE(loader.loaded());
  EXPECT_FALSE(dictionary_.loaded());
}

TEST_F(DictionaryLoaderThreadsTest, QuittingDuringTheLoadWaitsForIt) {
  int finished = 0;
  {
    DictionaryLoader loader(dictionary_, log_, cedict_, {});
    QObject::connect(&loader, &DictionaryLoader::finished, [&] { ++finished; });
  }
  // The loader is gone: its thread has ended and its signal is never delivered.
  QCoreApplication::processEvents();
  EXPECT_EQ(finished, 0);
  EXPECT_TRUE(dictionary_.loaded());
}

}  // namespace
}  // namespace vesko::desktop
