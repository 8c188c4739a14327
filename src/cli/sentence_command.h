#pragma once
// `vesko translate`, `analyse`, `correct`, `synonyms`, `concept` and `themes`: the AI actions on a
// selected text and on the kept words, with the same prompts, answer store and provider choice as
// the popup. Main thread only; each command blocks until its answer comes.

#include <CLI/CLI.hpp>

#include "settings/clock.h"
#include "settings/folders.h"
#include "settings/settings.h"

namespace vesko::cli {

// Adds the commands to `app`; the chosen command stores its exit code in `exitCode`. Everything
// passed must outlive the parse. libcurl must have been set up (CurlLibrary) by the caller.
void addSentenceCommands(CLI::App& app, Settings& settings, const Folders& folders,
                         const Clock& clock, int& exitCode);

}  // namespace vesko::cli
