// The providers' wire formats without a network: where each request goes, what it carries, and
// how refusals and answers are read from replies, hostile ones included.

#include "ai/wire_protocol.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace vesko {
namespace {

using nlohmann::json;

std::string header(const HttpRequest& request, std::string_view name) {
  for (const auto& [key, value] : request.headers)
    if (key == name) return value;
  return "<absent>";
}

TEST(WireProtocolTest, PathsAndKeyHeaders) {
  const Question question{"sys", "user", 64};
  struct Row {
    AIProvider provider;
    const char* base;
    const char* url;
    const char* keyHeader;
    const char* keyValue;
  };
  const Row rows[] = {
      {AIProvider::claude, "https://api.anthropic.com", "https://api.anthropic.com/v1/messages",
       "x-api-key", "K"},
      {AIProvider::openai, "https://api.openai.com/", "https://api.openai.com/v1/chat/completions",
       "Authorization", "Bearer K"},
      {AIProvider::deepseek, "https://api.deepseek.com",
       "https://api.deepseek.com/chat/completions", "Authorization", "Bearer K"},
      {AIProvider::apple, "http://127.0.0.1:11434/v1", "http://127.0.0.1:11434/v1/chat/completions",
       "Authorization", "<absent>"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.url);
    const HttpRequest request = chatRequest(
        row.provider, row.base, row.provider == AIProvider::apple ? "" : "K", "m", question);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, row.url);
    EXPECT_EQ(header(request, row.keyHeader), row.keyValue);
    EXPECT_EQ(header(request, "content-type"), "application/json");
    EXPECT_EQ(header(request, "anthropic-version"),
              row.provider == AIProvider::claude ? "2023-06-01" : "<absent>");
    const json body = json::parse(request.body);
    EXPECT_FALSE(body.contains("temperature"));
    EXPECT_EQ(body.contains("max_tokens"), row.provider != AIProvider::apple);
  }
}

TEST(WireProtocolTest, SystemTextPlacement) {
  const Question question{"Sois bref.", "学习 ?", 200};
  const json claude = json::parse(chatRequest(AIProvider::claude, "h", "k", "c", question).body);
  EXPECT_EQ(claude["system"], "Sois bref.");
  EXPECT_EQ(claude["messages"], json::parse(R"([{"role":"user","content":"学习 ?"}])"));
  EXPECT_EQ(claude["max_tokens"], 200);
  const json openai = json::parse(chatRequest(AIProvider::openai, "h", "k", "o", question).body);
  EXPECT_FALSE(openai.contains("system"));
  EXPECT_EQ(openai["messages"][0], json::parse(R"({"role":"system","content":"Sois bref."})"));
  EXPECT_EQ(openai["messages"][1]["content"], "学习 ?");
  EXPECT_FALSE(openai.contains("stream"));
}

TEST(WireProtocolTest, TextThatIsNotUtf8SendsAnEmptyBody) {
  const Question question{"sys", std::string("caf\xe9"), 10};
  EXPECT_EQ(chatRequest(AIProvider::openai, "h", "k", "m", question).body, "");
}

TEST(WireProtocolTest, RelayRequest) {
  const HttpRequest request =
      relayRequest("https://vesko.example/", {"dev", "tok"}, {"s", "u", 99}, "Vesko/1.2");
  EXPECT_EQ(request.url, "https://vesko.example/v1/ai");
  EXPECT_EQ(header(request, "User-Agent"), "Vesko/1.2");
  EXPECT_EQ(
      json::parse(request.body),
      json::parse(R"({"device":"dev","token":"tok","user":"u","system":"s","maxTokens":99})"));
}

