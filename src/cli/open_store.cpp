#include "cli/open_store.h"

#include <fmt/format.h>

#include <iostream>

#include "settings/environment.h"

namespace vesko::cli {

OpenStore::OpenStore(const Folders& folders, Settings& settings, const Clock& clock)
    : log_(folders.logFile(), settings, clock),
      hant_(dictionary_),
      loc_(settings, tables_, hant_, preferredLanguages(processEnvironment())),
      store_(folders.wordsFile(), clock, log_, loc_) {
  if (auto notice = store_.pendingNotice()) std::cerr << "vesko: " << *notice << '\n';
}

int OpenStore::saved(int& exitCode) {
  if (const auto& error = store_.writeError()) {
    std::cerr << "vesko: " << fmt::format("the kept words could not be saved ({})", *error) << '\n';
    exitCode = 2;
  }
  return exitCode;
}

}  // namespace vesko::cli
