#include "desktop/dictionary_loader.h"

#include <fmt/format.h>

#include <QMetaObject>


namespace vesko::desktop {

DictionaryLoader::DictionaryLoader(CEDict& dictionary, Log& log, std::filesystem::path cedict,
                                   std::filesystem::path unihan)
    : dictionary_(dictionary),
      log_(log),
      cedict_(std::move(cedict)),
      unihan_(std::move(unihan)),
      thread_([this] { load(); }) {}

DictionaryLoader::~DictionaryLoader() {
  thread_.join();
}

void DictionaryLoader::load() {
  const auto start = std::chrono::steady_clock::now();
  if (cedict_.empty()) {
    log_.log("dictionnaire : cedict.txt introuvable (scripts/fetch-data)");
  } else {
    auto stats = dictionary_.load(cedict_, unihan_);
    if (!stats)
      log_.log(fmt::format("dictionnaire : {} illisible", cedict_.string()));
    else
      log_.log(fmt::format("dictionnaire : {} entrées chargées", stats->entries));
  }
  // A missing dictionary counts as loaded: the other languages need not wait for it.
  done_.store(true, std::memory_order_release);
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - start);
  QMetaObject::invokeMethod(this, [this, took] { emit finished(took); }, Qt::QueuedConnection);
}

}  // namespace vesko::desktop
