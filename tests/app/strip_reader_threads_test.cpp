#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "app/line_at.h"
#include "app/ocr_boxes.h"
#include "app/strip_reader.h"
#include "support/fake_clock.h"
#include "support/fake_screen.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;

// Overlapping reads, as when the pointer moves quickly: several threads read different spots of
// the screen in two modes while the clock moves on, so some reads hit the cache, some capture, and
// stores race with look-ups.
TEST(StripReaderThreadsTest, OverlappingReadsShareTheCache) {
  testing::FakeClock clock;
  testing::FakeCapture capture;
  testing::FakeRecognizer recognizer;
  testing::FakeScreens screens{{{0, 0, 1920, 1080}}};
  std::atomic<int> logged{0};
  StripReader reader{capture, recognizer, screens, clock, [&](std::string) { ++logged; }};
  // One line through the strip's middle, in image pixels: the pointer at the strip's centre is on
  // it.
  OCRLine latin{u"abcd", {400, 55, 100, 20}, divideEvenly({400, 55, 100, 20}, 4)};
  OCRLine chinese{u"中文", {400, 55, 100, 20}, divideEvenly({400, 55, 100, 20}, 2)};
  recognizer.answer("latin", {latin});
  recognizer.answer("zh-Hans", {chinese});

  constexpr int kThreads = 4;
  constexpr int kReads = 300;
  std::atomic<int> wrong{0};
  std::atomic<bool> stop{false};
  std::thread ticking([&] {
    while (!stop) {
      clock.advance(50ms);
      std::this_thread::yield();
    }
  });
  std::vector<std::thread> readers;
  for (int t = 0; t < kThreads; ++t) {
    readers.emplace_back([&, t] {
      const std::vector<std::string> modes = t % 2 == 0
                                                 ? std::vector<std::string>{"latin", "zh-Hans"}
                                                 : std::vector<std::string>{"zh-Hans"};
      for (int i = 0; i < kReads; ++i) {
        const ScreenPoint point{500.0 + 100 * ((i + t) % 5), 300};
        const auto lines = reader.read(point, modes);
        // A cached strip may be an older one that still covers the point: the line under the
        // pointer is then elsewhere, but a fresh strip always puts it under the pointer.
        if (lines.size() != modes.size()) ++wrong;
        for (const OCRLine& line : lines)
          if (line.text != u"abcd" && line.text != u"中文") ++wrong;
      }
    });
  }
  for (auto& r : readers) r.join();
  stop = true;
  ticking.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(logged, 0);
  EXPECT_GE(capture.calls, 1);
  EXPECT_LE(capture.calls, kThreads * kReads);
  // Each capture recognises at most the two modes.
  EXPECT_LE(recognizer.calls, 2 * capture.calls);
}

}  // namespace
}  // namespace vesko
