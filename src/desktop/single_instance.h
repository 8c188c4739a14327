#pragma once
// One Vesko per learner and data folder: the first instance listens on a local socket named
// after the user and VESKO_HOME (so that a test's instance never answers a real session's), and
// a later start hands its request over that socket and ends. Main thread only.

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QString>
#include <optional>

#include "desktop/launch_request.h"
#include "settings/environment.h"

namespace vesko::desktop {

class SingleInstance final : public QObject {
  Q_OBJECT
 public:
  // "vesko-desktop-<user>-<hash of VESKO_HOME>".
  static QString serverName(const Environment& environment);
  // Sends `request` to a running instance; false when none answers.
  static bool handOver(const QString& name, LaunchRequest request);

  explicit SingleInstance(QObject* parent = nullptr);
  // Starts listening, taking over a socket left by an instance that crashed. An error sentence
  // when the socket cannot be made (the app then runs without it).
  std::optional<QString> listen(const QString& name);

 signals:
  void requested(vesko::desktop::LaunchRequest request);

 private:
  void take(QLocalSocket* socket);
  QLocalServer server_;
};

}  // namespace vesko::desktop
