// The explanation request against the real CloudAI and the fake providers on 127.0.0.1: what the
// service receives for a first try, a second try, and on the local model.
#include "ai/explanation.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "ai/answer_language.h"
#include "support/ai_world.h"
#include "support/fake_providers.h"

namespace vesko {
namespace {

using testing::AIWorld;
using testing::FakeProviders;

class ExplanationTest : public ::testing::Test {
 protected:
  FakeProviders providers;
  AIWorld world{providers.url()};
};

TEST_F(ExplanationTest, SecondTryOnClaudeAsksTheStrongerModel) {
  world.setKey(AIProvider::claude, testing::kClaudeKey);
  world.set("aiProvider", 1);
  providers.script(FakeProviders::kClaude, 200, FakeProviders::claudeAnswer("Sens : d'avance"));
  Explainer explainer(*world.ai, world.loc());
  ExplainQuestion question{"upfront", "pay upfront", "anglais", false, std::nullopt};

  auto first = explainer.request(question);
  EXPECT_EQ(explainer.explain(first).get().text, "Sens : d'avance");
  auto body = nlohmann::json::parse(providers.last(FakeProviders::kClaude).body);
  EXPECT_EQ(body["model"], "claude-haiku-4-5-20251001");
  EXPECT_EQ(body["max_tokens"], 420);
  EXPECT_EQ(body["messages"][0]["content"], first.question().user);
  EXPECT_TRUE(std::string(body["messages"][0]["content"]).starts_with("[Réponds en français]\n"));

  question.wrong = WrongAnswer{"Sens : franc", ""};
  auto second = explainer.request(question);
  EXPECT_EQ(explainer.answer(second).provider, AIProvider::claude);
  body = nlohmann::json::parse(providers.last(FakeProviders::kClaude).body);
  EXPECT_EQ(body["model"], "claude-sonnet-5-5");
  EXPECT_NE(std::string(body["messages"][0]["content"]).find("FAUSSE"), std::string::npos);
}

TEST_F(ExplanationTest, LocalModelGetsTheWrappedTextAndNoOverride) {
  world.set("aiProvider", 0);
  world.set("uiLang", std::string("ru"));
  Explainer explainer(*world.ai, world.loc());
  ExplainQuestion question{"画蛇添足", std::nullopt, "chinois", true,
                           WrongAnswer{"Смысл: змея", "нет"}};
  auto request = explainer.request(question);
  EXPECT_EQ(request.answerLanguage, "ru");
  EXPECT_EQ(request.model, std::nullopt);
  EXPECT_EQ(request.maxTokens, 700);
  EXPECT_EQ(request.system, chineseTeacherSystemText("ru"));
  explainer.explain(request).get();
  auto body = nlohmann::json::parse(providers.last(FakeProviders::kLocal).body);
  EXPECT_EQ(body["messages"][0]["content"], request.system);
  EXPECT_EQ(body["messages"][1]["content"], "[Отвечай по-русски]\n" + request.user + "\n\n" +
                                                std::string(importantParagraph("ru")));
}

}  // namespace
}  // namespace vesko
