// Toasts for the desktop tests built without the shell: a notice shown is only counted, never
// drawn, so that a window under test can be handed the object the shell would give it.

#include <QObject>

#include "desktop/toasts.h"

namespace vesko::desktop {

struct Toasts::Shown {};

Toasts::Toasts(QObject* parent) : QObject(parent) {}

Toasts::~Toasts() {
  for (Shown* shown : shown_) delete shown;
}

void Toasts::show(const std::string&, std::chrono::milliseconds, std::chrono::milliseconds) {
  shown_.push_back(new Shown);
}

void Toasts::place() {}

}  // namespace vesko::desktop
