#pragma once
// What the hover controller asks the desktop shell besides the pointer: whether the pointer is
// over one of the program's own windows, the scale factor of the screen under it, and which
// application is in front. Implemented by the shell (Qt, X11), called on the main thread only.

#include <optional>
#include <string>

#include "app/geometry.h"

namespace vesko {

class OwnWindows {
 public:
  virtual ~OwnWindows() = default;
  // Whether the topmost window at `point` is one of the program's own visible windows (the
  // bubble, settings, panels). Asked at most ticks: answer from the windows' known geometry, not
  // with a round trip to the display server.
  virtual bool ownWindowAt(ScreenPoint point) const = 0;
};

class ScreenScales {
 public:
  virtual ~ScreenScales() = default;
  // The device-pixel ratio of the screen that holds `point`; nothing when it is on no screen.
  virtual std::optional<double> scaleFactorAt(ScreenPoint point) const = 0;
};

class FrontmostApplication {
 public:
  virtual ~FrontmostApplication() = default;
  // An identifier of the application in front (on X11 the WM_CLASS of the active window);
  // nothing when unknown. Asked once per read.
  virtual std::optional<std::string> identifier() const = 0;
};

}  // namespace vesko
