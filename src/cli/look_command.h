#pragma once
// `vesko look`: the word at an index of a text, read as the hover would read it, in any studied
// language. Main thread only.

#include <CLI/CLI.hpp>

namespace vesko::cli {

// Adds the `look` command to `app`; the command stores its exit code in `exitCode`.
void addLookCommand(CLI::App& app, int& exitCode);

}  // namespace vesko::cli
