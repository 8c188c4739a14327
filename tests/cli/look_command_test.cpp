// Runs `vesko look` as a user's script would and reads what it prints.

#include <gtest/gtest.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_command.h"
#include "support/temp_dir.h"

namespace {

using nlohmann::json;
using vesko::testing::testData;

using Run = vesko::testing::CommandRun;

// The installed dictionaries are hidden behind an empty resources folder: other languages' words
// are cut and come without entries, whatever the machine has fetched.
Run vesko(const std::string& arguments, const std::string& input = "") {
  vesko::testing::TempDir dir;
  auto in = dir.write("in", input);
  std::string command = "VESKO_RESOURCES=" + dir.path().string() + " " + std::string(VESKO_CLI) +
                        " look " + arguments + " --cedict " +
                        testData("cedict_small.txt").string() + " --unihan " +
                        testData("unihan_small.tsv").string() + " <" + in.string() + " 2>" +
                        (dir.path() / "err").string();
  return vesko::testing::runCommand(command);
}

TEST(LookCommandTest, JsonContract) {
  struct Row {
    const char* arguments;
    const char* expected;
  };
  const Row rows[] = {
      {"--json --index 1 我学习。你呢",
       R"({"kind":"chinese","word":"学习","start":1,"sentence":"我学习。",
           "entries":[{"trad":"學習","simp":"学习","pinyin":"xue2 xi2","marked":"xué xí",
                       "defs":["to learn","to study"]}]})"},
      {"--json --langs fr --index 8 \"Voici l'école.\"",
       R"({"kind":"word","word":"école","lang":"fr","start":8,"base":null,"note":null,
           "elided":"le","entries":[],"sentence":"Voici l'école."})"},
      {"--json --langs th --index 4 ฉันชอบกินข้าวผัดมาก",
       R"({"kind":"word","word":"ชอบ","lang":"th","start":3,"base":null,"note":null,
           "elided":null,"entries":[],"sentence":"ฉันชอบกินข้าวผัดมาก"})"},
      {"--json --langs en --index 8 \"Voici l'avion.\"", R"({"kind":"none","skipped":"fr"})"},
      {"--json --langs zh,en --index 0 привет", R"({"kind":"none","skipped":"ru"})"},
      {"--json --index 40 短", R"({"kind":"none","skipped":null})"},
      {"--json --langs zh,ja --pref-han ja --index 0 学习", R"({"kind":"word","word":"学习",
           "lang":"ja","start":0,"base":null,"note":null,"elided":null,"entries":[],
           "sentence":"学习"})"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arguments);
    auto run = vesko(row.arguments);
    ASSERT_EQ(run.status, 0);
    EXPECT_EQ(json::parse(run.out), json::parse(row.expected));
  }
}

TEST(LookCommandTest, BatchAnswersEveryLineAndSurvivesBadOnes) {
  auto run =
      vesko("--batch",
            "{\"text\":\"我学习\",\"index\":1}\n"
            "not json\n"
            "{\"text\":\"l'avion\",\"index\":3,\"langs\":\"en\"}\n"
            "{\"text\":\"l'avion\",\"index\":3,\"langs\":[\"fr\"]}\n"
            "{\"text\":\"x\"}\n"
            "{\"text\":\"x\",\"index\":0,\"langs\":\"xx\"}\n"
            "{\"text\":\"the house\",\"index\":4,\"langs\":\"fr,en\",\"prefLatin\":\"en\"}\n");
  ASSERT_EQ(run.status, 0);
  std::istringstream lines(run.out);
  std::vector<json> replies;
  for (std::string line; std::getline(lines, line);) replies.push_back(json::parse(line));
  ASSERT_EQ(replies.size(), 7u);
  EXPECT_EQ(replies[0]["word"], "学习");
  EXPECT_TRUE(replies[1].contains("error"));
  EXPECT_EQ(replies[2], json::parse(R"({"kind":"none","skipped":"fr"})"));
  EXPECT_EQ(replies[3]["word"], "avion");
  EXPECT_EQ(replies[4]["error"], "\"index\" must be a whole number");
  EXPECT_TRUE(replies[5].contains("error"));
  EXPECT_EQ(replies[6]["lang"], "en");
}

TEST(LookCommandTest, CardForPeople) {
  auto run = vesko("--index 1 我学习。");
  ASSERT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "学习  (zh)\n  学习 (學習)  xué xí  to learn; to study\n  我[学习]。\n");
}

TEST(LookCommandTest, BadArgumentsFail) {
  EXPECT_EQ(vesko("--index x 学习").status, 2);
  EXPECT_EQ(vesko("学习").status, 2);
  EXPECT_EQ(vesko("--langs xx --index 0 学习").status, 2);
  EXPECT_EQ(vesko("--pref-latin de --index 0 学习").status, 2);
  EXPECT_EQ(vesko("--pref-han ko --index 0 学习").status, 2);
}

}  // namespace
