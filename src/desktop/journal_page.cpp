#include "desktop/journal_page.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QUrl>
#include <QVBoxLayout>
#include <filesystem>
#include <system_error>

#include "settings/loc.h"
#include "settings/log.h"

namespace vesko::desktop {

JournalPage::JournalPage(DesktopContext& context, QWidget* parent) : SettingsPage(context, parent) {
  auto* page = new QVBoxLayout(this);
  box_ = new QGroupBox;
  auto* layout = new QVBoxLayout(box_);
  debugLog_ = new QCheckBox;
  debugLog_->setObjectName("debugLog");
  file_ = new QLabel(QString::fromStdString(context_.log.logFileURL().string()));
  file_->setObjectName("logFile");
  file_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  file_->setWordWrap(true);
  open_ = new QPushButton;
  open_->setObjectName("openLog");
  problem_ = new QLabel;
  problem_->setObjectName("logProblem");
  problem_->setWordWrap(true);
  problem_->hide();
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(open_);
  buttons->addStretch();
  layout->addWidget(debugLog_);
  layout->addWidget(file_);
  layout->addLayout(buttons);
  layout->addWidget(problem_);
  page->addWidget(box_);
  page->addStretch();
  connect(debugLog_, &QCheckBox::toggled, this, [this](bool on) {
    if (write("debugLog", on)) problem_->hide();
  });
  connect(open_, &QPushButton::clicked, this, &JournalPage::openLog);

  retranslate();
  reload();
}

void JournalPage::retranslate() {
  box_->setTitle(qtext(loc().t("Journal")));
  debugLog_->setText(qtext(loc().t("Journal de diagnostic (debug.log)")));
  open_->setText(qtext(loc().t("Ouvrir debug.log")));
  problem_->hide();
}

void JournalPage::reload() {
  const QSignalBlocker quiet(debugLog_);
  debugLog_->setChecked(context_.settings.flag("debugLog"));
}

void JournalPage::openLog() {
  const auto& file = context_.log.logFileURL();
  std::error_code error;
  if (!std::filesystem::exists(file, error)) {
    problem_->setText(qtext(loc().t(
        "debug.log n'existe pas encore : allume le journal de diagnostic, puis survole un mot.")));
    problem_->show();
    return;
  }
  const bool opened =
      QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(file.string())));
  problem_->setText(opened ? QString() : qtext(loc().t("Aucun programme n'a pu l'ouvrir.")));
  problem_->setVisible(!opened);
}

}  // namespace vesko::desktop
