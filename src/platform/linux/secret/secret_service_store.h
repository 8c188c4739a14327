#pragma once
// The learner's service keys in the desktop's Secret Service (gnome-keyring, KWallet) through
// libsecret: one password item per account, with the attributes service = "com.tarnwick.vesko.ai"
// and account. Safe from any thread, but every call is a blocking D-Bus round trip and a locked
// keyring may wait for the learner's password: never call it on a GUI main thread.

#include "ai/secret_store.h"

namespace vesko {

class SecretServiceStore final : public SecretStore {
 public:
  static constexpr std::string_view kService = "com.tarnwick.vesko.ai";

  std::expected<std::string, SecretStoreError> read(std::string_view account) const override;
  std::expected<void, SecretStoreError> save(std::string_view account,
                                             std::string_view key) override;
};

}  // namespace vesko
