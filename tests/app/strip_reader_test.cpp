#include "app/strip_reader.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "support/fake_clock.h"
#include "support/fake_screen.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;
using testing::FakeCapture;
using testing::FakeClock;
using testing::FakeRecognizer;
using testing::FakeScreens;

constexpr ScreenRect kDisplay{0, 0, 1920, 1080};
// The strip around (800, 500): 350…1250 × 435…565.
constexpr ScreenPoint kMiddle{800, 500};
constexpr ScreenRect kStrip{350, 435, 900, 130};

OCRLine lineOfTwo(const std::u16string& text, ScreenRect rect) {
  const double half = rect.width / 2;
  return {text,
          rect,
          {{rect.x, rect.y, half, rect.height}, {rect.x + half, rect.y, half, rect.height}}};
}

struct Fixture {
  FakeClock clock;
  FakeCapture capture;
  FakeRecognizer recognizer;
  FakeScreens screens{{kDisplay}};
  std::vector<std::string> logged;
  StripReader reader{capture, recognizer, screens, clock,
                     [this](std::string line) { logged.push_back(std::move(line)); }};
};

TEST(StripReaderTest, CacheServesOnlyYoungStripsAwayFromTheirEdges) {
  struct Row {
    const char* name;
    ScreenPoint second;
    std::chrono::milliseconds elapsed;
    int captures;
  };
  const Row rows[] = {
      {"20 inside the left edge, 1 s old: again", {kStrip.x + 20, 500}, 1000ms, 2},
      {"middle, 1.6 s old: again", kMiddle, 1600ms, 2},
      {"middle, 0.5 s old: cached", kMiddle, 500ms, 1},
      {"31 inside the left edge, 1 s old: cached", {kStrip.x + 31, 500}, 1000ms, 1},
      {"29 inside the right edge: again", {kStrip.right() - 29, 500}, 500ms, 2},
      {"9 inside the top edge: again", {800, kStrip.y + 9}, 500ms, 2},
      {"11 inside the bottom edge: cached", {800, kStrip.bottom() - 11}, 500ms, 1},
      {"just under 1.5 s: cached", kMiddle, 1499ms, 1},
      {"exactly 1.5 s: again", kMiddle, 1500ms, 2},
      {"outside the strip: again", {100, 100}, 100ms, 2},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Fixture f;
    f.recognizer.answer("latin", {lineOfTwo(u"ab", {10, 50, 40, 20})});
    const std::vector<std::string> modes{"latin"};
    const auto first = f.reader.read(kMiddle, modes);
    f.clock.advance(row.elapsed);
    const auto second = f.reader.read(row.second, modes);
    EXPECT_EQ(f.capture.calls, row.captures);
    EXPECT_EQ(f.recognizer.calls, row.captures);
    ASSERT_EQ(first.size(), 1u);
    if (row.captures == 1) {
      EXPECT_EQ(second, first);  // the cached lines, in the first strip's coordinates
    } else {
      ASSERT_EQ(second.size(), 1u);
      EXPECT_EQ(f.capture.rects().back(), f.reader.captureRect(row.second));
    }
  }
}

TEST(StripReaderTest, StripIsCutAtTheDisplayEdge) {
  struct Row {
    const char* name;
    ScreenPoint point;
    ScreenRect expected;
  };
  const Row rows[] = {
      {"40 from the right edge", {1880, 500}, {1430, 435, 490, 130}},
      {"10 from the top-left corner", {10, 10}, {0, 0, 460, 75}},
      {"in the middle", kMiddle, kStrip},
      {"on a second display to the right", {2000, 300}, {1920, 235, 530, 130}},
      {"beside every display", {-5, 500}, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    FakeClock clock;
    FakeCapture capture;
    FakeRecognizer recognizer;
    recognizer.answer("latin", {});
    FakeScreens screens{{kDisplay, {1920, 0, 1280, 1024}}};
    StripReader reader{capture, recognizer, screens, clock, [](std::string) {}};
    const std::vector<std::string> modes{"latin"};
    reader.read(row.point, modes);
    if (row.expected.empty()) {
      EXPECT_EQ(capture.calls, 0);
    } else {
      ASSERT_EQ(capture.rects().size(), 1u);
      EXPECT_EQ(capture.rects()[0], row.expected);
    }
  }
}

TEST(StripReaderTest, LinesComeBackInScreenPointsFromADoubledScreen) {
  FakeClock clock;
  FakeCapture capture(2.0);
  FakeRecognizer recognizer;
  FakeScreens screens{{kDisplay}};
  StripReader reader{capture, recognizer, screens, clock, [](std::string) {}};
  recognizer.answer("zh-Hans", {lineOfTwo(u"学习", {100, 20, 200, 40})});
  const std::vector<std::string> modes{"zh-Hans"};
  const auto lines = reader.read(kMiddle, modes);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].rect, (ScreenRect{400, 445, 100, 20}));
  EXPECT_EQ(lines[0].charRects[1], (ScreenRect{450, 445, 50, 20}));
  // The pointer reaches the recogniser in image pixels.
  ASSERT_EQ(recognizer.focuses().size(), 1u);
  EXPECT_EQ(recognizer.focuses()[0], (ScreenPoint{900, 130}));
}

