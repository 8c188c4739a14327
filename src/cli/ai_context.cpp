#include "cli/ai_context.h"

#include <iostream>

#include "settings/environment.h"

namespace vesko::cli {

AIContext::AIContext(Settings& settings, const Folders& folders, const Clock& clock)
    : hant_(dictionary_),
      loc_(settings, tables_, hant_, preferredLanguages(processEnvironment())),
      journal_(folders.logFile(), settings, clock),
      services_(settings, loc_, journal_, clock, store_, processEnvironment(),
                folders.data / AnswerCache::kFileName) {}

void AIContext::replaceGoneModel(AIProvider provider) {
  if (!usesKey(provider)) return;
  const auto replaced =
      services_.models().onModelGone(provider, services_.keys().find(provider).key);
  if (!replaced.notice.text.empty()) std::cerr << replaced.notice.text << '\n';
}

}  // namespace vesko::cli
