// `vesko usage` run as a learner's script would, with VESKO_HOME in a fresh folder; `vesko models`
// driven in-process against a loopback server that plays the providers.

#include "cli/usage_command.h"

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "support/fake_clock.h"
#include "support/loopback_http_client.h"
#include "support/model_list_server.h"
#include "support/run_command.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using nlohmann::json;

class UsageCommandTest : public ::testing::Test {
 protected:
  testing::CommandRun vesko(const std::string& arguments, const std::string& language = "fr_FR") {
    return testing::runCommand(
        "env -u LANGUAGE -u LC_ALL -u LC_MESSAGES VESKO_HOME=" + home.path().string() +
        " LANG=" + language + ".UTF-8 " + VESKO_CLI + " " + arguments + " </dev/null 2>/dev/null");
  }
  void writeSettings(const json& values) {
    std::filesystem::create_directories(home.path() / "config");
    std::ofstream(home.path() / "config" / "settings.json") << values.dump(2);
  }

  testing::TempDir home;
};

TEST_F(UsageCommandTest, JsonGivesTheThreePeriods) {
  auto empty = vesko("usage --json");
  ASSERT_EQ(empty.status, 0);
  auto periods = json::parse(empty.out);
  for (const char* name : {"today", "month", "lastMonth"}) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(periods.contains(name));
    EXPECT_EQ(periods[name]["calls"], 0);
    EXPECT_EQ(periods[name]["usd"], 0);
    EXPECT_EQ(periods[name]["byProvider"], json::object());
  }
  const std::string today = periods["today"]["key"];
  const std::string month = periods["month"]["key"];
  const std::string lastMonth = periods["lastMonth"]["key"];
  EXPECT_TRUE(today.starts_with("aiu.d.") && today.size() == 16) << today;
  EXPECT_TRUE(month.starts_with("aiu.m.") && month.size() == 13) << month;
  EXPECT_EQ(today.substr(6, 7), month.substr(6));
  EXPECT_NE(lastMonth, month);

  writeSettings(
      {{today,
        {{"calls", 3},
         {"in", 4000},
         {"out", 600},
         {"usd", 0.0047},
         {"usd.Claude", 0.0035},
         {"usd.ChatGPT", 0.0012}}},
       {lastMonth,
        {{"calls", 1}, {"in", 1000000}, {"out", 10000}, {"usd", 5.25}, {"usd.DeepSeek", 5.25}}}});
  auto filled = json::parse(vesko("usage --json").out);
  EXPECT_EQ(filled["today"]["calls"], 3);
  EXPECT_TRUE(filled["today"]["calls"].is_number_integer());
  EXPECT_TRUE(filled["today"]["in"].is_number_integer());
  EXPECT_TRUE(filled["today"]["usd"].is_number_float());
  EXPECT_EQ(filled["today"]["in"], 4000);
  EXPECT_EQ(filled["today"]["out"], 600);
  EXPECT_EQ(filled["today"]["byProvider"], json::parse(R"({"claude":0.0035,"openai":0.0012})"));
  EXPECT_EQ(filled["lastMonth"]["usd"], 5.25);
  EXPECT_EQ(filled["lastMonth"]["byProvider"], json::parse(R"({"deepseek":5.25})"));
  EXPECT_EQ(filled["month"]["calls"], 0);

  auto french = vesko("usage");
  ASSERT_EQ(french.status, 0);
  std::istringstream lines(french.out);
  std::string line;
  std::vector<std::string> all;
  while (std::getline(lines, line)) all.push_back(line);
  ASSERT_GE(all.size(), 5u) << french.out;
  EXPECT_EQ(all[0], "Ce que tu consommes (estimation)");
  EXPECT_TRUE(all[1].starts_with("  IA aujourd'hui")) << all[1];
  EXPECT_NE(all[1].find("< 0,01 $"), std::string::npos) << all[1];
  EXPECT_NE(all[1].find("Claude"), std::string::npos) << all[1];
  EXPECT_NE(all[2].find("rien pour l'instant"), std::string::npos) << all[2];
  EXPECT_NE(all[3].find("5,25 $"), std::string::npos) << all[3];
  EXPECT_NE(all[4].find("prix publics"), std::string::npos) << all[4];

  auto english = vesko("usage", "en_GB");
  EXPECT_NE(english.out.find("AI last month"), std::string::npos) << english.out;
  EXPECT_NE(english.out.find("nothing yet"), std::string::npos) << english.out;
}

