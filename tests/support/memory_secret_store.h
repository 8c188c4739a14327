#pragma once
// A credential store in memory, for the tests of what reads keys; it can also play a desktop
// without a Secret Service. Safe from any thread.

#include <map>
#include <mutex>
#include <string>

#include "ai/secret_store.h"

namespace vesko::testing {

class MemorySecretStore final : public SecretStore {
 public:
  // `reachable` false: every call fails as a machine without a Secret Service does.
  explicit MemorySecretStore(bool reachable = true) : reachable_(reachable) {}

  std::expected<std::string, SecretStoreError> read(std::string_view account) const override {
    if (!reachable_) return std::unexpected(SecretStoreError{"no Secret Service in this test"});
    std::lock_guard lock(mutex_);
    auto it = keys_.find(std::string(account));
    return it == keys_.end() ? std::string() : it->second;
  }
  std::expected<void, SecretStoreError> save(std::string_view account,
                                             std::string_view key) override {
    if (!reachable_) return std::unexpected(SecretStoreError{"no Secret Service in this test"});
    std::lock_guard lock(mutex_);
    keys_.erase(std::string(account));
    if (!key.empty()) keys_.emplace(account, key);
    return {};
  }
  std::size_t size() const {
    std::lock_guard lock(mutex_);
    return keys_.size();
  }

 private:
  const bool reachable_;
  mutable std::mutex mutex_;
  std::map<std::string, std::string> keys_;
};

}  // namespace vesko::testing
