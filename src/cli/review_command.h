#pragma once
// `vesko schedule`, `due`, `grade` and `review`: the review ladder and the day's review from the
// command line. Main thread only.
//
// JSON shapes (--json), one line each:
//   schedule  {"step","interval"}: the new step and the seconds until the next review
//   due       {"today":[ids in the order they are shown],"later":N}: later = due cards left for
//             the coming days by the daily allowance
//   grade     {"reviewStep","reviewDue","interval"} of the graded word, or {"id","kept":false}

#include <CLI/CLI.hpp>

#include "settings/clock.h"
#include "settings/folders.h"
#include "settings/settings.h"

namespace vesko::cli {

// Each adds its commands to `app`; the chosen command stores its exit code in `exitCode`.
// Everything passed must outlive the parse. The store is opened by the chosen command and closed
// before the command returns.
void addScheduleCommand(CLI::App& app, int& exitCode);
// `schedule` as well.
void addReviewCommands(CLI::App& app, const Folders& folders, Settings& settings,
                       const Clock& clock, int& exitCode);

}  // namespace vesko::cli
