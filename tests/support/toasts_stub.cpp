// Toasts for widget tests on a branch where the shell's toasts are not built: a notice is noted,
// never shown. Built only when src/desktop/toasts.cpp does not exist (see tests/CMakeLists.txt).

#include "desktop/toasts.h"

namespace vesko::desktop {

struct Toasts::Shown {};

Toasts::Toasts(QObject* parent) : QObject(parent) {}
Toasts::~Toasts() = default;

void Toasts::show(const std::string&, std::chrono::milliseconds, std::chrono::milliseconds) {}

void Toasts::place() {}

}  // namespace vesko::desktop
