#include "desktop/sentence_tabs.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>

#include "ai/ai_services.h"
#include "ai/answer_language.h"
#include "ai/explain_prompts.h"
#include "ai/sentence_answers.h"
#include "app/bubble_content.h"
#include "desktop/answer_text.h"
#include "desktop/background.h"
#include "desktop/wrong_answer_row.h"
#include "settings/loc.h"

namespace vesko::desktop {
namespace {

constexpr int kSynonymTokens = 300;
constexpr std::chrono::milliseconds kPollInterval{100};
constexpr std::string_view kWrongMessage =
    "La réponse est fausse : elle est oubliée (termes compris) et l'IA recommence avec un modèle "
    "plus solide.";

SentenceAction actionOf(int index) {
  return static_cast<SentenceAction>(index);
}

QString listedHtml(std::string_view mark, const std::vector<ListedWord>& words) {
  QString out = QString::fromUtf8(mark.data(), static_cast<qsizetype>(mark.size()));
  bool first = true;
  for (const auto& word : words) {
    out += first ? QStringLiteral(" ") : QStringLiteral(" ; ");
    first = false;
    out += QStringLiteral("<b>%1</b>").arg(QString::fromStdString(word.word).toHtmlEscaped());
    if (!word.reading.empty())
      out += QStringLiteral(" (%1)").arg(QString::fromStdString(word.reading).toHtmlEscaped());
    if (!word.meaning.empty())
      out += QStringLiteral(" = %1").arg(QString::fromStdString(word.meaning).toHtmlEscaped());
  }
  return out;
}

}  // namespace

SentenceTabs::SentenceTabs(DesktopContext& context, Background& background, QWidget* parent)
    : QTabWidget(parent), context_(context), background_(background), timer_(new QTimer(this)) {
  for (int index = 0; index < kTabs; ++index) {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    Page& p = pages_[static_cast<std::size_t>(index)];
    p.text = new QLabel(page);
    p.text->setWordWrap(true);
    p.text->setTextFormat(Qt::RichText);
    p.text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    p.wrong = new WrongAnswerRow(context.loc, page);
    p.wrong->hide();
    layout->addWidget(p.text);
    layout->addWidget(p.wrong);
    layout->addStretch();
    addTab(page, QString());
    connect(p.wrong, &WrongAnswerRow::typing, this, &SentenceTabs::typing);
    connect(p.wrong, &WrongAnswerRow::asked, this,
            [this, index](const QString& remark) { markWrong(index, remark); });
  }
  timer_->setInterval(kPollInterval);
  connect(timer_, &QTimer::timeout, this, &SentenceTabs::poll);
  connect(this, &QTabWidget::currentChanged, this, [this](int index) {
    if (isVisible() && index >= 0) open(index);
  });
  retranslate();
}

SentenceTabs::~SentenceTabs() {
  dropQuestions();
}

void SentenceTabs::dropQuestions() {
  // A SentenceModel and a std::async future wait for their questions when they go: let them wait
  // off the GUI thread.
  if (model_ || synonyms_)
    background_.run(
        [model = std::move(model_), synonyms = std::move(synonyms_)]() mutable {
          model.reset();
          synonyms.reset();
          return true;
        },
        [](bool) {});
  model_.reset();
  synonyms_.reset();
}

void SentenceTabs::setSentence(SentenceSelection selection, SynonymRequest synonyms) {
  dropQuestions();
  ++generation_;
  selection_ = std::move(selection);
  synonymRequest_ = std::move(synonyms);
  setupAsked_ = false;
  synonymAnswer_.clear();
  timer_->stop();
  for (auto& page : pages_) {
    page.opened = false;
    page.wrongNotice = false;
    page.text->clear();
    page.wrong->reset();
    page.wrong->hide();
  }
}

void SentenceTabs::start() {
  open(currentIndex());
}

void SentenceTabs::retranslate() {
  setTabText(0, QString::fromStdString(context_.loc.t("Traduire")));
  setTabText(1, QString::fromStdString(context_.loc.t("Décortiquer")));
  setTabText(2, QString::fromStdString(context_.loc.t("Corriger")));
  setTabText(3, QString::fromStdString(context_.loc.t("Synonymes et contraires")));
  for (int index = 0; index < kTabs; ++index) {
    pages_[static_cast<std::size_t>(index)].wrong->retranslate();
    if (opened(index)) showAnswer(index);
  }
}

void SentenceTabs::open(int index) {
  if (index < 0 || index >= kTabs || opened(index)) return;
  pages_[static_cast<std::size_t>(index)].opened = true;
  if (index == kSynonymsTab) {
    askSynonyms(std::nullopt);
  } else if (model_) {
    model_->open(actionOf(index));
  } else if (!setupAsked_) {
    // Who answers is found off the GUI thread; the tabs opened meanwhile ask when it is known.
    setupAsked_ = true;
    AIServices& ai = context_.ai;
    const std::vector<std::string> targets =
        sentenceTargets(selection_.languageCode, ai.answerLanguage());
    const std::uint64_t generation = generation_;
    background_.run([&ai, targets] { return ai.sentenceSetup(targets); },
                    [this, generation](SentenceSetup setup) {
                      if (generation != generation_) return;
                      answerLanguage_ = setup.answerLanguage;
                      AITitles titles(context_.loc, setup.answerLanguage);
                      model_ = std::make_shared<SentenceModel>(selection_, std::move(setup),
                                                               std::move(titles), context_.ai.ask(),
                                                               context_.ai.answers());
                      for (int tab = 0; tab < kSynonymsTab; ++tab)
                        if (opened(tab)) model_->open(actionOf(tab));
                      poll();
                    });
  }
  showAnswer(index);
  timer_->start();
}

void SentenceTabs::askSynonyms(std::optional<std::string> retry) {
  const std::string answerLanguage = vesko::answerLanguage(context_.loc);
  SynonymRequest request = synonymRequest_;
  request.answerLanguageName = answerLanguageName(answerLanguage);
  std::string prompt = synonymPrompt(request);
  std::optional<std::string> model;
  if (retry) {
    prompt += retrySuffix(synonymAnswer_, *retry);
    model = context_.ai.ai().strongerClaudeModel();
  }
  if (synonyms_)
    background_.run(
        [synonyms = std::move(synonyms_)]() mutable {
          synonyms.reset();
          return true;
        },
        [](bool) {});
  synonymAnswer_.clear();
  synonyms_ = std::make_shared<std::future<AIAnswer>>(context_.ai.ask().ask(
      answerLanguage, teacherSystemText(answerLanguage), prompt, kSynonymTokens, model));
  timer_->start();
}

void SentenceTabs::markWrong(int index, const QString& remark) {
  Page& page = pages_[static_cast<std::size_t>(index)];
  page.wrongNotice = true;
  if (index == kSynonymsTab) {
    if (synonymAnswer_.empty()) return;
    askSynonyms(remark.toStdString());
  } else {
    if (!model_) return;
    model_->markWrong(actionOf(index), remark.toStdString());
  }
  showAnswer(index);
  timer_->start();
}

void SentenceTabs::poll() {
  bool waiting = false;
  if (model_) {
    for (SentenceAction action : model_->poll()) showAnswer(static_cast<int>(action));
    for (int tab = 0; tab < kSynonymsTab; ++tab)
      waiting = waiting || model_->loading(actionOf(tab));
  } else {
    waiting = setupAsked_;
  }
  if (synonyms_ && synonyms_->valid()) {
    if (synonyms_->wait_for(std::chrono::seconds(0)) == std::future_status::ready) {
      synonymAnswer_ = synonyms_->get().text;
      showAnswer(kSynonymsTab);
    } else {
      waiting = true;
    }
  }
  if (!waiting) timer_->stop();
}

void SentenceTabs::showLoading(int index) {
  Page& page = pages_[static_cast<std::size_t>(index)];
  QString html;
  if (page.wrongNotice) html = answerHtml(context_.loc.t(kWrongMessage)) + QStringLiteral("<br>");
  html += QString::fromStdString(context_.loc.t("L'IA réfléchit…")).toHtmlEscaped();
  page.text->setText(html);
  page.wrong->hide();
}

void SentenceTabs::showAnswer(int index) {
  Page& page = pages_[static_cast<std::size_t>(index)];
  std::string answer;
  bool loading = false;
  if (index == kSynonymsTab) {
    answer = synonymAnswer_;
    loading = synonyms_ && synonyms_->valid();
  } else if (model_) {
    answer = model_->answer(actionOf(index));
    loading = model_->loading(actionOf(index));
  } else {
    loading = page.opened;  // who answers is not known yet
  }
  if (loading) {
    showLoading(index);
    emit contentChanged();
    return;
  }
  QString html;
  if (page.wrongNotice)
    html = answerHtml(context_.loc.t(kWrongMessage)) + QStringLiteral("<br><br>");
  const bool message = answer.starts_with(kWarningPrefix);
  if (answer.empty() || message) {
    html += answer.empty() ? QString::fromStdString(context_.loc.t("L'IA n'a pas pu répondre."))
                           : answerHtml(answer);
  } else if (index == static_cast<int>(SentenceAction::correct)) {
    const auto read = parseCorrection(answer, selection_.text);
    if (read) {
      html += QStringLiteral("<b>%1</b>%2")
                  .arg(QString::fromStdString(read->corrected).toHtmlEscaped(),
                       read->unchanged ? QStringLiteral(" ✓") : QString());
      if (!read->grammar.empty()) html += QStringLiteral("<br><br>") + answerHtml(read->grammar);
    } else {
      html += answerHtml(answer);
    }
  } else if (index == kSynonymsTab) {
    const auto read = parseSynonyms(answer);
    if (read && (!read->near.empty() || !read->opposites.empty())) {
      if (!read->near.empty()) html += listedHtml("≈", read->near);
      if (!read->opposites.empty()) {
        if (!read->near.empty()) html += QStringLiteral("<br>");
        html += listedHtml("≠", read->opposites);
      }
    } else {
      html += answerHtml(answer);
    }
  } else {
    html += answerHtml(answer);
  }
  page.text->setText(html);
  page.wrong->setVisible(!answer.empty() && !message);
  emit contentChanged();
}

}  // namespace vesko::desktop
