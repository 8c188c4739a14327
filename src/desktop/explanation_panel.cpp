#include "desktop/explanation_panel.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <chrono>

#include "ai/ai_services.h"
#include "ai/answer_sections.h"
#include "ai/provider.h"
#include "desktop/answer_text.h"
#include "desktop/background.h"
#include "desktop/toasts.h"
#include "desktop/wrong_answer_row.h"
#include "settings/loc.h"

namespace vesko::desktop {
namespace {

constexpr std::chrono::milliseconds kModelNoticeTime{2500};
constexpr std::string_view kWrongMessage =
    "La réponse est fausse : elle est oubliée (termes compris) et l'IA recommence avec un modèle "
    "plus solide.";

struct Explained {
  AIReply reply;
  std::string answerLanguage;
};

}  // namespace

ExplanationPanel::ExplanationPanel(DesktopContext& context, Background& background, QWidget* parent)
    : QWidget(parent),
      context_(context),
      background_(background),
      explain_(new QPushButton(this)),
      text_(new QLabel(this)),
      wrong_(new WrongAnswerRow(context.loc, this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(explain_, 0, Qt::AlignLeft);
  layout->addWidget(text_);
  layout->addWidget(wrong_);
  explain_->setObjectName(QStringLiteral("explainButton"));
  explain_->setFocusPolicy(Qt::NoFocus);
  text_->setObjectName(QStringLiteral("explanationText"));
  text_->setWordWrap(true);
  text_->setTextFormat(Qt::RichText);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text_->hide();
  wrong_->hide();
  connect(explain_, &QPushButton::clicked, this, [this] { ask(std::nullopt); });
  connect(wrong_, &WrongAnswerRow::typing, this, &ExplanationPanel::typing);
  connect(wrong_, &WrongAnswerRow::asked, this, [this](const QString& remark) {
    if (answer_.empty()) return;
    wrongNotice_ = true;
    ask(WrongAnswer{answer_, remark.toStdString()});
  });
  retranslate();
}

void ExplanationPanel::setWord(ExplainQuestion question) {
  question_ = std::move(question);
  ++generation_;
  loading_ = false;
  answer_.clear();
  wrongNotice_ = false;
  wrong_->reset();
  wrong_->hide();
  text_->clear();
  text_->hide();
  explain_->show();
  explain_->setEnabled(true);
}

void ExplanationPanel::retranslate() {
  explain_->setText(QString::fromStdString(context_.loc.t("Expliquer avec l'IA")));
  wrong_->retranslate();
  if (loading_)
    text_->setText(QString::fromStdString(context_.loc.t("L'IA réfléchit…")));
  else if (!answer_.empty())
    showAnswer(answer_, answerLanguage_);
}

void ExplanationPanel::ask(std::optional<WrongAnswer> wrong) {
  ExplainQuestion question = question_;
  question.wrong = std::move(wrong);
  const std::uint64_t generation = ++generation_;
  loading_ = true;
  answer_.clear();
  explain_->setEnabled(false);
  wrong_->hide();
  QString waiting;
  if (wrongNotice_) waiting = answerHtml(context_.loc.t(kWrongMessage)) + QStringLiteral("<br>");
  waiting += QString::fromStdString(context_.loc.t("L'IA réfléchit…")).toHtmlEscaped();
  text_->setText(waiting);
  text_->show();
  emit contentChanged();
  AIServices& ai = context_.ai;
  // Choosing the provider may probe the local model server: the request is built off the GUI
  // thread too, not only the question.
  background_.run(
      [&ai, question] {
        const ExplanationRequest request = ai.explainer().request(question);
        return Explained{ai.explainer().answer(request), request.answerLanguage};
      },
      [this, generation](Explained explained) {
        const AIAnswer& answer = explained.reply.answer;
        if (answer.modelGone && usesKey(explained.reply.provider)) {
          // The service retired the model: the next question goes to its successor, if any.
          const AIProvider provider = explained.reply.provider;
          AIServices& services = context_.ai;
          background_.run(
              [&services, provider] {
                return services.models()
                    .onModelGone(provider, services.keys().find(provider).key)
                    .notice;
              },
              [this](ModelNotice notice) {
                if (!notice.text.empty()) context_.toasts.show(notice.text, kModelNoticeTime);
              });
        }
        if (generation != generation_) return;  // a newer word or question
        loading_ = false;
        explain_->setEnabled(true);
        showAnswer(answer.text, explained.answerLanguage);
      });
}

void ExplanationPanel::showAnswer(const std::string& text, const std::string& answerLanguage) {
  answerLanguage_ = answerLanguage;
  QString html;
  if (wrongNotice_) html = answerHtml(context_.loc.t(kWrongMessage)) + QStringLiteral("<br><br>");
  if (text.starts_with(kWarningPrefix)) {
    // A message for the learner, shown as it stands; there is nothing to mark wrong.
    answer_.clear();
    html += answerHtml(text);
    wrong_->hide();
  } else {
    answer_ = text;
    const AITitles titles(context_.loc, answerLanguage);
    html += sectionsHtml(parseSections(text, titles), titles);
    wrong_->show();
  }
  text_->setText(html);
  text_->show();
  emit contentChanged();
}

}  // namespace vesko::desktop
