// Runs `vesko due`, `vesko grade` and `vesko review` on a mots.json written as the desktop app
// writes it, each run with VESKO_HOME in a fresh folder: the JSON shapes, the day's tally in the
// settings, and a review sitting fed through a pipe.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "support/run_command.h"
#include "support/temp_dir.h"

namespace {

using nlohmann::json;
constexpr double kDay = 86'400;

double storeNow() {
  using namespace std::chrono;
  const sys_seconds epoch{sys_days{year{2001} / 1 / 1}};
  return duration<double>(system_clock::now() - epoch).count();
}

class ReviewSessionCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const double now = storeNow();
    auto word = [&](const char* id, const char* text, double kept) {
      return json{{"id", id},
                  {"word", text},
                  {"lang", "zh"},
                  {"pinyin", "xué"},
                  {"simp", text},
                  {"trad", text},
                  {"definition", "d"},
                  {"translations", json::object()},
                  {"context", std::string("我们") + text + "。"},
                  {"date", kept}};
    };
    json old = word("AAAAAAAA-0000-4000-8000-000000000001", "学习", now - 30 * kDay);
    old["reviewStep"] = 2;
    old["reviewDue"] = now - kDay;
    json fresh = word("AAAAAAAA-0000-4000-8000-000000000002", "中文", now - 3 * kDay);
    fresh["hits"] = 2;
    json later = word("AAAAAAAA-0000-4000-8000-000000000003", "明天", now - 30 * kDay);
    later["reviewStep"] = 4;
    later["reviewDue"] = now + 10 * kDay;
    json useless = word("AAAAAAAA-0000-4000-8000-000000000004", "的", now - 30 * kDay);
    useless["archived"] = "useless";
    std::filesystem::create_directories(home.path() / "data");
    home.write("data/mots.json", json::array({old, fresh, later, useless}).dump(2));
  }

  vesko::testing::CommandRun vesko(const std::string& arguments, const std::string& input = "") {
    const std::string stdinFrom =
        input.empty() ? std::string("/dev/null") : home.write("input", input).string();
    return vesko::testing::runCommand(
        "env -u LANGUAGE -u LC_ALL -u LC_MESSAGES VESKO_HOME=" + home.path().string() +
        " LANG=fr_FR.UTF-8 " + VESKO_CLI + " " + arguments + " <" + stdinFrom + " 2>/dev/null");
  }

  json settings() const {
    std::ifstream in(home.path() / "config" / "settings.json");
    return json::parse(in, nullptr, false);
  }
  json stored(const std::string& id) const {
    std::ifstream in(home.path() / "data" / "mots.json");
    for (const auto& word : json::parse(in)) {
      if (word["id"] == id) return word;
    }
    return nullptr;
  }

  vesko::testing::TempDir home;
};

TEST_F(ReviewSessionCommandTest, DueInTheDaysOrder) {
  auto run = vesko("due --json");
  ASSERT_EQ(run.status, 0);
  // Kept twice comes first; the one due later and the useless one are not due.
  EXPECT_EQ(run.out,
            "{\"today\":[\"AAAAAAAA-0000-4000-8000-000000000002\","
            "\"AAAAAAAA-0000-4000-8000-000000000001\"],\"later\":0}\n");
}

TEST_F(ReviewSessionCommandTest, GradeSavesAndCounts) {
  const std::string id = "AAAAAAAA-0000-4000-8000-000000000001";
  const double before = storeNow();
  auto run = vesko("grade " + id + " 4 --json");
  ASSERT_EQ(run.status, 0);
  EXPECT_EQ(run.out.rfind("{\"reviewStep\":3,\"reviewDue\":", 0), 0u) << run.out;
  auto answer = json::parse(run.out);
  EXPECT_EQ(answer.size(), 3u);
  EXPECT_DOUBLE_EQ(answer["interval"].get<double>(), 16 * kDay);
  EXPECT_NEAR(answer["reviewDue"].get<double>(), before + 16 * kDay, 60);
  const json word = stored(id);
  EXPECT_EQ(word["reviewStep"], 3);
  EXPECT_EQ(word["confidence"], 4);
  EXPECT_EQ(word["reviewDue"], answer["reviewDue"]);
  EXPECT_EQ(settings()["review.oldCount"], 1);
  EXPECT_FALSE(settings().contains("review.newCount"));

  ASSERT_EQ(vesko("grade AAAAAAAA-0000-4000-8000-000000000002 1 --json").status, 0);
  EXPECT_EQ(settings()["review.newCount"], 1);
  EXPECT_EQ(settings()["review.newDay"], settings()["review.oldDay"]);
  EXPECT_EQ(vesko("due --json").out, "{\"today\":[],\"later\":0}\n");
}

TEST_F(ReviewSessionCommandTest, GradeRefusals) {
  struct Row {
    const char* arguments;
    int status;
    const char* out;
  };
  const Row rows[] = {
      {"grade AAAAAAAA-0000-4000-8000-000000000001 0", 2, ""},
      {"grade AAAAAAAA-0000-4000-8000-000000000001 6 --json", 2, ""},
      {"grade AAAAAAAA-0000-4000-8000-000000000001 four", 2, ""},
      {"grade AAAAAAAA-0000-4000-8000-00000000FFFF 3 --json", 0,
       "{\"id\":\"AAAAAAAA-0000-4000-8000-00000000FFFF\",\"kept\":false}\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arguments);
    auto run = vesko(row.arguments);
    EXPECT_EQ(run.status, row.status);
    EXPECT_EQ(run.out, row.out);
  }
  EXPECT_EQ(stored("AAAAAAAA-0000-4000-8000-000000000001")["reviewStep"], 2);
  EXPECT_FALSE(settings().is_object() && settings().contains("review.oldCount"));
}

TEST_F(ReviewSessionCommandTest, ReviewFromAPipe) {
  // Show, grade 5; show, then quit.
  auto run = vesko("review", "\n5\n\nq\n");
  ASSERT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("1 / 2"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("我们[中文]。"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("Révision finie : 1 cartes notées."), std::string::npos) << run.out;
  EXPECT_EQ(stored("AAAAAAAA-0000-4000-8000-000000000002")["reviewStep"], 2);
  EXPECT_EQ(stored("AAAAAAAA-0000-4000-8000-000000000001")["reviewStep"], 2);
  EXPECT_FALSE(stored("AAAAAAAA-0000-4000-8000-000000000001").contains("confidence"));
  EXPECT_EQ(settings()["review.newCount"], 1);
}

}  // namespace