TEST(StripReaderTest, OnlyModesTheCacheCannotServeAreRecognised) {
  Fixture f;
  f.recognizer.answer("latin", {lineOfTwo(u"la", {10, 10, 20, 10})});
  f.recognizer.answer("zh-Hans", {lineOfTwo(u"中文", {10, 40, 20, 10})});
  const std::vector<std::string> latin{"latin"};
  f.reader.read(kMiddle, latin);
  f.clock.advance(200ms);
  const std::vector<std::string> both{"zh-Hans", "latin"};
  const auto lines = f.reader.read(kMiddle, both);
  EXPECT_EQ(f.capture.calls, 2);
  EXPECT_EQ(f.recognizer.calls, 2);  // latin once, then Chinese once
  ASSERT_EQ(lines.size(), 2u);
  // In the order asked, whichever came from the cache.
  EXPECT_EQ(lines[0].text, u"中文");
  EXPECT_EQ(lines[1].text, u"la");
  f.clock.advance(200ms);
  f.reader.read(kMiddle, both);
  EXPECT_EQ(f.capture.calls, 2);
}

TEST(StripReaderTest, NotesAnEmptyLatinRead) {
  struct Row {
    const char* name;
    std::vector<std::string> modes;
    bool latinText;
    std::string_view note;
  };
  const Row rows[] = {
      {"latin read nothing", {"latin"}, false, kLatinEmptyNote},
      {"latin read a line", {"latin"}, true, ""},
      {"latin empty beside Chinese text", {"zh-Hans", "latin"}, false, kLatinEmptyNote},
      {"no latin asked", {"zh-Hans"}, false, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Fixture f;
    f.recognizer.answer("zh-Hans", {lineOfTwo(u"中文", {10, 40, 20, 10})});
    f.recognizer.answer("latin", row.latinText ? std::vector{lineOfTwo(u"la", {10, 10, 20, 10})}
                                               : std::vector<OCRLine>{});
    EXPECT_EQ(f.reader.readNoted(kMiddle, row.modes).note, row.note);
    // The same note when the answer comes from the cache.
    f.clock.advance(100ms);
    EXPECT_EQ(f.reader.readNoted(kMiddle, row.modes).note, row.note);
    EXPECT_EQ(f.capture.calls, 1);
  }
}

TEST(StripReaderTest, FailuresGiveNoLinesAndAreLoggedNotCached) {
  Fixture f;
  f.recognizer.answer("latin", {lineOfTwo(u"la", {10, 10, 20, 10})});
  const std::vector<std::string> modes{"latin", "klingon"};
  f.capture.refuse = true;
  EXPECT_TRUE(f.reader.read(kMiddle, modes).empty());
  ASSERT_EQ(f.logged.size(), 1u);
  EXPECT_EQ(f.logged[0], "OCR : capture impossible (refusée)");

  f.capture.refuse = false;
  const auto lines = f.reader.read(kMiddle, modes);
  EXPECT_EQ(f.capture.calls, 2);  // the refusal was not cached
  ASSERT_EQ(lines.size(), 1u);    // the unknown mode is logged and skipped
  ASSERT_EQ(f.logged.size(), 2u);
  EXPECT_EQ(f.logged[1], "OCR : klingon : mode inconnu");

  f.reader.read({-50, -50}, modes);
  EXPECT_EQ(f.logged.back(), "OCR : aucun écran sous le pointeur");
  EXPECT_EQ(f.capture.calls, 2);
}

TEST(OCRCacheTest, ItemAnswersOnlyInsideItsScope) {
  OCRCache cache;
  const TimePoint t0 = FakeClock::kStart;
  // A recogniser that read only the middle line of the strip.
  cache.store("latin", {t0, kStrip, {350, 480, 900, 20}, {lineOfTwo(u"ab", {400, 480, 40, 20})}});
  EXPECT_TRUE(cache.find("latin", {800, 490}, t0 + 100ms));
  EXPECT_FALSE(cache.find("latin", {800, 530}, t0 + 100ms));  // another line of the strip
  EXPECT_FALSE(cache.find("zh-Hans", {800, 490}, t0 + 100ms));
  EXPECT_FALSE(cache.find("latin", {800, 490}, t0 - 1s));  // a clock set back
  // A newer item replaces the old one.
  cache.store("latin", {t0 + 1s, kStrip, kStrip, {}});
  const auto found = cache.find("latin", {800, 530}, t0 + 1100ms);
  ASSERT_TRUE(found);
  EXPECT_TRUE(found->empty());
}

}  // namespace
}  // namespace vesko
