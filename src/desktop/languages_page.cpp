#include "desktop/languages_page.h"

#include <QFormLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <string>

#include "app/settings_choices.h"
#include "desktop/desktop_context.h"
#include "settings/loc.h"

namespace vesko::desktop {
namespace {

QComboBox* combo(const char* name, int items) {
  auto* box = new QComboBox;
  box->setObjectName(name);
  for (int i = 0; i < items; ++i) box->addItem(QString());
  return box;
}

}  // namespace

LanguagesPage::LanguagesPage(DesktopContext& context, QWidget* parent)
    : SettingsPage(context, parent) {
  auto* page = new QVBoxLayout(this);

  languagesBox_ = new QGroupBox;
  auto* languageForm = new QFormLayout(languagesBox_);
  for (std::size_t i = 0; i < kStudiedLanguages.size(); ++i) {
    const auto& row = kStudiedLanguages[i];
    auto& line = languages_[i];
    line.name = new QLabel;
    line.mode =
        combo(std::string(row.modeKey).c_str(), static_cast<int>(kReadingModeChoices.size()));
    languageForm->addRow(line.name, line.mode);
    connect(line.mode, &QComboBox::currentIndexChanged, this, [this, &row](int index) {
      if (index < 0) return;
      write(row.modeKey, kReadingModeChoices[static_cast<std::size_t>(index)].value);
    });
  }
  page->addWidget(languagesBox_);

  preferenceBox_ = new QGroupBox;
  auto* preferenceForm = new QFormLayout(preferenceBox_);
  latinLabel_ = new QLabel;
  latinLabel_->setWordWrap(true);
  latin_ = combo("prefLatin", static_cast<int>(kLatinPreferenceChoices.size()));
  hanLabel_ = new QLabel;
  hanLabel_->setWordWrap(true);
  han_ = combo("prefHan", static_cast<int>(kHanPreferenceChoices.size()));
  preferenceForm->addRow(latinLabel_, latin_);
  preferenceForm->addRow(hanLabel_, han_);
  connect(latin_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index < 0) return;
    write("prefLatin", std::string(kLatinPreferenceChoices[static_cast<std::size_t>(index)].value));
  });
  connect(han_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index < 0) return;
    write("prefHan", std::string(kHanPreferenceChoices[static_cast<std::size_t>(index)].value));
  });
  page->addWidget(preferenceBox_);

  readingBox_ = new QGroupBox;
  auto* readingForm = new QFormLayout(readingBox_);
  triggerLabel_ = new QLabel;
  trigger_ = combo("modifier", static_cast<int>(kTriggerKeyChoices.size()));
  delayLabel_ = new QLabel;
  delay_ = new QDoubleSpinBox;
  delay_->setObjectName("delay");
  delay_->setRange(kMinDelay, kMaxDelay);
  delay_->setDecimals(2);
  delay_->setSingleStep(0.05);
  delay_->setSuffix(" s");
  // Written when the typing is done, not at each digit ("0.5" would pass through 0.02 first).
  delay_->setKeyboardTracking(false);
  readingForm->addRow(triggerLabel_, trigger_);
  readingForm->addRow(delayLabel_, delay_);
  connect(trigger_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index < 0) return;
    write("modifier", kTriggerKeyChoices[static_cast<std::size_t>(index)].value);
  });
  connect(delay_, &QDoubleSpinBox::valueChanged, this,
          [this](double seconds) { write("delay", boundedDelay(seconds)); });
  page->addWidget(readingBox_);

  interfaceBox_ = new QGroupBox;
  auto* interfaceForm = new QFormLayout(interfaceBox_);
  interface_ = combo("uiLang", static_cast<int>(kInterfaceLanguages.size()));
  interfaceForm->addRow(interface_);
  connect(interface_, &QComboBox::currentIndexChanged, this,
          &LanguagesPage::chooseInterfaceLanguage);
  page->addWidget(interfaceBox_);
  page->addStretch();

  retranslate();
  reload();
}

