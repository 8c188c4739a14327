#include "desktop/qt_desktop.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>

namespace vesko::desktop {
namespace {
QPoint pixel(ScreenPoint point) {
  return {static_cast<int>(std::floor(point.x)), static_cast<int>(std::floor(point.y))};
}
}  // namespace

std::optional<double> QtScreens::scaleFactorAt(ScreenPoint point) const {
  const QScreen* screen = QGuiApplication::screenAt(pixel(point));
  if (screen == nullptr) return std::nullopt;
  return screen->devicePixelRatio();
}

bool QtOwnWindows::ownWindowAt(ScreenPoint point) const {
  const QPoint at = pixel(point);
  for (const QWidget* window : windows_)
    if (window->isVisible() && window->frameGeometry().contains(at)) return true;
  return false;
}

}  // namespace vesko::desktop
