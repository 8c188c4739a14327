#include "platform/linux/x11/x11_frontmost.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "platform/linux/x11/x11_error_trap.h"

namespace vesko {

struct X11Frontmost::Connection {
  Display* display = nullptr;
  Window root = 0;
  Atom activeWindow = None;
  ~Connection() {
    if (display != nullptr) XCloseDisplay(display);
  }
};

std::expected<std::unique_ptr<X11Frontmost>, std::string> X11Frontmost::open(
    const std::string& displayName) {
  auto connection = std::make_unique<Connection>();
  connection->display = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
  if (connection->display == nullptr)
    return std::unexpected("pas d'écran X11 pour la fenêtre active (DISPLAY)");
  connection->root = DefaultRootWindow(connection->display);
  connection->activeWindow = XInternAtom(connection->display, "_NET_ACTIVE_WINDOW", False);
  return std::unique_ptr<X11Frontmost>(new X11Frontmost(std::move(connection)));
}

X11Frontmost::X11Frontmost(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)) {}

X11Frontmost::~X11Frontmost() = default;

std::optional<std::string> X11Frontmost::identifier() const {
  Display* display = connection_->display;
  // The active window may close between the two requests: a BadWindow then, not the end.
  x11::ErrorTrap trap(display);
  Atom type = None;
  int format = 0;
  unsigned long count = 0, after = 0;
  unsigned char* data = nullptr;
  Window active = None;
  if (XGetWindowProperty(display, connection_->root, connection_->activeWindow, 0, 1, False,
                         XA_WINDOW, &type, &format, &count, &after, &data) == Success &&
      type == XA_WINDOW && format == 32 && count == 1 && data != nullptr)
    active = static_cast<Window>(*reinterpret_cast<unsigned long*>(data));
  if (data != nullptr) XFree(data);
  if (active == None) return std::nullopt;

  XClassHint hint{nullptr, nullptr};
  std::optional<std::string> name;
  if (XGetClassHint(display, active, &hint) != 0 && hint.res_class != nullptr &&
      hint.res_class[0] != '\0')
    name = hint.res_class;
  if (hint.res_name != nullptr) XFree(hint.res_name);
  if (hint.res_class != nullptr) XFree(hint.res_class);
  return name;
}

}  // namespace vesko
