#pragma once
// The language-model providers, stored in the settings by index, and what each needs: its label,
// its credential-store account and its model setting. Plain data; any thread.

#include <array>
#include <optional>
#include <string_view>

namespace vesko {

enum class AIProvider { apple = 0, claude = 1, openai = 2, deepseek = 3, vesko = 4 };

struct ProviderRow {
  AIProvider provider;
  std::string_view name;          // on the command line and in JSON: "local", "claude", …
  std::string_view label;         // French, through Loc.t before it is shown
  std::string_view account;       // credential-store account; empty when no key is needed
  std::string_view modelKey;      // setting that holds the model; empty when none
  std::string_view defaultModel;  // that setting's default
};

// clang-format off
// Index 0 stands for the on-device model: on this platform a local server that speaks the OpenAI
// chat-completions protocol.
inline constexpr std::array<ProviderRow, 5> kProviders{{
  {AIProvider::apple,    "local",    "IA locale, hors ligne", "",         "",              ""},
  {AIProvider::claude,   "claude",   "Claude",                "claude",   "claudeModel",   "claude-haiku-4-5-20251001"},
  {AIProvider::openai,   "openai",   "ChatGPT",               "openai",   "openaiModel",   "gpt-4o-mini"},
  {AIProvider::deepseek, "deepseek", "DeepSeek",              "deepseek", "deepseekModel", "deepseek-flash"},
  {AIProvider::vesko,    "vesko",    "IA Vesko",              "",         "",              ""},
}};
// clang-format on

inline const ProviderRow& providerRow(AIProvider p) { return kProviders[static_cast<int>(p)]; }

// 0–4 → the provider; anything else → nothing.
inline std::optional<AIProvider> providerAt(long long index) {
  if (index < 0 || index >= static_cast<long long>(kProviders.size())) return std::nullopt;
  return static_cast<AIProvider>(index);
}

inline std::optional<AIProvider> providerNamed(std::string_view name) {
  for (const auto& row : kProviders)
    if (row.name == name) return row.provider;
  return std::nullopt;
}

// Providers 1–3: the ones reached with the learner's own key.
inline bool usesKey(AIProvider p) { return !providerRow(p).account.empty(); }

}  // namespace vesko
