#pragma once
// The displays of an X11 screen: the Xinerama monitors when the server reports them, the whole
// root window otherwise. Asked afresh at each call, so a monitor plugged in meanwhile counts.
// Holds its own Display connection; `displayAt` from any thread (serialised on one mutex).

#include <expected>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "app/screen_capture.h"

namespace vesko {

class X11Screens final : public Screens {
 public:
  static std::expected<std::unique_ptr<X11Screens>, std::string> open(
      const std::string& displayName = {});
  ~X11Screens() override;
  X11Screens(const X11Screens&) = delete;
  X11Screens& operator=(const X11Screens&) = delete;

  std::optional<ScreenRect> displayAt(ScreenPoint point) const override;
  std::vector<ScreenRect> displays() const;

 private:
  struct State;
  explicit X11Screens(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;  // guarded by mutex_
  mutable std::mutex mutex_;
};

}  // namespace vesko
