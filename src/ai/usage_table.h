#pragma once
// Per provider, the name its share of the cost is kept under in a usage record ("usd." + name)
// and the page of its console where the learner sees the exact figure. The relay has no row: its
// replies are paid by the product, not by the learner's key.
// Constant data; any thread.

#include <string_view>

#include "ai/provider.h"

namespace vesko {

struct UsageAccount {
  AIProvider provider;
  std::string_view costName;   // the record field is "usd." + this
  std::string_view usagePage;  // empty when the provider has no console
};

// clang-format off
inline constexpr UsageAccount kUsageAccounts[] = {
  {AIProvider::apple,    "Apple",    ""},
  {AIProvider::claude,   "Claude",   "https://console.anthropic.com/usage"},
  {AIProvider::openai,   "ChatGPT",  "https://platform.openai.com/usage"},
  {AIProvider::deepseek, "DeepSeek", "https://platform.deepseek.com/usage"},
};
// clang-format on

}  // namespace vesko
