#pragma once
// `vesko usage` (what the AI replies cost today, this month and last month) and `vesko models`
// (a cloud provider's model list, newest first). Main thread only.

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "ai/http.h"
#include "ai/provider.h"
#include "settings/clock.h"
#include "settings/settings.h"

namespace vesko::cli {

// The learner's key for a provider, read from the secret store; empty when there is none.
using KeyReader = std::function<std::string(AIProvider provider)>;

// Each adds its command to `app`; the chosen command stores its exit code in `exitCode`.
// Everything passed must outlive the parse.
void addUsageCommand(CLI::App& app, Settings& settings, const Clock& clock, int& exitCode);
void addModelsCommand(CLI::App& app, Settings& settings, const HttpClient& http, KeyReader readKey,
                      int& exitCode);

}  // namespace vesko::cli
