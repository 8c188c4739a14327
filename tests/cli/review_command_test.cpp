// Runs `vesko schedule` as a script would: the JSON shape, the human line and refused input.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "support/run_command.h"

namespace {

using nlohmann::json;

vesko::testing::CommandRun vesko(const std::string& arguments) {
  return vesko::testing::runCommand(std::string(VESKO_CLI) + " " + arguments +
                                    " </dev/null 2>/dev/null");
}

TEST(ReviewCommandTest, ScheduleAsJson) {
  struct Row {
    const char* arguments;
    int step;
    double interval;
  };
  const Row rows[] = {
      {"--step 0 --grade 4", 1, 3 * 86'400.0},
      {"--step 4 --grade 5", 5, 90 * 86'400.0},
      {"--step 3 --grade 1", 2, 600},
      {"--step 3 --grade 5 --early", 3, 35 * 86'400.0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arguments);
    auto run = vesko(std::string("schedule --json ") + row.arguments);
    ASSERT_EQ(run.status, 0);
    EXPECT_EQ(run.out.rfind("{\"step\":", 0), 0u) << run.out;
    auto answer = json::parse(run.out);
    EXPECT_EQ(answer.size(), 2u);
    EXPECT_EQ(answer["step"], row.step);
    EXPECT_DOUBLE_EQ(answer["interval"].get<double>(), row.interval);
  }
}

TEST(ReviewCommandTest, ScheduleForPeople) {
  auto run = vesko("schedule --step 2 --grade 5");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "step 4, back in 35 days\n");
}

TEST(ReviewCommandTest, RefusedInput) {
  for (const char* arguments : {"schedule --step 7 --grade 3", "schedule --step -1 --grade 3",
                                "schedule --step 2 --grade 0", "schedule --step 2 --grade 6",
                                "schedule --step two --grade 3", "schedule --grade 3"}) {
    SCOPED_TRACE(arguments);
    auto run = vesko(arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
  }
}

}  // namespace
