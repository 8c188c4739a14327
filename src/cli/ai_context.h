#pragma once
// Everything an AI command needs, made once per run as the desktop app makes it: the interface
// texts, the diagnostic log, the Secret Service and the AI services over them. Made only when an
// AI command runs (it opens the session bus for the keys). Main thread only.

#include <string>
#include <vector>

#include "ai/ai_services.h"
#include "dict/cedict.h"
#include "platform/linux/secret/secret_service_store.h"
#include "settings/clock.h"
#include "settings/folders.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"

namespace vesko::cli {

class AIContext {
 public:
  AIContext(Settings& settings, const Folders& folders, const Clock& clock);
  AIContext(const AIContext&) = delete;
  AIContext& operator=(const AIContext&) = delete;

  const Loc& loc() const { return loc_; }
  Log& journal() { return journal_; }
  AIServices& services() { return services_; }
  CloudAI& ai() { return services_.ai(); }
  const LanguageAsk& ask() const { return services_.ask(); }
  AnswerCache& cache() { return services_.answers(); }
  std::string answerLanguage() const { return services_.answerLanguage(); }
  SentenceSetup setup(std::vector<std::string> targets) {
    return services_.sentenceSetup(std::move(targets));
  }
  // After an answer that says the model is gone: replaces the stored model by its successor when
  // the service's list has one, and says so on stderr.
  void replaceGoneModel(AIProvider provider);

 private:
  LocTables tables_;
  CEDict dictionary_;  // never loaded: every AI text has its traditional-Chinese row
  HantCache hant_;
  Loc loc_;
  Log journal_;
  SecretServiceStore store_;
  AIServices services_;
};

}  // namespace vesko::cli
