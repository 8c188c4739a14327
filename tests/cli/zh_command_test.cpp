// Runs the `vesko` binary as a user's script would and reads what it prints.

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <string>

#include "support/run_command.h"
#include "support/temp_dir.h"

namespace {

using nlohmann::json;
using vesko::testing::testData;

using Run = vesko::testing::CommandRun;

// Runs the tool with `arguments` (already shell-quoted) and `input` on standard input.
// The fixture dictionary is added unless the command names its own.
Run vesko(const std::string& arguments, const std::string& input = "") {
  vesko::testing::TempDir dir;
  auto in = dir.write("in", input);
  std::string command = std::string(VESKO_CLI) + " " + arguments;
  if (arguments.find("--cedict") == std::string::npos && arguments.find("pinyin") == std::string::npos)
    command += " --cedict " + testData("cedict_small.txt").string() + " --unihan " +
               testData("unihan_small.tsv").string();
  command += " <" + in.string() + " 2>" + (dir.path() / "err").string();
  return vesko::testing::runCommand(command);
}

json parsed(const Run& run) { return json::parse(run.out); }

TEST(ZhCommandTest, LookupJson) {
  auto run = vesko("zh lookup 中国 --json");
  ASSERT_EQ(run.status, 0);
  EXPECT_EQ(parsed(run), json::parse(R"([{"trad":"中國","simp":"中国","pinyin":"Zhong1 guo2",
                                          "marked":"Zhōng guó","defs":["China"]}])"));
  run = vesko("zh lookup 没有 --json");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(parsed(run), json::array());
}

TEST(ZhCommandTest, WordAtJson) {
  auto run = vesko("zh word-at --index 2 研究生命 --json");
  ASSERT_EQ(run.status, 0);
  auto out = parsed(run);
  EXPECT_EQ(out["word"], "生命");
  EXPECT_EQ(out["start"], 2);
  EXPECT_EQ(out["entries"][0]["marked"], "shēng mìng");
  // Indexes are UTF-16: 𠀁 starts at 2.
  out = parsed(vesko("zh word-at --index 3 - --json", "𠀀𠀁\n"));
  EXPECT_EQ(out["word"], "𠀀𠀁");
  EXPECT_EQ(out["start"], 0);
  EXPECT_TRUE(parsed(vesko("zh word-at --index 9 研究 --json")).is_null());
}

TEST(ZhCommandTest, SegmentWordsConvertPinyin) {
  EXPECT_EQ(parsed(vesko("zh segment 研究生命 --json")), json::parse(R"(["研究生","命"])"));
  auto words = parsed(vesko("zh words --limit 1 中国研究生 --json"));
  ASSERT_EQ(words.size(), 1u);
  EXPECT_EQ(words[0]["word"], "中国");
  EXPECT_EQ(words[0]["entries"][0]["trad"], "中國");
  EXPECT_EQ(vesko("zh convert --to traditional 学习").out, "學習\n");
  EXPECT_EQ(parsed(vesko("zh pinyin 'ni3 ma5' --json")),
            json::parse(R"({"marked":"nǐ ma","tones":[3,5],"colors":["#296bdb",null]})"));
}

TEST(ZhCommandTest, PeopleGetAlignedText) {
  auto run = vesko("zh lookup 只");
  ASSERT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("只 (隻)  zhī  CL:個|个[ge4]"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("只       zhǐ  only"), std::string::npos) << run.out;
}

TEST(ZhCommandTest, BatchKeepsGoingAfterBadLines) {
  auto run = vesko("zh word-at --batch",
                   "{\"text\":\"研究生命\",\"index\":2}\n"
                   "not json\n"
                   "\n"
                   "{\"text\":\"研究生命\",\"index\":\"two\"}\n"
                   "{\"text\":\"Hello\",\"index\":1}\n"
                   "{\"index\":1}\n"
                   "{\"text\":\"和服务\",\"index\":0}\n");
  ASSERT_EQ(run.status, 0);
  std::vector<json> lines;
  std::size_t start = 0;
  for (std::size_t end; (end = run.out.find('\n', start)) != std::string::npos; start = end + 1)
    lines.push_back(json::parse(run.out.substr(start, end - start)));
  ASSERT_EQ(lines.size(), 6u) << run.out;
  EXPECT_EQ(lines[0]["word"], "生命");
  EXPECT_TRUE(lines[1].contains("error"));
  EXPECT_TRUE(lines[2].contains("error"));
  EXPECT_TRUE(lines[3].is_null());
  EXPECT_TRUE(lines[4].contains("error"));
  EXPECT_EQ(lines[5]["word"], "和");

  run = vesko("zh lookup --batch", "{\"word\":\"学习\"}\n{\"word\":3}\n");
  EXPECT_EQ(run.out.substr(0, run.out.find('\n')),
            R"([{"defs":["to learn","to study"],"marked":"xué xí","pinyin":"xue2 xi2","simp":"学习","trad":"學習"}])");
  EXPECT_NE(run.out.find("{\"error\":"), std::string::npos);
}

TEST(ZhCommandTest, BadInputExitsTwo) {
  struct Row {
    const char* command;
    const char* input;
  };
  const Row rows[] = {
      {"zh word-at --index two 研究", ""},
      {"zh word-at --index 1.5 研究", ""},
      {"zh word-at 研究", ""},
      {"zh convert --to klingon 学习", ""},
      {"zh lookup -", "\xff\xfe"},
      {"zh segment -", "\xed\xa0\x80"},
      {"zh frobnicate", ""},
      {"zh lookup 中国 --cedict /nonexistent/cedict.txt", ""},
      {"zh lookup 中国 --cedict " VESKO_TEST_DATA "/bad/01-invalid-utf8.txt", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.command);
    auto run = vesko(row.command, row.input);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
  }
}

}  // namespace
