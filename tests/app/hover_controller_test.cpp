#include "app/hover_controller.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "support/hover_fakes.h"

namespace vesko {
namespace {

using testing::HoverFixture;

TEST(HoverControllerTest, RestIsReadOnTheFirstTickAfterTheDelay) {
  for (double delay : {0.1, 0.25, 0.5}) {
    SCOPED_TRACE(delay);
    HoverFixture f;
    f.set("delay", delay);
    f.moveTo(300, 200);
    f.tick();  // the move
    const double movedAt = f.clock.seconds();
    while (f.reader.requests.empty() && f.clock.seconds() < movedAt + 2) f.tick();
    ASSERT_EQ(f.reader.requests.size(), 1u);
    const double waited = f.clock.seconds() - movedAt;
    EXPECT_GE(waited, delay - 1e-9);
    EXPECT_LT(waited, delay + HoverController::kTickInterval);
    EXPECT_EQ(f.reader.requests[0].point, (ScreenPoint{300, 200}));
    f.ticks(20);  // the same spot, at rest, is not read twice
    EXPECT_EQ(f.reader.requests.size(), 1u);
  }
}

// The shell may tick when the rest ends instead of at its next beat: a tick at that moment reads.
TEST(HoverControllerTest, SaysWhenTheRestEndsAndReadsThen) {
  HoverFixture f;
  f.set("delay", 0.1);
  EXPECT_FALSE(f.controller.restEnds());
  f.moveTo(300, 200);
  f.tick();  // the move
  const auto ends = f.controller.restEnds();
  ASSERT_TRUE(ends);
  EXPECT_NEAR(*ends, f.clock.seconds() + 0.1, 1e-9);
  f.clock.set(*ends - 0.001);
  f.controller.tick();
  EXPECT_TRUE(f.reader.requests.empty());
  EXPECT_TRUE(f.controller.restEnds()) << "still waiting";
  f.clock.set(*ends);
  f.controller.tick();
  EXPECT_EQ(f.reader.requests.size(), 1u);
  EXPECT_FALSE(f.controller.restEnds()) << "the rest was waited for";
}

TEST(HoverControllerTest, OnlyMovesBeyondTheThresholdRestartTheWait) {
  struct Row {
    double dx;
    bool restarts;
  };
  for (const Row row : {Row{1.0, false}, Row{1.5, false}, Row{1.6, true}, Row{20, true}}) {
    SCOPED_TRACE(row.dx);
    HoverFixture f;
    f.moveTo(300, 200);
    f.tick();
    f.ticks(2);  // 0.06 s of the 0.1 s rest
    f.moveTo(300 + row.dx, 200);
    f.ticks(2);  // 0.12 s after the first move
    EXPECT_EQ(f.reader.requests.empty(), row.restarts);
  }
}

TEST(HoverControllerTest, ATinyDelayReadsWhileMoving) {
  HoverFixture f;
  f.set("delay", 0.0);
  f.moveTo(300, 200);
  f.tick();
  ASSERT_EQ(f.reader.requests.size(), 1u);
  f.controller.answer(f.reader.requests[0].generation, std::nullopt);
  f.moveTo(340, 200);
  f.tick();
  EXPECT_EQ(f.reader.requests.size(), 2u);
}

TEST(HoverControllerTest, LeavingTheAnchorClosesTheBubbleUnlessHeadingForIt) {
  // The bubble spans x 520..720, y 280..380 when shown at (500, 300).
  struct Row {
    const char* what;
    ScreenPoint to;
    bool closes;
  };
  const Row rows[] = {
      {"20 points left, away from the bubble", {480, 300}, true},
      {"20 points up, beside the bubble", {500, 280}, true},
      {"20 points down and left", {486, 314}, true},
      {"10 points left, within the anchor's radius", {490, 300}, false},
      {"16 points towards the bubble", {516, 302}, false},
      {"into the bubble", {600, 330}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    HoverFixture f;
    f.showBubbleAt(500, 300);
    ASSERT_TRUE(f.bubble.visible());
    f.moveTo(row.to.x, row.to.y);
    f.tick();
    EXPECT_EQ(f.bubble.closes, row.closes ? 1 : 0);
    EXPECT_EQ(f.bubble.visible(), !row.closes);
  }
}

TEST(HoverControllerTest, HeadingForTheBubbleStartsNoRead) {
  HoverFixture f;
  f.showBubbleAt(500, 300);
  f.moveTo(516, 302);
  f.ticks(20);
  EXPECT_EQ(f.reader.requests.size(), 1u);
  EXPECT_TRUE(f.bubble.visible());
}

TEST(HoverControllerTest, TriggerKeyReadsTheSameSpotAgain) {
  struct Row {
    long long modifier;
    std::uint8_t key;
  };
  const Row rows[] = {{1, kControl}, {2, kShift}, {3, kSuper}, {4, kAlt}, {0, kAlt}, {9, kAlt}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.modifier);
    HoverFixture f;
    f.set("modifier", row.modifier);
    f.showBubbleAt(300, 200);
    f.ticks(5);
    ASSERT_EQ(f.reader.requests.size(), 1u);

    f.pointer.state.modifiers = row.key;
    f.tick();
    EXPECT_TRUE(f.controller.keyHeld());
    ASSERT_EQ(f.reader.requests.size(), 2u);
    EXPECT_EQ(f.reader.requests[1].point, (ScreenPoint{300, 200}));

    f.controller.answer(f.reader.requests[1].generation, std::nullopt);
    f.ticks(5);  // still held: no new read
    EXPECT_EQ(f.reader.requests.size(), 2u);
    f.pointer.state.modifiers = 0;
    f.ticks(5);  // released: the spot was read
    EXPECT_EQ(f.reader.requests.size(), 2u);
  }
}

TEST(HoverControllerTest, AnotherKeyThanTheTriggerDoesNotReadAgain) {
  HoverFixture f;  // the trigger is Alt
  f.showBubbleAt(300, 200);
  f.pointer.state.modifiers = kControl | kShift;
  f.ticks(5);
  EXPECT_FALSE(f.controller.keyHeld());
  EXPECT_EQ(f.reader.requests.size(), 1u);
}

TEST(HoverControllerTest, TriggerKeyTurnsOnTheLanguagesReadWithIt) {
  HoverFixture f;
  f.set("mode.zh", 2LL);
  f.set("mode.th", 1LL);
  f.set("mode.fr", 0LL);
  const ReadRequest plain = f.restAndRead(300, 200);
  EXPECT_TRUE(plain.snapshot.fr);
  EXPECT_FALSE(plain.snapshot.th);
  EXPECT_FALSE(plain.snapshot.zh);
  f.controller.answer(plain.generation, std::nullopt);

  f.pointer.state.modifiers = kAlt;
  f.tick();
  ASSERT_EQ(f.reader.requests.size(), 2u);
  EXPECT_TRUE(f.reader.requests[1].snapshot.th);
  EXPECT_TRUE(f.reader.requests[1].snapshot.fr);
  EXPECT_FALSE(f.reader.requests[1].snapshot.zh);
}

TEST(HoverControllerTest, CommandAloneClosesAHoverBubble) {
  struct Row {
    const char* what;
    long long modifier;
    std::uint8_t keys;
    bool closes;
  };
  const Row rows[] = {
      {"Super alone", 4, kSuper, true},
      {"Super alone, trigger Control", 1, kSuper, true},
      {"Super alone when Super is the trigger", 3, kSuper, false},
      {"Super with Shift", 4, kSuper | kShift, false},
      {"Shift alone", 4, kShift, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    HoverFixture f;
    f.set("modifier", row.modifier);
    f.showBubbleAt(300, 200);
    f.pointer.state.modifiers = row.keys;
    f.tick();
    EXPECT_EQ(f.bubble.visible(), !row.closes);
  }
}

TEST(HoverControllerTest, CommandAloneLeavesABubbleWithoutAnchor) {
  HoverFixture f;
  f.bubble.openWithoutAnchor({600, 600, 200, 100});
  f.pointer.state.modifiers = kSuper;
  f.ticks(3);
  EXPECT_TRUE(f.bubble.visible());
  EXPECT_EQ(f.bubble.closes, 0);
}

TEST(HoverControllerTest, NothingIsReadWhileSomethingBlocks) {
  struct Row {
    const char* what;
    void (*block)(HoverFixture&);
    void (*unblock)(HoverFixture&);
  };
  const Row rows[] = {
      {"a mouse button", [](HoverFixture& f) { f.pointer.state.buttonPressed = true; },
       [](HoverFixture& f) { f.pointer.state.buttonPressed = false; }},
      {"one of our windows",
       [](HoverFixture& f) {
         f.ownWindows.window = {{250, 150, 100, 100}};
       },
       [](HoverFixture& f) { f.ownWindows.window.reset(); }},
      {"Command alone", [](HoverFixture& f) { f.pointer.state.modifiers = kSuper; },
       [](HoverFixture& f) { f.pointer.state.modifiers = 0; }},
      {"dictionaries loading", [](HoverFixture& f) { f.dictionaries.ready = false; },
       [](HoverFixture& f) { f.dictionaries.ready = true; }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    HoverFixture f;
    row.block(f);
    f.moveTo(300, 200);
    f.ticks(30);
    EXPECT_TRUE(f.reader.requests.empty());
    row.unblock(f);
    f.ticks(5);
    EXPECT_EQ(f.reader.requests.size(), 1u);
  }
}

TEST(HoverControllerTest, MovesDuringADragAreNotCounted) {
  HoverFixture f;
  f.moveTo(300, 200);
  f.tick();
  f.pointer.state.buttonPressed = true;
  f.moveTo(400, 200);
  f.ticks(10);
  f.pointer.state.buttonPressed = false;
  f.tick();  // the drag's end is the move
  EXPECT_TRUE(f.reader.requests.empty());
  f.ticks(4);
  ASSERT_EQ(f.reader.requests.size(), 1u);
  EXPECT_EQ(f.reader.requests[0].point, (ScreenPoint{400, 200}));
}

TEST(HoverControllerTest, NoLanguageOnTellsTheHandlerAndClosesTheBubble) {
  HoverFixture f;
  f.set("mode.th", 1LL);
  f.showBubbleAt(300, 200);
  f.set("mode.zh", 2LL);  // now only Thai, with the key
  f.moveTo(310, 200);     // within the anchor's radius: the move alone leaves the bubble
  f.ticks(5);
  EXPECT_EQ(f.reader.requests.size(), 1u);
  EXPECT_GT(f.notices.nothing, 0);
  EXPECT_FALSE(f.bubble.visible());

  f.pointer.state.modifiers = kAlt;
  f.tick();
  ASSERT_EQ(f.reader.requests.size(), 2u);
  EXPECT_TRUE(f.reader.requests[1].snapshot.th);
}

TEST(HoverControllerTest, NoLanguageOnLeavesABubbleWithoutAnchor) {
  HoverFixture f;
  f.set("mode.zh", 2LL);
  f.bubble.openWithoutAnchor({600, 600, 200, 100});
  f.moveTo(300, 200);
  f.ticks(5);
  EXPECT_GT(f.notices.nothing, 0);
  EXPECT_TRUE(f.bubble.visible());
}

TEST(HoverControllerTest, UnansweredReadIsAbandonedAfterFourSeconds) {
  HoverFixture f;
  const auto since = f.wallClock.now() - std::chrono::hours(1);
  const ReadRequest first = f.restAndRead(300, 200);
  const double startedAt = f.clock.seconds();

  f.clock.set(startedAt + 3.99);
  f.controller.tick();
  EXPECT_TRUE(f.controller.readInFlight());
  EXPECT_EQ(f.controller.generation(), first.generation);

  f.clock.set(startedAt + 4.02);
  f.controller.tick();
  EXPECT_FALSE(f.controller.readInFlight());
  EXPECT_EQ(f.controller.generation(), first.generation + 1);
  f.log.flush();
  EXPECT_NE(f.log.recent(since).find("survol : recherche sans réponse depuis 4 s → on repart"),
            std::string::npos);

  f.controller.answer(first.generation, HoverFixture::someResult());
  EXPECT_FALSE(f.bubble.visible()) << "the late answer is dropped";

  const ReadRequest next = f.restAndRead(360, 200);
  EXPECT_EQ(next.generation, first.generation + 2);
  f.controller.answer(next.generation, HoverFixture::someResult());
  EXPECT_TRUE(f.bubble.visible());
}

TEST(HoverControllerTest, AnswerOfAnotherGenerationIsDropped) {
  HoverFixture f;
  const ReadRequest request = f.restAndRead(300, 200);
  for (std::uint64_t stale : {request.generation - 1, request.generation + 1}) {
    f.controller.answer(stale, HoverFixture::someResult());
    EXPECT_FALSE(f.bubble.visible());
    EXPECT_TRUE(f.controller.readInFlight());
  }
  f.controller.answer(request.generation, HoverFixture::someResult());
  ASSERT_EQ(f.bubble.shows.size(), 1u);
  EXPECT_EQ(f.bubble.shows[0], (ScreenPoint{300, 200}));
  f.controller.answer(request.generation, HoverFixture::someResult());
  EXPECT_EQ(f.bubble.shows.size(), 1u) << "an answer counts once";
}

TEST(HoverControllerTest, OneReadAtATime) {
  HoverFixture f;
  const ReadRequest first = f.restAndRead(300, 200);
  f.moveTo(400, 200);
  f.ticks(20);
  EXPECT_EQ(f.reader.requests.size(), 1u);
  f.controller.answer(first.generation, std::nullopt);
  f.tick();
  ASSERT_EQ(f.reader.requests.size(), 2u);
  EXPECT_EQ(f.reader.requests[1].point, (ScreenPoint{400, 200}));
}

TEST(HoverControllerTest, AnswerWithNothingLeavesTheBubble) {
  HoverFixture f;
  f.showBubbleAt(300, 200);
  const ReadRequest again = f.restAndRead(310, 205);  // within the anchor's radius
  f.controller.answer(again.generation, std::nullopt);
  EXPECT_TRUE(f.bubble.visible());
  EXPECT_EQ(f.bubble.anchor(), (ScreenPoint{300, 200}));
  EXPECT_TRUE(f.notices.skipped.empty());
}

TEST(HoverControllerTest, SkippedLanguageIsToldWithItsReadingMode) {
  struct Row {
    long long thaiMode;
    bool readWithKey;
  };
  for (const Row row : {Row{2, false}, Row{1, true}}) {
    SCOPED_TRACE(row.thaiMode);
    HoverFixture f;
    f.set("mode.th", row.thaiMode);
    f.skipped.set(Language::ru);  // from an earlier read: forgotten when a read starts
    const ReadRequest request = f.restAndRead(300, 200);
    EXPECT_FALSE(f.skipped.get());
    f.skipped.set(Language::th);  // what the word chooser does on the read's thread
    f.controller.answer(request.generation, std::nullopt);
    ASSERT_EQ(f.notices.skipped.size(), 1u);
    EXPECT_EQ(f.notices.skipped[0], (std::pair{Language::th, row.readWithKey}));
  }
}

TEST(HoverControllerTest, RequestCarriesTheScreenAndTheApplication) {
  struct Row {
    std::optional<double> scale;
    std::optional<std::string> app;
    double expectedScale;
    const char* expectedApp;
  };
  const Row rows[] = {
      {1.0, "firefox", 1.0, "firefox"},
      {1.5, std::nullopt, 1.5, "?"},
      {std::nullopt, "kate", 2.0, "kate"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.expectedApp);
    HoverFixture f;
    f.screens.scale = row.scale;
    f.frontmost.id = row.app;
    f.set("dicts", std::string("cedict, wordnet,,"));
    f.set("prefLatin", std::string("fr"));
    const ReadRequest request = f.restAndRead(300, 200);
    EXPECT_EQ(request.scaleFactor, row.expectedScale);
    EXPECT_EQ(request.frontmostApplication, row.expectedApp);
    EXPECT_EQ(request.snapshot.dicts, (std::vector<std::string>{"cedict", "wordnet"}));
    EXPECT_EQ(request.snapshot.prefLatin, "fr");
    EXPECT_TRUE(request.snapshot.zh);
    EXPECT_EQ(request.generation, f.controller.generation());
  }
}

TEST(HoverControllerTest, KeepNearHoldsTheBubbleUntilThePointerLeavesIt) {
  HoverFixture f;
  f.moveTo(100, 100);
  f.tick();
  f.bubble.openWithoutAnchor({300, 300, 200, 100});  // 180..620 × 180..520 with the margin
  f.controller.keepNear();

  f.moveTo(610, 510);
  f.ticks(20);
  EXPECT_TRUE(f.reader.requests.empty()) << "held: no read near the bubble";
  EXPECT_TRUE(f.bubble.visible());

  f.moveTo(630, 510);
  f.ticks(5);
  EXPECT_EQ(f.reader.requests.size(), 1u) << "released outside the margin";

  // A held bubble that is closed releases the hold too.
  f.controller.answer(f.reader.requests[0].generation, std::nullopt);
  f.controller.keepNear();
  f.bubble.close();
  f.moveTo(400, 350);
  f.ticks(5);
  EXPECT_EQ(f.reader.requests.size(), 2u);
}

TEST(HoverControllerTest, KeepNearStopsAnchoredBubbleFromClosing) {
  HoverFixture f;
  f.showBubbleAt(500, 300);
  f.controller.keepNear();
  f.moveTo(440, 300);  // 60 points away, not towards it, but within the margin
  f.ticks(5);
  EXPECT_TRUE(f.bubble.visible());
  f.moveTo(300, 300);
  f.tick();
  EXPECT_FALSE(f.bubble.visible());
}

TEST(HoverControllerTest, SettingsChangesApplyAtTheNextTick) {
  HoverFixture f;
  f.set("delay", 1.0);
  f.moveTo(300, 200);
  f.ticks(10);
  EXPECT_TRUE(f.reader.requests.empty());
  f.set("delay", 0.1);
  f.tick();
  EXPECT_EQ(f.reader.requests.size(), 1u);
}

TEST(HoverControllerTest, SwitchedOffItNeitherSamplesNorReads) {
  HoverFixture f;
  f.showBubbleAt(300, 200);
  const ReadRequest pending = f.restAndRead(300, 400);
  EXPECT_FALSE(f.bubble.visible()) << "left behind by the move";
  f.bubble.show({300, 400}, HoverFixture::someResult());

  f.controller.switchOnOff();
  EXPECT_FALSE(f.controller.on());
  EXPECT_FALSE(f.bubble.visible());
  const int samples = f.pointer.samples;
  f.moveTo(600, 200);
  f.ticks(20);
  EXPECT_EQ(f.pointer.samples, samples);
  f.controller.answer(pending.generation, HoverFixture::someResult());
  EXPECT_FALSE(f.bubble.visible()) << "the read of before is forgotten";
  EXPECT_EQ(statusText(false), "désactivée (clic : Réglages · clic droit : menu · ⌥X : allumer)");

  f.controller.switchOnOff();
  EXPECT_EQ(statusText(true), "activée (clic : Réglages · clic droit : menu · ⌥X : éteindre)");
  f.ticks(5);
  EXPECT_EQ(f.reader.requests.back().point, (ScreenPoint{600, 200}));
}

}  // namespace
}  // namespace vesko
