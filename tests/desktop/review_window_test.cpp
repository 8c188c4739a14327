// The review window on an offscreen display, over a real store in a temp folder: the first card,
// the answer on Space, a grade on 4 saved to mots.json and traced, the grade buttons' waits, the
// switch of interface language, and the empty and finished sittings.

#include "desktop/review_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "ai/ai_services.h"
#include "ai/curl_http_client.h"
#include "desktop/desktop_context.h"
#include "desktop/toasts.h"
#include "desktop/trace.h"
#include "dict/cedict.h"
#include "learn/review_counts.h"
#include "learn/review_day.h"
#include "learn/review_rhythm.h"
#include "learn/review_texts.h"
#include "learn/saved_word_json.h"
#include "learn/word_store.h"
#include "settings/folders.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"
#include "support/fake_clock.h"
#include "support/memory_secret_store.h"
#include "support/temp_dir.h"

namespace vesko::desktop {
namespace {

using namespace std::chrono_literals;

// One for the whole program, never destroyed: tearing it down in the exit handlers, after the
// platform plugin is gone, crashes.
QApplication& application() {
  static int argc = 1;
  static char name[] = "review_window_test";
  static char* argv[] = {name, nullptr};
  static auto* app = new QApplication(argc, argv);
  return *app;
}

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// Words kept, with the sentence each was met in.
using Kept = std::vector<std::pair<std::string, std::string>>;

// The program-wide objects the shell would create, in a fresh folder, French interface.
struct Desk {
  testing::TempDir dir;
  testing::FakeClock clock;
  Folders folders{dir.path() / "data", dir.path() / "state", dir.path() / "config"};
  Settings settings{folders.settingsFile(), clock};
  Log log{folders.logFile(), settings, clock};
  CEDict dictionary;  // never loaded: the review needs no lookup
  HantCache hant{dictionary};
  LocTables tables;
  Loc loc{settings, tables, hant, {}};
  std::unique_ptr<WordStore> store;
  ReviewCounts counts{settings, clock};
  CurlLibrary curl;
  testing::MemorySecretStore secrets;
  AIServices ai{settings,
                loc,
                log,
                clock,
                secrets,
                [](std::string_view) { return std::optional<std::string>(); },
                folders.data / "reponses-ia.json"};
  std::filesystem::path traceFile = dir.path() / "trace.jsonl";
  Trace trace{traceFile};
  Toasts toasts;
  DesktopEvents events;
  std::unique_ptr<DesktopContext> context;

  // Keeps `words` two days ago, as the bubble's keep button would have.
  explicit Desk(const Kept& words) {
    application();
    settings.overrideForRun("uiLang", std::string("fr"));
    store = std::make_unique<WordStore>(folders.wordsFile(), clock, log, loc);
    clock.advance(-48h);
    for (const auto& [word, sentence] : words) {
      SavedWord fresh;
      fresh.word = word;
      fresh.lang = "zh";
      fresh.pinyin = "pīn yīn";
      fresh.definition = "meaning of " + word;
      fresh.context = sentence;
      store->keep(fresh);
    }
    clock.advance(48h);
    this->context = std::make_unique<DesktopContext>(DesktopContext{
        settings, loc, log, clock, folders, *store, counts, ai, dictionary, trace, toasts, events});
  }

