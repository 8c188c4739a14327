// Runs `vesko ask` and `vesko key` as a learner's script would, against the fake providers on
// 127.0.0.1, with VESKO_HOME in a fresh folder and no Secret Service (keys from the environment).

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "support/fake_providers.h"
#include "support/run_command.h"
#include "support/temp_dir.h"

namespace {

using nlohmann::json;
using vesko::testing::FakeProviders;

constexpr const char* kKey = "sk-ant-cli-test-KEY-93ab";

using Result = vesko::testing::CommandResult;

class AICommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // Through the environment the child inherits, never on its command line.
    setenv("ANTHROPIC_API_KEY", kKey, 1);
    unsetenv("OPENAI_API_KEY");
    unsetenv("DEEPSEEK_API_KEY");
    std::filesystem::create_directories(home.path() / "config");
    json settings = {{"claudeHost", providers.url()},         {"openaiHost", providers.url()},
                     {"deepseekHost", providers.url()},       {"relayHost", providers.url()},
                     {"localModelURL", providers.localUrl()}, {"aiProvider", 1}};
    home.write("config/settings.json", settings.dump());
  }
  void TearDown() override { unsetenv("ANTHROPIC_API_KEY"); }

  Result vesko(const std::string& arguments, const std::string& input = "") {
    auto err = home.path() / "err";
    auto in = home.write("in", input);
    std::string command =
        "env -u LANGUAGE -u LC_ALL -u LC_MESSAGES -u DBUS_SESSION_BUS_ADDRESS "
        "LANG=fr_FR.UTF-8 XDG_RUNTIME_DIR=" +
        (home.path() / "no-runtime").string() + " VESKO_HOME=" + home.path().string() + " " +
        VESKO_CLI + " " + arguments + " <" + in.string();
    return vesko::testing::runCommandWithErrors(command, err);
  }

  FakeProviders providers;
  vesko::testing::TempDir home;
};

TEST_F(AICommandTest, AskPrintsTheAnswer) {
  const Result run = vesko("ask 'Que veut dire 学习 ?'");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "réponse de Claude\n");
  EXPECT_EQ(providers.last(FakeProviders::kClaude).headers["x-api-key"], kKey);
}

TEST_F(AICommandTest, AskJsonShape) {
  const Result run = vesko("ask --json --system 'Sois bref.' --max-tokens 77 Bonjour");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(json::parse(run.out), json::parse(R"({"text":"réponse de Claude","unreachable":false,
      "modelGone":false,"provider":"claude"})"));
  const json body = json::parse(providers.last(FakeProviders::kClaude).body);
  EXPECT_EQ(body["max_tokens"], 77);
  EXPECT_EQ(body["system"], "Sois bref.");
}

TEST_F(AICommandTest, ProviderAndModelForThisQuestion) {
  const Result relay = vesko("ask --json --provider deepseek Bonjour");  // no DeepSeek key
  ASSERT_EQ(relay.status, 0) << relay.err;
  EXPECT_EQ(json::parse(relay.out)["provider"], "vesko");

  const Result local = vesko("ask --json --provider local --model llama3.2 Bonjour");
  ASSERT_EQ(local.status, 0) << local.err;
  EXPECT_EQ(json::parse(local.out)["provider"], "local");
  EXPECT_EQ(json::parse(providers.last(FakeProviders::kLocal).body)["model"], "llama3.2");
}

TEST_F(AICommandTest, FailuresExitTwo) {
  providers.script(FakeProviders::kClaude, 404, R"({"error":{"message":"model: gone-1"}})");
  const Result gone = vesko("ask --json Bonjour");
  EXPECT_EQ(gone.status, 2);
  EXPECT_EQ(json::parse(gone.out),
            json::parse(R"({"text":"⚠️ Le service a refusé la demande : model: gone-1",
      "unreachable":false,"modelGone":true,"provider":"claude"})"));

  struct Row {
    const char* arguments;
    const char* error;
  };
  const Row rows[] = {
      {"ask --provider mistral Bonjour", "unknown provider"},
      {"ask --max-tokens 0 Bonjour", "--max-tokens"},
      {"ask --provider vesko --model x Bonjour", "relay"},
      {"key set local", "unknown provider"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arguments);
    const Result run = vesko(row.arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find(row.error), std::string::npos) << run.err;
  }
}

TEST_F(AICommandTest, KeyStatusWithoutSecretService) {
  const Result run = vesko("key status --json");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(json::parse(run.out), json::parse(R"({"secretService":false,
      "providers":{"claude":"environment","openai":"none","deepseek":"none"}})"));
  const Result human = vesko("key status");
  EXPECT_NE(human.out.find("No Secret Service is reachable"), std::string::npos);
  EXPECT_NE(human.out.find("from ANTHROPIC_API_KEY"), std::string::npos);
  EXPECT_EQ(human.out.find(kKey), std::string::npos);
}

TEST_F(AICommandTest, KeySetReadsStandardInputAndSaysWhenThereIsNoStore) {
  const std::string typed = "sk-typed-never-shown-1234";
  const Result run = vesko("key set openai", typed + "\n");
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("no Secret Service is reachable"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("OPENAI_API_KEY"), std::string::npos);
  EXPECT_EQ(run.err.find(typed), std::string::npos);
  EXPECT_EQ(vesko("key set openai", "  \n").status, 2);  // nothing typed
}

TEST_F(AICommandTest, KeysStayOutOfTheFiles) {
  vesko("ask Bonjour");
  vesko("key status");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(home.path())) {
    if (!entry.is_regular_file()) continue;
    std::ifstream in(entry.path());
    const std::string content((std::istreambuf_iterator<char>(in)),
                              std::istreambuf_iterator<char>());
    EXPECT_EQ(content.find(kKey), std::string::npos) << entry.path();
  }
}

}  // namespace