struct Captured {
  int exitCode = -1;
  std::string out;
  std::string err;
};

class ModelsCommandTest : public ::testing::Test {
 protected:
  ModelsCommandTest() {
    settings.overrideForRun("uiLang", std::string("fr"));
    for (const char* name : {"claude", "openai", "deepseek"})
      EXPECT_TRUE(settings.set(std::string(name) + "Host", server.base() + "/" + name));
  }

  Captured run(const std::string& arguments) {
    CLI::App app;
    Captured captured;
    cli::addModelsCommand(
        app, settings, http,
        [](AIProvider provider) {
          return provider == AIProvider::deepseek ? std::string() : std::string("sk-test-key");
        },
        captured.exitCode);
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    try {
      app.parse(arguments, false);
    } catch (const CLI::ParseError&) {
      captured.exitCode = 2;
    }
    captured.out = ::testing::internal::GetCapturedStdout();
    captured.err = ::testing::internal::GetCapturedStderr();
    return captured;
  }

  testing::ModelListServer server{"sk-test-key"};
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  testing::LoopbackHttpClient http;
};

TEST_F(ModelsCommandTest, ListsNewestFirst) {
  server.reply(200,
               R"({"data":[{"id":"claude-3-5-haiku-20241022","created_at":"2024-10-22T00:00:00Z"},
      {"id":"claude-sonnet-4-5","created_at":"2025-09-29T00:00:00Z"},{"id":"claude-next"}]})");
  auto asJson = run("models claude --json");
  EXPECT_EQ(asJson.exitCode, 0) << asJson.err;
  EXPECT_EQ(json::parse(asJson.out), json::parse(R"([
      {"id":"claude-sonnet-4-5","created":1759104000},
      {"id":"claude-3-5-haiku-20241022","created":1729555200},
      {"id":"claude-next"}])"));

  auto text = run("models claude");
  EXPECT_EQ(text.exitCode, 0);
  EXPECT_EQ(text.out,
            "claude-sonnet-4-5          2025-09-29\n"
            "claude-3-5-haiku-20241022  2024-10-22\n"
            "claude-next\n");

  server.reply(200, R"({"data":[{"id":"tts-1"},{"id":"gpt-5"}]})");
  EXPECT_EQ(json::parse(run("models openai --json").out), json::parse(R"([{"id":"gpt-5"}])"));
}

TEST_F(ModelsCommandTest, FailuresSayTheListIsUnavailable) {
  struct Row {
    const char* arguments;
    int status;
    const char* body;
    const char* says;
  };
  const Row rows[] = {
      {"models claude", 200, R"({"object":"list"})", "Liste indisponible"},
      {"models claude --json", 200, "{not json", "Liste indisponible"},
      {"models openai", 500, R"({"data":[]})", "HTTP 500"},
      // No key: no request at all.
      {"models deepseek", 200, R"({"data":[]})", "pas de clé"},
      {"models local", 200, R"({"data":[]})", "claude, openai or deepseek"},
      {"models vesko", 200, R"({"data":[]})", "claude, openai or deepseek"},
      {"models gemini", 200, R"({"data":[]})", "claude, openai or deepseek"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arguments);
    server.reply(row.status, row.body);
    auto failed = run(row.arguments);
    EXPECT_EQ(failed.exitCode, 2);
    EXPECT_TRUE(failed.out.empty()) << failed.out;
    EXPECT_NE(failed.err.find(row.says), std::string::npos) << failed.err;
    EXPECT_EQ(failed.err.find("sk-test-key"), std::string::npos);
  }
}

}  // namespace
}  // namespace vesko
