#pragma once
// `vesko config …`, `vesko tr …` and `vesko log …`: the settings store, the interface texts and
// the diagnostic log from the command line. Main thread only.

#include <CLI/CLI.hpp>

#include "settings/clock.h"
#include "settings/folders.h"
#include "settings/settings.h"

namespace vesko::cli {

// Each adds its commands to `app`; the chosen command stores its exit code in `exitCode`.
// Everything passed must outlive the parse.
void addConfigCommands(CLI::App& app, Settings& settings, int& exitCode);
void addTrCommand(CLI::App& app, Settings& settings, int& exitCode);
void addLogCommands(CLI::App& app, const Folders& folders, const Clock& clock, int& exitCode);

}  // namespace vesko::cli
