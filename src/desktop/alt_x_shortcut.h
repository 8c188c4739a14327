#pragma once
// Alt+X, the hover's on/off switch, from anywhere on the desktop: the X11 grab watched through a
// QSocketNotifier on its connection. Created by the shell; main thread only.

#include <QObject>
#include <QSocketNotifier>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/x11/x11_hotkey.h"

namespace vesko::desktop {

class AltXShortcut final : public QObject {
  Q_OBJECT
 public:
  // Grabs the key; when that fails (no X display, another program holds it) the shortcut stays
  // off and `problem` says why.
  explicit AltXShortcut(QObject* parent = nullptr);
  ~AltXShortcut() override;

  const std::optional<std::string>& problem() const { return problem_; }
  // Whether another program holds the key (as opposed to there being no X display at all).
  bool taken() const { return taken_; }

 signals:
  void pressed();

 private:
  std::unique_ptr<X11Hotkey> hotkey_;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::optional<std::string> problem_;
  bool taken_ = false;
};

}  // namespace vesko::desktop
