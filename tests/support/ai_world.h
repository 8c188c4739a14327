#pragma once
// Everything CloudAI works with, for a test: settings in a temp folder pointing every provider at
// the fake providers, French interface texts, keys in memory and in a test environment, a fake
// clock, switchable remote pauses, and a record of every log line, usage call and pause. One per
// test; the records are safe from the question threads.

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "ai/cloud_ai.h"
#include "ai/curl_http_client.h"
#include "ai/keys.h"
#include "dict/cedict.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/settings.h"
#include "support/fake_clock.h"
#include "support/fake_providers.h"
#include "support/memory_secret_store.h"
#include "support/temp_dir.h"

namespace vesko::testing {

class SwitchedRemote final : public RemoteConfig {
 public:
  bool paused(std::string_view feature) const override {
    return feature == "ai" ? ai.load() : feature == "vesko" ? relay.load() : false;
  }
  std::atomic<bool> ai{false};
  std::atomic<bool> relay{false};
};

// Test keys: distinctive, so that a leak into a log line or a text is found.
inline constexpr const char* kClaudeKey = "sk-ant-test-KEY-7f3a9c51";
inline constexpr const char* kOpenAIKey = "sk-openai-test-KEY-51b2e0";
inline constexpr const char* kDeepSeekKey = "sk-deepseek-test-KEY-c0de99";

class AIWorld {
 public:
  explicit AIWorld(const std::string& baseUrl, const HttpClient* http = nullptr)
      : settings_(dir_.path() / "settings.json", clock),
        hant_(dictionary_),
        loc_(settings_, tables_, hant_, {"fr-FR"}),
        keys_(store,
              [this](std::string_view name) -> std::optional<std::string> {
                std::lock_guard lock(mutex_);
                auto it = environment_.find(std::string(name));
                if (it == environment_.end()) return std::nullopt;
                return it->second;
              }),
        http_(http ? *http : curl_) {
    set("claudeHost", baseUrl);
    set("openaiHost", baseUrl);
    set("deepseekHost", baseUrl);
    set("relayHost", baseUrl);
    set("localModelURL", baseUrl + "/local/v1");
    CloudAIOptions options;
    options.log = [this](std::string line) {
      std::lock_guard lock(mutex_);
      logLines_.push_back(std::move(line));
    };
    options.usage = [this](AIProvider provider, std::string_view body) {
      std::lock_guard lock(mutex_);
      usage_.emplace_back(provider, std::string(body));
    };
    options.sleep = [this](std::chrono::milliseconds pause) {
      std::lock_guard lock(mutex_);
      pauses_.push_back(pause);
    };
    options.timeZone = [this] {
      std::lock_guard lock(mutex_);
      return timeZone_;
    };
    options.relay = {"device-1", "token-1"};
    options.requestTimeout = requestTimeout;
    options.localProbeTimeout = std::chrono::milliseconds(1000);
    ai =
        std::make_unique<CloudAI>(settings_, loc_, http_, keys_, remote, clock, std::move(options));
  }

  template <typename T>
  void set(std::string_view key, T value) {
    if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>)
      (void)settings_.set(key, static_cast<long long>(value));
    else
      (void)settings_.set(key, SettingValue(value));
  }
  void setKey(AIProvider provider, const std::string& key) {
    (void)store.save(providerRow(provider).account, key);
  }
  void setEnvironment(const std::string& name, const std::string& value) {
    std::lock_guard lock(mutex_);
    environment_[name] = value;
  }
  void setTimeZone(std::string id) {
    std::lock_guard lock(mutex_);
    timeZone_ = std::move(id);
  }
  // A CloudAI made again with other options (a real sleep, a shorter timeout).
  void rebuild(const std::function<void(CloudAIOptions&)>& change) {
    CloudAIOptions options;
    options.log = [this](std::string line) {
      std::lock_guard lock(mutex_);
      logLines_.push_back(std::move(line));
    };
    options.timeZone = [] { return std::string("Europe/Paris"); };
    change(options);
    ai =
        std::make_unique<CloudAI>(settings_, loc_, http_, keys_, remote, clock, std::move(options));
  }

  std::vector<std::string> logLines() const {
    std::lock_guard lock(mutex_);
    return logLines_;
  }
  std::vector<std::pair<AIProvider, std::string>> usage() const {
    std::lock_guard lock(mutex_);
    return usage_;
  }
  std::vector<std::chrono::milliseconds> pauses() const {
    std::lock_guard lock(mutex_);
    return pauses_;
  }

  AIReply ask(const std::string& user, std::optional<std::string> model = std::nullopt) {
    AIReply reply = ai->answer(Question{"Tu es un professeur.", user, 300}, model);
    std::lock_guard lock(mutex_);
    texts_.push_back(reply.answer.text);
    return reply;
  }
  // Every answer text seen through ask().
  std::vector<std::string> texts() const {
    std::lock_guard lock(mutex_);
    return texts_;
  }

  Settings& settings() { return settings_; }
  const Loc& loc() const { return loc_; }

  static constexpr std::chrono::milliseconds requestTimeout{3000};

  TempDir dir_;
  FakeClock clock;
  MemorySecretStore store;
  SwitchedRemote remote;

 private:
  Settings settings_;
  LocTables tables_;
  CEDict dictionary_;
  HantCache hant_;
  Loc loc_;
  mutable std::mutex mutex_;
  std::map<std::string, std::string> environment_;         // guarded by mutex_
  std::string timeZone_ = "Europe/Paris";                  // guarded by mutex_
  std::vector<std::string> logLines_;                      // guarded by mutex_
  std::vector<std::string> texts_;                         // guarded by mutex_
  std::vector<std::pair<AIProvider, std::string>> usage_;  // guarded by mutex_
  std::vector<std::chrono::milliseconds> pauses_;          // guarded by mutex_
  Keys keys_;
  CurlHttpClient curl_;
  const HttpClient& http_;

 public:
  std::unique_ptr<CloudAI> ai;  // last: made from everything above
};

}  // namespace vesko::testing
