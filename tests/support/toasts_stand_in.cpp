// A stand-in for the shell's toasts where the desktop library is built without them: window tests
// hand a Toasts to their context and check nothing of what it shows.

#include "desktop/toasts.h"

namespace vesko::desktop {

struct Toasts::Shown {};

Toasts::Toasts(QObject* parent) : QObject(parent) {}
Toasts::~Toasts() = default;

void Toasts::show(const std::string&, std::chrono::milliseconds, std::chrono::milliseconds) {}

void Toasts::place() {}

}  // namespace vesko::desktop
