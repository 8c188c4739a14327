// The `vesko` command-line tool: the core's lookups for people (aligned text) and for scripts
// (--json, --batch). Exit code 2 for a command that failed, 0 otherwise: finding nothing is not
// a failure.

#include <CLI/CLI.hpp>

#include <iostream>
#include <string>
#include <string_view>

#include "ai/curl_http_client.h"
#include "ai/keys.h"
#include "cli/ai_command.h"
#include "cli/explain_command.h"
#include "cli/learn_command.h"
#include "cli/look_command.h"
#include "cli/probe_command.h"
#include "cli/review_command.h"
#include "cli/sentence_command.h"
#include "cli/settings_command.h"
#include "cli/usage_command.h"
#include "cli/zh_command.h"
#include "learn/exit_signals.h"
#include "platform/linux/ocr/single_thread_ocr.h"
#include "platform/linux/secret/secret_service_store.h"
#include "settings/clock.h"
#include "settings/credits.h"
#include "settings/environment.h"
#include "settings/folders.h"
#include "settings/settings.h"

int main(int argc, char** argv) {
  // Only `probe` recognises text; the other commands need not start twice.
  if (argc > 1 && std::string_view(argv[1]) == "probe") vesko::ensureSingleThreadedOcr(argv);
  // Before anything that may hold unsaved kept words: a SIGTERM or Ctrl-C during a command lets
  // the command finish and write, then ends the process as the signal would have.
  vesko::ExitSignals exitSignals;
  int exitCode = 0;
  const vesko::CurlLibrary curl;  // before any request, on this one thread
  const vesko::SystemClock clock;
  const auto folders = vesko::Folders::fromEnvironment(vesko::processEnvironment());
  vesko::Settings settings(folders.settingsFile(), clock);
  if (auto kept = settings.setAsideFile())
    std::cerr << "vesko: " << settings.file().string() << " could not be read; it was kept as "
              << kept->string() << " and the defaults apply\n";
  // After what the commands use: a command's callbacks may keep objects (a log with its writer
  // thread) that use the clock and the settings until the app is destroyed.
  CLI::App app{"Vesko: a reading assistant for language learners"};
  app.name("vesko");
  app.require_subcommand(1);
  app.set_version_flag("--version", std::string(vesko::kAppName) + " " + std::string(vesko::kAppVersion));
  vesko::cli::addZhCommands(app, exitCode);
  vesko::cli::addLookCommand(app, exitCode);
  vesko::cli::addProbeCommand(app, settings, exitCode);
  vesko::cli::addDoctorCommand(app, settings, exitCode);
  vesko::cli::addConfigCommands(app, settings, exitCode);
  vesko::cli::addTrCommand(app, settings, exitCode);
  vesko::cli::addLogCommands(app, folders, clock, exitCode);
  vesko::cli::addUsageCommand(app, settings, clock, exitCode);
  const vesko::CurlHttpClient http;
  vesko::cli::addModelsCommand(
      app, settings, http,
      [](vesko::AIProvider provider) {
        vesko::SecretServiceStore store;  // only when a list is asked for: it opens the bus
        return vesko::Keys(store, vesko::processEnvironment()).find(provider).key;
      },
      exitCode);
  vesko::cli::addLearnCommands(app, folders, settings, clock, exitSignals, exitCode);
  vesko::cli::addReviewCommands(app, folders, settings, clock, exitCode);
  vesko::cli::addAICommands(app, settings, folders, clock, exitCode);
  vesko::cli::addExplainCommand(app, settings, folders, clock, exitCode);
  vesko::cli::addSentenceCommands(app, settings, folders, clock, exitCode);
  app.add_subcommand("about", "Version, and the data Vesko uses with its licences")->callback([] {
    std::cout << vesko::kAppName << ' ' << vesko::kAppVersion
              << ": a reading assistant for language learners\n\nData:\n";
    for (const auto& credit : vesko::kDataCredits)
      std::cout << "  " << credit.name << "\n    " << credit.holder << "\n    " << credit.licence << '\n';
    std::cout << "\nFull licence texts: resources/README\n";
  });
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForAllHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForVersion& version) {
    return app.exit(version);
  } catch (const CLI::ParseError& error) {
    std::cerr << "vesko: " << error.what() << '\n';
    return 2;
  }
  exitSignals.exitAsCaught();
  return exitCode;
}
