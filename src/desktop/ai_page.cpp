#include "desktop/ai_page.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <expected>
#include <string>
#include <utility>

#include "ai/ai_choices.h"
#include "ai/ai_services.h"
#include "ai/keys.h"
#include "ai/models.h"
#include "ai/usage.h"
#include "desktop/background.h"
#include "learn/review_texts.h"
#include "settings/loc.h"
#include "settings/log.h"

namespace vesko::desktop {
namespace {

// "key.claude": how the tests and the accessibility tree find a provider's control.
QString controlName(std::string_view prefix, AIProvider provider) {
  return QString::fromStdString(std::string(prefix) + std::string(providerRow(provider).name));
}

// What a key's save gives back to the page: never the key.
struct KeySaved {
  std::expected<void, SecretStoreError> outcome;
  FoundKey source;
};

}  // namespace

AIPage::AIPage(DesktopContext& context, SecretStore& keyStore, QWidget* parent)
    : SettingsPage(context, parent), keyStore_(keyStore) {
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  auto* scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  auto* content = new QWidget;
  auto* page = new QVBoxLayout(content);
  scroll->setWidget(content);
  outer->addWidget(scroll);

  providerBox_ = new QGroupBox;
  auto* providerForm = new QFormLayout(providerBox_);
  providerLabel_ = new QLabel;
  provider_ = new QComboBox;
  provider_->setObjectName("aiProvider");
  for (std::size_t i = 0; i < kProviders.size(); ++i) provider_->addItem(QString());
  backupLabel_ = new QLabel;
  backup_ = new QComboBox;
  backup_->setObjectName("aiBackup");
  for (std::size_t i = 0; i < backupProviderChoices().size(); ++i) backup_->addItem(QString());
  inChina_ = new QCheckBox;
  inChina_->setObjectName("aiBackupInChina");
  localLabel_ = new QLabel;
  localURL_ = new QLineEdit;
  localURL_->setObjectName("localModelURL");
  localProblem_ = new QLabel;
  localProblem_->setWordWrap(true);
  localProblem_->hide();
  providerForm->addRow(providerLabel_, provider_);
  providerForm->addRow(backupLabel_, backup_);
  providerForm->addRow(inChina_);
  providerForm->addRow(localLabel_, localURL_);
  providerForm->addRow(localProblem_);
  connect(provider_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index >= 0) write("aiProvider", static_cast<long long>(index));
  });
  connect(backup_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index < 0) return;
    write("aiBackup", backupProviderChoices()[static_cast<std::size_t>(index)].value);
  });
  connect(inChina_, &QCheckBox::toggled, this, [this](bool on) { write("aiBackupInChina", on); });
  connect(localURL_, &QLineEdit::editingFinished, this, &AIPage::storeLocalURL);
  page->addWidget(providerBox_);

  keysBox_ = new QGroupBox;
  auto* keyGrid = new QGridLayout(keysBox_);
  modelsBox_ = new QGroupBox;
  auto* modelGrid = new QGridLayout(modelsBox_);
  for (const auto& row : kProviders) {
    if (!usesKey(row.provider)) continue;
    KeyLine key{row.provider};
    key.name = new QLabel;
    key.key = new QLineEdit;
    key.key->setObjectName(controlName("key.", row.provider));
    key.key->setEchoMode(QLineEdit::Password);
    key.key->setAttribute(Qt::WA_InputMethodEnabled, false);
    key.save = new QPushButton;
    key.save->setObjectName(controlName("saveKey.", row.provider));
    key.save->setEnabled(false);
    key.clear = new QPushButton;
    key.clear->setObjectName(controlName("clearKey.", row.provider));
    key.source = new QLabel;
    key.source->setObjectName(controlName("keySource.", row.provider));
    key.source->setWordWrap(true);
    const int at = static_cast<int>(keys_.size()) * 2;
    keyGrid->addWidget(key.name, at, 0);
    keyGrid->addWidget(key.key, at, 1);
    keyGrid->addWidget(key.save, at, 2);
    keyGrid->addWidget(key.clear, at, 3);
    keyGrid->addWidget(key.source, at + 1, 1, 1, 3);
    keys_.push_back(key);

    ModelLine model{row.provider};
    model.name = new QLabel;
    model.model = new QComboBox;
    model.model->setObjectName(QString::fromStdString(std::string(row.modelKey)));
    model.model->setEditable(true);
    model.model->setInsertPolicy(QComboBox::NoInsert);
    // Model ids run long ("claude-haiku-4-5-20251001"): room for one whole.
    model.model->setMinimumContentsLength(26);
    model.model->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    model.load = new QPushButton;
    model.load->setObjectName(controlName("loadModels.", row.provider));
    model.status = new QLabel;
    model.status->setObjectName(controlName("modelStatus.", row.provider));
    model.status->setWordWrap(true);
    model.status->hide();
    const int modelAt = static_cast<int>(models_.size()) * 2;
    modelGrid->addWidget(model.name, modelAt, 0);
    modelGrid->addWidget(model.model, modelAt, 1);
    modelGrid->addWidget(model.load, modelAt, 2);
    modelGrid->addWidget(model.status, modelAt + 1, 1, 1, 2);
    models_.push_back(model);
  }
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    KeyLine& line = keys_[i];
    connect(line.key, &QLineEdit::textChanged, this, [this, i](const QString& text) {
      keys_[i].save->setEnabled(!keys_[i].busy && !text.trimmed().isEmpty());
    });
    connect(line.key, &QLineEdit::returnPressed, this, [this, i] {
      if (keys_[i].save->isEnabled()) saveKey(keys_[i], false);
    });
    connect(line.save, &QPushButton::clicked, this, [this, i] { saveKey(keys_[i], false); });
    connect(line.clear, &QPushButton::clicked, this, [this, i] { saveKey(keys_[i], true); });
  }
  for (std::size_t i = 0; i < models_.size(); ++i) {
    ModelLine& line = models_[i];
    connect(line.model, &QComboBox::activated, this, [this, i](int) { storeModel(models_[i]); });
    connect(line.model->lineEdit(), &QLineEdit::editingFinished, this,
            [this, i] { storeModel(models_[i]); });
    connect(line.load, &QPushButton::clicked, this, [this, i] { loadModels(models_[i]); });
  }
  page->addWidget(keysBox_);
  page->addWidget(modelsBox_);

  usageBox_ = new QGroupBox;
  usageForm_ = new QFormLayout(usageBox_);
  for (std::size_t i = 0; i < usageLabels_.size(); ++i) {
    usageLabels_[i] = new QLabel;
    usageAmounts_[i] = new QLabel;
    usageAmounts_[i]->setObjectName(QString("usage.%1").arg(i));
    usageForm_->addRow(usageLabels_[i], usageAmounts_[i]);
  }
  usageNote_ = new QLabel;
  usageNote_->setWordWrap(true);
  usageForm_->addRow(usageNote_);
  usagePages_ = new QLabel;
  usagePages_->setObjectName("usagePages");
  usagePages_->setTextFormat(Qt::RichText);
  usagePages_->setOpenExternalLinks(true);
  usageForm_->addRow(usagePages_);
  page->addWidget(usageBox_);
  page->addStretch();

  retranslate();
  reload();
}

