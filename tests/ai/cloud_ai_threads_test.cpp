// Many questions at once: each gets its own answer, and the backup window that their failovers
// share stays whole. Runs on an in-process HTTP fake so that ThreadSanitizer sees every thread.

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ai/cloud_ai.h"
#include "ai/wire_protocol.h"
#include "support/ai_world.h"

namespace vesko {
namespace {

using nlohmann::literals::operator""_json_pointer;

// ChatGPT is down; DeepSeek echoes the question back, so a mixed-up answer shows.
class FlakyHttp final : public HttpClient {
 public:
  std::expected<HttpReply, HttpFailure> send(const HttpRequest& request) const override {
    if (request.url.ends_with("/v1/chat/completions")) {
      ++primaryCalls;
      return HttpReply{503, "application/json", R"({"error":{"message":"down"}})"};
    }
    if (!request.url.ends_with("/chat/completions")) return HttpReply{404, "text/plain", ""};
    ++backupCalls;
    const auto body = nlohmann::json::parse(request.body, nullptr, false);
    const std::string user = body.value("/messages/1/content"_json_pointer, std::string("?"));
    return HttpReply{
        200, "application/json",
        nlohmann::json{{"choices", {{{"message", {{"content", "re: " + user}}}}}}}.dump()};
  }
  mutable std::atomic<int> primaryCalls{0};
  mutable std::atomic<int> backupCalls{0};
};

TEST(CloudAIThreadsTest, ConcurrentQuestionsShareOneBackupWindow) {
  FlakyHttp http;
  testing::AIWorld world("http://fake", &http);
  world.set("aiProvider", 2);
  world.set("aiBackup", 3);
  world.setKey(AIProvider::openai, testing::kOpenAIKey);
  world.setKey(AIProvider::deepseek, testing::kDeepSeekKey);

  constexpr int kQuestions = 24;
  std::vector<std::future<AIAnswer>> answers;
  for (int i = 0; i < kQuestions; ++i)
    answers.push_back(world.ai->ask("sys", "question " + std::to_string(i), 50));
  for (int i = 0; i < kQuestions; ++i) {
    const AIAnswer answer = answers[i].get();
    EXPECT_EQ(answer.text, "re: question " + std::to_string(i));
    EXPECT_EQ(answer.flags(), 0);
  }
  EXPECT_EQ(http.backupCalls.load(), kQuestions);
  // Each question that reached the primary retried it once after the (recorded) pause.
  EXPECT_EQ(http.primaryCalls.load() % 2, 0);
  EXPECT_GE(http.primaryCalls.load(), 2);

  // The window is open: a later question goes straight to the backup.
  const int before = http.primaryCalls.load();
  EXPECT_EQ(world.ai->ask("sys", "après", 50).get().text, "re: après");
  EXPECT_EQ(http.primaryCalls.load(), before);
}

TEST(CloudAIThreadsTest, SettingsChangedWhileQuestionsRun) {
  FlakyHttp http;
  testing::AIWorld world("http://fake", &http);
  world.set("aiBackup", 3);
  world.set("aiProvider", 3);
  world.setKey(AIProvider::deepseek, testing::kDeepSeekKey);
  std::atomic<bool> stop{false};
  std::thread switcher([&] {
    for (int i = 0; !stop; ++i) world.set("aiProvider", i % 2 == 0 ? 3 : 2);
  });
  std::vector<std::future<AIAnswer>> answers;
  for (int i = 0; i < 16; ++i) answers.push_back(world.ai->ask("sys", std::to_string(i), 10));
  for (int i = 0; i < 16; ++i) EXPECT_EQ(answers[i].get().text, "re: " + std::to_string(i));
  stop = true;
  switcher.join();
}

}  // namespace
}  // namespace vesko
