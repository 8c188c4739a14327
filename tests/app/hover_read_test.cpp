// The hover read's order of readers and its report, with fake readers and a fake clock: the real
// word chooser on a small dictionary decides the word.

#include "app/hover_read.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/word_chooser.h"
#include "support/temp_dir.h"
#include "text/unicode.h"

namespace vesko {
namespace {

class FakeAccessibility final : public AccessibilityReader {
 public:
  std::optional<TextAtPoint> answer;
  std::vector<ScreenPoint> asked;
  std::optional<TextAtPoint> read(ScreenPoint point) override {
    asked.push_back(point);
    return answer;
  }
};

class FakeScreen final : public ScreenReader {
 public:
  std::vector<OCRLine> lines;
  std::vector<std::vector<std::string>> askedModes;
  std::vector<OCRLine> read(ScreenPoint, std::span<const std::string> modes) override {
    askedModes.emplace_back(modes.begin(), modes.end());
    return lines;
  }
};

// Each call moves time on by 1.5 ms, so each stage that ran lasts exactly that.
struct SteppingClock {
  std::chrono::steady_clock::time_point now{};
  std::chrono::steady_clock::time_point operator()() {
    now += std::chrono::microseconds(1500);
    return now;
  }
};

TextAtPoint at(const char* utf8, std::size_t index) {
  return {*text::fromUtf8(utf8), index, std::nullopt};
}

class HoverReadTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(cedict_.load(testing::testData("cedict_names.txt"), ""));
    snapshot_.zh = true;
  }

  // The first line's text under any point, as the recognition's line finder would give it.
  static std::optional<TextAtPoint> firstLine(const std::vector<OCRLine>& lines, ScreenPoint) {
    if (lines.empty()) return std::nullopt;
    return TextAtPoint{lines.front().text, 0, std::nullopt};
  }
  // "latin" for French, then one mode per Chinese script, as a stand-in for the real table.
  static std::vector<std::string> modes(const Snapshot& snapshot) {
    std::vector<std::string> keys;
    if (snapshot.fr) keys.emplace_back("latin");
    if (snapshot.zh) keys.emplace_back("zh-Hans");
    return keys;
  }

  HoverRead make(FakeScreen* screen) {
    std::optional<ScreenRecognition> recognition;
    if (screen) recognition.emplace(ScreenRecognition{*screen, &modes, &firstLine});
    return HoverRead(accessibility_, std::move(recognition), chooser_, [this] { return clock_(); });
  }

  CEDict cedict_;
  NoLanguageData data_;
  SkippedLanguage skipped_;
  WordChooser chooser_{cedict_, data_, skipped_};
  FakeAccessibility accessibility_;
  FakeScreen screen_;
  SteppingClock clock_;
  Snapshot snapshot_;
};

TEST_F(HoverReadTest, AccessibilityTextIsChosenWithoutRecognition) {
  accessibility_.answer = at("我们学习中文", 2);
  const ReadReport report = make(&screen_).read({100, 200}, snapshot_);
  ASSERT_EQ(accessibility_.asked.size(), 1u);
  EXPECT_EQ(accessibility_.asked[0], (ScreenPoint{100, 200}));
  EXPECT_TRUE(screen_.askedModes.empty());
  EXPECT_EQ(report.method, ReadMethod::accessibility);
  ASSERT_TRUE(report.result && report.result->chinese());
  EXPECT_EQ(report.result->chinese()->word, "学习");
  const std::vector<StageTime> stages = {{"accessibility", 1.5}, {"chooser", 1.5}};
  EXPECT_EQ(report.stages, stages);
}

TEST_F(HoverReadTest, RecognitionAnswersWhenAccessibilityFindsNothing) {
  screen_.lines = {{*text::fromUtf8("学习"), {0, 0, 40, 20}, {}}};
  snapshot_.fr = true;
  const ReadReport report = make(&screen_).read({10, 10}, snapshot_);
  ASSERT_EQ(screen_.askedModes.size(), 1u);
  EXPECT_EQ(screen_.askedModes[0], (std::vector<std::string>{"latin", "zh-Hans"}));
  EXPECT_EQ(report.method, ReadMethod::recognition);
  ASSERT_TRUE(report.text);
  EXPECT_EQ(report.text->text, u"学习");
  ASSERT_TRUE(report.result && report.result->chinese());
  EXPECT_EQ(report.result->chinese()->word, "学习");
  ASSERT_EQ(report.stages.size(), 3u);
  EXPECT_EQ(report.stages[1].stage, "recognition");
}

TEST_F(HoverReadTest, AccessibilityTextWithoutAWordDoesNotFallBack) {
  // The application gave text; that no word is there is the answer, not a reason to capture.
  accessibility_.answer = at("我们 学习", 2);
  const ReadReport report = make(&screen_).read({1, 1}, snapshot_);
  EXPECT_TRUE(screen_.askedModes.empty());
  EXPECT_EQ(report.method, ReadMethod::accessibility);
  EXPECT_FALSE(report.result);
}

TEST_F(HoverReadTest, NothingReadGivesNoTextAndNoChooserStage) {
  struct Case {
    const char* name;
    bool withScreen;
    bool studiesAnything;
    std::vector<std::string> stages;
  };
  const Case cases[] = {
      {"no screen reader", false, true, {"accessibility"}},
      {"recognition finds no line", true, true, {"accessibility", "recognition"}},
      {"no language to recognise", true, false, {"accessibility"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FakeScreen screen;
    Snapshot snapshot;
    snapshot.zh = c.studiesAnything;
    const ReadReport report = make(c.withScreen ? &screen : nullptr).read({5, 5}, snapshot);
    EXPECT_FALSE(report.method);
    EXPECT_FALSE(report.text);
    EXPECT_FALSE(report.result);
    std::vector<std::string> stages;
    for (const auto& stage : report.stages) stages.push_back(stage.stage);
    EXPECT_EQ(stages, c.stages);
  }
}

}  // namespace
}  // namespace vesko
