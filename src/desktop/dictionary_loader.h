#pragma once
// Loads the Chinese dictionary on a thread of its own, so that the app is up at once; until it
// is done every Chinese lookup finds nothing and the hover waits. `loaded` is then emitted on the
// main thread. Created once by the shell after the dictionary; the destructor waits for the load.
// Thread contract: the object lives on the main thread; `loaded()` may be asked from any thread.

#include <QObject>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

#include "app/read_request.h"
#include "dict/cedict.h"
#include "settings/log.h"

namespace vesko::desktop {

class DictionaryLoader final : public QObject, public DictionariesLoaded {
  Q_OBJECT
 public:
  // Starts the load of `cedict` (the main file; empty when it is missing) and `unihan` (the
  // single-character supplement, may be empty) at once.
  DictionaryLoader(CEDict& dictionary, Log& log, std::filesystem::path cedict,
                   std::filesystem::path unihan);
  ~DictionaryLoader() override;

  bool loaded() const override { return done_.load(std::memory_order_acquire); }

 signals:
  // On the main thread, once, with how long the load took.
  void finished(std::chrono::milliseconds took);

 private:
  void load();

  CEDict& dictionary_;
  Log& log_;
  const std::filesystem::path cedict_;
  const std::filesystem::path unihan_;
  std::atomic<bool> done_{false};
  std::thread thread_;  // last: starts once the rest is in place
};

}  // namespace vesko::desktop
