#include "ai/ai_services.h"

#include <utility>

#include "ai/provider.h"

namespace vesko {

AIServices::AIServices(Settings& settings, const Loc& loc, Log& log, const Clock& clock,
                       const SecretStore& secrets, Environment environment,
                       const std::filesystem::path& answers)
    : settings_(settings),
      loc_(loc),
      keys_(secrets, std::move(environment)),
      usage_(settings, clock),
      ai_(settings, loc, http_, keys_, remote_, clock, options(log)),
      ask_(ai_),
      answers_(answers, clock, [&log](std::string line) { log.log(std::move(line)); }),
      explainer_(ai_, loc),
      models_(http_, settings, loc, log) {}

CloudAIOptions AIServices::options(Log& log) {
  CloudAIOptions options;
  options.log = [&log](std::string line) { log.log(std::move(line)); };
  options.usage = [this](AIProvider provider, std::string_view body) {
    usage_.record(provider, body);
  };
  return options;
}

std::string AIServices::answerLanguage() const { return vesko::answerLanguage(loc_); }

SentenceSetup AIServices::sentenceSetup(std::vector<std::string> targets) {
  SentenceSetup setup;
  setup.answerLanguage = answerLanguage();
  setup.targetCodes = std::move(targets);
  const AIProvider provider = ai_.effectiveProvider();
  setup.provider = std::string(providerRow(provider).name);
  if (provider == AIProvider::apple)
    setup.model = settings_.text("localModel");
  else if (!providerRow(provider).modelKey.empty())
    setup.model = settings_.text(providerRow(provider).modelKey);
  setup.strongerModel = [this] { return ai_.strongerClaudeModel(); };
  return setup;
}

}  // namespace vesko
