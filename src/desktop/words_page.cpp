#include "desktop/words_page.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QUrl>
#include <QVBoxLayout>
#include <string>
#include <system_error>

#include "learn/review_texts.h"
#include "learn/word_store.h"
#include "settings/folders.h"
#include "settings/loc.h"
#include "settings/log.h"

namespace vesko::desktop {

WordsPage::WordsPage(DesktopContext& context, QWidget* parent) : SettingsPage(context, parent) {
  auto* page = new QVBoxLayout(this);

  exportBox_ = new QGroupBox;
  auto* exportLayout = new QVBoxLayout(exportBox_);
  count_ = new QLabel;
  count_->setObjectName("wordCount");
  csv_ = new QPushButton;
  csv_->setObjectName("exportCsv");
  tsv_ = new QPushButton;
  tsv_->setObjectName("exportTsv");
  exported_ = new QLabel;
  exported_->setObjectName("exportResult");
  exported_->setWordWrap(true);
  exported_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(csv_);
  buttons->addWidget(tsv_);
  buttons->addStretch();
  exportLayout->addWidget(count_);
  exportLayout->addLayout(buttons);
  exportLayout->addWidget(exported_);
  connect(csv_, &QPushButton::clicked, this, [this] { chooseFileAndExport(ExportFormat::csv); });
  connect(tsv_, &QPushButton::clicked, this, [this] { chooseFileAndExport(ExportFormat::tsv); });
  page->addWidget(exportBox_);

  folderBox_ = new QGroupBox;
  auto* folderLayout = new QVBoxLayout(folderBox_);
  folder_ = new QLabel(QString::fromStdString(context_.folders.data.string()));
  folder_->setObjectName("dataFolder");
  folder_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  folder_->setWordWrap(true);
  openFolder_ = new QPushButton;
  openFolder_->setObjectName("openDataFolder");
  folderProblem_ = new QLabel;
  folderProblem_->hide();
  auto* folderButtons = new QHBoxLayout;
  folderButtons->addWidget(openFolder_);
  folderButtons->addStretch();
  folderLayout->addWidget(folder_);
  folderLayout->addLayout(folderButtons);
  folderLayout->addWidget(folderProblem_);
  connect(openFolder_, &QPushButton::clicked, this, &WordsPage::openDataFolder);
  page->addWidget(folderBox_);
  page->addStretch();

  // A word kept from the bubble or graded in the review changes the count.
  connect(&context_.events, &DesktopEvents::wordsChanged, this, &WordsPage::showCount);

  retranslate();
  reload();
}

void WordsPage::retranslate() {
  exportBox_->setTitle(qtext(loc().t("Exporter pour Anki")));
  csv_->setText(qtext(loc().t("Exporter en CSV…")));
  tsv_->setText(qtext(loc().t("Exporter en TSV…")));
  folderBox_->setTitle(qtext(loc().t("Dossier des données")));
  openFolder_->setText(qtext(loc().t("Ouvrir le dossier")));
  exported_->clear();
  folderProblem_->hide();
  reload();
}

void WordsPage::reload() {
  // Another program (the command line) may have kept or removed words since.
  if (context_.store.reloadIfChanged()) emit context_.events.wordsChanged();
  showCount();
}

void WordsPage::showCount() {
  count_->setText(qtext(fillPlaceholders(loc().t("Mots gardés : %d"),
                                         {std::to_string(context_.store.words().size())})));
}

void WordsPage::chooseFileAndExport(ExportFormat format) {
  const bool tsv = format == ExportFormat::tsv;
  const std::string filter =
      tsv ? loc().t("Fichier TSV") + " (*.tsv)" : loc().t("Fichier CSV") + " (*.csv)";
  const QString suggested = QDir::homePath() + (tsv ? "/vesko-anki.tsv" : "/vesko-anki.csv");
  const QString chosen = QFileDialog::getSaveFileName(
      this, qtext(loc().t("Exporter les mots gardés")), suggested, qtext(filter));
  if (chosen.isEmpty()) return;
  exportTo(std::filesystem::path(chosen.toStdString()), format);
}

void WordsPage::exportTo(const std::filesystem::path& file, ExportFormat format) {
  reload();
  const auto target = withExportExtension(file, format);
  auto written = exportWordsToFile(context_.store.words(), format, target);
  if (!written) {
    context_.log.log("réglages : export de " + target.string() + " impossible (" + written.error() +
                     ")");
    exported_->setText(qtext(loc().t("Export impossible :") + " " + written.error()));
    return;
  }
  exported_->setText(qtext(fillPlaceholders(loc().t("%d mots écrits dans %@"),
                                            {std::to_string(*written), target.string()})));
}

void WordsPage::openDataFolder() {
  std::error_code ignored;  // a folder that cannot be made is reported by the opener below
  std::filesystem::create_directories(context_.folders.data, ignored);
  const bool opened = QDesktopServices::openUrl(
      QUrl::fromLocalFile(QString::fromStdString(context_.folders.data.string())));
  folderProblem_->setText(opened ? QString() : qtext(loc().t("Aucun programme n'a pu l'ouvrir.")));
  folderProblem_->setVisible(!opened);
}

}  // namespace vesko::desktop
