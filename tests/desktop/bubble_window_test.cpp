// The bubble as the learner meets it, offscreen: where it opens, what it says, the keep row and
// its counter, and the interface language switched while it is open. No AI question is asked.

#include "desktop/bubble_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <string>
#include <vector>

#include "dict/pinyin.h"
#include "learn/word_store.h"
#include "support/desktop_world.h"

namespace vesko::desktop {
namespace {

using testing::BubbleWorld;

HoverResult studyResult() {
  HoverResult::Chinese hit;
  hit.word = "学习";
  hit.start = 4;
  hit.length = 2;
  hit.entries = {{"學習", "学习", "xue2 xi2", {"to learn", "to study"}}};
  hit.sentence = "我们一起学习中文。";
  return HoverResult{std::move(hit)};
}

HoverResult frenchResult() {
  HoverResult::Word word;
  word.word = "école";
  word.language = Language::fr;
  word.start = 8;
  word.length = 5;
  word.entries = {{"école", "", {"school"}}};
  word.elided = "le";
  word.sentence = "Voici l'école.";
  return HoverResult{std::move(word)};
}

template <typename T>
T* part(BubbleWindow& bubble, const char* name) {
  T* found = bubble.findChild<T*>(QString::fromLatin1(name));
  EXPECT_NE(found, nullptr) << name;
  return found;
}

bool shown(BubbleWindow& bubble, QWidget* widget) {
  return widget->isVisibleTo(&bubble);
}

TEST(BubbleWindowTest, OpensBesideThePointOnItsScreenWithoutTakingFocus) {
  BubbleWorld world;
  BubbleWindow bubble(world.context);
  EXPECT_FALSE(bubble.visible());
  EXPECT_FALSE(bubble.anchor());
  EXPECT_TRUE(bubble.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
  EXPECT_TRUE(bubble.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  EXPECT_TRUE(bubble.windowFlags().testFlag(Qt::X11BypassWindowManagerHint));
  EXPECT_TRUE(bubble.testAttribute(Qt::WA_ShowWithoutActivating));

  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  struct Row {
    std::string name;
    ScreenPoint at;
  };
  for (const auto& row : std::vector<Row>{
           {"middle", {screen.x() + 200.0, screen.y() + 150.0}},
           {"bottom right corner", {screen.right() - 5.0, screen.bottom() - 5.0}},
       }) {
    SCOPED_TRACE(row.name);
    bubble.show(row.at, studyResult());
    ASSERT_TRUE(bubble.visible());
    ASSERT_TRUE(bubble.anchor());
    EXPECT_EQ(*bubble.anchor(), row.at);
    const ScreenRect frame = bubble.frame();
    EXPECT_FALSE(frame.empty());
    EXPECT_LE(frame.width, 420);
    EXPECT_FALSE(frame.contains(row.at));  // beside the point, not over it
    EXPECT_GE(frame.x, screen.x());
    EXPECT_GE(frame.y, screen.y());
    EXPECT_LE(frame.right(), screen.x() + screen.width());
    EXPECT_LE(frame.bottom(), screen.y() + screen.height());
    // The pointer on its way into the bubble keeps it; one going the other way does not.
    const ScreenPoint centre{frame.x + frame.width / 2, frame.y + frame.height / 2};
    const ScreenPoint halfway{(row.at.x + centre.x) / 2, (row.at.y + centre.y) / 2};
    const ScreenPoint away{2 * row.at.x - centre.x, 2 * row.at.y - centre.y};
    EXPECT_TRUE(bubble.onWayTowards(halfway));
    EXPECT_TRUE(bubble.onWayTowards(centre));
    EXPECT_FALSE(bubble.onWayTowards(away));
  }
  EXPECT_EQ(QApplication::focusWidget(), nullptr);
  bubble.close();
  EXPECT_FALSE(bubble.visible());
  EXPECT_FALSE(bubble.anchor());
  EXPECT_FALSE(bubble.onWayTowards({0, 0}));
}

TEST(BubbleWindowTest, ShowsTheWordItsReadingAndItsSentence) {
  BubbleWorld world;
  BubbleWindow bubble(world.context);
  bubble.show({300, 300}, studyResult());
  auto* headword = part<QLabel>(bubble, "headwordLabel");
  auto* reading = part<QLabel>(bubble, "readingLabel");
  auto* sentence = part<QLabel>(bubble, "sentenceLabel");
  auto* senses = part<QLabel>(bubble, "sensesLabel");
  ASSERT_TRUE(headword && reading && sentence && senses);
  EXPECT_EQ(headword->accessibleName(), QStringLiteral("学习"));
  EXPECT_EQ(reading->accessibleName(), QStringLiteral("xué xí"));
  // Each syllable in its tone's colour: xué and xí are both second tone.
  EXPECT_EQ(reading->text().count(QString::fromStdString(Pinyin::toneColor(2)->hex())), 2);
  EXPECT_TRUE(sentence->text().contains(QStringLiteral("<u>学习</u>")));
  EXPECT_TRUE(senses->text().contains(QStringLiteral("to learn")));
  bubble.grab().save(QCoreApplication::applicationDirPath() +
                     QStringLiteral("/bubble_window_test_zh.png"));
  // The sentence's tabs wait to be opened before they ask anything.
  auto* tabs = part<QTabWidget>(bubble, "sentenceTabs");
  ASSERT_TRUE(tabs);
  EXPECT_FALSE(shown(bubble, tabs));
  EXPECT_EQ(tabs->count(), 4);

  bubble.show({300, 300}, frenchResult());
  EXPECT_EQ(headword->accessibleName(), QStringLiteral("école"));
  EXPECT_FALSE(shown(bubble, reading));
  auto* notes = part<QLabel>(bubble, "notesLabel");
  ASSERT_TRUE(notes);
  EXPECT_TRUE(notes->text().contains(QStringLiteral("le")));
  EXPECT_TRUE(shown(bubble, notes));

  // For a look at it: not compared with anything.
  bubble.grab().save(QCoreApplication::applicationDirPath() +
                     QStringLiteral("/bubble_window_test.png"));
}

TEST(BubbleWindowTest, KeepKeepAgainAndRemoveOnceGoThroughTheStore) {
  BubbleWorld world;
  BubbleWindow bubble(world.context);
  int changes = 0;
  QObject::connect(&world.events, &DesktopEvents::wordsChanged, [&] { ++changes; });
  bubble.show({300, 300}, studyResult());
  auto* keep = part<QPushButton>(bubble, "keepButton");
  auto* again = part<QPushButton>(bubble, "keepAgainButton");
  auto* remove = part<QPushButton>(bubble, "removeButton");
  auto* counter = part<QLabel>(bubble, "counterLabel");
  ASSERT_TRUE(keep && again && remove && counter);
  EXPECT_TRUE(shown(bubble, keep));
  EXPECT_FALSE(shown(bubble, again));
  EXPECT_TRUE(keep->text().startsWith(QStringLiteral("Garder ce mot")));

  keep->click();
  auto saved = world.store.lookup("学习", "zh");
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved->context, "我们一起学习中文。");
  EXPECT_EQ(saved->pinyin, "xué xí");
  EXPECT_EQ(saved->simp, "学习");
  EXPECT_EQ(saved->trad, "學習");
  EXPECT_EQ(saved->definition, "to learn; to study");
  EXPECT_EQ(changes, 1);
  EXPECT_FALSE(shown(bubble, keep));
  EXPECT_TRUE(shown(bubble, again));
  EXPECT_TRUE(shown(bubble, remove));
  EXPECT_EQ(counter->text(), QStringLiteral("Gardé 1 fois"));

  again->click();
  EXPECT_EQ(world.store.lookup("学习", "zh")->hits, 2);
  EXPECT_EQ(counter->text(), QStringLiteral("Gardé 2 fois"));

  remove->click();
  EXPECT_EQ(world.store.lookup("学习", "zh")->hits.value_or(1), 1);
  EXPECT_TRUE(shown(bubble, remove));
  remove->click();
  EXPECT_FALSE(world.store.lookup("学习", "zh"));
  EXPECT_TRUE(shown(bubble, keep));
  EXPECT_EQ(changes, 4);

  const auto keeps = world.traced("keep");
  ASSERT_EQ(keeps.size(), 2u);
  EXPECT_EQ(keeps[0]["word"], "学习");
  EXPECT_EQ(keeps[0]["lang"], "zh");
  EXPECT_EQ(keeps[0]["hits"], 1);
  EXPECT_EQ(keeps[0]["sentence"], "我们一起学习中文。");
  EXPECT_EQ(keeps[1]["hits"], 2);
  const auto removes = world.traced("remove");
  ASSERT_EQ(removes.size(), 2u);
  EXPECT_EQ(removes[0]["hits"], 1);
  EXPECT_EQ(removes[1]["hits"], 0);
}

TEST(BubbleWindowTest, AKeptWordShownAgainIsSeenOncePerShowing) {
  BubbleWorld world;
  SavedWord fresh;
  fresh.word = "学习";
  fresh.lang = "zh";
  world.store.keep(fresh);
  world.store.keepAgain("学习", "zh");
  BubbleWindow bubble(world.context);
  bubble.show({300, 300}, studyResult());
  bubble.show({310, 302}, studyResult());  // the same word read again while it is open
  EXPECT_EQ(world.store.lookup("学习", "zh")->seen, 1);
  auto* counter = part<QLabel>(bubble, "counterLabel");
  ASSERT_TRUE(counter);
  EXPECT_TRUE(shown(bubble, counter));
  EXPECT_EQ(counter->text(), QStringLiteral("Gardé 2 fois"));
  bubble.close();
  bubble.show({300, 300}, studyResult());
  EXPECT_EQ(world.store.lookup("学习", "zh")->seen, 2);
}

TEST(BubbleWindowTest, SwitchingTheInterfaceLanguageRedrawsEveryText) {
  BubbleWorld world;
  BubbleWindow bubble(world.context);
  bubble.show({300, 300}, frenchResult());
  auto* keep = part<QPushButton>(bubble, "keepButton");
  auto* sentence = part<QPushButton>(bubble, "sentenceButton");
  auto* notes = part<QLabel>(bubble, "notesLabel");
  auto* tabs = part<QTabWidget>(bubble, "sentenceTabs");
  ASSERT_TRUE(keep && sentence && notes && tabs);
  EXPECT_EQ(tabs->tabText(0), QStringLiteral("Traduire"));
  const QString frenchNote = notes->text();

  world.settings.overrideForRun("uiLang", std::string("en"));
  emit world.events.languageChanged();
  EXPECT_TRUE(keep->text().startsWith(QStringLiteral("Keep this word")))
      << keep->text().toStdString();
  EXPECT_EQ(sentence->text(), QStringLiteral("Sentence…"));
  EXPECT_EQ(tabs->tabText(0), QStringLiteral("Translate"));
  EXPECT_EQ(tabs->tabText(3), QStringLiteral("Synonyms and opposites"));
  EXPECT_NE(notes->text(), frenchNote);
  EXPECT_TRUE(notes->text().contains(QStringLiteral("elision")));
}

}  // namespace
}  // namespace vesko::desktop
