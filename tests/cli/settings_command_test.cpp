// Runs `vesko config`, `vesko tr` and `vesko log` as a user's script would, each run with
// VESKO_HOME in a fresh folder.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "support/run_command.h"
#include "support/temp_dir.h"

namespace {

using nlohmann::json;

using Result = vesko::testing::CommandResult;

class SettingsCommandTest : public ::testing::Test {
 protected:
  // `arguments` are already shell-quoted; `environment` is put before the command.
  Result vesko(const std::string& arguments, const std::string& environment = "LANG=fr_FR.UTF-8") {
    auto err = home.path() / "err";
    std::string command =
        "env -u LANGUAGE -u LC_ALL -u LC_MESSAGES VESKO_HOME=" + home.path().string() + " " +
        environment + " " + VESKO_CLI + " " + arguments + " </dev/null";
    return vesko::testing::runCommandWithErrors(command, err);
  }

  vesko::testing::TempDir home;
};

TEST_F(SettingsCommandTest, SetIsTypedByTheDefaultAndGetReadsItBack) {
  EXPECT_EQ(vesko("config get delay").out, "0.1\n");
  EXPECT_EQ(json::parse(vesko("config get uiLang --json").out),
            json::parse(R"({"key":"uiLang","value":"auto","default":true})"));

  EXPECT_EQ(vesko("config set delay 0.25").status, 0);
  EXPECT_EQ(vesko("config set debugLog on").status, 0);
  EXPECT_EQ(vesko("config set defLang.zh orig").status, 0);
  EXPECT_EQ(json::parse(vesko("config get delay --json").out),
            json::parse(R"({"key":"delay","value":0.25,"default":false})"));
  EXPECT_EQ(vesko("config get debugLog").out, "true\n");
  EXPECT_EQ(vesko("config get defLang.zh").out, "orig\n");

  auto list = json::parse(vesko("config list --json").out);
  EXPECT_EQ(list["delay"], 0.25);
  EXPECT_EQ(list["defLang.zh"], "orig");
  EXPECT_EQ(list["claudeModel"], "claude-haiku-4-5-20251001");

  EXPECT_EQ(vesko("config unset delay").status, 0);
  EXPECT_EQ(vesko("config get delay").out, "0.1\n");
}

TEST_F(SettingsCommandTest, BadKeysAndValuesExitTwo) {
  const char* rows[] = {
      "config get nonsense",
      "config set nonsense 1",
      "config set delay fast",
      "config set modifier 2.5",
      "config set debugLog maybe",
      "config get",
      "tr",
      "tr --missing fr",
      "log recent --since -5",
  };
  for (const char* row : rows) {
    SCOPED_TRACE(row);
    auto run = vesko(row);
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.err.starts_with("vesko: ")) << run.err;
  }
  EXPECT_FALSE(std::filesystem::exists(home.path() / "config" / "settings.json"));
}

TEST_F(SettingsCommandTest, BrokenSettingsFileIsKeptAside) {
  std::filesystem::create_directories(home.path() / "config");
  std::ofstream(home.path() / "config" / "settings.json") << "{\"delay\": ";
  auto run = vesko("config get delay");
  EXPECT_EQ(run.out, "0.1\n");
  EXPECT_NE(run.err.find("settings.broken-"), std::string::npos) << run.err;
  int kept = 0;
  for (const auto& entry : std::filesystem::directory_iterator(home.path() / "config"))
    if (entry.path().filename().string().starts_with("settings.broken-")) ++kept;
  EXPECT_EQ(kept, 1);
}

TEST_F(SettingsCommandTest, TranslatesThroughTheInterfaceLanguage) {
  EXPECT_EQ(vesko("tr 'Réponse vide.'").out, "Réponse vide.\n");
  EXPECT_EQ(vesko("tr 'Réponse vide.'", "LANG=de_DE.UTF-8").out, "Empty answer.\n");
  EXPECT_EQ(vesko("tr 'Réponse vide.'", "LANG=zh_TW.UTF-8").out, "回答是空的。\n");
  EXPECT_EQ(vesko("tr --ui ru 'Niveau %d sur %d'").out, "Уровень %d из %d\n");
  EXPECT_EQ(json::parse(vesko("tr --ui zh-Hant --json Corriger").out),
            json::parse(
                R"({"text":"Corriger","translation":"訂正","language":"zh","traditional":true})"));
  // --ui is for this run only.
  EXPECT_FALSE(std::filesystem::exists(home.path() / "config" / "settings.json"));

  EXPECT_EQ(vesko("config set uiLang pl").status, 0);
  EXPECT_EQ(vesko("tr Corriger").out, "Popraw\n");
  EXPECT_EQ(vesko("tr 'Jamais traduit'").out, "Jamais traduit\n");

  for (const char* language : {"en", "zh", "zh-Hant", "pl", "ru", "th"}) {
    SCOPED_TRACE(language);
    auto run = vesko(std::string("tr --json --missing ") + language);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(json::parse(run.out), json::array());
  }
}

TEST_F(SettingsCommandTest, LogPathAndRecentLines) {
  auto run = vesko("log path");
  EXPECT_EQ(run.out, (home.path() / "state" / "debug.log").string() + "\n");

  std::time_t now = std::time(nullptr);
  auto stamp = [&](std::time_t at) {
    std::tm parts{};
    localtime_r(&at, &parts);
    char text[16];
    std::strftime(text, sizeof text, "%H:%M:%S", &parts);
    return std::string(text);
  };
  std::filesystem::create_directories(home.path() / "state");
  std::ofstream(home.path() / "state" / "debug.log") << stamp(now - 600) << "  ancien\n"
                                                     << stamp(now - 5) << "  récent\n";
  EXPECT_EQ(vesko("log recent --since 60").out, stamp(now - 5) + "  récent\n");
  EXPECT_EQ(json::parse(vesko("log recent --json").out).size(), 1u);
  EXPECT_EQ(json::parse(vesko("log recent --since 3600 --json").out).size(), 2u);
}

// The desktop app and a script write at the same time: both processes' keys survive.
TEST_F(SettingsCommandTest, ConcurrentProcessesLoseNoWrite) {
  std::string script;
  for (char who : {'a', 'b'}) {
    script += "( for i in $(seq 0 39); do " + std::string(VESKO_CLI) + " config set defLang." +
              who + "$i x || exit 1; done ) & ";
  }
  script += "wait";
  std::string command = "env VESKO_HOME=" + home.path().string() + " sh -c '" + script + "'";
  ASSERT_EQ(std::system(command.c_str()), 0);
  auto list = json::parse(vesko("config list --json").out);
  for (char who : {'a', 'b'})
    for (int i = 0; i < 40; ++i)
      EXPECT_EQ(list.value("defLang." + std::string(1, who) + std::to_string(i), ""), "x")
          << who << i;
}

}  // namespace
