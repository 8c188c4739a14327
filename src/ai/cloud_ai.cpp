#include "ai/cloud_ai.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

#include "ai/time_zone.h"
#include "settings/credits.h"

namespace vesko {
namespace {

std::string label(AIProvider provider) {
  return std::string(providerRow(provider).label);
}

// The backup named by `aiBackup`: only Claude, ChatGPT and DeepSeek count, and never the primary.
std::optional<AIProvider> backupFor(const Settings& settings, AIProvider primary) {
  auto backup = providerAt(settings.integer("aiBackup"));
  if (!backup || !usesKey(*backup) || *backup == primary) return std::nullopt;
  return backup;
}

std::string hostSetting(AIProvider provider) {
  switch (provider) {
    case AIProvider::claude:
      return "claudeHost";
    case AIProvider::openai:
      return "openaiHost";
    case AIProvider::deepseek:
      return "deepseekHost";
    case AIProvider::apple:
      return "localModelURL";
    case AIProvider::vesko:
      return "relayHost";
  }
  return {};
}

// A service may quote what it was sent; the key itself is never shown or logged.
std::string withoutKey(std::string text, std::string_view key) {
  if (key.empty()) return text;
  for (auto at = text.find(key); at != std::string::npos; at = text.find(key, at))
    text.replace(at, key.size(), "…");
  return text;
}

std::string failureName(HttpFailure::Kind kind) {
  switch (kind) {
    case HttpFailure::Kind::connect:
      return "connexion impossible";
    case HttpFailure::Kind::timeout:
      return "délai dépassé";
    case HttpFailure::Kind::tooLarge:
      return "réponse trop longue";
    case HttpFailure::Kind::other:
      break;
  }
  return "échec";
}

}  // namespace

// Every read of the credential store is a D-Bus round trip, and a question may need a key up to
// four times (choosing, the backup check, the request): read each once per question.
class CloudAI::QuestionKeys {
 public:
  explicit QuestionKeys(const Keys& keys) : keys_(keys) {}
  const std::string& operator()(AIProvider provider) {
    auto& slot = read_[static_cast<std::size_t>(provider)];
    if (!slot) slot = keys_.key(provider);
    return *slot;
  }

