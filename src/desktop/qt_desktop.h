#pragma once
// The hover controller's questions about the desktop, answered from Qt's own knowledge without a
// round trip to the display server: the scale factor of the screen under a point, and whether a
// point lies on one of the app's visible windows. Created by the shell; main thread only.

#include <QWidget>
#include <vector>

#include "app/desktop.h"

namespace vesko::desktop {

class QtScreens final : public ScreenScales {
 public:
  std::optional<double> scaleFactorAt(ScreenPoint point) const override;
};

class QtOwnWindows final : public OwnWindows {
 public:
  // `window` must outlive this object. Checked at each tick, so keep the list short: the
  // top-level windows the pointer may rest on (the bubble, settings, review).
  void add(const QWidget& window) { windows_.push_back(&window); }
  // The windows' frames as Qt last placed them; allocation-free.
  bool ownWindowAt(ScreenPoint point) const override;

 private:
  std::vector<const QWidget*> windows_;
};

}  // namespace vesko::desktop
