#pragma once
// Réglages → Journal: the diagnostic log's switch (debugLog) and a button that opens debug.log,
// or says that it has not been written yet.
// Owned by the settings window. Thread contract: main thread only.

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "desktop/settings_page.h"

namespace vesko::desktop {

class JournalPage final : public SettingsPage {
  Q_OBJECT
 public:
  explicit JournalPage(DesktopContext& context, QWidget* parent = nullptr);

  void retranslate() override;
  void reload() override;

  // Opens debug.log with the desktop's program for text, or says why not.
  void openLog();

 private:
  QGroupBox* box_;
  QCheckBox* debugLog_;
  QLabel* file_;
  QPushButton* open_;
  QLabel* problem_;
};

}  // namespace vesko::desktop