AIPage::~AIPage() = default;

void AIPage::retranslate() {
  providerBox_->setTitle(qtext(loc().t("Fournisseur")));
  providerLabel_->setText(qtext(loc().t("IA utilisée")));
  backupLabel_->setText(qtext(loc().t("IA de secours")));
  inChina_->setText(qtext(loc().t("En Chine, demander d'abord l'IA de secours")));
  localLabel_->setText(qtext(loc().t("Adresse du serveur de modèle local")));
  {
    const QSignalBlocker quiet(provider_);
    for (std::size_t i = 0; i < kProviders.size(); ++i)
      provider_->setItemText(static_cast<int>(i), qtext(loc().t(kProviders[i].label)));
    const QSignalBlocker quietBackup(backup_);
    const auto choices = backupProviderChoices();
    for (std::size_t i = 0; i < choices.size(); ++i)
      backup_->setItemText(static_cast<int>(i), qtext(loc().t(choices[i].label)));
  }
  keysBox_->setTitle(qtext(loc().t("Clés")));
  for (auto& line : keys_) {
    line.name->setText(qtext(loc().t(providerRow(line.provider).label)));
    line.key->setPlaceholderText(qtext(loc().t("Colle ta clé ici")));
    line.save->setText(qtext(loc().t("Enregistrer")));
    line.clear->setText(qtext(loc().t("Effacer")));
  }
  modelsBox_->setTitle(qtext(loc().t("Modèles")));
  for (auto& line : models_) {
    line.name->setText(qtext(loc().t(providerRow(line.provider).label)));
    line.load->setText(qtext(loc().t("Charger la liste")));
  }
  refreshUsage();
  // The sentences under the keys are in the old language: ask again.
  refreshKeySources();
}

