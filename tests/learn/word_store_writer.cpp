// A program that changes a word store and can be killed at any moment, for the tests that run
// several of them against one mots.json:
//
//   word_store_writer grow FILE              keeps w<n>, w<n+1>… one save each, until killed
//   word_store_writer keep FILE PREFIX N     keeps PREFIX0 … PREFIX<N-1>, then exits
//   word_store_writer sight FILE WORD LANG   marks WORD seen, prints "ready", waits for SIGTERM
//                                            or SIGINT, then writes and ends as the signal would
//
// It runs the real store with the system clock; its settings and log live beside FILE.

#include <poll.h>

#include <cerrno>
#include <filesystem>
#include <iostream>
#include <string>

#include "dict/cedict.h"
#include "learn/exit_signals.h"
#include "learn/word_store.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"

namespace {

vesko::SavedWord fresh(std::string word) {
  vesko::SavedWord saved;
  saved.word = std::move(word);
  saved.lang = "en";
  saved.context = "A sentence long enough to make each save take a little while: " + saved.word;
  return saved;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: word_store_writer grow|keep|sight FILE …\n";
    return 2;
  }
  vesko::ExitSignals signals;
  const std::string mode = argv[1];
  const std::filesystem::path file = argv[2];
  const std::filesystem::path home = file.parent_path();
  vesko::SystemClock clock;
  vesko::Settings settings(home / "settings.json", clock);
  vesko::Log log(home / "debug.log", settings, clock);
  vesko::CEDict dictionary;
  vesko::HantCache hant(dictionary);
  vesko::LocTables tables;
  vesko::Loc loc(settings, tables, hant, {});
  vesko::WordStore store(file, clock, log, loc);

  if (mode == "grow") {
    for (std::size_t n = store.words().size();; ++n) store.keep(fresh("w" + std::to_string(n)));
  }
  if (mode == "keep" && argc == 5) {
    const int count = std::stoi(argv[4]);
    for (int i = 0; i < count; ++i) store.keep(fresh(argv[3] + std::to_string(i)));
    return store.writeError() ? 1 : 0;
  }
  if (mode == "sight" && argc == 5) {
    if (!store.markSeen(argv[3], argv[4])) return 1;
    std::cout << "ready" << std::endl;
    // The desktop app's loop in small: sleep until a signal or the deferred save is due.
    pollfd wake{signals.wakeFd(), POLLIN, 0};
    while (!signals.caught()) {
      if (::poll(&wake, 1, 1000) < 0 && errno != EINTR) return 1;
      store.flushIfDue();
    }
    store.flush();
    signals.exitAsCaught();
    return 1;
  }
  std::cerr << "word_store_writer: unknown mode " << mode << '\n';
  return 2;
}
