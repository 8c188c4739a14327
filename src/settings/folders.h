#pragma once
// Where the learner's files live: the data folder (kept words), the state folder (debug.log) and
// the config folder (settings.json). XDG base directories under a "Vesko" folder, or, when
// VESKO_HOME is set, its data, state and config subfolders, so that a test or a demo owns all
// three. A plain value; any thread.

#include <filesystem>

#include "settings/environment.h"

namespace vesko {

struct Folders {
  std::filesystem::path data;    // $XDG_DATA_HOME/Vesko, default ~/.local/share/Vesko
  std::filesystem::path state;   // $XDG_STATE_HOME/Vesko, default ~/.local/state/Vesko
  std::filesystem::path config;  // $XDG_CONFIG_HOME/Vesko, default ~/.config/Vesko

  static Folders fromEnvironment(const Environment& environment);

  std::filesystem::path settingsFile() const { return config / "settings.json"; }
  std::filesystem::path logFile() const { return state / "debug.log"; }
  std::filesystem::path wordsFile() const { return data / "mots.json"; }
};

}  // namespace vesko
