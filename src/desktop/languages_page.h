#pragma once
// Réglages → Langues: how each looked-up language is read (on hover, with the key held, not at
// all), which language wins a Latin-script word or Han-only text, the key to hold, the rest delay
// and the interface language. Choosing an interface language tells every window to redraw.
// Owned by the settings window. Thread contract: main thread only.

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <array>

#include "desktop/settings_page.h"

namespace vesko::desktop {

class LanguagesPage final : public SettingsPage {
  Q_OBJECT
 public:
  explicit LanguagesPage(DesktopContext& context, QWidget* parent = nullptr);

  void retranslate() override;
  void reload() override;

 private:
  struct LanguageLine {
    QLabel* name = nullptr;
    QComboBox* mode = nullptr;
  };

  void chooseInterfaceLanguage(int index);

  QGroupBox* languagesBox_;
  std::array<LanguageLine, 7> languages_;
  QGroupBox* preferenceBox_;
  QLabel* latinLabel_;
  QComboBox* latin_;
  QLabel* hanLabel_;
  QComboBox* han_;
  QGroupBox* readingBox_;
  QLabel* triggerLabel_;
  QComboBox* trigger_;
  QLabel* delayLabel_;
  QDoubleSpinBox* delay_;
  QGroupBox* interfaceBox_;
  QComboBox* interface_;
};

}  // namespace vesko::desktop
