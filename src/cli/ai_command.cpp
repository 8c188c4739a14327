#include "cli/ai_command.h"

#include <fmt/format.h>
#include <termios.h>
#include <unistd.h>

#include <iostream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "ai/keys.h"
#include "ai/provider.h"
#include "cli/ai_context.h"
#include "cli/input.h"
#include "cli/zh_output.h"
#include "dict/cedict.h"
#include "platform/linux/secret/secret_service_store.h"
#include "settings/environment.h"
#include "settings/loc.h"

namespace vesko::cli {
namespace {

using nlohmann::json;

struct AskOptions {
  std::string provider;
  std::string model;
  int maxTokens = 1024;
  std::string system;
  bool json = false;
  std::string user;
};

struct KeyOptions {
  std::string provider;
  bool json = false;
};

std::string sourceName(FoundKey::Source source) {
  switch (source) {
    case FoundKey::Source::store:
      return "store";
    case FoundKey::Source::environment:
      return "environment";
    case FoundKey::Source::none:
      break;
  }
  return "none";
}

// The providers reached with the learner's own key, by their command-line name.
std::expected<AIProvider, Failure> keyedProvider(const std::string& name) {
  auto provider = providerNamed(name);
  if (!provider || !usesKey(*provider))
    return std::unexpected(
        Failure{fmt::format("unknown provider \"{}\" (claude, openai, deepseek)", name)});
  return *provider;
}

// The key from standard input: one line typed without echo at a terminal, else everything piped,
// without surrounding blanks. Never an argument, which other users can read in the process list.
std::string readKey(AIProvider provider) {
  std::string key;
  if (isatty(STDIN_FILENO)) {
    std::cerr << "Paste the " << providerRow(provider).label << " key, then press Enter: ";
    termios saved{};
    const bool quiet = tcgetattr(STDIN_FILENO, &saved) == 0;
    if (quiet) {
      termios silent = saved;
      silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
      tcsetattr(STDIN_FILENO, TCSANOW, &silent);
    }
    std::getline(std::cin, key);
    if (quiet) tcsetattr(STDIN_FILENO, TCSANOW, &saved);
    std::cerr << '\n';
  } else {
    key.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  }
  return trimmed(key);
}

int runAsk(const AskOptions& ask, Settings& settings, const Folders& folders, const Clock& clock) {
  if (!ask.provider.empty()) {
    auto provider = providerNamed(ask.provider);
    if (!provider)
      return fail(Failure{fmt::format(
          "unknown provider \"{}\" (local, claude, openai, deepseek, vesko)", ask.provider)});
    settings.overrideForRun("aiProvider", static_cast<long long>(*provider));
  }
  if (ask.maxTokens <= 0) return fail(Failure{"--max-tokens must be a positive number"});
  if (ask.user.empty()) return fail(Failure{"nothing to ask"});
  if (!ask.model.empty()) {
    const AIProvider chosen =
        providerAt(settings.integer("aiProvider")).value_or(AIProvider::apple);
    if (chosen == AIProvider::vesko)
      return fail(Failure{"the Vesko relay chooses its own model: --model does not apply"});
    const std::string key =
        chosen == AIProvider::apple ? "localModel" : std::string(providerRow(chosen).modelKey);
    settings.overrideForRun(key, ask.model);
  }

  AIContext context(settings, folders, clock);
  const AIReply reply = context.ai().answer(Question{ask.system, ask.user, ask.maxTokens});
  // The service retired the model: the next question goes to its successor, if the list has one.
  if (reply.answer.modelGone && ask.model.empty()) context.replaceGoneModel(reply.provider);
  if (ask.json) {
    std::cout << dump(json{{"text", reply.answer.text},
                           {"unreachable", reply.answer.unreachable},
                           {"modelGone", reply.answer.modelGone},
                           {"provider", std::string(providerRow(reply.provider).name)}})
              << '\n';
  } else {
    std::cout << reply.answer.text << '\n';
  }
  return reply.answer.isMessage() ? 2 : 0;
}

int runKeySet(const KeyOptions& options, bool clear) {
  auto provider = keyedProvider(options.provider);
  if (!provider) return fail(provider.error());
  const std::string key = clear ? std::string() : readKey(*provider);
  if (!clear && key.empty())
    return fail(Failure{"no key on standard input (vesko key clear PROVIDER removes one)"});
  SecretServiceStore store;
  const auto& row = providerRow(*provider);
  if (auto saved = store.save(row.account, key); !saved)
    return fail(Failure{fmt::format(
        "no Secret Service is reachable ({}), so the {} key was not {}; Vesko reads {} from the "
        "environment instead",
        saved.error().detail, row.label, clear ? "removed" : "saved", keyVariable(*provider))});
  std::cout << row.label << " key " << (clear ? "removed from" : "saved in")
            << " the Secret Service\n";
  return 0;
}

int runKeyStatus(const KeyOptions& options) {
  SecretServiceStore store;
  const Keys keys(store, processEnvironment());
  std::optional<std::string> storeProblem;
  json providers = json::object();
  std::string lines;
  for (const auto& row : kProviders) {
    if (!usesKey(row.provider)) continue;
    const FoundKey found = keys.find(row.provider);
    if (found.storeProblem && !storeProblem) storeProblem = found.storeProblem;
    providers[std::string(row.name)] = sourceName(found.source);
    std::string where = found.source == FoundKey::Source::store ? "in the Secret Service"
                        : found.source == FoundKey::Source::environment
                            ? fmt::format("from {}", keyVariable(row.provider))
                            : "no key";
    lines += fmt::format("{:<9} {}\n", row.name, where);
  }
  if (options.json) {
    std::cout << dump(json{{"secretService", !storeProblem.has_value()}, {"providers", providers}})
              << '\n';
    return 0;
  }
  if (storeProblem)
    std::cout << "No Secret Service is reachable (" << *storeProblem
              << "): keys are read from the environment only.\n";
  std::cout << lines;
  return 0;
}

}  // namespace

void addAICommands(CLI::App& app, Settings& settings, const Folders& folders, const Clock& clock,
                   int& exitCode) {
  auto askOptions = std::make_shared<AskOptions>();
  auto* ask = app.add_subcommand("ask", "Ask the language model a question, as the bubble does");
  ask->add_option("--provider", askOptions->provider,
                  "local, claude, openai, deepseek or vesko (default: the aiProvider setting)");
  ask->add_option("--model", askOptions->model, "The provider's model for this question");
  ask->add_option("--max-tokens", askOptions->maxTokens, "Token budget of the answer")
      ->capture_default_str();
  ask->add_option("--system", askOptions->system, "System text (instructions)");
  ask->add_flag("--json", askOptions->json,
                "Write {\"text\",\"unreachable\",\"modelGone\",\"provider\"}");
  ask->add_option("USER_TEXT", askOptions->user, "The question")->required();
  ask->callback([askOptions, &settings, &folders, &clock, &exitCode] {
    exitCode = runAsk(*askOptions, settings, folders, clock);
  });

  auto keyOptions = std::make_shared<KeyOptions>();
  auto* key = app.add_subcommand("key", "The service keys in the desktop's Secret Service");
  key->require_subcommand(1);
  auto* set = key->add_subcommand("set", "Save a provider's key, read from standard input");
  set->add_option("PROVIDER", keyOptions->provider, "claude, openai or deepseek")->required();
  set->callback([keyOptions, &exitCode] { exitCode = runKeySet(*keyOptions, false); });
  auto* clear = key->add_subcommand("clear", "Remove a provider's key");
  clear->add_option("PROVIDER", keyOptions->provider, "claude, openai or deepseek")->required();
  clear->callback([keyOptions, &exitCode] { exitCode = runKeySet(*keyOptions, true); });
  auto* status = key->add_subcommand("status", "Which providers have a key, and where from");
  status->add_flag("--json", keyOptions->json,
                   "Write {\"secretService\",\"providers\":{NAME: store|environment|none}}");
  status->callback([keyOptions, &exitCode] { exitCode = runKeyStatus(*keyOptions); });
}

}  // namespace vesko::cli
