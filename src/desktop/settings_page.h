#pragma once
// One page of the settings window: it builds its controls once, sets their texts in the interface
// language on retranslate(), and shows the settings as they are on reload() without writing them
// back. Every change a learner makes is written at once; a write that fails is reported through
// problem(). Owned by the settings window. Thread contract: main thread only.

#include <QString>
#include <QWidget>
#include <string>
#include <string_view>

#include "desktop/desktop_context.h"
#include "settings/settings.h"

namespace vesko::desktop {

// A core text (UTF-8) as Qt shows it.
inline QString qtext(const std::string& text) {
  return QString::fromStdString(text);
}

class SettingsPage : public QWidget {
  Q_OBJECT
 public:
  explicit SettingsPage(DesktopContext& context, QWidget* parent = nullptr);

  virtual void retranslate() = 0;
  virtual void reload() = 0;

 signals:
  // A setting could not be written: the sentence to show, in the interface language. An empty
  // text after a write that succeeded clears what was shown.
  void problem(const QString& text);

 protected:
  // Writes the setting; on failure reports it, logs it and shows the stored value again.
  bool write(std::string_view key, SettingValue value);
  const Loc& loc() const { return context_.loc; }

  DesktopContext& context_;
};

}  // namespace vesko::desktop
