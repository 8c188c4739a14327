// The threaded reader under load: many starts from the main thread while reads are slow. Requests
// that were overtaken before they started are never read, the latest is always delivered, and
// nothing is delivered once the reader is destroyed. Run under the tsan preset.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <thread>
#include <vector>

#include "app/threaded_reader.h"
#include "app/word_chooser.h"
#include "support/read_mailbox.h"
#include "support/temp_dir.h"
#include "text/unicode.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;
using testing::ReadMailbox;

// Each read tells which point it was asked about, then holds until the test lets it go (or, when
// not gated, sleeps a little), then answers with nothing.
class SlowAccessibility final : public AccessibilityReader {
 public:
  explicit SlowAccessibility(bool gated) : gated_(gated) {}

  std::optional<TextAtPoint> read(ScreenPoint point) override {
    std::unique_lock lock(mutex_);
    asked_.push_back(point);
    changed_.notify_all();
    if (gated_)
      changed_.wait(lock, [this] { return open_; });
    else
      changed_.wait_for(lock, 200us);
    return std::nullopt;
  }

  void waitForReads(std::size_t count) {
    std::unique_lock lock(mutex_);
    ASSERT_TRUE(changed_.wait_for(lock, 10s, [&] { return asked_.size() >= count; }));
  }
  void open() {
    {
      std::lock_guard lock(mutex_);
      open_ = true;
    }
    changed_.notify_all();
  }
  std::vector<ScreenPoint> asked() {
    std::lock_guard lock(mutex_);
    return asked_;
  }

 private:
  const bool gated_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<ScreenPoint> asked_;
  bool open_ = false;
};

class ThreadedReaderThreadsTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(cedict_.load(testing::testData("cedict_names.txt"), "")); }

  // Generation n is read at point (n, 0), so a read's point names its request.
  static ReadRequest request(std::uint64_t generation) {
    Snapshot snapshot;
    snapshot.zh = true;
    return {.generation = generation, .point = {double(generation), 0}, .snapshot = snapshot};
  }

  CEDict cedict_;
  NoLanguageData data_;
  SkippedLanguage skipped_;
  WordChooser chooser_{cedict_, data_, skipped_};
  ReadMailbox mailbox_;
  ThreadedReader::Deliver toMailbox() {
    return [this](std::uint64_t generation, ReadReport report) {
      mailbox_.deliver(generation, std::move(report));
    };
  }
};

TEST_F(ThreadedReaderThreadsTest, RequestsOvertakenWhileAReadRunsAreSkipped) {
  SlowAccessibility accessibility(true);
  HoverRead read(accessibility, std::nullopt, chooser_);
  ThreadedReader reader(read, toMailbox());
  reader.start(request(1));
  accessibility.waitForReads(1);
  for (std::uint64_t generation = 2; generation <= 200; ++generation)
    reader.start(request(generation));
  accessibility.open();

  for (const std::uint64_t expected : {1u, 200u}) {
    const auto delivery = mailbox_.next();
    ASSERT_TRUE(delivery);
    EXPECT_EQ(delivery->generation, expected);
  }
  EXPECT_FALSE(mailbox_.next(50ms)) << "an overtaken request was read";
  EXPECT_EQ(accessibility.asked(), (std::vector<ScreenPoint>{{1, 0}, {200, 0}}));
}

TEST_F(ThreadedReaderThreadsTest, ManyStartsDeliverInOrderAndAlwaysTheLast) {
  SlowAccessibility accessibility(false);
  HoverRead read(accessibility, std::nullopt, chooser_);
  std::mt19937 random(12345);
  for (int round = 0; round < 20; ++round) {
    SCOPED_TRACE(round);
    ReadMailbox mailbox;
    ThreadedReader reader(read, [&mailbox](std::uint64_t generation, ReadReport report) {
      mailbox.deliver(generation, std::move(report));
    });
    const std::uint64_t last = 50 + random() % 100;
    for (std::uint64_t generation = 1; generation <= last; ++generation) {
      reader.start(request(generation));
      if (random() % 4 == 0) std::this_thread::sleep_for(std::chrono::microseconds(random() % 300));
    }
    std::uint64_t previous = 0;
    while (previous != last) {
      const auto delivery = mailbox.next();
      ASSERT_TRUE(delivery) << "the last request, " << last << ", was never delivered";
      EXPECT_GT(delivery->generation, previous);
      previous = delivery->generation;
    }
  }
}

TEST_F(ThreadedReaderThreadsTest, NothingIsDeliveredAfterTheDestructorReturns) {
  SlowAccessibility accessibility(true);
  HoverRead read(accessibility, std::nullopt, chooser_);
  std::atomic<bool> destroyed = false;
  std::atomic<int> delivered = 0, late = 0;
  auto reader = std::make_unique<ThreadedReader>(read, [&](std::uint64_t, ReadReport) {
    ++delivered;
    if (destroyed) ++late;
  });
  reader->start(request(1));
  accessibility.waitForReads(1);
  reader->start(request(2));  // waiting when the reader goes: dropped

  std::thread opener([&] {
    std::this_thread::sleep_for(20ms);
    accessibility.open();
  });
  reader.reset();  // blocks until the running read is over
  destroyed = true;
  opener.join();
  std::this_thread::sleep_for(20ms);

  EXPECT_EQ(delivered, 1) << "the running read finishes and is delivered, the waiting one is not";
  EXPECT_EQ(late, 0);
  EXPECT_EQ(accessibility.asked(), (std::vector<ScreenPoint>{{1, 0}}));
}

}  // namespace
}  // namespace vesko
