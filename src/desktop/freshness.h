#pragma once
// Keeps the app in step with its files: every second the settings and the kept words are read
// again when another program (`vesko config set`, `vesko keep`) changed them, the windows are
// told (events.languageChanged when the interface language moved, events.wordsChanged), and the
// kept words' deferred save is written once due. Created by the shell; main thread only.

#include <QObject>
#include <QTimer>
#include <string>

#include "desktop/desktop_context.h"

namespace vesko::desktop {

class Freshness final : public QObject {
  Q_OBJECT
 public:
  explicit Freshness(DesktopContext& context);
  void start();
  // One round now (the timer's).
  void check();

 private:
  std::string interfaceLanguage() const;

  DesktopContext& context_;
  std::string language_;
  QTimer second_;
};

}  // namespace vesko::desktop
