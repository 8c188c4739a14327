#pragma once
// `vesko keep`, `unkeep`, `seen`, `list`, `export` and `anki sync`: the kept words (mots.json in
// the data folder) from the command line. Main thread only.
//
// JSON shapes (--json), one line each:
//   keep    the record as mots.json stores it
//   unkeep  {"word","lang","hits"} with the hits left (0: removed), or {"word","lang","kept":false}
//   seen    {"word","lang","hits"} with the word's hits, or {"word","lang","kept":false}
//   list    the array as mots.json stores it
//   anki sync  {"deck","added","skipped","deckCreated"}

#include <CLI/CLI.hpp>

#include "learn/exit_signals.h"
#include "settings/clock.h"
#include "settings/folders.h"
#include "settings/settings.h"

namespace vesko::cli {

// Adds the commands to `app`; the chosen command stores its exit code in `exitCode`. Everything
// passed must outlive the parse. The store is opened by the chosen command and closed (its
// pending save written) before the command returns. `signals` cuts a long Anki sync short.
void addLearnCommands(CLI::App& app, const Folders& folders, Settings& settings, const Clock& clock,
                      const ExitSignals& signals, int& exitCode);

}  // namespace vesko::cli
