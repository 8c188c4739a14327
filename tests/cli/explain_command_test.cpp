// Runs `vesko explain` as a learner's script would, against the fake providers on 127.0.0.1, with
// VESKO_HOME in a fresh folder and the Claude key in the environment.

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

using Result = vesko::testing::CommandResult;

const std::string kAnswer =
    "Phrase : They + asked for + payment + upfront\n"
    "**upfront** : adverbe, « d'avance ».\n"
    "Ici : payer avant de recevoir.\n"
    "Expression : pay upfront = payer d'avance";

class ExplainCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("ANTHROPIC_API_KEY", "sk-ant-explain-test-KEY-1", 1);
    std::filesystem::create_directories(home.path() / "config");
    json settings = {{"claudeHost", providers.url()},
                     {"openaiHost", providers.url()},
                     {"deepseekHost", providers.url()},
                     {"relayHost", providers.url()},
                     {"localModelURL", providers.localUrl()},
                     {"aiProvider", 1},
                     {"uiLang", "fr"}};
    home.write("config/settings.json", settings.dump());
    providers.script(FakeProviders::kClaude, 200, FakeProviders::claudeAnswer(kAnswer));
  }
  void TearDown() override { unsetenv("ANTHROPIC_API_KEY"); }

  Result vesko(const std::string& arguments, const std::string& input = "") {
    auto err = home.path() / "err";
    auto in = home.write("in", input);
    std::string command =
        "env -u DBUS_SESSION_BUS_ADDRESS XDG_RUNTIME_DIR=" + (home.path() / "no-runtime").string() +
        " VESKO_HOME=" + home.path().string() + " " + VESKO_CLI + " " + arguments + " <" +
        in.string();
    return vesko::testing::runCommandWithErrors(command, err);
  }

  FakeProviders providers;
  vesko::testing::TempDir home;
};

TEST_F(ExplainCommandTest, PrintsTitledSections) {
  const Result run = vesko("explain upfront --sentence 'They asked for payment upfront.'");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(
      run.out,
      "Phrase\n  They + asked for + payment + upfront\n  **upfront** : adverbe, « d'avance ».\n"
      "\nIci\n  payer avant de recevoir.\n\nExpression\n  pay upfront = payer d'avance\n");
  const json body = json::parse(providers.last(FakeProviders::kClaude).body);
  EXPECT_EQ(body["max_tokens"], 420);
  const std::string user = body["messages"][0]["content"];
  EXPECT_TRUE(
      user.starts_with("[Réponds en français]\nTexte : « They asked for payment "
                       "【upfront】. »\n"))
      << user;
  EXPECT_TRUE(std::string(body["system"]).starts_with("Tu es un professeur de langues"));
}

TEST_F(ExplainCommandTest, JsonInTheChosenLanguageAndRetry) {
  const Result run = vesko(
      "explain upfront --lang en --json --wrong 'not frank' --previous "
      "'Meaning: frank'");
  ASSERT_EQ(run.status, 0) << run.err;
  const json out = json::parse(run.out);
  EXPECT_EQ(out["word"], "upfront");
  EXPECT_EQ(out["language"], "en");
  EXPECT_EQ(out["chengyu"], false);
  EXPECT_EQ(out["provider"], "claude");
  EXPECT_EQ(out["text"], kAnswer);
  // The answer's French titles are not the English ones: one untitled section, then Expression.
  EXPECT_EQ(out["sections"], json::parse(R"([
      {"title":null,"label":null,"text":"Phrase : They + asked for + payment + upfront\n**upfront** : adverbe, « d'avance ».\nIci : payer avant de recevoir."},
      {"title":"Expression","label":"expression","text":"pay upfront = payer d'avance"}])"));
  const json body = json::parse(providers.last(FakeProviders::kClaude).body);
  const std::string user = body["messages"][0]["content"];
  EXPECT_TRUE(user.starts_with("[Answer in English]\nupfront a été lu seul")) << user;
  EXPECT_NE(user.find("« Meaning: frank »\nRemarque de l'utilisateur : not frank\n"),
            std::string::npos)
      << user;
}

TEST_F(ExplainCommandTest, WarningIsPrintedAsItIsAndExitsTwo) {
  providers.script(FakeProviders::kClaude, 400, R"({"error":{"message":"bad request"}})");
  const Result run = vesko("explain upfront --json");
  EXPECT_EQ(run.status, 2);
  const json out = json::parse(run.out);
  EXPECT_TRUE(std::string(out["text"]).starts_with("⚠️ ")) << run.out;
  EXPECT_EQ(out.size(), 3u);  // text and the two flags, no sections
  EXPECT_TRUE(out.contains("unreachable") && out.contains("modelGone"));
}

TEST_F(ExplainCommandTest, BadInputExitsTwo) {
  struct Row {
    const char* arguments;
    const char* error;
  };
  const Row rows[] = {
      {"explain upfront --lang de", "unknown answer language"},
      {"explain upfront --wrong --previous ' '", "previous answer is empty"},
      {"explain ' '", "WORD"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arguments);
    const Result run = vesko(row.arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find(row.error), std::string::npos) << run.err;
  }
  EXPECT_EQ(providers.hits(FakeProviders::kClaude), 0);
}

}  // namespace
