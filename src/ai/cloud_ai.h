#pragma once
// The one entry point for every language-model question: it chooses the provider that answers
// (the learner's choice, the backup after a failure for 30 minutes, the relay as a last resort),
// speaks that provider's protocol and turns every failure into a "⚠️ " text for the learner.
// Created once and shared; it must outlive every future it returned. `ask` and every other member
// are safe from any thread, several questions at once; the only state the questions share is the
// backup window. Everything here may block on the network or the credential store: never call the
// synchronous members on a GUI main thread.

#include <chrono>
#include <functional>
#include <future>
#include <optional>
#include <string>
#include <string_view>

#include "ai/ai_answer.h"
#include "ai/backup_window.h"
#include "ai/http.h"
#include "ai/keys.h"
#include "ai/provider.h"
#include "ai/remote_config.h"
#include "ai/wire_protocol.h"
#include "settings/clock.h"
#include "settings/loc.h"
#include "settings/settings.h"

namespace vesko {

// How CloudAI reports, waits and times out. The functions are called from the question's thread,
// so they must be safe from any thread; an empty function takes the default.
struct CloudAIOptions {
  // One diagnostic line ("IA : …"); never holds a key. Default: dropped.
  std::function<void(std::string)> log;
  // Every reply below 400 from the local model, Claude, ChatGPT or DeepSeek, before its answer is
  // read: the usage counter's hook. Default: nothing.
  std::function<void(AIProvider, std::string_view replyBody)> usage;
  // The pause before asking an overloaded provider again. Default: sleeps.
  std::function<void(std::chrono::milliseconds)> sleep;
  // The host's time-zone id. Default: hostTimeZoneId().
  std::function<std::string()> timeZone;
  RelayIdentity relay;
  std::chrono::milliseconds requestTimeout{20'000};
  // A model on this machine's processor writes slower than a service.
  std::chrono::milliseconds localTimeout{120'000};
  // The local server counts as available when its model list answers within this.
  std::chrono::milliseconds localProbeTimeout{1'000};
};

// An answer with the provider that gave it (the backup or the relay after a failover).
struct AIReply {
  AIAnswer answer;
  AIProvider provider = AIProvider::vesko;
};

class CloudAI {
 public:
  static constexpr std::chrono::seconds kOverloadPause{2};

  // Everything passed by reference must outlive the CloudAI.
  CloudAI(const Settings& settings, const Loc& loc, const HttpClient& http, const Keys& keys,
          const RemoteConfig& remote, const Clock& clock, CloudAIOptions options = {});
  CloudAI(const CloudAI&) = delete;
  CloudAI& operator=(const CloudAI&) = delete;

  // Asks in the background; the settings are read when the question starts. `model` overrides
  // the Claude model only (see strongerClaudeModel).
  std::future<AIAnswer> ask(std::string system, std::string user, int maxTokens,
                            std::optional<std::string> model = std::nullopt);
  // The same, on the calling thread, with who answered.
  AIReply answer(const Question& question, const std::optional<std::string>& model = std::nullopt);

  // The provider that will be asked first: the learner's choice, or the relay when that one
  // cannot be used (no key and no backup with one; no local model server).
  AIProvider effectiveProvider() const;
  // What the learner must do before the effective provider can answer.
  std::string missingProviderMessage() const;
  // A stronger model for hard questions when the learner's Claude model is a small one.
  std::optional<std::string> strongerClaudeModel() const;
  // Whether the local model server lists its models within the probe time.
  bool localModelAvailable() const;

 private:
  class QuestionKeys;  // the keys of one question, each read from the store once

  AIProvider effectiveProvider(QuestionKeys& keys) const;
  AIAnswer askProvider(AIProvider provider, const Question& question,
                       const std::optional<std::string>& model, QuestionKeys& keys);
  AIAnswer askService(AIProvider provider, const Question& question,
                      const std::optional<std::string>& model, QuestionKeys& keys);
  AIAnswer askLocal(const Question& question);
  AIAnswer askRelay(const Question& question);
  // One request and, when the provider is overloaded, one more after the pause.
  AIAnswer exchange(AIProvider provider, const HttpRequest& request, std::string_view key);
  std::optional<std::vector<std::string>> localModels() const;

  AIAnswer warning(std::string_view translated, bool unreachable = false,
                   bool modelGone = false) const;
  std::string unreachableText(AIProvider provider) const;
  std::string localUnavailableText() const;
  void log(std::string line) const;

  const Settings& settings_;
  const Loc& loc_;
  const HttpClient& http_;
  const Keys& keys_;
  const RemoteConfig& remote_;
  const Clock& clock_;
  CloudAIOptions options_;
  BackupWindow backup_;
};

}  // namespace vesko
