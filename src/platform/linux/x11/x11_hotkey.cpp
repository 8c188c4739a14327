#include "platform/linux/x11/x11_hotkey.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/keysym.h>

#include <array>

#include "platform/linux/x11/x11_error_trap.h"

namespace vesko {
namespace {

// The modifier bit NumLock is mapped to (Mod2 on most keyboards, but the map says).
unsigned int numLockMask(Display* display) {
  unsigned int mask = Mod2Mask;
  const KeyCode numLock = XKeysymToKeycode(display, XK_Num_Lock);
  XModifierKeymap* map = XGetModifierMapping(display);
  if (map == nullptr) return mask;
  for (int modifier = 0; modifier < 8 && numLock != 0; ++modifier)
    for (int k = 0; k < map->max_keypermod; ++k)
      if (map->modifiermap[modifier * map->max_keypermod + k] == numLock) mask = 1u << modifier;
  XFreeModifiermap(map);
  return mask;
}

}  // namespace

struct X11Hotkey::Connection {
  Display* display = nullptr;
  Window root = 0;
  KeyCode key = 0;
  bool down = false;  // between a press and its release
  ~Connection() {
    if (display != nullptr) XCloseDisplay(display);  // the grabs go with the connection
  }
};

std::expected<std::unique_ptr<X11Hotkey>, HotkeyError> X11Hotkey::open(
    const std::string& displayName) {
  auto connection = std::make_unique<Connection>();
  connection->display = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
  if (connection->display == nullptr)
    return std::unexpected(HotkeyError{HotkeyError::Kind::noDisplay, "pas d'écran X11 (DISPLAY)"});
  Display* display = connection->display;
  connection->root = DefaultRootWindow(display);
  connection->key = XKeysymToKeycode(display, XK_x);
  if (connection->key == 0)
    return std::unexpected(HotkeyError{HotkeyError::Kind::failed, "le clavier n'a pas de touche X"});
  // Without this a held key sends release-press pairs, each pair a new press.
  XkbSetDetectableAutoRepeat(display, True, nullptr);

  const unsigned int numLock = numLockMask(display);
  const std::array<unsigned int, 4> locks{0u, numLock, LockMask, numLock | LockMask};
  x11::ErrorTrap trap(display);
  for (unsigned int lock : locks)
    XGrabKey(display, connection->key, Mod1Mask | lock, connection->root, False, GrabModeAsync,
             GrabModeAsync);
  const int error = trap.sync();
  if (error == BadAccess)
    return std::unexpected(
        HotkeyError{HotkeyError::Kind::taken, "Alt+X est déjà pris par un autre programme"});
  if (error != Success)
    return std::unexpected(HotkeyError{HotkeyError::Kind::failed,
                                       "erreur X " + std::to_string(error) + " en prenant Alt+X"});
  return std::unique_ptr<X11Hotkey>(new X11Hotkey(std::move(connection)));
}

X11Hotkey::X11Hotkey(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)) {}

X11Hotkey::~X11Hotkey() = default;

int X11Hotkey::fd() const {
  return ConnectionNumber(connection_->display);
}

int X11Hotkey::takePresses() {
  Display* display = connection_->display;
  int presses = 0;
  while (XPending(display) > 0) {
    XEvent event;
    XNextEvent(display, &event);
    if (event.type == KeyPress && event.xkey.keycode == connection_->key) {
      if (!connection_->down) ++presses;
      connection_->down = true;
    } else if (event.type == KeyRelease && event.xkey.keycode == connection_->key) {
      connection_->down = false;
    }
  }
  return presses;
}

}  // namespace vesko
