// What `ask` adds to a question beyond the exchange itself: a loopback server that answers at once
// plays Claude, and each question is timed alone, beside the same HTTP exchange made directly
// through the client (the server's own time and the transport). Then 20 questions at once, each
// with its own text that the server echoes, so that an answer handed to the wrong question shows.
// Target: ask's median overhead <= 1 ms; the 20 concurrent questions all answered, none mixed up.
// Needs no data files.

#include <cstdio>
#include <future>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ai/cloud_ai.h"
#include "ai/curl_http_client.h"
#include "ai/wire_protocol.h"
#include "bench_common.h"
#include "support/ai_world.h"
#include "support/fake_providers.h"

using nlohmann::literals::operator""_json_pointer;

namespace {

using vesko::bench::Clock;
using vesko::testing::FakeProviders;

constexpr int kRounds = 2000;
constexpr int kConcurrent = 20;
constexpr int kConcurrentRounds = 50;

double microsecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

// "q3-17": built by appending, which also spares GCC 12 a false -Wrestrict on "q" + string.
std::string questionText(int round, int i) {
  std::string text = "q";
  text += std::to_string(round);
  text += '-';
  text += std::to_string(i);
  return text;
}

void report(const char* name, std::vector<double> us) {
  std::printf("%s median: %.1f µs\n", name, vesko::bench::percentile(us, 0.50));
  std::printf("%s p90: %.1f µs\n", name, vesko::bench::percentile(us, 0.90));
  std::printf("%s p99: %.1f µs\n", name, vesko::bench::percentile(us, 0.99));
}

}  // namespace

int main() {
  const vesko::CurlLibrary curl;
  FakeProviders providers(kConcurrent + 4);
  // Claude echoes the question, so that each answer can be matched to its question.
  providers.script(FakeProviders::kClaude, [](const httplib::Request& request) {
    const auto body = nlohmann::json::parse(request.body, nullptr, false);
    const std::string user =
        body.is_object() ? body.value("/messages/0/content"_json_pointer, std::string()) : "";
    return vesko::testing::ScriptedReply{200, FakeProviders::claudeAnswer("re: " + user)};
  });
  vesko::testing::AIWorld world(providers.url());
  world.set("aiProvider", 1);
  world.setKey(vesko::AIProvider::claude, vesko::testing::kClaudeKey);

  const vesko::Question question{"Tu es un professeur.", "Que veut dire 学习 ?", 300};
  const vesko::CurlHttpClient http;
  vesko::HttpRequest direct =
      vesko::chatRequest(vesko::AIProvider::claude, providers.url(), vesko::testing::kClaudeKey,
                         "claude-haiku-4-5-20251001", question);

  std::vector<double> exchange, answer, asked;
  for (int i = 0; i < 50; ++i) (void)world.ai->answer(question);  // warm up
  for (int i = 0; i < kRounds; ++i) {
    auto start = Clock::now();
    auto reply = http.send(direct);
    exchange.push_back(microsecondsSince(start));
    if (!reply || reply->status != 200) std::printf("direct exchange failed\n");

    start = Clock::now();
    auto reply2 = world.ai->answer(question);
    answer.push_back(microsecondsSince(start));
    if (reply2.answer.isMessage()) std::printf("answer failed: %s\n", reply2.answer.text.c_str());

    start = Clock::now();
    auto reply3 = world.ai->ask(question.system, question.user, question.maxTokens).get();
    asked.push_back(microsecondsSince(start));
  }
  report("direct exchange", exchange);
  report("answer (same thread)", answer);
  report("ask (future)", asked);
  std::printf("answer overhead median: %.1f µs\n",
              vesko::bench::median(answer) - vesko::bench::median(exchange));
  std::printf("ask overhead median: %.1f µs\n",
              vesko::bench::median(asked) - vesko::bench::median(exchange));

  std::vector<double> rounds;
  int wrong = 0, failed = 0;
  for (int round = 0; round < kConcurrentRounds; ++round) {
    const auto start = Clock::now();
    std::vector<std::future<vesko::AIAnswer>> answers;
    for (int i = 0; i < kConcurrent; ++i)
      answers.push_back(world.ai->ask("sys", questionText(round, i), 50));
    for (int i = 0; i < kConcurrent; ++i) {
      const vesko::AIAnswer got = answers[i].get();
      if (got.isMessage())
        ++failed;
      else if (got.text != "re: " + questionText(round, i))
        ++wrong;
    }
    rounds.push_back(microsecondsSince(start));
  }
  report("20 concurrent questions, whole round", rounds);
  std::printf("20 concurrent questions: %d rounds, %d failed, %d mixed up\n", kConcurrentRounds,
              failed, wrong);
  return failed + wrong == 0 ? 0 : 1;
}
