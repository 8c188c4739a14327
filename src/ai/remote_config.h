#pragma once
// The remote switches that can pause a feature ("ai": every question, "vesko": the relay) without a
// new release. Implementations are safe to query from any thread, at every question.

#include <string_view>

namespace vesko {

class RemoteConfig {
 public:
  virtual ~RemoteConfig() = default;
  virtual bool paused(std::string_view feature) const = 0;
};

// Until the remote configuration is fetched from the web service, nothing is ever paused.
class NoRemotePause final : public RemoteConfig {
 public:
  bool paused(std::string_view) const override { return false; }
};

}  // namespace vesko