  std::vector<SavedWord> onDisk() const {
    auto decoded = decodeWords(readText(folders.wordsFile()));
    EXPECT_TRUE(decoded.has_value());
    return decoded ? *decoded : std::vector<SavedWord>{};
  }
};

QString text(const ReviewWindow& window, const char* name) {
  auto* shown = window.findChild<QLabel*>(name);
  EXPECT_NE(shown, nullptr) << name;
  return shown ? shown->text() : QString();
}

bool shown(const ReviewWindow& window, const char* name) {
  auto* part = window.findChild<QWidget*>(name);
  EXPECT_NE(part, nullptr) << name;
  return part && part->isVisible();
}

QString buttonText(const ReviewWindow& window, const char* name) {
  auto* button = window.findChild<QPushButton*>(name);
  EXPECT_NE(button, nullptr) << name;
  return button ? button->text() : QString();
}

std::string str(const QString& text) {
  return text.toStdString();
}

TEST(ReviewWindowTest, ShowsTheCardThenTheAnswerAndGradesWithTheKeys) {
  Desk desk(Kept{{"中文", "我们学中文。"}, {"学习", "我们一起学习中文。"}});
  ReviewWindow window(*desk.context);
  int wordsChanged = 0;
  QObject::connect(&desk.events, &DesktopEvents::wordsChanged, [&] { ++wordsChanged; });
  window.present();
  ASSERT_TRUE(window.isVisible());

  // Newest kept first among equals: 学习.
  EXPECT_EQ(str(text(window, "progress")), "1 / 2");
  EXPECT_EQ(str(text(window, "word")), "学习");
  EXPECT_NE(str(text(window, "sentence")).find(">学习</span>中文。"), std::string::npos)
      << str(text(window, "sentence"));
  EXPECT_TRUE(shown(window, "showAnswer"));
  EXPECT_EQ(str(buttonText(window, "showAnswer")), "Montrer la réponse");
  EXPECT_FALSE(shown(window, "answer"));

  QTest::keyClick(&window, Qt::Key_4);
  EXPECT_EQ(str(text(window, "progress")), "1 / 2") << "no grade before the answer";

  // Through the window system, as a key press on the desktop arrives: the window is active and
  // its shortcuts take the keys.
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClick(window.windowHandle(), Qt::Key_Space);
  ASSERT_TRUE(shown(window, "answer"));
  EXPECT_FALSE(shown(window, "showAnswer"));
  EXPECT_EQ(str(text(window, "reading")), "pīn yīn");
  EXPECT_EQ(str(text(window, "definition")), "meaning of 学习");
  EXPECT_NE(str(text(window, "level")).find("Nouveau : pas encore relu"), std::string::npos);
  EXPECT_EQ(str(text(window, "rhythm")),
            "1 · 3 · 7 · 16 · 35 · 90 jours, puis une fois par an (acquis)");
  EXPECT_EQ(str(text(window, "nextReview")), "À relire maintenant");
  EXPECT_FALSE(shown(window, "earlyNote"));

  // The five grades, each with the wait it would give this new card.
  const StoreDate now = storeDateOf(desk.clock.now());
  const SavedWord card = *desk.store->lookup("学习", "zh");
  for (int grade = 1; grade <= 5; ++grade) {
    SCOPED_TRACE(grade);
    const std::string label = str(buttonText(window, ("grade" + std::to_string(grade)).c_str()));
    const auto wait = ReviewRhythm::preview(card, grade, now);
    ASSERT_TRUE(wait);
    EXPECT_EQ(label, gradeText(grade, desk.loc) + "\n→ " + intervalText(wait->interval, desk.loc));
  }
  EXPECT_NE(str(buttonText(window, "grade2")).find("1 j"), std::string::npos);

  window.grab().save(
      QString::fromStdString(std::string(VESKO_SHOTS_DIR) + "/review_window_answer.png"));

  QTest::keyClick(window.windowHandle(), Qt::Key_4);
  SavedWord graded;
  for (const SavedWord& word : desk.onDisk())
    if (word.word == "学习") graded = word;
  EXPECT_EQ(graded.reviewStep, 1) << "saved at once";
  EXPECT_EQ(graded.confidence, 4);
  EXPECT_EQ(desk.counts.today(), (DailyCounts{0, 1}));
  EXPECT_EQ(wordsChanged, 1);

  const std::string trace = readText(desk.traceFile);
  const auto line = nlohmann::json::parse(trace.substr(0, trace.find('\n')));
  EXPECT_EQ(line["event"], "grade");
  EXPECT_EQ(line["word"], "学习");
  EXPECT_EQ(line["lang"], "zh");
  EXPECT_EQ(line["grade"], 4);
  EXPECT_EQ(line["reviewStep"], 1);

  EXPECT_EQ(str(text(window, "progress")), "2 / 2");
  EXPECT_EQ(str(text(window, "word")), "中文");
  EXPECT_FALSE(shown(window, "answer")) << "the next card starts with its question";
  EXPECT_NE(str(text(window, "lastGraded")).find("学习 — Prochaine révision : "),
            std::string::npos);

  // Return shows the answer too; the keypad's digits grade.
  QTest::keyClick(&window, Qt::Key_Return);
  ASSERT_TRUE(shown(window, "answer"));
  QTest::keyClick(&window, Qt::Key_3, Qt::KeypadModifier);
  EXPECT_FALSE(shown(window, "word"));
  EXPECT_EQ(str(text(window, "message")), "Révision finie : 2 cartes notées.");
  EXPECT_EQ(desk.counts.today(), (DailyCounts{0, 2}));
}

TEST(ReviewWindowTest, RedrawsEveryTextWhenTheLanguageChanges) {
  Desk desk(Kept{{"学习", "我们一起学习中文。"}});
  ReviewWindow window(*desk.context);
  window.present();
  EXPECT_EQ(str(window.windowTitle()), "Révision");
  QTest::keyClick(&window, Qt::Key_Space);
  EXPECT_EQ(str(buttonText(window, "grade3")), "3 — moyen : même rythme\n→ 1 j");

  desk.settings.overrideForRun("uiLang", std::string("en"));
  emit desk.events.languageChanged();
  EXPECT_EQ(str(window.windowTitle()), "Review");
  EXPECT_EQ(str(buttonText(window, "showAnswer")), "Show the answer");
  EXPECT_EQ(str(buttonText(window, "grade3")), "3 — medium: same pace\n→ 1 d");
  EXPECT_EQ(str(text(window, "level")).find("Nouveau"), std::string::npos);
  const SavedWord card = *desk.store->lookup("学习", "zh");
  EXPECT_EQ(str(text(window, "nextReview")),
            nextReviewText(card, storeDateOf(desk.clock.now()), desk.loc, desk.clock));
  EXPECT_NE(str(text(window, "nextReview")), "À relire maintenant");
  EXPECT_TRUE(shown(window, "answer")) << "the card stays where it was";
}

TEST(ReviewWindowTest, NothingDueOffersTheNextCardsAhead) {
  Desk desk(Kept{{"学习", "我们一起学习中文。"}});
  {
    const std::string id = desk.store->lookup("学习", "zh")->id;
    desk.store->change(id, [&](SavedWord& word) {
      word.reviewStep = 3;
      word.reviewDue = storeDateOf(desk.clock.now()) + 5 * kDaySeconds;
    });
  }
  ReviewWindow window(*desk.context);
  window.present();
  EXPECT_FALSE(shown(window, "word"));
  EXPECT_EQ(str(text(window, "message")), "Rien à relire aujourd'hui.");
  EXPECT_FALSE(shown(window, "later"));
  ASSERT_TRUE(shown(window, "reviewAhead"));

  QTest::mouseClick(window.findChild<QPushButton*>("reviewAhead"), Qt::LeftButton);
  ASSERT_TRUE(shown(window, "word"));
  QTest::keyClick(&window, Qt::Key_Space);
  EXPECT_TRUE(shown(window, "earlyNote"));
  EXPECT_NE(str(text(window, "earlyNote")).find("Carte révisée en avance"), std::string::npos);
  QTest::keyClick(&window, Qt::Key_5);
  EXPECT_EQ(desk.store->lookup("学习", "zh")->reviewStep, 3) << "early: the rung stays";
}

TEST(ReviewWindowTest, TheAllowanceLeavesTheRestForLaterDays) {
  Kept words;
  for (int i = 0; i < 12; ++i) words.emplace_back("词" + std::to_string(i), "");
  Desk desk(words);
  ReviewWindow window(*desk.context);
  window.present();
  EXPECT_EQ(str(text(window, "progress")), "1 / 10");
  ASSERT_TRUE(shown(window, "later"));
  EXPECT_EQ(str(text(window, "later")), laterText(2, desk.loc));
  EXPECT_FALSE(shown(window, "sentence")) << "no sentence kept";
}

TEST(ReviewWindowTest, AMissedCardComesBackTenMinutesLater) {
  Desk desk(Kept{{"学习", "我们一起学习中文。"}});
  ReviewWindow window(*desk.context);
  window.present();
  QTest::keyClick(&window, Qt::Key_Space);
  QTest::keyClick(&window, Qt::Key_1);
  EXPECT_EQ(str(text(window, "message")), "Révision finie : 1 cartes notées.");
  auto* comeBack = window.findChild<QTimer*>("comeBack");
  ASSERT_NE(comeBack, nullptr);
  ASSERT_TRUE(comeBack->isActive());
  EXPECT_EQ(comeBack->interval(), 600'000) << "when the missed card is due again";

  // Ten minutes on the learner's clock; the timer is made to fire now rather than waited for.
  desk.clock.advance(10min);
  comeBack->start(0);
  QTRY_VERIFY(shown(window, "word"));
  EXPECT_EQ(str(text(window, "word")), "学习");
  QTest::keyClick(&window, Qt::Key_Space);
  QTest::keyClick(&window, Qt::Key_3);
  EXPECT_EQ(desk.counts.today(), (DailyCounts{0, 1})) << "once per sitting";
  EXPECT_EQ(str(text(window, "message")), "Révision finie : 2 cartes notées.");
}

TEST(ReviewWindowTest, AnotherWindowsChangeRefreshesAnIdleWindow) {
  Desk desk(Kept{});
  ReviewWindow window(*desk.context);
  window.present();
  EXPECT_EQ(str(text(window, "message")), "Rien à relire aujourd'hui.");

  desk.clock.advance(-48h);
  SavedWord fresh;
  fresh.word = "中文";
  fresh.lang = "zh";
  desk.store->keep(fresh);
  desk.clock.advance(48h);
  emit desk.events.wordsChanged();
  EXPECT_EQ(str(text(window, "word")), "中文");
}

}  // namespace
}  // namespace vesko::desktop
