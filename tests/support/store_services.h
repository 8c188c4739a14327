#pragma once
// What a WordStore is handed, for tests: a fake clock (2025-03-09 14:32:05 UTC), settings, a log
// and the interface texts (in English, so that a notice is seen to pass through the table), all
// in a fresh folder whose data/mots.json the store under test uses. One per test.

#include <filesystem>
#include <string>

#include "dict/cedict.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko::testing {

struct StoreServices {
  TempDir dir;
  FakeClock clock;
  Settings settings{dir.path() / "config" / "settings.json", clock};
  Log log{dir.path() / "state" / "debug.log", settings, clock};
  CEDict dictionary;
  HantCache hant{dictionary};
  LocTables tables;
  Loc loc{settings, tables, hant, {"en-US"}};

  StoreServices() { settings.overrideForRun("uiLang", std::string("en")); }
  std::filesystem::path folder() const { return dir.path() / "data"; }
  std::filesystem::path file() const { return folder() / "mots.json"; }
  // Writes mots.json as another program would.
  void writeFile(const std::string& content) const {
    std::filesystem::create_directories(folder());
    dir.write("data/mots.json", content);
  }
};

}  // namespace vesko::testing
