#pragma once
// The interface texts in French, over settings in a fresh folder: what the AI tests build their
// prompts and section titles with. The Chinese dictionary is never loaded, since every AI text has
// a traditional-Chinese row of its own. One thread at a time, or shared read-only once built.

#include "dict/cedict.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/loc_table.h"
#include "settings/settings.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko::testing {

struct FrenchTexts {
  TempDir dir;
  FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  CEDict dictionary;
  HantCache hant{dictionary};
  LocTables tables;
  Loc loc{settings, tables, hant, {"fr-FR"}};
};

}  // namespace vesko::testing