 private:
  const Keys& keys_;
  std::array<std::optional<std::string>, kProviders.size()> read_;
};

CloudAI::CloudAI(const Settings& settings, const Loc& loc, const HttpClient& http, const Keys& keys,
                 const RemoteConfig& remote, const Clock& clock, CloudAIOptions options)
    : settings_(settings),
      loc_(loc),
      http_(http),
      keys_(keys),
      remote_(remote),
      clock_(clock),
      options_(std::move(options)) {
  if (!options_.log) options_.log = [](std::string) {};
  if (!options_.usage) options_.usage = [](AIProvider, std::string_view) {};
  if (!options_.sleep)
    options_.sleep = [](std::chrono::milliseconds d) { std::this_thread::sleep_for(d); };
  if (!options_.timeZone) options_.timeZone = &hostTimeZoneId;
}

void CloudAI::log(std::string line) const {
  options_.log(std::move(line));
}

AIAnswer CloudAI::warning(std::string_view translated, bool unreachable, bool modelGone) const {
  return AIAnswer{std::string(kWarningPrefix) + std::string(translated), unreachable, modelGone};
}

std::future<AIAnswer> CloudAI::ask(std::string system, std::string user, int maxTokens,
                                   std::optional<std::string> model) {
  return std::async(std::launch::async,
                    [this, question = Question{std::move(system), std::move(user), maxTokens},
                     model = std::move(model)] { return answer(question, model).answer; });
}

AIProvider CloudAI::effectiveProvider() const {
  QuestionKeys keys(keys_);
  return effectiveProvider(keys);
}

AIProvider CloudAI::effectiveProvider(QuestionKeys& keys) const {
  const auto& settings = settings_;
  const AIProvider chosen = providerAt(settings.integer("aiProvider")).value_or(AIProvider::apple);
  const bool relayPaused = remote_.paused("vesko");
  if (chosen == AIProvider::vesko) return relayPaused ? AIProvider::apple : AIProvider::vesko;
  if (relayPaused) return chosen;
  if (chosen == AIProvider::apple)
    return localModelAvailable() ? AIProvider::apple : AIProvider::vesko;
  if (!keys(chosen).empty()) return chosen;
  // No key of its own: keep the choice when a backup can stand in (the question goes there).
  if (auto backup = backupFor(settings, chosen); backup && !keys(*backup).empty()) return chosen;
  return AIProvider::vesko;
}

AIReply CloudAI::answer(const Question& question, const std::optional<std::string>& model) {
  if (remote_.paused("ai"))
    return {warning(loc_.t("L'IA est en pause pour le moment. Réessaie plus tard.")),
            providerAt(settings_.integer("aiProvider")).value_or(AIProvider::apple)};

  QuestionKeys keys(keys_);
  const AIProvider primary = effectiveProvider(keys);
  const auto backup = backupFor(settings_, primary);
  const bool backupHasKey = backup && !keys(*backup).empty();
  auto viaBackup = [&](const char* why) {
    log(fmt::format("IA : {} → {} ({})", label(primary), label(*backup), why));
    return AIReply{askProvider(*backup, question, std::nullopt, keys), *backup};
  };

  if (usesKey(primary) && backupHasKey && keys(primary).empty()) return viaBackup("pas de clé");
  if ((primary == AIProvider::claude || primary == AIProvider::openai) && backupHasKey &&
      settings_.flag("aiBackupInChina") && isChinaTimeZone(options_.timeZone()))
    return viaBackup("fuseau horaire chinois");
  if (backupHasKey && backup_.open(clock_.now())) return viaBackup("secours en cours");

  AIAnswer first = askProvider(primary, question, model, keys);
  if (!first.unreachable) return {std::move(first), primary};
  if (backupHasKey) {
    backup_.openAt(clock_.now());
    log(fmt::format("IA : {} injoignable → {} en secours pour 30 min", label(primary),
                    label(*backup)));
    return {askProvider(*backup, question, std::nullopt, keys), *backup};
  }
  if (primary != AIProvider::vesko && !remote_.paused("vesko")) {
    log(fmt::format("IA : {} injoignable → IA Vesko", label(primary)));
    return {askRelay(question), AIProvider::vesko};
  }
  return {std::move(first), primary};
}

AIAnswer CloudAI::askProvider(AIProvider provider, const Question& question,
                              const std::optional<std::string>& model, QuestionKeys& keys) {
  switch (provider) {
    case AIProvider::apple:
      return askLocal(question);
    case AIProvider::vesko:
      return askRelay(question);
    case AIProvider::claude:
    case AIProvider::openai:
    case AIProvider::deepseek:
      break;
  }
  return askService(provider, question, model, keys);
}

AIAnswer CloudAI::askService(AIProvider provider, const Question& question,
                             const std::optional<std::string>& model, QuestionKeys& keys) {
  const std::string& key = keys(provider);
  if (key.empty()) {
    switch (provider) {
      case AIProvider::claude:
        return warning(loc_.t("Ajoute ta clé Claude dans Réglages → IA."));
      case AIProvider::openai:
        return warning(loc_.t("Ajoute ta clé ChatGPT (OpenAI) dans Réglages → IA."));
      default:
        return warning(loc_.t("Ajoute ta clé DeepSeek dans Réglages → IA."));
    }
  }
  const auto& row = providerRow(provider);
  std::string chosenModel = settings_.text(row.modelKey);
  if (provider == AIProvider::claude && model && !model->empty()) chosenModel = *model;
  HttpRequest request =
      chatRequest(provider, settings_.text(hostSetting(provider)), key, chosenModel, question);
  request.timeout = options_.requestTimeout;
  return exchange(provider, request, key);
}

AIAnswer CloudAI::exchange(AIProvider provider, const HttpRequest& request, std::string_view key) {
  for (bool retried = false;; retried = true) {
    auto reply = http_.send(request);
    if (!reply) {
      log(withoutKey(fmt::format("IA : {} injoignable ({}) : {}", label(provider),
                                 failureName(reply.error().kind), reply.error().detail),
                     key));
      return warning(unreachableText(provider), /*unreachable=*/true);
    }
    if (reply->status < 400) {
      options_.usage(provider, reply->body);
      if (auto text = readAnswer(provider, reply->body)) return AIAnswer{std::move(*text)};
      log(fmt::format("IA : {} a répondu {} sans texte", label(provider), reply->status));
      return warning(loc_.t("Réponse vide."));
    }
    Refusal refusal = readRefusal(reply->status, reply->body);
    std::string message = refusal.message.empty()
                              ? loc_.t("erreur") + " " + std::to_string(reply->status)
                              : withoutKey(std::move(refusal.message), key);
    log(fmt::format("IA : {} a refusé ({}) : {}", label(provider), reply->status, message));
    if (!refusal.overloaded)
      return warning(loc_.t("Le service a refusé la demande :") + " " + message,
                     refusal.unreachable, refusal.modelGone);
    if (retried) {
      std::string text = loc_.t(
          "%@ est surchargé en ce moment. Réessaie dans une minute, ou choisis une autre IA dans "
          "Réglages → IA.");
      if (auto at = text.find("%@"); at != std::string::npos)
        text.replace(at, 2, loc_.t(providerRow(provider).label));
      return warning(text, /*unreachable=*/true);
    }
    log(fmt::format("IA : {} surchargé → nouvel essai dans 2 s", label(provider)));
    options_.sleep(kOverloadPause);
  }
}

std::string CloudAI::unreachableText(AIProvider provider) const {
  switch (provider) {
    case AIProvider::claude:
    case AIProvider::openai:
      return loc_.t(
          "Service injoignable. En Chine, Claude et ChatGPT sont bloqués : choisis DeepSeek dans "
          "Réglages → IA.");
    case AIProvider::deepseek:
      return loc_.t("Pas de connexion internet ou service injoignable.");
    case AIProvider::apple:
      return localUnavailableText();
    case AIProvider::vesko:
      break;
  }
  return loc_.t("IA Vesko ne répond pas pour le moment. Réessaie dans un instant.");
}

std::string CloudAI::localUnavailableText() const {
  return loc_.t(
      "L'IA locale n'est pas disponible : lance un serveur de modèle local, ou choisis Claude ou "
      "DeepSeek dans Réglages → IA.");
}

std::string CloudAI::missingProviderMessage() const {
  const AIProvider provider = effectiveProvider();
  if (provider == AIProvider::apple || provider == AIProvider::vesko) return localUnavailableText();
  return loc_.t("Il manque la clé") + " " + loc_.t(providerRow(provider).label) + " " +
         loc_.t("dans Réglages → IA.");
}

std::optional<std::string> CloudAI::strongerClaudeModel() const {
  std::string model = settings_.text("claudeModel");
  std::transform(model.begin(), model.end(), model.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (model.find("haiku") != std::string::npos) return "claude-sonnet-5-5";
  return std::nullopt;
}

std::optional<std::vector<std::string>> CloudAI::localModels() const {
  HttpRequest request;
  request.method = "GET";
  std::string base = settings_.text("localModelURL");
  while (base.ends_with('/')) base.pop_back();
  if (base.empty()) return std::nullopt;
  request.url = base + "/models";
  request.timeout = options_.localProbeTimeout;
  request.maxReplyBytes = 1u << 20;
  auto reply = http_.send(request);
  if (!reply || reply->status >= 300) return std::nullopt;
  return readModelIds(reply->body);
}

bool CloudAI::localModelAvailable() const {
  return localModels().has_value();
}

AIAnswer CloudAI::askLocal(const Question& question) {
  std::string model = settings_.text("localModel");
  if (model.empty()) {
    auto models = localModels();
    if (!models) {
      log("IA : serveur de modèle local injoignable");
      return warning(localUnavailableText(), /*unreachable=*/true);
    }
    if (!models->empty()) model = models->front();
  }
  HttpRequest request =
      chatRequest(AIProvider::apple, settings_.text("localModelURL"), {}, model, question);
  request.timeout = options_.localTimeout;
  return exchange(AIProvider::apple, request, {});
}

AIAnswer CloudAI::askRelay(const Question& question) {
  const std::string host = settings_.text("relayHost");
  const std::string unavailable =
      loc_.t("IA Vesko ne répond pas pour le moment. Réessaie dans un instant.");
  if (host.empty()) {
    log("IA : IA Vesko sans adresse (réglage relayHost vide)");
    return warning(unavailable, /*unreachable=*/true);
  }
  HttpRequest request =
      relayRequest(host, options_.relay, question, "Vesko/" + std::string(kAppVersion));
  request.timeout = options_.requestTimeout;
  auto reply = http_.send(request);
  if (!reply) {
    log(fmt::format("IA : IA Vesko injoignable ({}) : {}", failureName(reply.error().kind),
                    reply.error().detail));
    return warning(unavailable, /*unreachable=*/true);
  }
  RelayAnswer relayed = readRelayAnswer(reply->body);
  if (relayed.text) {
    if (relayed.text->empty()) return warning(loc_.t("Réponse vide."));
    return AIAnswer{std::move(*relayed.text)};
  }
  log(fmt::format("IA : IA Vesko a répondu {} ({})", reply->status,
                  relayed.error.empty() ? "sans code" : relayed.error));
  const bool unreachable = reply->status == 403 || reply->status == 429 || reply->status >= 500;
  return warning(unavailable, unreachable);
}

}  // namespace vesko
