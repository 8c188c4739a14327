// CloudAI against real HTTP servers on 127.0.0.1 playing each provider: the choice of provider,
// failover to the backup and to the relay, the 30-minute window, the China rule, the overload
// retry and every refusal the learner may see.

#include "ai/cloud_ai.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/ai_world.h"

namespace vesko {
namespace {

using testing::AIWorld;
using testing::FakeProviders;
using testing::kClaudeKey;
using testing::kDeepSeekKey;
using testing::kOpenAIKey;

const CurlLibrary curlLibrary;

class CloudAITest : public ::testing::Test {
 protected:
  FakeProviders providers;
  AIWorld world{providers.url()};

  // Every log line and every text the learner saw in this test: never a key.
  void TearDown() override {
    std::vector<std::string> seen = world.logLines();
    for (const auto& text : world.texts()) seen.push_back(text);
    for (const auto& line : seen)
      for (const char* key : {kClaudeKey, kOpenAIKey, kDeepSeekKey})
        EXPECT_EQ(line.find(key), std::string::npos) << "a key in: " << line;
  }
};

TEST_F(CloudAITest, EachProviderAnswersThroughItsOwnProtocol) {
  world.setKey(AIProvider::claude, kClaudeKey);
  world.setKey(AIProvider::openai, kOpenAIKey);
  world.setKey(AIProvider::deepseek, kDeepSeekKey);
  struct Row {
    AIProvider provider;
    const char* path;
    const char* answer;
  };
  const Row rows[] = {
      {AIProvider::claude, FakeProviders::kClaude, "réponse de Claude"},
      {AIProvider::openai, FakeProviders::kOpenAI, "réponse de ChatGPT"},
      {AIProvider::deepseek, FakeProviders::kDeepSeek, "réponse de DeepSeek"},
      {AIProvider::apple, FakeProviders::kLocal, "réponse locale"},
      {AIProvider::vesko, FakeProviders::kRelay, "réponse de Vesko"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(providerRow(row.provider).name);
    world.set("aiProvider", static_cast<int>(row.provider));
    const AIReply reply = world.ask("Que veut dire 学习 ?");
    EXPECT_EQ(reply.answer.text, row.answer);
    EXPECT_EQ(reply.provider, row.provider);
    EXPECT_FALSE(reply.answer.unreachable);
    EXPECT_EQ(providers.hits(row.path), 1);
  }
  // The usage counter saw the replies of the services and the local model, not the relay's.
  std::vector<AIProvider> counted;
  for (const auto& [provider, body] : world.usage()) counted.push_back(provider);
  EXPECT_EQ(counted, (std::vector<AIProvider>{AIProvider::claude, AIProvider::openai,
                                              AIProvider::deepseek, AIProvider::apple}));
}

TEST_F(CloudAITest, RequestsCarryTheProtocolsFields) {
  world.setKey(AIProvider::claude, kClaudeKey);
  world.setKey(AIProvider::deepseek, kDeepSeekKey);
  world.set("aiProvider", 1);
  world.ask("Bonjour");
  auto claude = providers.last(FakeProviders::kClaude);
  EXPECT_EQ(claude.headers["x-api-key"], kClaudeKey);
  EXPECT_EQ(claude.headers["anthropic-version"], "2023-06-01");
  EXPECT_EQ(claude.headers["content-type"], "application/json");
  auto body = nlohmann::json::parse(claude.body);
  EXPECT_EQ(body, nlohmann::json::parse(R"({"model":"claude-haiku-4-5-20251001","max_tokens":300,
      "system":"Tu es un professeur.","messages":[{"role":"user","content":"Bonjour"}]})"));

  world.set("aiProvider", 3);
  world.set("deepseekModel", std::string("deepseek-chat"));
  world.ask("Bonjour");
  auto deepseek = providers.last(FakeProviders::kDeepSeek);
  EXPECT_EQ(deepseek.headers["authorization"], std::string("Bearer ") + kDeepSeekKey);
  EXPECT_EQ(nlohmann::json::parse(deepseek.body), nlohmann::json::parse(R"({"model":"deepseek-chat",
      "max_tokens":300,"messages":[{"role":"system","content":"Tu es un professeur."},
      {"role":"user","content":"Bonjour"}],"stream":false,"thinking":{"type":"disabled"}})"));

  world.set("aiProvider", 4);
  world.ask("Bonjour");
  auto relay = providers.last(FakeProviders::kRelay);
  EXPECT_EQ(relay.headers["user-agent"], "Vesko/0.1.0");
  EXPECT_EQ(relay.headers.count("authorization"), 0u);
  EXPECT_EQ(nlohmann::json::parse(relay.body),
            nlohmann::json::parse(R"({"device":"device-1","token":"token-1","user":"Bonjour",
      "system":"Tu es un professeur.","maxTokens":300})"));

  // The local server: no key, the first model it lists, and the budget left to the model.
  world.set("aiProvider", 0);
  world.ask("Bonjour");
  auto local = nlohmann::json::parse(providers.last(FakeProviders::kLocal).body);
  EXPECT_EQ(local["model"], "qwen2.5:3b");
  EXPECT_FALSE(local.contains("max_tokens"));
  EXPECT_EQ(providers.last(FakeProviders::kLocal).headers.count("authorization"), 0u);
}

TEST_F(CloudAITest, OnlyClaudeTakesTheModelOverride) {
  world.setKey(AIProvider::claude, kClaudeKey);
  world.setKey(AIProvider::openai, kOpenAIKey);
  ASSERT_EQ(world.ai->strongerClaudeModel(), "claude-sonnet-5-5");
  world.set("aiProvider", 1);
  world.ask("Dur", "claude-sonnet-5-5");
  EXPECT_EQ(nlohmann::json::parse(providers.last(FakeProviders::kClaude).body)["model"],
            "claude-sonnet-5-5");
  world.set("aiProvider", 2);
  world.ask("Dur", "claude-sonnet-5-5");
  EXPECT_EQ(nlohmann::json::parse(providers.last(FakeProviders::kOpenAI).body)["model"],
            "gpt-4o-mini");
  world.set("claudeModel", std::string("claude-sonnet-4-5"));
  EXPECT_EQ(world.ai->strongerClaudeModel(), std::nullopt);
}

TEST_F(CloudAITest, EffectiveProvider) {
  struct Row {
    const char* name;
    int chosen;
    int backup;
    bool claudeKey, deepseekKey, relayPaused, localUp;
    AIProvider expected;
  };
  const Row rows[] = {
      {"claude with its key", 1, 0, true, false, false, true, AIProvider::claude},
      {"claude without key, no backup", 1, 0, false, false, false, true, AIProvider::vesko},
      {"claude without key, backup with key", 1, 3, false, true, false, true, AIProvider::claude},
      {"claude without key, backup without", 1, 2, false, true, false, true, AIProvider::vesko},
      {"backup index 4 is no backup", 1, 4, false, true, false, true, AIProvider::vesko},
      {"relay chosen", 4, 0, false, false, false, true, AIProvider::vesko},
      {"relay chosen but paused", 4, 0, false, false, true, true, AIProvider::apple},
      {"relay paused keeps a keyless choice", 1, 0, false, false, true, true, AIProvider::claude},
      {"local model up", 0, 0, false, false, false, true, AIProvider::apple},
      {"local model down", 0, 0, false, false, false, false, AIProvider::vesko},
      {"index out of range counts as local", 9, 0, false, false, false, true, AIProvider::apple},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    world.set("aiProvider", row.chosen);
    world.set("aiBackup", row.backup);
    world.setKey(AIProvider::claude, row.claudeKey ? kClaudeKey : "");
    world.setKey(AIProvider::deepseek, row.deepseekKey ? kDeepSeekKey : "");
    world.remote.relay = row.relayPaused;
    world.set("localModelURL",
              row.localUp ? providers.localUrl() : std::string("http://127.0.0.1:1/v1"));
    EXPECT_EQ(world.ai->effectiveProvider(), row.expected);
  }
}

TEST_F(CloudAITest, MissingProviderMessage) {
  world.set("aiProvider", 1);
  world.set("aiBackup", 3);
  world.setKey(AIProvider::deepseek, kDeepSeekKey);
  EXPECT_EQ(world.ai->missingProviderMessage(), "Il manque la clé Claude dans Réglages → IA.");
  world.setKey(AIProvider::deepseek, "");
  EXPECT_EQ(world.ai->missingProviderMessage(),
            "L'IA locale n'est pas disponible : lance un serveur de modèle local, ou choisis "
            "Claude ou DeepSeek dans Réglages → IA.");
}

TEST_F(CloudAITest, LocalServerDownGivesItsMessageAndTheRelayAnswers) {
  world.set("aiProvider", 0);
  world.set("localModelURL", std::string("http://127.0.0.1:1/v1"));
  EXPECT_FALSE(world.ai->localModelAvailable());
  // The effective provider is already the relay when the local server does not answer.
  EXPECT_EQ(world.ask("Bonjour").provider, AIProvider::vesko);
  world.remote.relay = true;  // the choice stands, and the local model's own message is shown
  const AIReply reply = world.ask("Bonjour");
  EXPECT_EQ(reply.provider, AIProvider::apple);
  EXPECT_TRUE(reply.answer.text.starts_with("⚠️ L'IA locale n'est pas disponible"));
  EXPECT_TRUE(reply.answer.unreachable);
}

TEST_F(CloudAITest, MissingKeyTexts) {
  world.remote.relay = true;  // keep the keyless choice instead of the relay
  struct Row {
    int provider;
    const char* text;
  };
  const Row rows[] = {
      {1, "⚠️ Ajoute ta clé Claude dans Réglages → IA."},
      {2, "⚠️ Ajoute ta clé ChatGPT (OpenAI) dans Réglages → IA."},
      {3, "⚠️ Ajoute ta clé DeepSeek dans Réglages → IA."},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.provider);
    world.set("aiProvider", row.provider);
    const AIReply reply = world.ask("Bonjour");
    EXPECT_EQ(reply.answer.text, row.text);
    EXPECT_EQ(reply.answer.flags(), 0);
  }
}

TEST_F(CloudAITest, EnvironmentKeyIsUsedWhenTheStoreHasNone) {
  world.set("aiProvider", 2);
  world.setEnvironment("OPENAI_API_KEY", kOpenAIKey);
  EXPECT_EQ(world.ask("Bonjour").answer.text, "réponse de ChatGPT");
  EXPECT_EQ(providers.last(FakeProviders::kOpenAI).headers["authorization"],
            std::string("Bearer ") + kOpenAIKey);
}

TEST_F(CloudAITest, UnreachablePrimaryFailsOverToTheBackupWithAKey) {
  world.set("aiProvider", 1);
  world.set("aiBackup", 3);
  world.setKey(AIProvider::claude, kClaudeKey);
  world.setKey(AIProvider::deepseek, kDeepSeekKey);
  providers.script(FakeProviders::kClaude, 500, R"({"error":{"message":"internal"}})");
  const AIReply reply = world.ask("Bonjour");
  EXPECT_EQ(reply.answer.text, "réponse de DeepSeek");
  EXPECT_EQ(reply.provider, AIProvider::deepseek);
  EXPECT_EQ(providers.hits(FakeProviders::kRelay), 0);
}

TEST_F(CloudAITest, UnreachablePrimaryWithoutBackupKeyGoesToTheRelay) {
  world.set("aiProvider", 1);
  world.set("aiBackup", 2);  // a backup, but without a key
  world.setKey(AIProvider::claude, kClaudeKey);
  providers.script(FakeProviders::kClaude, 503, R"({"error":{"message":"unavailable"}})");
  const AIReply reply = world.ask("Bonjour");
  EXPECT_EQ(reply.answer.text, "réponse de Vesko");
  EXPECT_EQ(reply.provider, AIProvider::vesko);
  EXPECT_EQ(providers.hits(FakeProviders::kOpenAI), 0);

  world.remote.relay = true;  // paused relay: the primary's own text stays
  const AIReply alone = world.ask("Bonjour");
  EXPECT_EQ(alone.provider, AIProvider::claude);
  EXPECT_TRUE(alone.answer.unreachable);
}

TEST_F(CloudAITest, BackupWindowLastsThirtyMinutes) {
  world.set("aiProvider", 2);
  world.set("aiBackup", 3);
  world.setKey(AIProvider::openai, kOpenAIKey);
  world.setKey(AIProvider::deepseek, kDeepSeekKey);
  providers.script(FakeProviders::kOpenAI, 502, "Bad gateway");
  EXPECT_EQ(world.ask("un").provider, AIProvider::deepseek);
  EXPECT_EQ(providers.hits(FakeProviders::kOpenAI), 1);

  providers.script(FakeProviders::kOpenAI, 200, FakeProviders::chatAnswer("de retour"));
  world.clock.advance(std::chrono::seconds(1799));
  EXPECT_EQ(world.ask("deux").provider, AIProvider::deepseek);
  EXPECT_EQ(providers.hits(FakeProviders::kOpenAI), 1);  // the primary was not touched
  world.clock.advance(std::chrono::seconds(1));
  world.clock.advance(std::chrono::seconds(1));  // 30 minutes and one second
  const AIReply back = world.ask("trois");
  EXPECT_EQ(back.provider, AIProvider::openai);
  EXPECT_EQ(back.answer.text, "de retour");
}

TEST_F(CloudAITest, ChinaTimeZoneAsksTheBackupFirst) {
  world.setKey(AIProvider::claude, kClaudeKey);
  world.setKey(AIProvider::openai, kOpenAIKey);
  world.setKey(AIProvider::deepseek, kDeepSeekKey);
  world.set("aiBackup", 3);
  struct Row {
    const char* zone;
    int provider;
    bool inChinaSwitch;
    AIProvider expected;
  };
  const Row rows[] = {
      {"Asia/Shanghai", 1, true, AIProvider::deepseek},
      {"Asia/Urumqi", 2, true, AIProvider::deepseek},
      {"Asia/Chongqing", 1, true, AIProvider::deepseek},
      {"Asia/Harbin", 2, true, AIProvider::deepseek},
      {"Asia/Kashgar", 1, true, AIProvider::deepseek},
      {"Asia/Shanghai", 1, false, AIProvider::claude},  // switch off
      {"Asia/Hong_Kong", 1, true, AIProvider::claude},  // not mainland
      {"Asia/Taipei", 2, true, AIProvider::openai},
      {"Europe/Paris", 1, true, AIProvider::claude},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.zone);
    world.setTimeZone(row.zone);
    world.set("aiProvider", row.provider);
    world.set("aiBackupInChina", row.inChinaSwitch);
    EXPECT_EQ(world.ask("Bonjour").provider, row.expected);
  }
  // DeepSeek as primary is never moved by the rule.
  world.set("aiProvider", 3);
  world.set("aiBackup", 1);
  world.setTimeZone("Asia/Shanghai");
  EXPECT_EQ(world.ask("Bonjour").provider, AIProvider::deepseek);
}

TEST_F(CloudAITest, OverloadIsRetriedOnceAfterTwoSeconds) {
  struct Row {
    int provider;
    const char* path;
    int status;
    const char* message;
    const char* label;
  };
  const Row rows[] = {
      {1, FakeProviders::kClaude, 529, "Overloaded", "Claude"},
      {2, FakeProviders::kOpenAI, 429, "Rate limit reached", "ChatGPT"},
      {3, FakeProviders::kDeepSeek, 503, "Service Unavailable", "DeepSeek"},
      {3, FakeProviders::kDeepSeek, 500, "Server busy, try later", "DeepSeek"},
  };
  world.setKey(AIProvider::claude, kClaudeKey);
  world.setKey(AIProvider::openai, kOpenAIKey);
  world.setKey(AIProvider::deepseek, kDeepSeekKey);
  world.remote.relay = true;  // no relay after the failure: the provider's own text is seen
  for (const auto& row : rows) {
    SCOPED_TRACE(row.message);
    world.set("aiProvider", row.provider);
    const int before = providers.hits(row.path);
    const auto pausesBefore = world.pauses().size();
    providers.script(row.path, row.status,
                     std::string(R"({"error":{"type":"x","message":")") + row.message + "\"}}");
    const AIReply reply = world.ask("Bonjour");
    EXPECT_EQ(providers.hits(row.path) - before, 2);
    ASSERT_EQ(world.pauses().size(), pausesBefore + 1);
    EXPECT_EQ(world.pauses().back(), std::chrono::milliseconds(2000));
    EXPECT_EQ(reply.answer.text,
              std::string("⚠️ ") + row.label +
                  " est surchargé en ce moment. Réessaie dans une minute, ou choisis une autre IA "
                  "dans Réglages → IA.");
    EXPECT_TRUE(reply.answer.unreachable);
    EXPECT_FALSE(reply.answer.modelGone);
  }
}

TEST_F(CloudAITest, OverloadThatClearsOnTheRetryGivesTheAnswer) {
  world.set("aiProvider", 1);
  world.setKey(AIProvider::claude, kClaudeKey);
  std::atomic<int> calls{0};
  providers.script(FakeProviders::kClaude, [&calls](const httplib::Request&) {
    if (calls++ == 0) return testing::ScriptedReply{529, R"({"error":{"message":"Overloaded"}})"};
    return testing::ScriptedReply{200, FakeProviders::claudeAnswer("enfin")};
  });
  // The real pause this once: the retry comes no sooner than two seconds later.
  world.rebuild([](CloudAIOptions&) {});
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(world.ask("Bonjour").answer.text, "enfin");
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST_F(CloudAITest, Refusals) {
  struct Row {
    const char* name;
    int status;
    std::string body;
    std::string text;
    bool unreachable, modelGone;
  };
  const Row rows[] = {
      {"model gone", 404,
       R"({"type":"error","error":{"type":"not_found_error","message":"model: claude-3-haiku-20240307"}})",
       "⚠️ Le service a refusé la demande : model: claude-3-haiku-20240307", false, true},
      {"not_found kind about the model", 400,
       R"({"error":{"type":"invalid_request_error","code":"model_not_found","message":"The model `gpt-9` does not exist"}})",
       "⚠️ Le service a refusé la demande : The model `gpt-9` does not exist", false, true},
      {"404 not about a model", 404, R"({"error":{"message":"Not found"}})",
       "⚠️ Le service a refusé la demande : Not found", false, false},
      {"billing", 403,
       R"({"error":{"message":"Your credit balance is too low to access the API. Please go to Plans & Billing."}})",
       "⚠️ Le service a refusé la demande : Your credit balance is too low to access the API. "
       "Please go to Plans & Billing.",
       true, false},
      {"no message", 400, "{}", "⚠️ Le service a refusé la demande : erreur 400", false,
       false},
      {"message not a string", 401, R"({"error":{"message":42}})",
       "⚠️ Le service a refusé la demande : erreur 401", false, false},
      {"html gateway page", 502, "<html><body>Bad Gateway</body></html>",
       "⚠️ Le service a refusé la demande : erreur 502", true, false},
  };
  world.set("aiProvider", 1);
  world.setKey(AIProvider::claude, kClaudeKey);
  world.remote.relay = true;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    providers.script(FakeProviders::kClaude, [&row](const httplib::Request&) {
      return testing::ScriptedReply{row.status, row.body,
                                    row.body.starts_with("<") ? "text/html" : "application/json"};
    });
    const AIReply reply = world.ask("Bonjour");
    EXPECT_EQ(reply.answer.text, row.text);
    EXPECT_EQ(reply.answer.unreachable, row.unreachable);
    EXPECT_EQ(reply.answer.modelGone, row.modelGone);
  }
  EXPECT_TRUE(world.pauses().empty());  // none of these is an overload
}

TEST_F(CloudAITest, BillingRefusalHandsOverToTheBackup) {
  world.set("aiProvider", 1);
  world.set("aiBackup", 2);
  world.setKey(AIProvider::claude, kClaudeKey);
  world.setKey(AIProvider::openai, kOpenAIKey);
  providers.script(FakeProviders::kClaude, 403,
                   R"({"error":{"message":"Please check your plan and billing details"}})");
  const AIReply reply = world.ask("Bonjour");
  EXPECT_EQ(reply.provider, AIProvider::openai);
  EXPECT_EQ(reply.answer.text, "réponse de ChatGPT");
}

TEST_F(CloudAITest, AnswersAreTrimmedAndEmptyOnesSaySo) {
  struct Row {
    const char* name;
    std::string body;
    std::string text;
  };
  const Row rows[] = {
      {"blank lines around", FakeProviders::chatAnswer("\n\n  学习 : étudier \n\n"),
       "学习 : étudier"},
      {"empty choices", R"({"choices":[]})", "⚠️ Réponse vide."},
      {"null content", R"({"choices":[{"message":{"role":"assistant","content":null}}]})",
       "⚠️ Réponse vide."},
      {"content not text", R"({"choices":[{"message":{"content":[1,2]}}]})",
       "⚠️ Réponse vide."},
      {"malformed JSON", R"({"choices":[{"message":{"content":"oups")", "⚠️ Réponse vide."},
      {"JSON array", "[1,2,3]", "⚠️ Réponse vide."},
      {"not JSON at all", "<html>hello</html>", "⚠️ Réponse vide."},
      {"empty body", "", "⚠️ Réponse vide."},
  };
  world.set("aiProvider", 2);
  world.setKey(AIProvider::openai, kOpenAIKey);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    providers.script(FakeProviders::kOpenAI, 200, row.body);
    const AIReply reply = world.ask("Bonjour");
    EXPECT_EQ(reply.answer.text, row.text);
    EXPECT_EQ(reply.answer.flags(), 0);
  }
}

