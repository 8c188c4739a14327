// The state of the actions on one selected text: one question per tab, answers kept and found
// again, "⚠️ " messages shown but never kept, and a wrong answer forgotten (with its kept
// terms) and asked again with the remark and the stronger model. The entry point is a scripted
// function.

#include "ai/sentence_model.h"

#include <gtest/gtest.h>

#include <deque>

#include "ai/explain_prompts.h"
#include "dict/cedict.h"
#include "settings/loc.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

struct Sent {
  std::string system, user;
  int maxTokens = 0;
  std::optional<std::string> model;
};

class SentenceModelTest : public ::testing::Test {
 protected:
  SentenceModelTest()
      : cache(dir.path() / AnswerCache::kFileName, clock),
        ask([this](std::string system, std::string user, int maxTokens,
                   std::optional<std::string> model) {
          sent.push_back({std::move(system), std::move(user), maxTokens, std::move(model)});
          std::promise<AIAnswer> promise;
          std::string text = "anglais : (no script)";
          if (!answers.empty()) {
            text = answers.front();
            answers.pop_front();
          }
          promise.set_value(AIAnswer{text});
          return promise.get_future();
        }) {}

  SentenceSetup setup(std::string language = "fr") {
    SentenceSetup made;
    made.answerLanguage = std::move(language);
    made.targetCodes = {"en"};
    made.provider = "claude";
    made.model = "claude-haiku-4-5-20251001";
    made.strongerModel = [] { return std::optional<std::string>("claude-sonnet-4-5"); };
    made.forgetKeptTerms = [this](const std::string& answer) { forgotten.push_back(answer); };
    return made;
  }
  SentenceSelection selection() {
    SentenceSelection made;
    made.text = "子氣";
    made.languageCode = "zh";
    made.traditional = true;
    made.line = "他很小家子氣";
    return made;
  }

  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  CEDict dictionary;
  HantCache hant{dictionary};
  LocTables tables;
  Loc loc{settings, tables, hant, {"fr-FR"}};
  AnswerCache cache;
  std::deque<std::string> answers;
  std::vector<Sent> sent;
  std::vector<std::string> forgotten;
  LanguageAsk ask;
};

TEST_F(SentenceModelTest, EachTabAsksOnceAndTheAnswerIsKeptForTheNextSelection) {
  answers = {"anglais : **petty**\nExpression : 小家子氣 = mesquin"};
  {
    SentenceModel model(selection(), setup(), AITitles(loc, "fr"), ask, cache);
    EXPECT_FALSE(model.loading(SentenceAction::translate));
    model.open(SentenceAction::translate);
    EXPECT_TRUE(model.loading(SentenceAction::translate));
    model.open(SentenceAction::translate);  // the tab shown again while it loads
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(model.poll(), std::vector<SentenceAction>{SentenceAction::translate});
    EXPECT_FALSE(model.loading(SentenceAction::translate));
    EXPECT_EQ(model.answer(SentenceAction::translate),
              "anglais : **petty**\nExpression : 小家子氣 = mesquin");
    model.open(SentenceAction::translate);
    EXPECT_EQ(sent.size(), 1u);
  }
  EXPECT_EQ(sent[0].maxTokens, SentenceModel::kTranslationTokens);
  EXPECT_EQ(sent[0].model, std::nullopt);
  EXPECT_EQ(sent[0].system, teacherSystemText("fr"));
  // The text sent is the translation prompt, wrapped in the answer language's tag and paragraph.
  EXPECT_TRUE(sent[0].user.starts_with(answerTag("fr") +
                                       "Le texte suivant est en chinois (mandarin, "
                                       "caractères traditionnels)."));
  EXPECT_NE(sent[0].user.find("MORCEAU de la phrase / ligne : « 他很小家子氣 »"),
            std::string::npos);
  EXPECT_TRUE(sent[0].user.ends_with(std::string(importantParagraph("fr"))));

  SentenceModel again(selection(), setup(), AITitles(loc, "fr"), ask, cache);
  again.open(SentenceAction::translate);
  EXPECT_FALSE(again.loading(SentenceAction::translate));
  EXPECT_EQ(again.answer(SentenceAction::translate),
            "anglais : **petty**\nExpression : 小家子氣 = mesquin");
  EXPECT_EQ(sent.size(), 1u);
  // Another answer language is another answer.
  SentenceModel english(selection(), setup("en"), AITitles(loc, "en"), ask, cache);
  english.open(SentenceAction::translate);
  EXPECT_EQ(sent.size(), 2u);
}