TEST(WireProtocolTest, ReadRefusal) {
  struct Row {
    const char* name;
    long status;
    const char* body;
    const char* message;
    bool unreachable, modelGone, overloaded;
  };
  const Row rows[] = {
      {"overloaded 529", 529, R"({"error":{"type":"overloaded_error","message":"Overloaded"}})",
       "Overloaded", true, false, true},
      {"rate limit 429", 429, R"({"error":{"message":"slow down"}})", "slow down", true, false,
       true},
      {"503 without body", 503, "", "", true, false, true},
      {"busy in a 400", 400, R"({"error":{"message":"Server BUSY"}})", "Server BUSY", false, false,
       true},
      {"model gone", 404, R"({"error":{"message":"Model xyz not found"}})", "Model xyz not found",
       false, true, false},
      {"not_found code, numeric", 400,
       R"({"error":{"code":404,"type":"not_found","message":"no such model"}})", "no such model",
       false, true, false},
      {"404 about a route", 404, R"({"error":{"message":"no route"}})", "no route", false, false,
       false},
      {"billing 403", 403, R"({"error":{"message":"billing"}})", "billing", true, false, false},
      {"401 bad key", 401, R"({"error":{"message":"invalid x-api-key"}})", "invalid x-api-key",
       false, false, false},
      {"error is a string", 500, R"({"error":"boom"})", "", true, false, false},
      {"broken JSON", 502, R"({"error":{"message":)", "", true, false, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Refusal refusal = readRefusal(row.status, row.body);
    EXPECT_EQ(refusal.message, row.message);
    EXPECT_EQ(refusal.unreachable, row.unreachable);
    EXPECT_EQ(refusal.modelGone, row.modelGone);
    EXPECT_EQ(refusal.overloaded, row.overloaded);
  }
}

TEST(WireProtocolTest, ReadAnswerFollowsEachProvidersPath) {
  const char* claude = R"({"content":[{"type":"text","text":"  A \n"}]})";
  const char* chat = R"({"choices":[{"message":{"content":"\n\nB\t"}}]})";
  EXPECT_EQ(readAnswer(AIProvider::claude, claude), "A");
  EXPECT_EQ(readAnswer(AIProvider::claude, chat), std::nullopt);
  EXPECT_EQ(readAnswer(AIProvider::openai, chat), "B");
  EXPECT_EQ(readAnswer(AIProvider::deepseek, chat), "B");
  EXPECT_EQ(readAnswer(AIProvider::apple, chat), "B");
  EXPECT_EQ(readAnswer(AIProvider::openai, claude), std::nullopt);
  EXPECT_EQ(readAnswer(AIProvider::claude, R"({"content":[]})"), std::nullopt);
  EXPECT_EQ(readAnswer(AIProvider::claude, R"({"content":["x"]})"), std::nullopt);
  EXPECT_EQ(readAnswer(AIProvider::openai, R"({"choices":[{"message":"x"}]})"), std::nullopt);
  EXPECT_EQ(readAnswer(AIProvider::openai, R"({"choices":{"0":1}})"), std::nullopt);
  // A blank answer is a string found: trimmed to nothing, and the caller calls it empty.
  EXPECT_EQ(readAnswer(AIProvider::openai, R"({"choices":[{"message":{"content":" \n"}}]})"), "");
}

TEST(WireProtocolTest, ReadRelayAnswerAndModelIds) {
  EXPECT_EQ(readRelayAnswer(R"({"ok":true,"text":"salut"})").text, "salut");
  EXPECT_EQ(readRelayAnswer(R"({"ok":false,"error":"quota"})").error, "quota");
  EXPECT_EQ(readRelayAnswer(R"({"ok":"true","text":"x"})").text, std::nullopt);
  EXPECT_EQ(readRelayAnswer("garbage").text, std::nullopt);
  EXPECT_EQ(readModelIds(R"({"data":[{"id":"a"},{"x":1},7,{"id":"b"}]})"),
            (std::vector<std::string>{"a", "b"}));
  EXPECT_TRUE(readModelIds(R"({"data":{}})").empty());
}

}  // namespace
}  // namespace vesko
