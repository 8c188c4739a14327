#pragma once
// The kept words opened for one command, with what the store needs around it: the log it writes
// to and the interface texts of its notice. The Chinese dictionary stays unloaded: a notice in
// traditional characters that the table lacks is then shown in simplified ones. Main thread only.

#include "dict/cedict.h"
#include "learn/word_store.h"
#include "settings/clock.h"
#include "settings/folders.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"

namespace vesko::cli {

class OpenStore {
 public:
  // Tells the learner on standard error when the file had to be set aside.
  OpenStore(const Folders& folders, Settings& settings, const Clock& clock);
  OpenStore(const OpenStore&) = delete;
  OpenStore& operator=(const OpenStore&) = delete;

  WordStore& store() { return store_; }
  const Loc& loc() const { return loc_; }
  // Exit code 2 with the reason when the last write failed; `exitCode` otherwise.
  int saved(int& exitCode);

 private:
  Log log_;
  LocTables tables_;
  CEDict dictionary_;
  HantCache hant_;
  Loc loc_;
  WordStore store_;  // last: flushed before what it uses goes
};

}  // namespace vesko::cli
