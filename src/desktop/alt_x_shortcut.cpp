#include "desktop/alt_x_shortcut.h"

namespace vesko::desktop {

AltXShortcut::AltXShortcut(QObject* parent) : QObject(parent) {
  auto opened = X11Hotkey::open();
  if (!opened) {
    problem_ = opened.error().message;
    taken_ = opened.error().kind == HotkeyError::Kind::taken;
    return;
  }
  hotkey_ = std::move(*opened);
  notifier_ = std::make_unique<QSocketNotifier>(hotkey_->fd(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
    for (int presses = hotkey_->takePresses(); presses > 0; --presses) emit pressed();
  });
}

AltXShortcut::~AltXShortcut() {
  notifier_.reset();  // before the connection whose socket it watches
}

}  // namespace vesko::desktop
