#pragma once
// `vesko ask …` and `vesko key …`: a question to the language models as the program asks it
// (provider choice, failover, the learner's texts), and the service keys in the credential store.
// Main thread only; the command blocks until the answer comes.

#include <CLI/CLI.hpp>

#include "settings/clock.h"
#include "settings/folders.h"
#include "settings/settings.h"

namespace vesko::cli {

// Adds `ask` and `key` to `app`; the chosen command stores its exit code in `exitCode`. Everything
// passed must outlive the parse. libcurl must have been set up (CurlLibrary) by the caller.
void addAICommands(CLI::App& app, Settings& settings, const Folders& folders, const Clock& clock,
                   int& exitCode);

}  // namespace vesko::cli
