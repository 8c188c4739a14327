// The `vesko` command-line tool: the core's lookups for people (aligned text) and for scripts
// (--json, --batch). Exit code 2 for a command that failed, 0 otherwise: finding nothing is not
// a failure.

#include <CLI/CLI.hpp>

#include <iostream>

#include "cli/zh_command.h"

int main(int argc, char** argv) {
  CLI::App app{"Vesko: a reading assistant for language learners"};
  app.name("vesko");
  app.require_subcommand(1);
  int exitCode = 0;
  vesko::cli::addZhCommands(app, exitCode);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForAllHelp& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    std::cerr << "vesko: " << error.what() << '\n';
    return 2;
  }
  return exitCode;
}
