#pragma once
// Réglages → IA: the provider and its backup, the in-China switch, the local model server, one
// key per keyed provider (saved to the credential store, with where the key now comes from, never
// the key), the model of each cloud provider with its list fetched on demand, and what the AI
// has cost today, this month and last month.
// Owned by the settings window. Thread contract: main thread only; the credential store and the
// network are asked on this page's own threads, which the page waits for when it goes.

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <array>
#include <vector>

#include "ai/provider.h"
#include "ai/secret_store.h"
#include "desktop/background.h"
#include "desktop/settings_page.h"

class QFormLayout;

namespace vesko::desktop {

class AIPage final : public SettingsPage {
  Q_OBJECT
 public:
  // `keyStore` is where typed keys are saved: the store the AI services read. It must outlive the
  // page.
  AIPage(DesktopContext& context, SecretStore& keyStore, QWidget* parent = nullptr);
  ~AIPage() override;

  void retranslate() override;
  void reload() override;

  // Asks the store again where each key comes from (in the background).
  void refreshKeySources();
  // The usage lines as they stand now.
  void refreshUsage();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct KeyLine {
    AIProvider provider;
    QLabel* name = nullptr;
    QLineEdit* key = nullptr;
    QPushButton* save = nullptr;
    QPushButton* clear = nullptr;
    QLabel* source = nullptr;
    bool busy = false;
  };
  struct ModelLine {
    AIProvider provider;
    QLabel* name = nullptr;
    QComboBox* model = nullptr;
    QPushButton* load = nullptr;
    QLabel* status = nullptr;
    int statusTurn = 0;  // a timed status is cleared only if nothing replaced it meanwhile
    bool busy = false;
  };

  void saveKey(KeyLine& line, bool clear);
  void loadModels(ModelLine& line);
  void storeModel(ModelLine& line);
  void storeLocalURL();
  void showModelStatus(ModelLine& line, const QString& text, int forMilliseconds);

  SecretStore& keyStore_;

  QGroupBox* providerBox_;
  QLabel* providerLabel_;
  QComboBox* provider_;
  QLabel* backupLabel_;
  QComboBox* backup_;
  QCheckBox* inChina_;
  QLabel* localLabel_;
  QLineEdit* localURL_;
  QLabel* localProblem_;

  QGroupBox* keysBox_;
  std::vector<KeyLine> keys_;

  QGroupBox* modelsBox_;
  std::vector<ModelLine> models_;

  QGroupBox* usageBox_;
  QFormLayout* usageForm_;
  std::array<QLabel*, 3> usageLabels_{};
  std::array<QLabel*, 3> usageAmounts_{};
  QLabel* usageNote_;
  QLabel* usagePages_;

  bool sourcesBusy_ = false;
  // Last: destroyed first, so that no background work outlives what it reports to. Two
  // threads: a model list that takes its 15 seconds does not hold up a key being saved.
  Background background_{2};
};

}  // namespace vesko::desktop
