#pragma once
// The desktop app: creates the program-wide objects once, in order (settings, interface texts,
// log, kept words, AI services, trace, toasts, the windows, the status item, Alt+X, the
// accessibility switch, the hover timer), loads the Chinese dictionary in the background, and
// answers the requests of later starts (--settings, --review, --quit). Created once in main
// after the QApplication. Thread contract: main thread only.

#include <QElapsedTimer>
#include <QObject>
#include <memory>

#include "desktop/launch_request.h"

namespace vesko::desktop {

class DesktopApp final : public QObject {
  Q_OBJECT
 public:
  // `started` runs since the process started, for the trace's "ready" and "loaded" times.
  // `request` is what this start was asked for; it is carried out once the app is up.
  DesktopApp(QElapsedTimer started, LaunchRequest request);
  ~DesktopApp() override;

  // A request from a later start, or this start's own.
  void handle(LaunchRequest request);
  // Writes the kept words' pending save (quitting, or a SIGTERM on its way).
  void flush();

 private:
  void toggleHover();
  void quit();

  struct Parts;
  QElapsedTimer started_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vesko::desktop
