#pragma once
// Réglages: the learner's languages and how each is read, the interface language, the AI
// providers, keys, models and usage, the kept words' export and folder, and the diagnostic log.
// Every change is written to the settings at once. Created once by the shell, shown on demand.
// Thread contract: main thread only; the credential store and the network are asked on
// background threads and their answers taken in on the main thread.

#include <QWidget>
#include <memory>

#include "ai/secret_store.h"
#include "desktop/desktop_context.h"

class QShowEvent;

namespace vesko::desktop {

class SettingsWindow final : public QWidget {
  Q_OBJECT
 public:
  // Keys typed in the window are saved to the desktop's Secret Service.
  explicit SettingsWindow(DesktopContext& context);
  // Keys are saved to `keyStore`, which must be the store the AI services read and outlive the
  // window.
  SettingsWindow(DesktopContext& context, SecretStore& keyStore);
  ~SettingsWindow() override;

  // Shows the window in front, on its current page.
  void present();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct Parts;
  void build(SecretStore& keyStore);
  void retranslate();
  // Every control as the settings stand now (another program may have changed them).
  void reload();

  DesktopContext& context_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vesko::desktop
