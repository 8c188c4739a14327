// The toasts: stacked down from the primary screen's top-right corner, shown after their delay,
// gone after their time, never taking the focus; the hover's notices as toasts, one per language
// every few seconds.

#include "desktop/toasts.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <chrono>
#include <functional>
#include <thread>

#include "desktop/qt_desktop.h"
#include "desktop/toast_notices.h"
#include "dict/cedict.h"
#include "settings/hant_cache.h"
#include "settings/loc_table.h"
#include "support/fake_clock.h"
#include "support/fake_steady_clock.h"
#include "support/temp_dir.h"

namespace vesko::desktop {
namespace {

using namespace std::chrono_literals;

// The toasts on screen, in the order they were made.
std::vector<QLabel*> shownToasts() {
  std::vector<QLabel*> toasts;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (widget->objectName() == "veskoToast" && widget->isVisible())
      toasts.push_back(static_cast<QLabel*>(widget));
  std::ranges::sort(toasts, [](QLabel* a, QLabel* b) { return a->y() < b->y(); });
  return toasts;
}

bool runUntil(const std::function<bool()>& done) {
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (!done() && std::chrono::steady_clock::now() < deadline) {
    QApplication::processEvents(QEventLoop::AllEvents, 20);
    std::this_thread::sleep_for(5ms);
  }
  return done();
}

class ToastsTest : public ::testing::Test {
 protected:
  int argc_ = 1;
  char name_[12] = "toasts-test";
  char* argv_[2] = {name_, nullptr};
  QApplication application_{argc_, argv_};
};

TEST_F(ToastsTest, StackFromTheTopRightCornerAndGoByThemselves) {
  Toasts toasts;
  toasts.show("⚠️ Un fichier de données était illisible ; une copie a été gardée : mots.json",
              300ms);
  toasts.show("Modèle IA mis à jour : claude-sonnet-4-5", 600ms);
  auto shown = shownToasts();
  ASSERT_EQ(shown.size(), 2u);
  const QRect area = QApplication::primaryScreen()->availableGeometry();
  EXPECT_TRUE(shown[0]->text().startsWith("⚠️"));
  EXPECT_LT(shown[0]->geometry().bottom(), shown[1]->geometry().top());
  for (QLabel* toast : shown) {
    EXPECT_TRUE(area.contains(toast->geometry()));
    EXPECT_GT(toast->geometry().right(), area.center().x());  // the right half
    EXPECT_TRUE(toast->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_TRUE(toast->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
  }
  // The first goes first; the second moves up into its place.
  const int top = shown[0]->y();
  ASSERT_TRUE(runUntil([] { return shownToasts().size() == 1; }));
  EXPECT_EQ(shownToasts()[0]->y(), top);
  EXPECT_TRUE(shownToasts()[0]->text().startsWith("Modèle IA"));
  ASSERT_TRUE(runUntil([] { return shownToasts().empty(); }));
}

TEST_F(ToastsTest, WaitsForItsDelay) {
  Toasts toasts;
  toasts.show("plus tard", 200ms, 150ms);
  EXPECT_TRUE(shownToasts().empty());
  ASSERT_TRUE(runUntil([] { return shownToasts().size() == 1; }));
  EXPECT_EQ(shownToasts()[0]->text(), "plus tard");
}

TEST_F(ToastsTest, SkippedLanguagesAreToldOncePerLanguageEveryFewSeconds) {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  settings.overrideForRun("uiLang", std::string("fr"));
  CEDict dictionary;
  HantCache hant(dictionary);
  LocTables tables;
  const Loc loc(settings, tables, hant, {});
  testing::FakeSteadyClock steady;
  Toasts toasts;
  ToastNotices notices(toasts, loc, steady);

  notices.nothingToRead(Snapshot{});
  EXPECT_TRUE(shownToasts().empty());
  notices.languageSkipped(Language::th, false);
  notices.languageSkipped(Language::th, false);  // the pointer still on the same Thai text
  notices.languageSkipped(Language::ja, true);
  auto shown = shownToasts();
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[0]->text().toStdString(), skippedLanguageText(loc, Language::th, false));
  EXPECT_EQ(shown[1]->text().toStdString(), skippedLanguageText(loc, Language::ja, true));
  steady.advance(ToastNotices::kRepeatAfter + 0.1);
  notices.languageSkipped(Language::th, false);
  EXPECT_EQ(shownToasts().size(), 3u);
}

TEST_F(ToastsTest, OwnWindowsAreTheVisibleOnesUnderThePoint) {
  QLabel window("Réglages");
  window.setGeometry(200, 150, 300, 200);
  QtOwnWindows own;
  own.add(window);
  EXPECT_FALSE(own.ownWindowAt({250, 200})) << "hidden";
  window.show();
  ASSERT_TRUE(runUntil([&] { return window.isVisible(); }));
  const QRect frame = window.frameGeometry();
  struct Row {
    ScreenPoint point;
    bool own;
  };
  const Row rows[] = {
      {{frame.x() + 1.0, frame.y() + 1.0}, true},
      {{frame.center().x() + 0.5, frame.center().y() + 0.5}, true},
      {{frame.x() - 1.0, frame.y() + 10.0}, false},
      {{frame.right() + 1.0, frame.center().y() + 0.0}, false},
      {{frame.center().x() + 0.0, frame.bottom() + 1.0}, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.point.x) + "," + std::to_string(row.point.y));
    EXPECT_EQ(own.ownWindowAt(row.point), row.own);
  }
  window.hide();
  EXPECT_FALSE(own.ownWindowAt({frame.center().x() + 0.0, frame.center().y() + 0.0}));
}

}  // namespace
}  // namespace vesko::desktop
