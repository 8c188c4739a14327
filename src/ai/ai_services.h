#pragma once
// The language-model services a program wires once: keys, HTTP, usage counting, the one entry
// point (CloudAI), the answer-language ask, the kept answers, explanations and model lists.
// Created once by a program (the desktop app, an AI command) with collaborators that outlive it.
// Thread contract: as CloudAI, every member may be called from any thread, except `models()`,
// whose onModelGone writes settings and asks the network: call it off the GUI thread.

#include <filesystem>
#include <string>
#include <vector>

#include "ai/answer_cache.h"
#include "ai/answer_language.h"
#include "ai/cloud_ai.h"
#include "ai/curl_http_client.h"
#include "ai/explanation.h"
#include "ai/keys.h"
#include "ai/models.h"
#include "ai/remote_config.h"
#include "ai/secret_store.h"
#include "ai/sentence_model.h"
#include "ai/usage.h"
#include "settings/clock.h"
#include "settings/environment.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"

namespace vesko {

class AIServices {
 public:
  // `answers`: the kept answers' file (reponses-ia.json in the data folder). libcurl must have
  // been set up (CurlLibrary) by the program first.
  AIServices(Settings& settings, const Loc& loc, Log& log, const Clock& clock,
             const SecretStore& secrets, Environment environment,
             const std::filesystem::path& answers);
  AIServices(const AIServices&) = delete;
  AIServices& operator=(const AIServices&) = delete;

  CloudAI& ai() { return ai_; }
  const Keys& keys() const { return keys_; }
  const HttpClient& http() const { return http_; }
  AIUsage& usage() { return usage_; }
  const LanguageAsk& ask() const { return ask_; }
  AnswerCache& answers() { return answers_; }
  const Explainer& explainer() const { return explainer_; }
  Models& models() { return models_; }

  // The interface's answer language ("fr", "en", "zh-Hant"…).
  std::string answerLanguage() const;
  // Who answers the sentence actions and in which language, translating into `targets`. Finding
  // the provider may probe the local model server: not on a GUI thread.
  SentenceSetup sentenceSetup(std::vector<std::string> targets);

 private:
  CloudAIOptions options(Log& log);

  Settings& settings_;
  const Loc& loc_;
  Keys keys_;
  CurlHttpClient http_;
  NoRemotePause remote_;
  AIUsage usage_;
  CloudAI ai_;
  LanguageAsk ask_;
  AnswerCache answers_;
  Explainer explainer_;
  Models models_;
};

}  // namespace vesko
