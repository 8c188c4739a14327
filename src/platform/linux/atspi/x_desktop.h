#pragma once
// The X server's view of the desktop, for what AT-SPI cannot say: where the pointer is and which
// process owns the topmost window at a point (AT-SPI knows no stacking order between windows).
// One connection per object; not thread-safe: the owner calls it from one thread at a time.

#include <sys/types.h>

#include <memory>
#include <optional>

#include "app/geometry.h"

namespace vesko::atspi {

class XDesktop {
 public:
  // Nothing when no X display can be opened ($DISPLAY unset or the server gone).
  static std::unique_ptr<XDesktop> open();
  ~XDesktop();
  XDesktop(const XDesktop&) = delete;
  XDesktop& operator=(const XDesktop&) = delete;

  // The pointer's position on the root window.
  std::optional<ScreenPoint> pointer() const;
  // The process that owns the topmost client window at `point` (its _NET_WM_PID), or nothing
  // when the window there does not say.
  std::optional<pid_t> processAt(ScreenPoint point) const;

 private:
  struct Connection;
  explicit XDesktop(std::unique_ptr<Connection> connection);
  std::unique_ptr<Connection> connection_;
};

}  // namespace vesko::atspi
