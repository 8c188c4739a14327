// The bubble's AI questions against the fake providers on a loopback server: the explanation and
// the sentence's tabs ask off the GUI thread, show "…" meanwhile, take the answer in on the GUI
// thread, and "Erreur ? Redemander" asks again with the learner's remark while the bubble takes
// the keyboard only for as long as the remark is typed.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QThread>
#include <chrono>
#include <functional>
#include <string>

#include "desktop/bubble_window.h"
#include "desktop/explanation_panel.h"
#include "desktop/sentence_tabs.h"
#include "support/desktop_world.h"
#include "support/fake_providers.h"

namespace vesko::desktop {
namespace {

using testing::BubbleWorld;
using testing::FakeProviders;

// Runs the event loop until `done` holds. The deadline only keeps a broken build from hanging.
bool until(const std::function<bool()>& done) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QThread::msleep(2);
  }
  return true;
}

HoverResult studyResult() {
  HoverResult::Chinese hit;
  hit.word = "学习";
  hit.start = 4;
  hit.length = 2;
  hit.entries = {{"學習", "学习", "xue2 xi2", {"to learn", "to study"}}};
  hit.sentence = "我们一起学习中文。";
  return HoverResult{std::move(hit)};
}

// The local model server answers every question; the synonym question gets its lists.
struct AIBubble {
  FakeProviders providers;
  BubbleWorld world;
  BubbleWindow bubble{world.context};

  AIBubble() {
    world.settings.overrideForRun("aiProvider", 0LL);
    world.settings.overrideForRun("localModelURL", providers.localUrl());
    providers.script(FakeProviders::kLocal, [](const httplib::Request& request) {
      if (request.body.find("≈") != std::string::npos)
        return testing::ScriptedReply{
            200, FakeProviders::chatAnswer("≈ 学 (xué) = apprendre ; 念书 (niànshū) = étudier")};
      if (request.body.find("Décortique") != std::string::npos)
        return testing::ScriptedReply{200,
                                      FakeProviders::chatAnswer("Structure : 我们 + 一起 + 学习")};
      if (request.body.find("Traduis") != std::string::npos)
        return testing::ScriptedReply{
            200, FakeProviders::chatAnswer("anglais : We **study** Chinese together.")};
      return testing::ScriptedReply{
          200, FakeProviders::chatAnswer("Sens : apprendre, étudier\nExpression : 学习中文 = "
                                         "apprendre le chinois")};
    });
    bubble.show({300, 300}, studyResult());
  }

  template <typename T>
  T* part(const char* name) {
    return bubble.findChild<T*>(QString::fromLatin1(name));
  }
};

