#pragma once
// What a desktop window is handed, for widget tests: the QApplication (offscreen unless the test
// says otherwise), and a DesktopContext in a fresh folder with French interface texts, no AI key
// anywhere, a dictionary never loaded, a trace file and the toasts. One per test, main thread.

#include <QApplication>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ai/ai_services.h"
#include "desktop/desktop_context.h"
#include "desktop/toasts.h"
#include "desktop/trace.h"
#include "dict/cedict.h"
#include "learn/review_counts.h"
#include "learn/word_store.h"
#include "settings/folders.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"
#include "support/fake_clock.h"
#include "support/memory_secret_store.h"
#include "support/temp_dir.h"

namespace vesko::testing {

inline QApplication& application() {
  static int argc = 1;
  static char name[] = "vesko_desktop_test";
  static char* argv[] = {name, nullptr};
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static QApplication app(argc, argv);
  return app;
}

struct BubbleWorld {
  TempDir dir;
  FakeClock clock;
  Folders folders{dir.path() / "data", dir.path() / "state", dir.path() / "config"};
  Settings settings{folders.settingsFile(), clock};
  Log log{folders.logFile(), settings, clock};
  CEDict dictionary;  // never loaded: no chengyu, as before the dictionary has loaded
  HantCache hant{dictionary};
  LocTables tables;
  Loc loc{settings, tables, hant, {"fr-FR"}};
  WordStore store{folders.wordsFile(), clock, log, loc};
  ReviewCounts counts{settings, clock};
  CurlLibrary curl;
  MemorySecretStore secrets;
  AIServices ai{settings,
                loc,
                log,
                clock,
                secrets,
                [](std::string_view) { return std::optional<std::string>(); },
                folders.data / "reponses-ia.json"};
  desktop::Trace trace{dir.path() / "trace.jsonl"};
  desktop::Toasts toasts;
  desktop::DesktopEvents events;
  desktop::DesktopContext context{settings, loc, log,        clock, folders, store,
                                  counts,   ai,  dictionary, trace, toasts,  events};

  BubbleWorld() {
    application();
    settings.overrideForRun("uiLang", std::string("fr"));
  }

  // The trace lines of `event`, in order.
  std::vector<nlohmann::json> traced(std::string_view event) const {
    std::vector<nlohmann::json> lines;
    std::ifstream in(dir.path() / "trace.jsonl");
    for (std::string line; std::getline(in, line);) {
      auto parsed = nlohmann::json::parse(line, nullptr, false);
      if (!parsed.is_discarded() && parsed.value("event", "") == event) lines.push_back(parsed);
    }
    return lines;
  }
};

}  // namespace vesko::testing
