#include "ai/keys.h"

#include <array>

namespace vesko {
namespace {

struct KeyVariable {
  AIProvider provider;
  std::string_view variable;
};

// clang-format off
constexpr std::array<KeyVariable, 3> kKeyVariables{{
  {AIProvider::claude,   "ANTHROPIC_API_KEY"},
  {AIProvider::openai,   "OPENAI_API_KEY"},
  {AIProvider::deepseek, "DEEPSEEK_API_KEY"},
}};
// clang-format on

}  // namespace

std::string_view keyVariable(AIProvider provider) {
  for (const auto& row : kKeyVariables)
    if (row.provider == provider) return row.variable;
  return {};
}

FoundKey Keys::find(AIProvider provider) const {
  FoundKey found;
  if (!usesKey(provider)) return found;
  auto stored = store_.read(providerRow(provider).account);
  if (stored && !stored->empty()) {
    found.key = std::move(*stored);
    found.source = FoundKey::Source::store;
    return found;
  }
  if (!stored) found.storeProblem = stored.error().detail;
  if (auto value = environment_(keyVariable(provider))) {
    found.key = std::move(*value);
    found.source = FoundKey::Source::environment;
  }
  return found;
}

}  // namespace vesko