TEST(BubbleAITest, ExplanationComesInSectionsAndCanBeAskedAgainWithARemark) {
  AIBubble t;
  auto* panel = t.part<ExplanationPanel>("explanationPanel");
  ASSERT_TRUE(panel);
  auto* text = panel->findChild<QLabel*>(QStringLiteral("explanationText"));
  ASSERT_TRUE(text);
  EXPECT_EQ(t.providers.hits(FakeProviders::kLocal), 0);  // nothing asked before the press

  panel->explainButton()->click();
  // The press returns at once: the question is on its way, "…" is shown.
  EXPECT_TRUE(text->text().contains(QStringLiteral("L'IA réfléchit…")));
  ASSERT_TRUE(until([&] { return text->text().contains(QStringLiteral("apprendre")); }));
  EXPECT_TRUE(text->text().contains(QStringLiteral("<b>Sens</b>")));
  EXPECT_TRUE(text->text().contains(QStringLiteral("<b>Expression</b>")));
  EXPECT_EQ(panel->answer(),
            "Sens : apprendre, étudier\nExpression : 学习中文 = apprendre le chinois");
  const std::string first = t.providers.last(FakeProviders::kLocal).body;
  EXPECT_NE(first.find("学习"), std::string::npos);
  EXPECT_NE(first.find("我们一起【学习】中文"),
            std::string::npos);  // the word marked in its sentence

  auto* wrong = panel->findChild<QPushButton*>(QStringLiteral("wrongButton"));
  auto* remark = panel->findChild<QLineEdit*>(QStringLiteral("remarkField"));
  auto* again = panel->findChild<QPushButton*>(QStringLiteral("askAgainButton"));
  ASSERT_TRUE(wrong && remark && again);
  ASSERT_TRUE(wrong->isVisibleTo(&t.bubble));
  EXPECT_FALSE(remark->isVisibleTo(&t.bubble));
  wrong->click();
  // Typing a remark is the one time the bubble may take the keyboard.
  EXPECT_TRUE(remark->isVisibleTo(&t.bubble));
  EXPECT_FALSE(t.bubble.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
  EXPECT_TRUE(t.bubble.visible());
  remark->setText(QStringLiteral("c'est un verbe ici"));
  again->click();
  EXPECT_TRUE(t.bubble.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
  EXPECT_TRUE(t.bubble.visible());
  EXPECT_TRUE(text->text().contains(QStringLiteral("La réponse est fausse")));
  ASSERT_TRUE(until(
      [&] { return t.providers.hits(FakeProviders::kLocal) == 2 && !panel->answer().empty(); }));
  const std::string retry = t.providers.last(FakeProviders::kLocal).body;
  EXPECT_NE(retry.find("ATTENTION"), std::string::npos);
  EXPECT_NE(retry.find("c'est un verbe ici"), std::string::npos);
}

TEST(BubbleAITest, AnswerForAnEarlierWordIsDropped) {
  AIBubble t;
  auto* panel = t.part<ExplanationPanel>("explanationPanel");
  ASSERT_TRUE(panel);
  panel->explainButton()->click();
  HoverResult other = studyResult();
  std::get<HoverResult::Chinese>(other.value).sentence = "学习很好。";
  std::get<HoverResult::Chinese>(other.value).start = 0;
  t.bubble.show({320, 300}, other);  // a new word before the answer came
  ASSERT_TRUE(until([&] { return t.providers.hits(FakeProviders::kLocal) == 1; }));
  // Let the late answer reach the GUI thread, then see that it was not shown.
  for (int i = 0; i < 50; ++i) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  EXPECT_TRUE(panel->answer().empty());
  EXPECT_TRUE(panel->explainButton()->isEnabled());
}

TEST(BubbleAITest, SentenceTabsAskWhenFirstOpened) {
  AIBubble t;
  auto* button = t.part<QPushButton>("sentenceButton");
  auto* tabs = t.part<SentenceTabs>("sentenceTabs");
  ASSERT_TRUE(button && tabs);
  button->click();
  EXPECT_TRUE(tabs->isVisibleTo(&t.bubble));
  EXPECT_TRUE(tabs->opened(0));
  for (int index = 1; index < SentenceTabs::kTabs; ++index) EXPECT_FALSE(tabs->opened(index));
  ASSERT_TRUE(
      until([&] { return tabs->answerLabel(0)->text().contains(QStringLiteral("Chinese")); }));
  EXPECT_TRUE(tabs->answerLabel(0)->text().contains(QStringLiteral("<b>study</b>")));
  EXPECT_EQ(t.providers.hits(FakeProviders::kLocal), 1);

  tabs->setCurrentIndex(SentenceTabs::kSynonymsTab);
  EXPECT_TRUE(tabs->opened(SentenceTabs::kSynonymsTab));
  EXPECT_FALSE(tabs->opened(1));
  ASSERT_TRUE(until([&] {
    return tabs->answerLabel(SentenceTabs::kSynonymsTab)->text().contains(QStringLiteral("念书"));
  }));
  EXPECT_TRUE(
      tabs->answerLabel(SentenceTabs::kSynonymsTab)->text().startsWith(QStringLiteral("≈")));
  EXPECT_EQ(t.providers.hits(FakeProviders::kLocal), 2);

  tabs->setCurrentIndex(1);
  ASSERT_TRUE(
      until([&] { return tabs->answerLabel(1)->text().contains(QStringLiteral("我们 + 一起")); }));
  EXPECT_EQ(t.providers.hits(FakeProviders::kLocal), 3);
}

}  // namespace
}  // namespace vesko::desktop
