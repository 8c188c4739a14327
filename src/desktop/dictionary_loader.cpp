#include "desktop/dictionary_loader.h"

#include <fmt/format.h>

#include <QMetaObject>

#include "settings/resources.h"

namespace vesko::desktop {

DictionaryLoader::DictionaryLoader(CEDict& dictionary, Log& log)
    : dictionary_(dictionary), log_(log), thread_([this] { load(); }) {}

DictionaryLoader::~DictionaryLoader() {
  thread_.join();
}

void DictionaryLoader::load() {
  const auto start = std::chrono::steady_clock::now();
  const auto cedict = Resources::find("cedict", "txt");
  if (cedict.empty()) {
    log_.log(fmt::format("dictionnaire : {} introuvable", Resources::expected("cedict", "txt").string()));
  } else {
    auto stats = dictionary_.load(cedict, Resources::find("unihan", "tsv"));
    if (!stats)
      log_.log(fmt::format("dictionnaire : {} illisible", cedict.string()));
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
