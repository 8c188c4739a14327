#include "platform/linux/x11/x11_pointer.h"

#include <X11/Xlib.h>

namespace vesko {

struct X11Pointer::Connection {
  Display* display = nullptr;
  Window root = 0;
};

std::uint8_t modifiersOfMask(unsigned int mask) {
  std::uint8_t bits = 0;
  if (mask & ShiftMask) bits |= kShift;
  if (mask & ControlMask) bits |= kControl;
  if (mask & Mod1Mask) bits |= kAlt;
  if (mask & Mod4Mask) bits |= kSuper;
  return bits;
}

bool buttonInMask(unsigned int mask) {
  return (mask & (Button1Mask | Button2Mask | Button3Mask | Button4Mask | Button5Mask)) != 0;
}

std::expected<std::unique_ptr<X11Pointer>, std::string> X11Pointer::open(
    const std::string& displayName) {
  Display* display = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
  if (display == nullptr) return std::unexpected("pas d'écran X11 pour suivre le pointeur (DISPLAY)");
  auto connection = std::make_unique<Connection>();
  connection->display = display;
  connection->root = DefaultRootWindow(display);
  return std::unique_ptr<X11Pointer>(new X11Pointer(std::move(connection)));
}

X11Pointer::X11Pointer(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)) {}

X11Pointer::~X11Pointer() {
  XCloseDisplay(connection_->display);
}

PointerState X11Pointer::sample() {
  Window root = 0, child = 0;
  int rootX = 0, rootY = 0, windowX = 0, windowY = 0;
  unsigned int mask = 0;
  // False only when the pointer is on another screen of the display: the position is still
  // the root window's.
  XQueryPointer(connection_->display, connection_->root, &root, &child, &rootX, &rootY, &windowX,
                &windowY, &mask);
  PointerState state;
  state.position = {static_cast<double>(rootX), static_cast<double>(rootY)};
  state.buttonPressed = buttonInMask(mask);
  state.modifiers = modifiersOfMask(mask);
  return state;
}

}  // namespace vesko
