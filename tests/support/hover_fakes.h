#pragma once
// Fakes of everything the hover controller talks to, recording what it was asked, and a fixture
// that wires them to a real controller over settings in a fresh folder and a fake monotonic clock.
// Main thread only. None of the fakes allocates while the controller waits, so that the
// allocation test can count the controller's own.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "app/hover_controller.h"
#include "support/fake_clock.h"
#include "support/fake_steady_clock.h"
#include "support/temp_dir.h"

namespace vesko::testing {

struct FakePointer final : PointerSource {
  PointerState state;
  int samples = 0;
  PointerState sample() override {
    ++samples;
    return state;
  }
};

struct FakeOwnWindows final : OwnWindows {
  std::optional<ScreenRect> window;  // one of our windows, when shown
  bool ownWindowAt(ScreenPoint point) const override { return window && window->contains(point); }
};

struct FakeScreens final : ScreenScales {
  std::optional<double> scale = 1.0;
  std::optional<double> scaleFactorAt(ScreenPoint) const override { return scale; }
};

struct FakeFrontmost final : FrontmostApplication {
  std::optional<std::string> id;
  std::optional<std::string> identifier() const override { return id; }
};

// A bubble of kSize points whose top-left corner sits kOffset to the right of and above the
// point it is shown at, with the real path test.
struct FakeBubble final : Bubble {
  static constexpr double kOffset = 20, kWidth = 200, kHeight = 100;
  bool shown = false;
  ScreenRect rect;
  std::optional<ScreenPoint> at;
  std::vector<ScreenPoint> shows;
  int closes = 0;

  bool visible() const override { return shown; }
  ScreenRect frame() const override { return rect; }
  std::optional<ScreenPoint> anchor() const override {
    if (!shown) return std::nullopt;
    return at;
  }
  void show(ScreenPoint point, const HoverResult&) override {
    shown = true;
    at = point;
    rect = {point.x + kOffset, point.y - kOffset, kWidth, kHeight};
    shows.push_back(point);
  }
  void close() override {
    shown = false;
    at.reset();
    ++closes;
  }
  bool onWayTowards(ScreenPoint pointer) const override {
    return at && headingTowards(*at, pointer, rect);
  }
  // Opened by a shortcut: shown, but with no anchor.
  void openWithoutAnchor(ScreenRect frame) {
    shown = true;
    at.reset();
    rect = frame;
  }
};

struct FakeReader final : Reader {
  std::vector<ReadRequest> requests;
  void start(ReadRequest request) override { requests.push_back(std::move(request)); }
};

struct FakeNotices final : HoverNotices {
  int nothing = 0;
  std::vector<std::pair<Language, bool>> skipped;
  void nothingToRead(const Snapshot&) override { ++nothing; }
  void languageSkipped(Language language, bool readWithKey) override {
    skipped.emplace_back(language, readWithKey);
  }
};

struct FakeDictionaries final : DictionariesLoaded {
  bool ready = true;
  bool loaded() const override { return ready; }
};

struct HoverFixture {
  TempDir dir;
  FakeClock wallClock;
  Settings settings{dir.path() / "settings.json", wallClock};
  Log log{dir.path() / "debug.log", settings, wallClock};
  FakeSteadyClock clock;
  FakePointer pointer;
  FakeOwnWindows ownWindows;
  FakeScreens screens;
  FakeFrontmost frontmost;
  FakeBubble bubble;
  FakeReader reader;
  FakeNotices notices;
  FakeDictionaries dictionaries;
  SkippedLanguage skipped;
  HoverController controller{HoverCollaborators{
      .pointer = pointer,
      .ownWindows = ownWindows,
      .screens = screens,
      .frontmost = frontmost,
      .bubble = bubble,
      .reader = reader,
      .notices = notices,
      .dictionaries = dictionaries,
      .clock = clock,
      .settings = settings,
      .skipped = skipped,
      .log = log,
  }};

  void set(std::string_view key, SettingValue value) {
    ASSERT_TRUE(settings.set(key, std::move(value)).has_value()) << key;
  }
  void moveTo(double x, double y) { pointer.state.position = {x, y}; }
  // One timer tick, kTickInterval after the previous one.
  void tick() {
    clock.advance(HoverController::kTickInterval);
    controller.tick();
  }
  void ticks(int count) {
    for (int i = 0; i < count; ++i) tick();
  }
  // Moves there and ticks until the read starts there (at most 2 s); the read's request.
  const ReadRequest& restAndRead(double x, double y) {
    moveTo(x, y);
    const std::size_t before = reader.requests.size();
    for (int i = 0; i < 70 && reader.requests.size() == before; ++i) tick();
    EXPECT_GT(reader.requests.size(), before) << "no read at " << x << "," << y;
    return reader.requests.back();
  }
  // Reads at (x, y) and answers with a word, which opens the bubble there.
  void showBubbleAt(double x, double y) {
    const auto generation = restAndRead(x, y).generation;
    controller.answer(generation, someResult());
  }
  static HoverResult someResult() {
    HoverResult::Word word;
    word.word = "avion";
    word.language = Language::fr;
    return HoverResult{word};
  }
};

}  // namespace vesko::testing
