#pragma once
// `vesko probe`: reads what Vesko sees under the pointer (or at a given point) through the same
// read as the hover, and shows which reader answered, its text, the index and each stage's time.
// `vesko doctor`: checks what that read needs from the desktop and says what to install or
// switch on. Main thread only; the reads block while they run.

#include <CLI/CLI.hpp>

#include "settings/settings.h"

namespace vesko::cli {

void addProbeCommand(CLI::App& app, const Settings& settings, int& exitCode);
void addDoctorCommand(CLI::App& app, const Settings& settings, int& exitCode);

}  // namespace vesko::cli
