#include "desktop/review_window.h"

#include <QFont>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <optional>
#include <string>

#include "desktop/trace.h"
#include "learn/mastery.h"
#include "learn/review_counts.h"
#include "learn/review_day.h"
#include "learn/review_deck.h"
#include "learn/review_grading.h"
#include "learn/review_texts.h"
#include "learn/word_store.h"
#include "settings/loc.h"
#include "settings/log.h"

namespace vesko::desktop {
namespace {

// An idle window waits at most this long before it looks again for cards come due.
constexpr double kLongestWait = 86'400;

QString qt(const std::string& text) {
  return QString::fromStdString(text);
}

// The sentence as rich text with the word marked; the rest escaped, since it is the learner's
// text, not markup.
QString markedSentence(const ShownSense& shown) {
  const auto at = shown.target.empty() ? std::string::npos : shown.sentence.find(shown.target);
  if (at == std::string::npos) return qt(shown.sentence).toHtmlEscaped();
  return qt(shown.sentence.substr(0, at)).toHtmlEscaped() +
         "<span style=\"background-color:#ffe58a; font-weight:bold\">" +
         qt(shown.target).toHtmlEscaped() + "</span>" +
         qt(shown.sentence.substr(at + shown.target.size())).toHtmlEscaped();
}

QLabel* label(const char* name, QWidget* parent) {
  auto* shown = new QLabel(parent);
  shown->setObjectName(name);
  shown->setWordWrap(true);
  shown->setTextInteractionFlags(Qt::NoTextInteraction);
  shown->setFocusPolicy(Qt::NoFocus);
  return shown;
}

// Buttons take no focus, so that Space and Return always reach the window's shortcuts instead
// of pressing whichever button had the focus.
QPushButton* button(const char* name, QWidget* parent) {
  auto* pressed = new QPushButton(parent);
  pressed->setObjectName(name);
  pressed->setFocusPolicy(Qt::NoFocus);
  return pressed;
}

QFont scaled(QFont font, double factor, bool bold = false) {
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setBold(bold);
  return font;
}

// A new sitting: each card enters the day's tally once per sitting. Grades go to the store
// through the same grading as every review, saved at once.
std::unique_ptr<ReviewDeck> newSitting(DesktopContext& context) {
  return std::make_unique<ReviewDeck>(
      context.clock, context.counts,
      [&context](const std::string& id, int grade) -> std::optional<SavedWord> {
        auto graded = gradeKeptWord(context.store, id, grade, storeDateOf(context.clock.now()));
        if (!graded) {
          context.log.log("révision : note refusée, étape hors de l'échelle pour " + id);
          return std::nullopt;
        }
        if (!*graded) return std::nullopt;
        return (*graded)->word;
      });
}

}  // namespace

struct ReviewWindow::Parts {
  std::unique_ptr<ReviewDeck> deck;
  bool grading = false;                 // our own wordsChanged is under way
  std::optional<SavedWord> lastGraded;  // shown with when it comes back

  QLabel* progress;
  QLabel* word;
  QLabel* sentence;
  QPushButton* show;
  QLabel* showHint;

  QWidget* answer;
  QLabel* reading;
  QLabel* definition;
  QLabel* translation;
  QLabel* level;
  QLabel* rhythm;
  QLabel* nextReview;
  QLabel* earlyNote;
  std::array<QPushButton*, 5> grades;
  QLabel* gradeHint;

