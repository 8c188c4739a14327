#pragma once
// The data behind the model lists: where each provider lists its models, the families a model id
// belongs to, and what stands in for a retired model when no model of its family is left.
// Constant data; any thread.

#include <string_view>

#include "ai/provider.h"

namespace vesko {

// The list endpoint of one provider: GET hostSetting's URL + path, the key in keyHeader after
// keyPrefix, and the API version header when the provider wants one.
struct ModelListEndpoint {
  AIProvider provider;
  std::string_view hostSetting;
  std::string_view path;
  std::string_view keyHeader;
  std::string_view keyPrefix;
  std::string_view versionHeader;
  std::string_view version;
  std::string_view idPrefix;  // only ids that begin with it are offered; empty keeps every id
};

// clang-format off
inline constexpr ModelListEndpoint kModelListEndpoints[] = {
  {AIProvider::claude,   "claudeHost",   "/v1/models?limit=100", "x-api-key",     "",        "anthropic-version", "2023-06-01", ""},
  // OpenAI lists its image, speech and embedding models too; only the chat models can answer.
  {AIProvider::openai,   "openaiHost",   "/v1/models",           "Authorization", "Bearer ", "",                  "",           "gpt-"},
  {AIProvider::deepseek, "deepseekHost", "/models",              "Authorization", "Bearer ", "",                  "",           ""},
};
// clang-format on

// A model's family is the first of these words its lower-cased id contains, in this order:
// "gpt-4o-mini" is a "mini", "claude-3-5-haiku-latest" a "haiku".
// clang-format off
inline constexpr std::string_view kModelFamilies[] = {
  "haiku", "sonnet", "opus", "nano", "mini", "flash", "reasoner", "chat",
};
// clang-format on

// When the retired model has no family, or none of its family is left: the first other id that
// has `word` as its family (byFamily) or that contains `word`, else the first other id.
// Providers without a row (the local model, the relay) get no replacement.
struct ModelFallback {
  AIProvider provider;
  std::string_view word;
  bool byFamily;
};

// clang-format off
inline constexpr ModelFallback kModelFallbacks[] = {
  {AIProvider::claude,   "sonnet", true},
  {AIProvider::openai,   "mini",   false},
  {AIProvider::deepseek, "chat",   false},
};
// clang-format on

}  // namespace vesko
