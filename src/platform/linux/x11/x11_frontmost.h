#pragma once
// The application in front on X11: the class name in WM_CLASS of the window the window manager
// names in _NET_ACTIVE_WINDOW ("firefox", "Gedit"). A Display connection of its own; one thread
// at a time (the main thread, once per read).

#include <expected>
#include <memory>
#include <string>

#include "app/desktop.h"

namespace vesko {

class X11Frontmost final : public FrontmostApplication {
 public:
  // An error sentence (French, for the log) when no X display can be opened.
  static std::expected<std::unique_ptr<X11Frontmost>, std::string> open(
      const std::string& displayName = {});
  ~X11Frontmost() override;
  X11Frontmost(const X11Frontmost&) = delete;
  X11Frontmost& operator=(const X11Frontmost&) = delete;

  // Nothing without a window manager that sets _NET_ACTIVE_WINDOW, or when the active window
  // has no WM_CLASS (or vanished meanwhile).
  std::optional<std::string> identifier() const override;

 private:
  struct Connection;
  explicit X11Frontmost(std::unique_ptr<Connection> connection);
  std::unique_ptr<Connection> connection_;
};

}  // namespace vesko
