// `vesko probe` on a real desktop: a GTK and a Qt window of our own show known lines in six
// languages, the pointer is moved onto chosen characters, and the probe must read the word there
// through accessibility; a window that only paints its lines must be read by screen recognition.
// Runs on the headless desktop that scripts/headless-desktop starts (the
// ctest fixture does it); skipped without the fetched dictionaries unless VESKO_REQUIRE_DATA is
// set.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

#include "e2e/e2e_desktop.h"
#include "support/run_command.h"
#include "support/temp_dir.h"

namespace {

using nlohmann::json;
using vesko::e2e::Box;
using vesko::e2e::TestWindow;
using vesko::e2e::haveAllData;

struct Row {
  const char* piece;     // the pointer goes on its first character
  const char* langs;     // studied languages for the probe
  const char* language;  // "zh" for a Chinese hit
  const char* word;
};
// clang-format off
const Row kRows[] = {
  {"学习",   "zh", "zh", "学习"},
  {"食べて", "ja", "ja", "食べています"},
  {"allés",  "fr", "fr", "allés"},
  {"กิน",    "th", "th", "กิน"},
  {"pociąg", "pl", "pl", "pociąg"},
  {"столе",  "ru", "ru", "столе"},
};
// clang-format on

class DesktopTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!haveAllData()) {
      if (std::getenv("VESKO_REQUIRE_DATA")) FAIL() << "the fetched dictionaries are missing";
      GTEST_SKIP() << "run scripts/bootstrap setup for the dictionaries";
    }
    ASSERT_TRUE(vesko::e2e::enterDesktop(VESKO_E2E_RUN)) << "no headless desktop: run through ctest (fixture e2e_desktop)";
    setenv("VESKO_HOME", home_.path().c_str(), 1);
  }

  static void movePointer(int x, int y) { vesko::e2e::movePointer(x, y); }

  // The probe at the pointer; a freshly started application may need a moment to join the bus.
  static json probe(const std::string& langs, bool expectText) {
    json report;
    for (int attempt = 0; attempt < 10; ++attempt) {
      auto run =
          vesko::testing::runCommand(std::string(VESKO_CLI) + " probe --json --langs " + langs);
      report = json::parse(run.out, nullptr, false);
      if (!expectText || (report.is_object() && !report["method"].is_null())) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
    return report;
  }

  vesko::testing::TempDir home_;
};

class HoverReadE2ETest : public DesktopTest, public ::testing::WithParamInterface<const char*> {};
class ImageWindowE2ETest : public DesktopTest {};

TEST_P(HoverReadE2ETest, ReadsTheWordUnderThePointerInEveryLanguage) {
  std::vector<std::string> pieces;
  for (const auto& row : kRows) pieces.emplace_back(row.piece);
  pieces.emplace_back("Книги");
  TestWindow window(GetParam(), pieces);
  ASSERT_TRUE(window.ready()) << GetParam() << " did not show its lines";

  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    const Row& row = kRows[i];
    SCOPED_TRACE(std::string(row.piece) + " in " + row.language);
    ASSERT_TRUE(window.boxes().contains(static_cast<int>(i)));
    const Box box = window.boxes().at(static_cast<int>(i));
    movePointer(box.x + box.width / 2, box.y + box.height / 2);
    const json report = probe(row.langs, true);
    ASSERT_TRUE(report.is_object());
    EXPECT_EQ(report["method"], "accessibility");
    const json& result = report["result"];
    const bool chinese = std::string(row.language) == "zh";
    EXPECT_EQ(result["kind"], chinese ? "chinese" : "word");
    EXPECT_EQ(result["word"], row.word);
    if (!chinese) {
      EXPECT_EQ(result["lang"], row.language);
    }
    // The index points at the character under the pointer, the piece's first.
    const std::string text = report["text"];
    ASSERT_TRUE(report["index"].is_number());
    EXPECT_NE(text.find(row.piece), std::string::npos);
    ASSERT_FALSE(report["stages"].empty());
    EXPECT_EQ(report["stages"][0]["stage"], "accessibility");
  }

  // Far to the right of the short last line the pointer is on no character: nothing is read.
  const Box line = window.boxes().at(static_cast<int>(std::size(kRows)));
  movePointer(line.x + 640, line.y + line.height / 2);
  const json beside = probe("ru", false);
  ASSERT_TRUE(beside.is_object());
  EXPECT_TRUE(beside["method"].is_null()) << beside.dump();
  EXPECT_EQ(beside["result"]["kind"], "none");
}

// A window that paints its lines exposes no text to accessibility: screen recognition reads it.
TEST_F(ImageWindowE2ETest, PaintedTextIsReadByRecognition) {
  struct Case {
    const char* piece;
    const char* langs;
    const char* kind;
    const char* word;
  };
  const Case cases[] = {{"学习", "zh", "chinese", "学习"}, {"allés", "fr", "word", "allés"}};
  std::vector<std::string> arguments{"--image"};
  for (const auto& c : cases) arguments.emplace_back(c.piece);
  TestWindow window(VESKO_E2E_GTK_WINDOW, arguments);
  ASSERT_TRUE(window.ready()) << "the image window did not show its lines";
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(cases[i].piece);
    ASSERT_TRUE(window.boxes().contains(static_cast<int>(i)));
    const Box box = window.boxes().at(static_cast<int>(i));
    movePointer(box.x + box.width / 2, box.y + box.height / 2);
    const json report = probe(cases[i].langs, true);
    ASSERT_TRUE(report.is_object());
    EXPECT_EQ(report["method"], "recognition") << report.dump();
    EXPECT_EQ(report["result"]["kind"], cases[i].kind);
    EXPECT_EQ(report["result"]["word"], cases[i].word);
    ASSERT_GE(report["stages"].size(), 2u);
    EXPECT_EQ(report["stages"][1]["stage"], "recognition");
  }
}

INSTANTIATE_TEST_SUITE_P(Toolkits, HoverReadE2ETest,
                         ::testing::Values(VESKO_E2E_GTK_WINDOW, VESKO_E2E_QT_WINDOW),
                         [](const ::testing::TestParamInfo<const char*>& param) {
                           return std::string(param.index == 0 ? "Gtk" : "Qt");
                         });

}  // namespace