TEST_F(CloudAITest, PausedAIAnswersAtOnce) {
  world.remote.ai = true;
  world.set("aiProvider", 4);
  const AIReply reply = world.ask("Bonjour");
  EXPECT_EQ(reply.answer.text, "⚠️ L'IA est en pause pour le moment. Réessaie plus tard.");
  EXPECT_EQ(providers.hits(FakeProviders::kRelay), 0);
}

TEST_F(CloudAITest, RelayFailures) {
  world.set("aiProvider", 4);
  const std::string unavailable =
      "⚠️ IA Vesko ne répond pas pour le moment. Réessaie dans un instant.";
  providers.script(FakeProviders::kRelay, 200, R"({"ok":false,"error":"quota"})");
  EXPECT_EQ(world.ask("Bonjour").answer.text, unavailable);
  world.set("relayHost", std::string());
  const AIReply none = world.ask("Bonjour");
  EXPECT_EQ(none.answer.text, unavailable);
  EXPECT_TRUE(none.answer.unreachable);
}

TEST_F(CloudAITest, TextsFollowTheInterfaceLanguage) {
  world.set("uiLang", std::string("en"));
  world.set("aiProvider", 1);
  world.setKey(AIProvider::claude, kClaudeKey);
  world.remote.relay = true;
  providers.script(FakeProviders::kClaude, 529, R"({"error":{"message":"Overloaded"}})");
  EXPECT_EQ(world.ask("Hello").answer.text,
            "⚠️ Claude is overloaded right now. Try again in a minute, or choose another AI in "
            "Settings → AI.");
}

// An OpenAI refusal quotes the key it was sent; the learner and the log see it blanked out.
TEST_F(CloudAITest, AKeyQuotedByTheServiceIsBlankedOut) {
  world.set("aiProvider", 2);
  world.setKey(AIProvider::openai, kOpenAIKey);
  world.remote.relay = true;
  providers.script(FakeProviders::kOpenAI, [](const httplib::Request& request) {
    const std::string sent = request.get_header_value("Authorization").substr(7);
    return testing::ScriptedReply{
        401, R"({"error":{"message":"Incorrect API key provided: )" + sent + R"(."}})"};
  });
  const AIReply reply = world.ask("Bonjour");
  EXPECT_EQ(reply.answer.text,
            "⚠️ Le service a refusé la demande : Incorrect API key provided: ….");
  // TearDown checks the log lines and the text for the key itself.
}

}  // namespace
}  // namespace vesko
