#include "platform/linux/x11/x11_screens.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xinerama.h>

namespace vesko {

struct X11Screens::State {
  Display* display = nullptr;
};

std::expected<std::unique_ptr<X11Screens>, std::string> X11Screens::open(
    const std::string& displayName) {
  Display* display = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
  if (display == nullptr) return std::unexpected("pas d’écran X11 (DISPLAY)");
  auto state = std::make_unique<State>();
  state->display = display;
  return std::unique_ptr<X11Screens>(new X11Screens(std::move(state)));
}

X11Screens::X11Screens(std::unique_ptr<State> state) : state_(std::move(state)) {}

X11Screens::~X11Screens() {
  XCloseDisplay(state_->display);
}

std::vector<ScreenRect> X11Screens::displays() const {
  std::lock_guard guard(mutex_);
  Display* display = state_->display;
  std::vector<ScreenRect> rects;
  int eventBase = 0, errorBase = 0;
  if (XineramaQueryExtension(display, &eventBase, &errorBase) && XineramaIsActive(display)) {
    int count = 0;
    XineramaScreenInfo* screens = XineramaQueryScreens(display, &count);
    for (int i = 0; i < count; ++i)
      rects.push_back({static_cast<double>(screens[i].x_org), static_cast<double>(screens[i].y_org),
                       static_cast<double>(screens[i].width),
                       static_cast<double>(screens[i].height)});
    if (screens != nullptr) XFree(screens);
  }
  if (rects.empty()) {
    const int screen = DefaultScreen(display);
    rects.push_back({0, 0, static_cast<double>(DisplayWidth(display, screen)),
                     static_cast<double>(DisplayHeight(display, screen))});
  }
  return rects;
}

std::optional<ScreenRect> X11Screens::displayAt(ScreenPoint point) const {
  for (const ScreenRect& rect : displays()) {
    // The right and bottom edges belong to the next monitor.
    if (point.x >= rect.x && point.x < rect.right() && point.y >= rect.y && point.y < rect.bottom())
      return rect;
  }
  return std::nullopt;
}

}  // namespace vesko
