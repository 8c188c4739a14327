#pragma once
// Where the learner's service keys are kept: one secret per account ("claude", "openai",
// "deepseek"), the key's UTF-8 bytes. The platform's credential store implements it. A store may
// block (a locked keyring asks for its password), so never call it on a GUI main thread.
// Implementations are safe from any thread. Error details never contain a key.

#include <expected>
#include <string>
#include <string_view>

namespace vesko {

struct SecretStoreError {
  std::string detail;  // for the learner and the log, e.g. "no Secret Service on the session bus"
};

class SecretStore {
 public:
  virtual ~SecretStore() = default;
  // The key of `account`; an empty string when the store holds none.
  virtual std::expected<std::string, SecretStoreError> read(std::string_view account) const = 0;
  // Replaces the key of `account`; an empty `key` removes it.
  virtual std::expected<void, SecretStoreError> save(std::string_view account,
                                                     std::string_view key) = 0;
};

}  // namespace vesko
