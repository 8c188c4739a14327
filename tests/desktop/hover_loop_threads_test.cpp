// The hover loop across threads: reads run on the reader's worker, their answers come back to
// the main thread's event queue, the bubble is shown there and traced with the read's time; a
// loop destroyed while a read runs drops its answer. Run under the tsan preset.

#include "desktop/hover_loop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <atomic>
#include <chrono>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <thread>

#include "support/fake_language_data.h"
#include "support/hover_fakes.h"

namespace vesko::desktop {
namespace {

using namespace std::chrono_literals;

// One line of text with 学习 under every point, after `delay` on the read's thread.
class LineReader final : public AccessibilityReader {
 public:
  explicit LineReader(std::chrono::milliseconds delay) : delay_(delay) {}
  std::optional<TextAtPoint> read(ScreenPoint) override {
    reads_.fetch_add(1);
    std::this_thread::sleep_for(delay_);
    return TextAtPoint{u"我们在大学学习中文。", 5, std::nullopt};
  }
  int reads() const { return reads_.load(); }

 private:
  const std::chrono::milliseconds delay_;
  std::atomic<int> reads_{0};
};

// The fake bubble, noting whether each call came on the main thread.
class MainThreadBubble final : public Bubble {
 public:
  bool visible() const override { return check(), inner.visible(); }
  ScreenRect frame() const override { return check(), inner.frame(); }
  std::optional<ScreenPoint> anchor() const override { return check(), inner.anchor(); }
  void show(ScreenPoint at, const HoverResult& result) override {
    check();
    inner.show(at, result);
    if (const auto* chinese = result.chinese()) words.push_back(chinese->word);
  }
  void close() override { check(), inner.close(); }
  bool onWayTowards(ScreenPoint pointer) const override {
    return check(), inner.onWayTowards(pointer);
  }

  testing::FakeBubble inner;
  std::vector<std::string> words;
  mutable bool offMainThread = false;

 private:
  void check() const {
    if (QThread::currentThread() != QCoreApplication::instance()->thread()) offMainThread = true;
  }
};

class HoverLoopThreadsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto cedict = dir_.write("cedict.txt",
                                   "學習 学习 [xue2 xi2] /to learn/to study/\n"
                                   "中文 中文 [Zhong1 wen2] /Chinese language/\n"
                                   "大學 大学 [da4 xue2] /university/\n");
    ASSERT_TRUE(dictionary_.load(cedict, ""));
    pointer_.state.position = {100, 100};
  }

  HoverLoopParts parts(const HoverRead& read) {
    return HoverLoopParts{
        .pointer = pointer_,
        .ownWindows = ownWindows_,
        .screens = screens_,
        .frontmost = frontmost_,
        .bubble = bubble_,
        .read = read,
        .notices = notices_,
        .dictionaries = dictionaries_,
        .settings = settings_,
        .skipped = skipped_,
        .log = log_,
        .trace = trace_,
    };
  }

  // Runs the main thread's events until `done` or `limit`.
  static bool runUntil(const std::function<bool()>& done,
                       std::chrono::milliseconds limit = 10s) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!done() && std::chrono::steady_clock::now() < deadline) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
      std::this_thread::sleep_for(2ms);
    }
    return done();
  }

  std::vector<nlohmann::json> traced() const {
    std::ifstream in(traceFile_);
    std::vector<nlohmann::json> lines;
    std::string line;
    while (std::getline(in, line)) lines.push_back(nlohmann::json::parse(line));
    return lines;
  }

  int argc_ = 1;
  char name_[16] = "hover-loop-test";
  char* argv_[2] = {name_, nullptr};
  QCoreApplication application_{argc_, argv_};
  testing::TempDir dir_;
  testing::FakeClock wallClock_;
  Settings settings_{dir_.path() / "settings.json", wallClock_};
  Log log_{dir_.path() / "debug.log", settings_, wallClock_};
  std::filesystem::path traceFile_ = dir_.path() / "trace.jsonl";
  Trace trace_{traceFile_};
  CEDict dictionary_;
  testing::FakeLanguageData data_;
  SkippedLanguage skipped_;
  WordChooser chooser_{dictionary_, data_, skipped_};
  testing::FakePointer pointer_;
  testing::FakeOwnWindows ownWindows_;
  testing::FakeScreens screens_;
  testing::FakeFrontmost frontmost_;
  MainThreadBubble bubble_;
  testing::FakeNotices notices_;
  testing::FakeDictionaries dictionaries_;
};

TEST_F(HoverLoopThreadsTest, ShowsTheBubbleOnTheMainThreadAndTracesIt) {
  LineReader reader(5ms);
  const HoverRead read(reader, std::nullopt, chooser_);
  HoverLoop loop(parts(read));
  loop.start();
  ASSERT_TRUE(runUntil([&] { return bubble_.inner.shown; })) << "no bubble within 10 s";
  EXPECT_FALSE(bubble_.offMainThread);
  ASSERT_EQ(bubble_.words, std::vector<std::string>{"学习"});
  ASSERT_EQ(bubble_.inner.shows.size(), 1u);
  EXPECT_EQ(bubble_.inner.shows[0].x, 100);

  const auto lines = traced();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].at("event"), "bubble");
  EXPECT_EQ(lines[0].at("word"), "学习");
  EXPECT_EQ(lines[0].at("lang"), "zh");
  EXPECT_EQ(lines[0].at("source"), "accessibility");
  EXPECT_GE(lines[0].at("ms").get<long long>(), 5);

  // The pointer stays for some twenty ticks: the spot is not read again, nothing more traced.
  const int reads = reader.reads();
  runUntil([] { return false; }, 600ms);
  EXPECT_EQ(reader.reads(), reads);
  EXPECT_EQ(traced().size(), 1u);
}

TEST_F(HoverLoopThreadsTest, NewSpotsWhileReadsRunAllEndOnTheMainThread) {
  LineReader reader(15ms);
  const HoverRead read(reader, std::nullopt, chooser_);
  HoverLoop loop(parts(read));
  loop.start();
  // The pointer hops to a new spot, away from the bubble (which opens to its right), every few
  // ticks while reads are under way.
  for (int hop = 0; hop < 12; ++hop) {
    pointer_.state.position = {600.0 - 40 * hop, 300};
    runUntil([&] { return bubble_.inner.shows.size() > static_cast<std::size_t>(hop); });
  }
  EXPECT_FALSE(bubble_.offMainThread);
  EXPECT_EQ(bubble_.inner.shows.size(), 12u);
  EXPECT_EQ(traced().size(), bubble_.inner.shows.size());
}

TEST_F(HoverLoopThreadsTest, AnswerOfALoopGoneIsDropped) {
  LineReader reader(100ms);
  const HoverRead read(reader, std::nullopt, chooser_);
  {
    HoverLoop loop(parts(read));
    loop.start();
    ASSERT_TRUE(runUntil([&] { return reader.reads() > 0; }));
  }  // waits for the read under way; its answer must not reach the bubble
  QCoreApplication::processEvents();
  EXPECT_FALSE(bubble_.inner.shown);
  EXPECT_TRUE(traced().empty());
}

}  // namespace
}  // namespace vesko::desktop
