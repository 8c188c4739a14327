#include "desktop/settings_window.h"

#include <QLabel>
#include <QShowEvent>
#include <QTabWidget>
#include <QVBoxLayout>
#include <array>

#include "desktop/ai_page.h"
#include "desktop/journal_page.h"
#include "desktop/languages_page.h"
#include "desktop/settings_page.h"
#include "desktop/words_page.h"
#include "platform/linux/secret/secret_service_store.h"
#include "settings/loc.h"
#include "settings/settings.h"

namespace vesko::desktop {

struct SettingsWindow::Parts {
  // Only when the window was not handed a store.
  std::unique_ptr<SecretStore> ownStore;
  QTabWidget* tabs = nullptr;
  QLabel* problem = nullptr;
  LanguagesPage* languages = nullptr;
  AIPage* ai = nullptr;
  WordsPage* words = nullptr;
  JournalPage* journal = nullptr;

  std::array<SettingsPage*, 4> pages() const { return {languages, ai, words, journal}; }
};

SettingsWindow::SettingsWindow(DesktopContext& context)
    : context_(context), parts_(std::make_unique<Parts>()) {
  parts_->ownStore = std::make_unique<SecretServiceStore>();
  build(*parts_->ownStore);
}

SettingsWindow::SettingsWindow(DesktopContext& context, SecretStore& keyStore)
    : context_(context), parts_(std::make_unique<Parts>()) {
  build(keyStore);
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::build(SecretStore& keyStore) {
  setObjectName("settingsWindow");
  auto* layout = new QVBoxLayout(this);
  auto& parts = *parts_;
  parts.tabs = new QTabWidget;
  parts.languages = new LanguagesPage(context_);
  parts.ai = new AIPage(context_, keyStore);
  parts.words = new WordsPage(context_);
  parts.journal = new JournalPage(context_);
  parts.languages->setObjectName("languagesPage");
  parts.ai->setObjectName("aiPage");
  parts.words->setObjectName("wordsPage");
  parts.journal->setObjectName("journalPage");
  for (SettingsPage* page : parts.pages()) {
    parts.tabs->addTab(page, QString());
    connect(page, &SettingsPage::problem, this, [this](const QString& text) {
      parts_->problem->setText(text);
      parts_->problem->setVisible(!text.isEmpty());
    });
  }
  parts.problem = new QLabel;
  parts.problem->setObjectName("settingsProblem");
  parts.problem->setWordWrap(true);
  parts.problem->setStyleSheet("color: #b00020;");
  parts.problem->hide();
  layout->addWidget(parts.tabs);
  layout->addWidget(parts.problem);

  connect(&context_.events, &DesktopEvents::languageChanged, this, &SettingsWindow::retranslate);
  retranslate();
  resize(620, 640);
}

void SettingsWindow::retranslate() {
  const Loc& loc = context_.loc;
  setWindowTitle(qtext(loc.t("Réglages")));
  auto& parts = *parts_;
  parts.tabs->setTabText(parts.tabs->indexOf(parts.languages), qtext(loc.t("Langues")));
  parts.tabs->setTabText(parts.tabs->indexOf(parts.ai), qtext(loc.t("IA")));
  parts.tabs->setTabText(parts.tabs->indexOf(parts.words), qtext(loc.t("Mots")));
  parts.tabs->setTabText(parts.tabs->indexOf(parts.journal), qtext(loc.t("Journal")));
  // A problem shown before is in the old language; the next write tells again.
  parts.problem->hide();
  for (SettingsPage* page : parts.pages()) page->retranslate();
}

void SettingsWindow::reload() {
  context_.settings.reloadIfChanged();
  for (SettingsPage* page : parts_->pages()) page->reload();
}

void SettingsWindow::showEvent(QShowEvent* event) {
  reload();
  QWidget::showEvent(event);
}

void SettingsWindow::present() {
  if (isVisible()) reload();
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

}  // namespace vesko::desktop
