#include "cli/review_command.h"

#include <fmt/format.h>

#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/open_store.h"
#include "cli/terminal.h"
#include "learn/mastery.h"
#include "learn/review_counts.h"
#include "learn/review_day.h"
#include "learn/review_grading.h"
#include "learn/review_rhythm.h"
#include "learn/review_session.h"
#include "learn/review_texts.h"

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

struct DueOptions {
  bool json = false;
};

struct GradeOptions {
  std::string id;
  int grade = 0;
  bool json = false;
};

// The day's cards of the store, with what today's tally leaves of the allowance.
ReviewDay today(const WordStore& store, Settings& settings, const Clock& clock) {
  return planDay(store.words(), storeDateOf(clock.now()), ReviewCounts(settings, clock).today());
}

int showDue(const DueOptions& options, const Folders& folders, Settings& settings,
            const Clock& clock) {
  OpenStore open(folders, settings, clock);
  const ReviewDay day = today(open.store(), settings, clock);
  if (options.json) {
    nlohmann::ordered_json ids = nlohmann::ordered_json::array();
    for (const SavedWord* card : day.today) ids.push_back(card->id);
    const nlohmann::ordered_json out{{"today", ids}, {"later", day.later}};
    std::cout << out.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    return 0;
  }
  for (const SavedWord* card : day.today)
    std::cout << fmt::format("{}  {} {}{}{}\n", card->id, masteryColour(masteryOf(*card)),
                             card->word, card->pinyin.empty() ? "" : "  ", card->pinyin);
  if (day.today.empty()) std::cout << open.loc().t("Rien à relire aujourd'hui.") << '\n';
  if (day.later > 0) std::cout << laterText(day.later, open.loc()) << '\n';
  return 0;
}

int gradeOne(const GradeOptions& options, const Folders& folders, Settings& settings,
             const Clock& clock) {
  if (options.grade < 1 || options.grade > 5) return fail("the grade must be 1 to 5");
  OpenStore open(folders, settings, clock);
  auto graded = gradeKeptWord(open.store(), options.id, options.grade, storeDateOf(clock.now()));
  if (!graded)
    return fail(
        fmt::format("the word {} {}", options.id, "has a review step off the ladder (0 to 6)"));
  int exitCode = 0;
  if (open.saved(exitCode) != 0) return exitCode;
  if (!*graded) {
    if (options.json)
      std::cout << nlohmann::json{{"id", options.id}, {"kept", false}}.dump() << '\n';
    else
      std::cout << "not kept: " << options.id << '\n';
    return 0;
  }
  const GradedWord& done = **graded;
  // Counted as the review sitting counts it; a tally that cannot be written only loosens the
  // allowance, the grade itself is saved.
  (void)ReviewCounts(settings, clock).raise(done.wasNew ? CardAge::newCard : CardAge::oldCard);
  if (options.json) {
    const nlohmann::ordered_json out{{"reviewStep", done.scheduled.step},
                                     {"reviewDue", *done.word.reviewDue},
                                     {"interval", done.scheduled.interval}};
    std::cout << out.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
  } else {
    std::cout << fmt::format("{}: step {}, back in {} ({})\n", done.word.word, done.scheduled.step,
                             waitText(done.scheduled.interval),
                             localDateText(*done.word.reviewDue, clock));
  }
  return 0;
}

int review(const Folders& folders, Settings& settings, const Clock& clock) {
  OpenStore open(folders, settings, clock);
  const ReviewDay day = today(open.store(), settings, clock);
  // Copies: grading rewrites the store's list under the pointers.
  std::vector<SavedWord> cards;
  for (const SavedWord* card : day.today) cards.push_back(*card);
  ReviewCounts counts(settings, clock);
  KeyAtATime keys;
  ReviewSession session(std::cin, std::cout, open.loc(), clock, counts,
                        [&](const std::string& id, int grade) -> std::optional<SavedWord> {
                          auto graded =
                              gradeKeptWord(open.store(), id, grade, storeDateOf(clock.now()));
                          if (!graded || !*graded) return std::nullopt;
                          return (*graded)->word;
                        },
                        {.singleKeys = keys.active(), .colour = outputTakesColour()});
  session.run(cards, day.later);
  int exitCode = 0;
  return open.saved(exitCode);
}

struct ScheduleOptions {
  long long step = 0;
  int grade = 0;
  bool early = false;
  bool json = false;
};

}  // namespace

void addReviewCommands(CLI::App& app, const Folders& folders, Settings& settings,
                       const Clock& clock, int& exitCode) {
  addScheduleCommand(app, exitCode);

  auto dueOptions = std::make_shared<DueOptions>();
  auto* due = app.add_subcommand("due", "The cards of today's review, in the order they come");
  due->add_flag("--json", dueOptions->json, "Write JSON");
  due->callback([dueOptions, &folders, &settings, &clock, &exitCode] {
    exitCode = showDue(*dueOptions, folders, settings, clock);
  });

  auto gradeOptions = std::make_shared<GradeOptions>();
  auto* grade = app.add_subcommand("grade", "Grade a kept word's review and save it");
  grade->add_option("ID", gradeOptions->id, "The word's id")->required();
  grade->add_option("GRADE", gradeOptions->grade, "1 (missed) to 5 (very comfortable)")->required();
  grade->add_flag("--json", gradeOptions->json, "Write JSON");
  grade->callback([gradeOptions, &folders, &settings, &clock, &exitCode] {
    exitCode = gradeOne(*gradeOptions, folders, settings, clock);
  });

  app.add_subcommand("review", "Today's review, card by card (q quits)")
      ->callback([&folders, &settings, &clock, &exitCode] {
        exitCode = review(folders, settings, clock);
      });
}

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
