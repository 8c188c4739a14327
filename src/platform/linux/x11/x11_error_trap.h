#pragma once
// Xlib reports a failed request (a window that vanished, a key another client grabbed) to one
// process-wide error handler whose default ends the process. While an ErrorTrap lives, errors are
// recorded instead, and `sync` says which one came first for this display. For this folder's
// classes only; the thread that made the requests holds the trap (errors are reported on the
// thread that reads the replies).

#include <X11/Xlib.h>

namespace vesko::x11 {

class ErrorTrap {
 public:
  explicit ErrorTrap(Display* display);
  // Puts back the handler that was there before.
  ~ErrorTrap();
  ErrorTrap(const ErrorTrap&) = delete;
  ErrorTrap& operator=(const ErrorTrap&) = delete;

  // Waits for the server to have answered every request so far; the first error code it
  // reported for this display since the trap was set (BadAccess, BadWindow…), or Success.
  int sync();

 private:
  Display* display_;
  ErrorTrap* outer_;  // a trap set earlier on this thread
  XErrorHandler previous_;
  int error_ = Success;
  friend int recordError(Display*, XErrorEvent*);
};

}  // namespace vesko::x11
