#pragma once
// `vesko schedule`: the review ladder's arithmetic from the command line, for scripts and for
// checking a grade's effect before giving it. Main thread only.

#include <CLI/CLI.hpp>

namespace vesko::cli {

// Adds the command to `app`; the chosen command stores its exit code in `exitCode`.
void addScheduleCommand(CLI::App& app, int& exitCode);

}  // namespace vesko::cli
