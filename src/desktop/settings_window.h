#pragma once
// Réglages: the learner's languages and how each is read, the interface language, the AI
// providers, keys, models and usage, the kept words' export and folder, and the diagnostic log.
// Every change is written to the settings at once. Created once by the shell, shown on demand.
// Thread contract: main thread only; the credential store and the network are asked on
// background threads and their answers taken in on the main thread.

#include <QWidget>
#include <memory>

#include "desktop/desktop_context.h"

namespace vesko::desktop {

class SettingsWindow final : public QWidget {
  Q_OBJECT
 public:
  explicit SettingsWindow(DesktopContext& context);
  ~SettingsWindow() override;

  // Shows the window in front, on its current page.
  void present();

 private:
  struct Parts;
  DesktopContext& context_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vesko::desktop
