#pragma once
// The key each provider is reached with: the credential store's, else the provider's environment
// variable (ANTHROPIC_API_KEY, OPENAI_API_KEY, DEEPSEEK_API_KEY), so that a machine without a
// Secret Service still works. Holds references only; safe from any thread as the store is. Never
// on a GUI main thread: the store may block.

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "ai/provider.h"
#include "ai/secret_store.h"
#include "settings/environment.h"

namespace vesko {

struct FoundKey {
  enum class Source { none, store, environment };
  std::string key;  // empty when Source::none
  Source source = Source::none;
  // Why the store could not be asked, when it could not; the environment was read instead.
  std::optional<std::string> storeProblem;
};

// The environment variable that stands in for the store for `provider`; empty for the providers
// that need no key.
std::string_view keyVariable(AIProvider provider);

class Keys {
 public:
  // `store` must outlive the `Keys`.
  Keys(const SecretStore& store, Environment environment)
      : store_(store), environment_(std::move(environment)) {}

  FoundKey find(AIProvider provider) const;
  // The key alone; empty when there is none or the provider needs none.
  std::string key(AIProvider provider) const { return find(provider).key; }

 private:
  const SecretStore& store_;
  const Environment environment_;
};

}  // namespace vesko