  QLabel* message;
  QPushButton* ahead;
  QLabel* graded;
  QLabel* later;
  // Fires when the next card comes due (a missed one, 10 minutes after its grade), so that an
  // idle window shows it without being opened again.
  QTimer* comeBack;
};

ReviewWindow::ReviewWindow(DesktopContext& context)
    : QWidget(nullptr, Qt::Window), context_(context), parts_(std::make_unique<Parts>()) {
  Parts& p = *parts_;
  setObjectName("reviewWindow");
  setFocusPolicy(Qt::StrongFocus);
  setMinimumWidth(520);

  auto* column = new QVBoxLayout(this);
  p.progress = label("progress", this);
  p.progress->setAlignment(Qt::AlignRight);
  p.word = label("word", this);
  p.word->setFont(scaled(font(), 2.6, true));
  p.word->setAlignment(Qt::AlignCenter);
  p.sentence = label("sentence", this);
  p.sentence->setTextFormat(Qt::RichText);
  p.sentence->setFont(scaled(font(), 1.3));
  p.sentence->setAlignment(Qt::AlignCenter);
  p.show = button("showAnswer", this);
  p.showHint = label("showHint", this);
  p.showHint->setAlignment(Qt::AlignCenter);
  for (QWidget* part :
       std::initializer_list<QWidget*>{p.progress, p.word, p.sentence, p.show, p.showHint})
    column->addWidget(part);

  p.answer = new QWidget(this);
  p.answer->setObjectName("answer");
  auto* answer = new QVBoxLayout(p.answer);
  answer->setContentsMargins(0, 0, 0, 0);
  p.reading = label("reading", p.answer);
  p.reading->setFont(scaled(font(), 1.3));
  p.reading->setAlignment(Qt::AlignCenter);
  p.definition = label("definition", p.answer);
  p.definition->setFont(scaled(font(), 1.1, true));
  p.translation = label("translation", p.answer);
  p.level = label("level", p.answer);
  p.rhythm = label("rhythm", p.answer);
  p.nextReview = label("nextReview", p.answer);
  p.earlyNote = label("earlyNote", p.answer);
  p.earlyNote->setStyleSheet("color: #a05a00;");
  for (QLabel* part :
       {p.reading, p.definition, p.translation, p.level, p.rhythm, p.nextReview, p.earlyNote})
    answer->addWidget(part);
  for (int grade = 1; grade <= 5; ++grade) {
    QPushButton* choice = button(("grade" + std::to_string(grade)).c_str(), p.answer);
    choice->setStyleSheet("text-align: left; padding: 4px 8px;");
    connect(choice, &QPushButton::clicked, this, [this, grade] { this->grade(grade); });
    p.grades[static_cast<std::size_t>(grade - 1)] = choice;
    answer->addWidget(choice);
  }
  p.gradeHint = label("gradeHint", p.answer);
  p.gradeHint->setAlignment(Qt::AlignCenter);
  answer->addWidget(p.gradeHint);
  column->addWidget(p.answer);

  p.message = label("message", this);
  p.message->setAlignment(Qt::AlignCenter);
  p.message->setFont(scaled(font(), 1.2));
  p.ahead = button("reviewAhead", this);
  p.graded = label("lastGraded", this);
  p.later = label("later", this);
  column->addWidget(p.message);
  column->addWidget(p.ahead);
  column->addStretch(1);
  column->addWidget(p.graded);
  column->addWidget(p.later);
  for (QLabel* small : {p.progress, p.showHint, p.gradeHint, p.rhythm, p.graded, p.later})
    small->setStyleSheet("color: palette(mid);");

  p.comeBack = new QTimer(this);
  p.comeBack->setObjectName("comeBack");
  p.comeBack->setSingleShot(true);
  connect(p.comeBack, &QTimer::timeout, this, &ReviewWindow::refreshWhenIdle);

  connect(p.show, &QPushButton::clicked, this, &ReviewWindow::showAnswer);
  connect(p.ahead, &QPushButton::clicked, this, &ReviewWindow::reviewAhead);

  // Window-wide, so that the keys work whichever child has the focus, from the moment the window
  // is shown. The number keys of the keypad count too.
  auto shortcut = [this](std::initializer_list<QKeySequence> keys, auto action) {
    auto* bound = new QShortcut(this);
    bound->setKeys(QList<QKeySequence>(keys));
    bound->setContext(Qt::WindowShortcut);
    connect(bound, &QShortcut::activated, this, action);
  };
  shortcut({QKeySequence(Qt::Key_Space), QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter),
            QKeySequence(Qt::KeypadModifier | Qt::Key_Enter)},
           [this] { showAnswer(); });
  shortcut({QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)}, [this] { hide(); });
  for (int grade = 1; grade <= 5; ++grade) {
    const auto key = static_cast<Qt::Key>(Qt::Key_0 + grade);
    shortcut({QKeySequence(key), QKeySequence(Qt::KeypadModifier | key)},
             [this, grade] { this->grade(grade); });
  }

  connect(&context_.events, &DesktopEvents::languageChanged, this, &ReviewWindow::redraw);
  connect(&context_.events, &DesktopEvents::wordsChanged, this, &ReviewWindow::refreshWhenIdle);

  p.deck = newSitting(context_);
  redraw();
}

ReviewWindow::~ReviewWindow() = default;

void ReviewWindow::present() {
  Parts& p = *parts_;
  if (context_.store.reloadIfChanged()) {
    p.grading = true;
    emit context_.events.wordsChanged();
    p.grading = false;
  }
  p.deck = newSitting(context_);
  p.deck->planToday(context_.store.words());
  p.lastGraded.reset();
  redraw();
  show();
  raise();
  activateWindow();
  setFocus(Qt::ActiveWindowFocusReason);
}

void ReviewWindow::showAnswer() {
  ReviewDeck& deck = *parts_->deck;
  if (!deck.current() || deck.answerShown()) return;
  deck.showAnswer();
  redraw();
}

void ReviewWindow::grade(int grade) {
  Parts& p = *parts_;
  if (!p.deck->current() || !p.deck->answerShown()) return;
  auto saved = p.deck->grade(grade);
  if (saved) {
    context_.trace.event("grade", {{"word", saved->word},
                                   {"lang", saved->lang},
                                   {"grade", grade},
                                   {"reviewStep", saved->reviewStep.value_or(0)}});
    p.lastGraded = *saved;
    p.grading = true;
    emit context_.events.wordsChanged();
    p.grading = false;
  }
  redraw();
}