void AIPage::reload() {
  const Settings& settings = context_.settings;
  {
    const QSignalBlocker quiet(provider_);
    const QSignalBlocker quietBackup(backup_);
    const QSignalBlocker quietChina(inChina_);
    const QSignalBlocker quietURL(localURL_);
    const auto chosen = providerAt(settings.integer("aiProvider"));
    provider_->setCurrentIndex(chosen ? static_cast<int>(*chosen) : 0);
    backup_->setCurrentIndex(static_cast<int>(backupProviderChoice(settings.integer("aiBackup"))));
    inChina_->setChecked(settings.flag("aiBackupInChina"));
    if (!localURL_->hasFocus()) localURL_->setText(qtext(settings.text("localModelURL")));
  }
  for (auto& line : models_) {
    if (line.model->lineEdit()->hasFocus()) continue;
    const QSignalBlocker quiet(line.model);
    line.model->setEditText(qtext(settings.text(providerRow(line.provider).modelKey)));
  }
  refreshUsage();
}

void AIPage::showEvent(QShowEvent* event) {
  SettingsPage::showEvent(event);
  refreshUsage();
  refreshKeySources();
}

void AIPage::refreshUsage() {
  const UsageReport report = context_.ai.usage().report(loc());
  usageBox_->setTitle(qtext(report.title));
  for (std::size_t i = 0; i < usageLabels_.size(); ++i) {
    const bool shown = i < report.lines.size();
    usageLabels_[i]->setText(shown ? qtext(report.lines[i].label) : QString());
    usageAmounts_[i]->setText(shown ? qtext(report.lines[i].amount) : QString());
  }
  usageNote_->setText(qtext(report.note));
  // The exact figures are on each provider's console: one link each.
  QStringList links;
  for (const auto& [provider, page] : report.usagePages)
    links << QString("<a href=\"%1\">%2</a>")
                 .arg(QString::fromUtf8(page.data(), static_cast<qsizetype>(page.size()))
                          .toHtmlEscaped(),
                      qtext(loc().t(providerRow(provider).label)).toHtmlEscaped());
  usagePages_->setText(links.join(" · "));
}

void AIPage::refreshKeySources() {
  if (sourcesBusy_) return;
  sourcesBusy_ = true;
  std::vector<AIProvider> providers;
  for (const auto& line : keys_) providers.push_back(line.provider);
  const Keys& keys = context_.ai.keys();
  background_.run(
      [&keys, providers] {
        std::vector<FoundKey> found;
        for (AIProvider provider : providers) {
          FoundKey source = keys.find(provider);
          source.key.clear();  // where it comes from is all the page may know
          found.push_back(std::move(source));
        }
        return found;
      },
      [this](std::vector<FoundKey> found) {
        sourcesBusy_ = false;
        for (std::size_t i = 0; i < found.size() && i < keys_.size(); ++i) {
          if (keys_[i].busy) continue;  // a save in flight will tell
          keys_[i].source->setText(qtext(keySourceText(keys_[i].provider, found[i], loc())));
        }
      });
}

