#include "cli/review_command.h"

#include <fmt/format.h>

#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "learn/review_rhythm.h"

namespace vesko::cli {
namespace {

int fail(const std::string& message) {
  std::cerr << "vesko: " << message << '\n';
  return 2;
}

std::string scheduleError(ScheduleError error) {
  switch (error) {
    case ScheduleError::stepOutsideLadder:
      return "the step must be 0 to 6";
    case ScheduleError::gradeOutsideScale:
      return "the grade must be 1 to 5";
  }
  return "cannot schedule";
}

// "10 minutes", "1 day", "35 days".
std::string waitText(double seconds) {
  if (seconds < kDaySeconds) return fmt::format("{} minutes", std::lround(seconds / 60));
  const long days = std::lround(seconds / kDaySeconds);
  return fmt::format("{} day{}", days, days == 1 ? "" : "s");
}

struct ScheduleOptions {
  long long step = 0;
  int grade = 0;
  bool early = false;
  bool json = false;
};

}  // namespace

void addScheduleCommand(CLI::App& app, int& exitCode) {
  auto shared = std::make_shared<ScheduleOptions>();
  ScheduleOptions& options = *shared;
  auto* command = app.add_subcommand(
      "schedule", "Where a grade moves a card on the review ladder, and when it comes back");
  command->add_option("--step", options.step, "The card's step, 0 to 6 (0 for a new card)")
      ->required();
  command->add_option("--grade", options.grade, "The grade, 1 (missed) to 5 (very comfortable)")
      ->required();
  command->add_flag("--early", options.early, "The card is reviewed before it is due");
  command->add_flag("--json", options.json, "Write JSON");
  command->callback([&options, &exitCode, shared] {
    auto scheduled = ReviewRhythm::schedule(options.step, options.early, options.grade);
    if (!scheduled) {
      exitCode = fail(scheduleError(scheduled.error()));
      return;
    }
    if (options.json) {
      // In the order the shape is documented: step first.
      const nlohmann::ordered_json out{{"step", scheduled->step},
                                       {"interval", scheduled->interval}};
      std::cout << out.dump() << '\n';
    } else {
      std::cout << fmt::format("step {}, back in {}\n", scheduled->step,
                               waitText(scheduled->interval));
    }
  });
}

}  // namespace vesko::cli
