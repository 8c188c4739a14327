// The threaded reader with the real hover read and word chooser over fake screen readers: a read
// comes back with its generation, and the hover controller, answered from the reader's deliveries
// as the shell does it, shows the bubble for a word the pointer rests on.

#include "app/threaded_reader.h"

#include <gtest/gtest.h>

#include <mutex>
#include <vector>

#include "app/word_chooser.h"
#include "support/hover_fakes.h"
#include "support/read_mailbox.h"
#include "text/unicode.h"

namespace vesko {
namespace {

using testing::ReadMailbox;

// Answers every point with the same text; set before the reads start.
class FixedAccessibility final : public AccessibilityReader {
 public:
  std::optional<TextAtPoint> answer;
  std::optional<TextAtPoint> read(ScreenPoint point) override {
    std::lock_guard lock(mutex_);
    asked_.push_back(point);
    return answer;
  }
  std::vector<ScreenPoint> asked() {
    std::lock_guard lock(mutex_);
    return asked_;
  }

 private:
  std::mutex mutex_;
  std::vector<ScreenPoint> asked_;
};

class NoLines final : public ScreenReader {
 public:
  std::vector<OCRLine> read(ScreenPoint, std::span<const std::string>) override { return {}; }
};

std::vector<std::string> chineseOnly(const Snapshot&) {
  return {"zh-Hans"};
}
std::optional<TextAtPoint> noLine(const std::vector<OCRLine>&, ScreenPoint) {
  return std::nullopt;
}

class ThreadedReaderTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(cedict_.load(testing::testData("cedict_names.txt"), "")); }

  static TextAtPoint chineseText() { return {*text::fromUtf8("我们学习中文"), 2, std::nullopt}; }

  CEDict cedict_;
  NoLanguageData data_;
  SkippedLanguage skipped_;
  WordChooser chooser_{cedict_, data_, skipped_};
  FixedAccessibility accessibility_;
  NoLines screen_;
  HoverRead read_{accessibility_, ScreenRecognition{screen_, &chineseOnly, &noLine}, chooser_};
  ReadMailbox mailbox_;
};

TEST_F(ThreadedReaderTest, AStartedReadDeliversItsGenerationAndResult) {
  accessibility_.answer = chineseText();
  ThreadedReader reader(read_, [this](std::uint64_t generation, ReadReport report) {
    mailbox_.deliver(generation, std::move(report));
  });
  Snapshot snapshot;
  snapshot.zh = true;
  reader.start(ReadRequest{.generation = 7, .point = {100, 200}, .snapshot = snapshot});

  const auto delivery = mailbox_.next();
  ASSERT_TRUE(delivery);
  EXPECT_EQ(delivery->generation, 7u);
  EXPECT_EQ(delivery->report.method, ReadMethod::accessibility);
  ASSERT_TRUE(delivery->report.result && delivery->report.result->chinese());
  EXPECT_EQ(delivery->report.result->chinese()->word, "学习");
  EXPECT_EQ(accessibility_.asked(), (std::vector<ScreenPoint>{{100, 200}}));
}

TEST_F(ThreadedReaderTest, TheControllerAnsweredFromDeliveriesShowsOrLeavesTheBubble) {
  struct Case {
    const char* name;
    bool textThere;
    bool bubbleShown;
  };
  const Case cases[] = {
      {"a word under the pointer", true, true},
      {"no text under the pointer", false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    if (c.textThere)
      accessibility_.answer = chineseText();
    else
      accessibility_.answer.reset();
    ReadMailbox mailbox;
    testing::HoverFixture f;  // its own FakeReader stays unused: this controller reads for real
    ThreadedReader reader(read_, [&mailbox](std::uint64_t generation, ReadReport report) {
      mailbox.deliver(generation, std::move(report));
    });
    HoverController controller{HoverCollaborators{
        .pointer = f.pointer,
        .ownWindows = f.ownWindows,
        .screens = f.screens,
        .frontmost = f.frontmost,
        .bubble = f.bubble,
        .reader = reader,
        .notices = f.notices,
        .dictionaries = f.dictionaries,
        .clock = f.clock,
        .settings = f.settings,
        .skipped = skipped_,
        .log = f.log,
    }};

    f.moveTo(300, 200);
    for (int i = 0; i < 70 && !controller.readInFlight(); ++i) {
      f.clock.advance(HoverController::kTickInterval);
      controller.tick();
    }
    ASSERT_TRUE(controller.readInFlight()) << "the rest did not start a read";
    const auto delivery = mailbox.next();
    ASSERT_TRUE(delivery) << "the read never came back";
    EXPECT_EQ(delivery->generation, controller.generation());
    controller.answer(delivery->generation, delivery->report.result);

    EXPECT_FALSE(controller.readInFlight());
    EXPECT_EQ(f.bubble.shown, c.bubbleShown);
    if (c.bubbleShown) {
      EXPECT_EQ(f.bubble.shows, (std::vector<ScreenPoint>{{300, 200}}));
    }
    EXPECT_TRUE(f.reader.requests.empty());
  }
}

}  // namespace
}  // namespace vesko