void AIPage::saveKey(KeyLine& line, bool clear) {
  if (line.busy) return;
  std::string key = clear ? std::string() : line.key->text().trimmed().toStdString();
  if (!clear && key.empty()) return;
  // The key leaves the widget at once; only the background save holds it from here on.
  line.key->clear();
  line.busy = true;
  line.save->setEnabled(false);
  line.clear->setEnabled(false);
  line.source->setText(qtext(loc().t("Un moment…")));
  const std::size_t index = static_cast<std::size_t>(&line - keys_.data());
  const AIProvider provider = line.provider;
  SecretStore& store = keyStore_;
  const Keys& keys = context_.ai.keys();
  background_.run(
      [&store, &keys, provider, key = std::move(key)]() mutable {
        KeySaved saved{store.save(providerRow(provider).account, key), keys.find(provider)};
        saved.source.key.clear();
        std::fill(key.begin(), key.end(), '\0');
        return saved;
      },
      [this, index, clear](KeySaved saved) {
        KeyLine& done = keys_[index];
        done.busy = false;
        done.clear->setEnabled(true);
        done.save->setEnabled(!done.key->text().trimmed().isEmpty());
        done.source->setText(qtext(keySavedText(clear, saved.outcome, loc()) + " " +
                                   keySourceText(done.provider, saved.source, loc())));
        if (!saved.outcome)
          context_.log.log("réglages : clé " + std::string(providerRow(done.provider).name) +
                           " non enregistrée (" + saved.outcome.error().detail + ")");
      });
}

void AIPage::storeModel(ModelLine& line) {
  const std::string model = line.model->currentText().trimmed().toStdString();
  const std::string_view key = providerRow(line.provider).modelKey;
  if (model.empty()) {
    const QSignalBlocker quiet(line.model);
    line.model->setEditText(qtext(context_.settings.text(key)));
    return;
  }
  if (model != context_.settings.text(key)) write(key, model);
}

void AIPage::storeLocalURL() {
  auto checked = checkedLocalModelURL(localURL_->text().toStdString());
  if (!checked) {
    localProblem_->setText(qtext(loc().t(checked.error())));
    localProblem_->show();
    return;
  }
  localProblem_->hide();
  if (*checked != context_.settings.text("localModelURL")) write("localModelURL", *checked);
}

void AIPage::showModelStatus(ModelLine& line, const QString& text, int forMilliseconds) {
  line.status->setText(text);
  line.status->setVisible(!text.isEmpty());
  const int turn = ++line.statusTurn;
  if (forMilliseconds <= 0) return;
  const std::size_t index = static_cast<std::size_t>(&line - models_.data());
  QTimer::singleShot(forMilliseconds, this, [this, index, turn] {
    if (models_[index].statusTurn != turn) return;
    models_[index].status->clear();
    models_[index].status->hide();
  });
}

void AIPage::loadModels(ModelLine& line) {
  if (line.busy) return;
  line.busy = true;
  line.load->setEnabled(false);
  showModelStatus(line, qtext(loc().t("Chargement…")), 0);
  const std::size_t index = static_cast<std::size_t>(&line - models_.data());
  const AIProvider provider = line.provider;
  const Keys& keys = context_.ai.keys();
  const HttpClient& http = context_.ai.http();
  const Settings& settings = context_.settings;
  background_.run(
      [&keys, &http, &settings, provider] {
        return fetchModelList(http, settings, provider, keys.key(provider));
      },
      [this, index](std::expected<std::vector<ListedModel>, ModelListFailure> list) {
        ModelLine& done = models_[index];
        done.busy = false;
        done.load->setEnabled(true);
        if (!list) {
          context_.log.log("réglages : liste des modèles " +
                           std::string(providerRow(done.provider).name) + " indisponible (" +
                           list.error().detail + ")");
          const ModelNotice notice = context_.ai.models().listFailureNotice();
          showModelStatus(done, qtext(notice.text),
                          notice.shownFor ? static_cast<int>(notice.shownFor->count()) : 0);
          return;
        }
        const QSignalBlocker quiet(done.model);
        const QString current = done.model->currentText();
        done.model->clear();
        for (const auto& model : *list) done.model->addItem(qtext(model.id));
        done.model->setEditText(current);
        showModelStatus(
            done, qtext(fillPlaceholders(loc().t("%d modèles"), {std::to_string(list->size())})),
            0);
      });
}

}  // namespace vesko::desktop