void ReviewWindow::reviewAhead() {
  Parts& p = *parts_;
  if (p.deck->current()) return;
  p.deck->planAhead(context_.store.words());
  redraw();
}

void ReviewWindow::refreshWhenIdle() {
  Parts& p = *parts_;
  if (p.grading || !isVisible() || p.deck->current()) return;
  p.deck->planToday(context_.store.words());
  redraw();
}

void ReviewWindow::keyPressEvent(QKeyEvent* event) {
  // The shortcuts catch these while the window is active; this is for a window that has the
  // keyboard without being the active one (a test driving it directly).
  const int key = event->key();
  if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
    showAnswer();
  } else if (key >= Qt::Key_1 && key <= Qt::Key_5) {
    grade(key - Qt::Key_0);
  } else {
    QWidget::keyPressEvent(event);
    return;
  }
  event->accept();
}

void ReviewWindow::redraw() {
  Parts& p = *parts_;
  const Loc& loc = context_.loc;
  const ReviewDeck& deck = *p.deck;
  const SavedWord* card = deck.current();
  const bool onCard = card != nullptr;
  const StoreDate now = storeDateOf(context_.clock.now());
  setWindowTitle(qt(loc.t("Révision")));

  p.progress->setVisible(onCard);
  p.word->setVisible(onCard);
  p.sentence->setVisible(onCard);
  p.show->setVisible(onCard && !deck.answerShown());
  p.showHint->setVisible(onCard && !deck.answerShown());
  p.answer->setVisible(onCard && deck.answerShown());
  p.show->setText(qt(loc.t("Montrer la réponse")));
  p.showHint->setText(qt(loc.t("Espace ou Entrée : montrer la réponse")));
  p.gradeHint->setText(qt(loc.t("Touches 1 à 5 : ta note")));
  p.ahead->setText(qt(loc.t("Réviser en avance")));

  if (card) {
    const ShownSense shown = shownSense(*card);
    p.progress->setText(qt(std::to_string(deck.position()) + " / " + std::to_string(deck.total())));
    p.word->setText(qt(card->word));
    p.sentence->setText(markedSentence(shown));
    p.sentence->setVisible(!shown.sentence.empty());

    p.reading->setText(qt(card->pinyin));
    p.reading->setVisible(!card->pinyin.empty());
    p.definition->setText(qt(shown.meaning));
    p.definition->setVisible(!shown.meaning.empty());
    const auto translation = card->translations.find(loc.uiLanguage());
    const bool translated =
        translation != card->translations.end() && translation->second != shown.meaning;
    p.translation->setText(translated ? qt(translation->second) : QString());
    p.translation->setVisible(translated);
    p.level->setText(
        qt(std::string(masteryColour(masteryOf(*card))) + " " + levelText(*card, loc)));
    p.rhythm->setText(qt(rhythmLine(*card, loc)));
    p.nextReview->setText(qt(nextReviewText(*card, now, loc, context_.clock)));
    p.earlyNote->setText(qt(loc.t(
        "Carte révisée en avance : 3, 4 et 5 gardent sa couleur (c'est le temps entre deux bonnes "
        "réponses qui la fait monter).")));
    p.earlyNote->setVisible(deck.currentIsEarly());
    for (int grade = 1; grade <= 5; ++grade) {
      std::string text = gradeText(grade, loc);
      if (auto scheduled = deck.preview(grade))
        text += "\n→ " + intervalText(scheduled->interval, loc);
      p.grades[static_cast<std::size_t>(grade - 1)]->setText(qt(text));
    }
  }

  // Between sittings: done, or nothing due, with the offer to review ahead when nothing waits.
  if (!card) {
    const std::string message = deck.graded() > 0
                                    ? fillPlaceholders(loc.t("Révision finie : %d cartes notées."),
                                                       {std::to_string(deck.graded())})
                                    : loc.t("Rien à relire aujourd'hui.");
    p.message->setText(qt(message));
  }
  p.message->setVisible(!onCard);
  p.ahead->setVisible(!onCard && deck.later() == 0 &&
                      !cardsAhead(context_.store.words(), now, 1).empty());
  p.graded->setText(p.lastGraded ? qt(p.lastGraded->word + " — " +
                                      nextReviewText(*p.lastGraded, now, loc, context_.clock))
                                 : QString());
  p.graded->setVisible(p.lastGraded.has_value());
  p.later->setText(deck.later() > 0 ? qt(laterText(deck.later(), loc)) : QString());
  p.later->setVisible(deck.later() > 0);

  p.comeBack->stop();
  if (!onCard) {
    if (auto next = nextDueAfter(context_.store.words(), now)) {
      const double wait = std::min(*next - now, kLongestWait);
      p.comeBack->start(std::chrono::milliseconds(static_cast<long long>(std::ceil(wait * 1000))));
    }
  }
}

}  // namespace vesko::desktop
