#include "platform/linux/x11/x11_error_trap.h"

namespace vesko::x11 {
namespace {
thread_local ErrorTrap* current = nullptr;
}  // namespace

int recordError(Display* display, XErrorEvent* event) {
  for (ErrorTrap* trap = current; trap != nullptr; trap = trap->outer_) {
    if (trap->display_ == display) {
      if (trap->error_ == Success) trap->error_ = event->error_code;
      break;
    }
  }
  // Never fatal: an error of another thread's connection during the trap is dropped too, as the
  // accessibility reader's own handler would.
  return 0;
}

ErrorTrap::ErrorTrap(Display* display)
    : display_(display), outer_(current), previous_(XSetErrorHandler(recordError)) {
  current = this;
}

ErrorTrap::~ErrorTrap() {
  current = outer_;
  XSetErrorHandler(previous_);
}

int ErrorTrap::sync() {
  XSync(display_, False);
  return error_;
}

}  // namespace vesko::x11
