#include "desktop/settings_page.h"

#include "app/settings_choices.h"
#include "settings/loc.h"
#include "settings/log.h"

namespace vesko::desktop {

SettingsPage::SettingsPage(DesktopContext& context, QWidget* parent)
    : QWidget(parent), context_(context) {}

bool SettingsPage::write(std::string_view key, SettingValue value) {
  auto written = context_.settings.set(key, std::move(value));
  if (written) {
    emit problem(QString());
    return true;
  }
  const std::string_view reason = settingsErrorText(written.error());
  context_.log.log("réglages : " + std::string(key) + " non enregistré (" + std::string(reason) +
                   ")");
  emit problem(qtext(loc().t("Réglage non enregistré :") + " " + loc().t(reason)));
  reload();
  return false;
}

}  // namespace vesko::desktop
