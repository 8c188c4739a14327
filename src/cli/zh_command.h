#pragma once
// `vesko zh …`: the Chinese dictionary from the command line. Main thread only.

#include <CLI/CLI.hpp>

namespace vesko::cli {

// Adds the `zh` commands to `app`; the chosen command stores its exit code in `exitCode`.
void addZhCommands(CLI::App& app, int& exitCode);

}  // namespace vesko::cli