void LanguagesPage::chooseInterfaceLanguage(int index) {
  const auto choices = loc().interfaceLanguageChoices();
  if (index < 0 || static_cast<std::size_t>(index) >= choices.size()) return;
  if (!write("uiLang", choices[static_cast<std::size_t>(index)].second)) return;
  // Every window, this one included, draws its texts again in the new language.
  emit context_.events.languageChanged();
}

void LanguagesPage::retranslate() {
  languagesBox_->setTitle(qtext(loc().t("Tes langues")));
  for (std::size_t i = 0; i < kStudiedLanguages.size(); ++i) {
    auto& line = languages_[i];
    line.name->setText(qtext(loc().t(kStudiedLanguages[i].name)));
    const QSignalBlocker quiet(line.mode);
    for (std::size_t m = 0; m < kReadingModeChoices.size(); ++m)
      line.mode->setItemText(static_cast<int>(m), qtext(loc().t(kReadingModeChoices[m].label)));
  }

  preferenceBox_->setTitle(qtext(loc().t("Langue prioritaire")));
  latinLabel_->setText(qtext(loc().t("Mot en alphabet latin (français et anglais étudiés)")));
  hanLabel_->setText(qtext(loc().t("Caractères chinois seuls (chinois et japonais étudiés)")));
  {
    const QSignalBlocker quietLatin(latin_);
    const QSignalBlocker quietHan(han_);
    for (std::size_t i = 0; i < kLatinPreferenceChoices.size(); ++i)
      latin_->setItemText(static_cast<int>(i), qtext(loc().t(kLatinPreferenceChoices[i].label)));
    for (std::size_t i = 0; i < kHanPreferenceChoices.size(); ++i)
      han_->setItemText(static_cast<int>(i), qtext(loc().t(kHanPreferenceChoices[i].label)));
  }

  readingBox_->setTitle(qtext(loc().t("Lecture")));
  triggerLabel_->setText(qtext(loc().t("Touche à maintenir")));
  delayLabel_->setText(qtext(loc().t("Délai avant lecture")));
  {
    const QSignalBlocker quiet(trigger_);
    for (std::size_t i = 0; i < kTriggerKeyChoices.size(); ++i)
      trigger_->setItemText(static_cast<int>(i), qtext(loc().t(kTriggerKeyChoices[i].label)));
  }

  interfaceBox_->setTitle(qtext(loc().t("Langue de l'interface")));
  {
    const QSignalBlocker quiet(interface_);
    const auto choices = loc().interfaceLanguageChoices();
    for (std::size_t i = 0; i < choices.size(); ++i)
      interface_->setItemText(static_cast<int>(i), qtext(choices[i].first));
  }
}

void LanguagesPage::reload() {
  const Settings& settings = context_.settings;
  for (std::size_t i = 0; i < kStudiedLanguages.size(); ++i) {
    const QSignalBlocker quiet(languages_[i].mode);
    languages_[i].mode->setCurrentIndex(
        static_cast<int>(readingModeChoice(settings.integer(kStudiedLanguages[i].modeKey))));
  }
  const QSignalBlocker quietLatin(latin_);
  const QSignalBlocker quietHan(han_);
  const QSignalBlocker quietTrigger(trigger_);
  const QSignalBlocker quietDelay(delay_);
  const QSignalBlocker quietInterface(interface_);
  latin_->setCurrentIndex(
      static_cast<int>(textChoice(kLatinPreferenceChoices, settings.text("prefLatin"), 1)));
  han_->setCurrentIndex(
      static_cast<int>(textChoice(kHanPreferenceChoices, settings.text("prefHan"), 0)));
  trigger_->setCurrentIndex(static_cast<int>(triggerKeyChoice(settings.integer("modifier"))));
  delay_->setValue(boundedDelay(settings.real("delay")));
  interface_->setCurrentIndex(static_cast<int>(
      interfaceLanguageChoice(loc().interfaceLanguageChoices(), settings.text("uiLang"))));
}

}  // namespace vesko::desktop
