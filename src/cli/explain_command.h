#pragma once
// `vesko explain WORD`: the explanation the bubble asks a language model for (the word in its
// sentence, alone, or a chengyu; a second try after a wrong answer), printed as titled sections.
// Main thread only; the command blocks until the answer comes.

#include <CLI/CLI.hpp>

#include "settings/clock.h"
#include "settings/folders.h"
#include "settings/settings.h"

namespace vesko::cli {

// Adds `explain` to `app`; it stores its exit code in `exitCode`. Everything passed must outlive
// the parse. libcurl must have been set up (CurlLibrary) by the caller.
void addExplainCommand(CLI::App& app, Settings& settings, const Folders& folders,
                       const Clock& clock, int& exitCode);

}  // namespace vesko::cli
