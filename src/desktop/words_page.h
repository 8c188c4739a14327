#pragma once
// Réglages → Mots: the kept words exported for Anki as CSV or TSV to a file the learner chooses,
// and the data folder where they are kept, with a button that opens it.
// Owned by the settings window. Thread contract: main thread only.

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <filesystem>

#include "desktop/settings_page.h"
#include "learn/word_export.h"

namespace vesko::desktop {

class WordsPage final : public SettingsPage {
  Q_OBJECT
 public:
  explicit WordsPage(DesktopContext& context, QWidget* parent = nullptr);

  void retranslate() override;
  void reload() override;

  // Writes the kept words to `file` (the extension of `format` added when the name has none) and
  // says how many were written, or why not. The file dialog ends here.
  void exportTo(const std::filesystem::path& file, ExportFormat format);

 private:
  void showCount();
  void chooseFileAndExport(ExportFormat format);
  void openDataFolder();

  QGroupBox* exportBox_;
  QLabel* count_;
  QPushButton* csv_;
  QPushButton* tsv_;
  QLabel* exported_;
  QGroupBox* folderBox_;
  QLabel* folder_;
  QPushButton* openFolder_;
  QLabel* folderProblem_;
};

}  // namespace vesko::desktop