TEST_F(SentenceModelTest, MessagesAreShownButNeverKept) {
  answers = {"⚠️ Claude ne répond pas.", "anglais : petty"};
  {
    SentenceModel model(selection(), setup(), AITitles(loc, "fr"), ask, cache);
    model.open(SentenceAction::correct);
    model.wait(SentenceAction::correct);
    EXPECT_EQ(model.answer(SentenceAction::correct), "⚠️ Claude ne répond pas.");
  }
  SentenceModel model(selection(), setup(), AITitles(loc, "fr"), ask, cache);
  model.open(SentenceAction::correct);
  model.wait(SentenceAction::correct);
  EXPECT_EQ(sent.size(), 2u);
  EXPECT_EQ(model.answer(SentenceAction::correct), "anglais : petty");
  EXPECT_EQ(sent[0].maxTokens, SentenceModel::kCorrectionTokens);
  EXPECT_NE(sent[0].user.find("Corrige cette phrase écrite en chinois (caractères traditionnels)."),
            std::string::npos);
}

TEST_F(SentenceModelTest, AWrongAnswerIsForgottenAndAskedAgainWithTheStrongerModel) {
  const std::string wrong = "anglais : child air";
  const std::string right = "⚠︎ Fait partie de : 小家子氣\nanglais : **petty**";
  answers = {wrong, right};
  {
    SentenceModel model(selection(), setup(), AITitles(loc, "fr"), ask, cache);
    model.open(SentenceAction::translate);
    model.wait(SentenceAction::translate);
    model.markWrong(SentenceAction::translate, "子氣 est dans 小家子氣");
    EXPECT_EQ(forgotten, std::vector<std::string>{wrong});
    EXPECT_FALSE(cache.find({"traduction", "子氣", "fr", "claude", "claude-haiku-4-5-20251001"}));
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[1].model, "claude-sonnet-4-5");
    // The same prompt, then the retry suffix with the wrong answer and the remark.
    const std::string retried = model.lastQuestion(SentenceAction::translate);
    const std::string suffix = retrySuffix(wrong, "子氣 est dans 小家子氣");
    ASSERT_TRUE(retried.ends_with(suffix));
    EXPECT_NE(sent[0].user.find(retried.substr(0, retried.size() - suffix.size())),
              std::string::npos);
    EXPECT_NE(sent[1].user.find(suffix), std::string::npos);
    model.wait(SentenceAction::translate);
    EXPECT_EQ(model.answer(SentenceAction::translate), right);
  }
  // The second answer is the one found again, under its own label.
  EXPECT_EQ(cache.find({"redemander", "子氣", "fr", "claude", "claude-haiku-4-5-20251001"}), right);
  SentenceModel again(selection(), setup(), AITitles(loc, "fr"), ask, cache);
  again.open(SentenceAction::translate);
  EXPECT_EQ(again.answer(SentenceAction::translate), right);
  EXPECT_EQ(sent.size(), 2u);
}

TEST_F(SentenceModelTest, NothingToMarkWrongWhileLoadingOrWithoutAnswer) {
  SentenceModel model(selection(), setup(), AITitles(loc, "fr"), ask, cache);
  model.markWrong(SentenceAction::analyse);
  EXPECT_TRUE(sent.empty());
  model.open(SentenceAction::analyse);
  model.markWrong(SentenceAction::analyse);
  EXPECT_EQ(sent.size(), 1u);
  EXPECT_TRUE(forgotten.empty());
  EXPECT_EQ(sent[0].maxTokens, SentenceModel::kAnalysisTokens);
}

TEST_F(SentenceModelTest, AWrongMessageIsAskedAgainWithoutForgettingTerms) {
  answers = {"⚠️ Réponse vide.", "Structure : 子 + 氣"};
  SentenceModel model(selection(), setup(), AITitles(loc, "fr"), ask, cache);
  model.open(SentenceAction::analyse);
  model.wait(SentenceAction::analyse);
  model.markWrong(SentenceAction::analyse);
  model.wait(SentenceAction::analyse);
  EXPECT_TRUE(forgotten.empty());
  EXPECT_EQ(model.answer(SentenceAction::analyse), "Structure : 子 + 氣");
}

}  // namespace
}  // namespace vesko
