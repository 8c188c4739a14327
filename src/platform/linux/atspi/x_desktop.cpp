#include "platform/linux/atspi/x_desktop.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <cmath>
#include <mutex>

namespace vesko::atspi {
namespace {

// A window can vanish between two requests of a walk; Xlib's default handler would end the
// process for that BadWindow. Only Xlib connections see this handler (Qt talks xcb).
int ignoreXError(Display*, XErrorEvent*) {
  return 0;
}

std::optional<pid_t> windowPid(Display* display, Window window, Atom pidAtom) {
  Atom type = None;
  int format = 0;
  unsigned long count = 0, after = 0;
  unsigned char* data = nullptr;
  const int status = XGetWindowProperty(display, window, pidAtom, 0, 1, False, XA_CARDINAL, &type,
                                        &format, &count, &after, &data);
  std::optional<pid_t> pid;
  if (status == Success && type == XA_CARDINAL && format == 32 && count == 1 && data)
    pid = static_cast<pid_t>(*reinterpret_cast<unsigned long*>(data));
  if (data) XFree(data);
  return pid;
}

}  // namespace

struct XDesktop::Connection {
  Display* display = nullptr;
  Window root = None;
  Atom pidAtom = None;
  ~Connection() {
    if (display) XCloseDisplay(display);
  }
};

XDesktop::XDesktop(std::unique_ptr<Connection> connection) : connection_(std::move(connection)) {}
XDesktop::~XDesktop() = default;

std::unique_ptr<XDesktop> XDesktop::open() {
  static std::once_flag handler;
  std::call_once(handler, [] { XSetErrorHandler(ignoreXError); });
  auto connection = std::make_unique<Connection>();
  connection->display = XOpenDisplay(nullptr);
  if (!connection->display) return nullptr;
  connection->root = DefaultRootWindow(connection->display);
  connection->pidAtom = XInternAtom(connection->display, "_NET_WM_PID", False);
  return std::unique_ptr<XDesktop>(new XDesktop(std::move(connection)));
}

std::optional<ScreenPoint> XDesktop::pointer() const {
  Window root = None, child = None;
  int rootX = 0, rootY = 0, x = 0, y = 0;
  unsigned int mask = 0;
  if (!XQueryPointer(connection_->display, connection_->root, &root, &child, &rootX, &rootY, &x, &y,
                     &mask))
    return std::nullopt;
  return ScreenPoint{static_cast<double>(rootX), static_cast<double>(rootY)};
}

std::optional<pid_t> XDesktop::processAt(ScreenPoint point) const {
  Display* display = connection_->display;
  const int x = static_cast<int>(std::floor(point.x)), y = static_cast<int>(std::floor(point.y));
  // Down from the root through the topmost child at the point: the window manager's frame, then
  // the client inside it, which carries the pid.
  Window window = connection_->root;
  for (int depth = 0; depth < 8; ++depth) {
    int localX = 0, localY = 0;
    Window child = None;
    if (!XTranslateCoordinates(display, connection_->root, window, x, y, &localX, &localY, &child))
      break;
    if (window != connection_->root)
      if (auto pid = windowPid(display, window, connection_->pidAtom)) return pid;
    if (child == None) break;
    window = child;
  }
  return std::nullopt;
}

}  // namespace vesko::atspi
