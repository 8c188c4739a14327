#include "desktop/bubble_window.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <optional>

#include "app/bubble_content.h"
#include "app/language.h"
#include "desktop/background.h"
#include "desktop/explanation_panel.h"
#include "desktop/sentence_tabs.h"
#include "desktop/trace.h"
#include "dict/cedict.h"
#include "dict/chengyu.h"
#include "learn/review_texts.h"
#include "learn/word_store.h"
#include "settings/loc.h"
#include "text/unicode.h"

namespace vesko::desktop {
namespace {

constexpr int kMaxWidth = 420;
constexpr int kHeadwordPointSize = 22;
constexpr int kReadingPointSize = 14;

QString html(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toHtmlEscaped();
}

QLabel* wrappingLabel(QWidget* parent, const char* name) {
  auto* label = new QLabel(parent);
  label->setObjectName(QString::fromLatin1(name));
  label->setWordWrap(true);
  label->setTextFormat(Qt::RichText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

QPushButton* button(QWidget* parent, const char* name) {
  auto* made = new QPushButton(parent);
  made->setObjectName(QString::fromLatin1(name));
  made->setFocusPolicy(Qt::NoFocus);  // a press must not ask for the keyboard
  return made;
}

ScreenRect screenRect(const QRect& rect) {
  return {static_cast<double>(rect.x()), static_cast<double>(rect.y()),
          static_cast<double>(rect.width()), static_cast<double>(rect.height())};
}

}  // namespace

struct BubbleWindow::Parts {
  // Goes with the Parts, before the panels its results go to: see ~BubbleWindow.
  Background background{2};
  QLabel* headword = nullptr;
  QLabel* reading = nullptr;
  QLabel* senses = nullptr;
  QLabel* notes = nullptr;
  QLabel* sentence = nullptr;
  QPushButton* keep = nullptr;
  QLabel* counter = nullptr;
  QPushButton* keepAgain = nullptr;
  QPushButton* remove = nullptr;
  QWidget* keptRow = nullptr;
  QPushButton* sentenceButton = nullptr;
  ExplanationPanel* explanation = nullptr;
  SentenceTabs* tabs = nullptr;

  std::optional<HoverResult> result;
  BubbleContent content;
  std::optional<ScreenPoint> anchor;
  bool typing = false;  // the window accepts the keyboard while a remark is typed
};

BubbleWindow::BubbleWindow(DesktopContext& context)
    : context_(context), parts_(std::make_unique<Parts>()) {
  // Out of the window manager's hands, as a tooltip is: a managed window shown again may be
  // placed by the manager's own rules, for instance under the pointer, where the hover would
  // then take it for one of ours and stop reading.
  setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                 Qt::WindowDoesNotAcceptFocus | Qt::X11BypassWindowManagerHint);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setMaximumWidth(kMaxWidth);
  setObjectName(QStringLiteral("bubble"));
  Parts& p = *parts_;

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(12, 10, 12, 10);
  layout->setSpacing(6);

  p.headword = new QLabel(this);
  p.headword->setObjectName(QStringLiteral("headwordLabel"));
  p.headword->setTextFormat(Qt::PlainText);
  p.headword->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QFont big = p.headword->font();
  big.setPointSize(kHeadwordPointSize);
  p.headword->setFont(big);
  p.reading = wrappingLabel(this, "readingLabel");
  QFont readingFont = p.reading->font();
  readingFont.setPointSize(kReadingPointSize);
  p.reading->setFont(readingFont);
  p.senses = wrappingLabel(this, "sensesLabel");
  p.notes = wrappingLabel(this, "notesLabel");
  p.sentence = wrappingLabel(this, "sentenceLabel");
  for (QWidget* widget : {static_cast<QWidget*>(p.headword), static_cast<QWidget*>(p.reading),
                          static_cast<QWidget*>(p.senses), static_cast<QWidget*>(p.notes),
                          static_cast<QWidget*>(p.sentence)})
    layout->addWidget(widget);

  p.keep = button(this, "keepButton");
  layout->addWidget(p.keep, 0, Qt::AlignLeft);
  p.keptRow = new QWidget(this);
  auto* kept = new QVBoxLayout(p.keptRow);
  kept->setContentsMargins(0, 0, 0, 0);
  p.counter = new QLabel(p.keptRow);
  p.counter->setObjectName(QStringLiteral("counterLabel"));
  auto* keptButtons = new QHBoxLayout();
  p.keepAgain = button(p.keptRow, "keepAgainButton");
  p.remove = button(p.keptRow, "removeButton");
  keptButtons->addWidget(p.keepAgain);
  keptButtons->addWidget(p.remove);
  keptButtons->addStretch();
  kept->addWidget(p.counter);
  kept->addLayout(keptButtons);
  layout->addWidget(p.keptRow);

  p.explanation = new ExplanationPanel(context, p.background, this);
  p.explanation->setObjectName(QStringLiteral("explanationPanel"));
  layout->addWidget(p.explanation);
  p.sentenceButton = button(this, "sentenceButton");
  layout->addWidget(p.sentenceButton, 0, Qt::AlignLeft);
  p.tabs = new SentenceTabs(context, p.background, this);
  p.tabs->setObjectName(QStringLiteral("sentenceTabs"));
  p.tabs->hide();
  layout->addWidget(p.tabs);

  connect(p.keep, &QPushButton::clicked, this, &BubbleWindow::keepWord);
  connect(p.keepAgain, &QPushButton::clicked, this, &BubbleWindow::keepAgain);
  connect(p.remove, &QPushButton::clicked, this, &BubbleWindow::removeOnce);
  connect(p.sentenceButton, &QPushButton::clicked, this, &BubbleWindow::openSentence);
  connect(p.explanation, &ExplanationPanel::typing, this, &BubbleWindow::allowTyping);
  connect(p.tabs, &SentenceTabs::typing, this, &BubbleWindow::allowTyping);
  connect(p.explanation, &ExplanationPanel::contentChanged, this, &BubbleWindow::refit);
  connect(p.tabs, &SentenceTabs::contentChanged, this, &BubbleWindow::refit);
  connect(&context.events, &DesktopEvents::languageChanged, this, &BubbleWindow::retranslate);
  connect(&context.events, &DesktopEvents::wordsChanged, this, &BubbleWindow::drawKeepRow);
  retranslate();
}

BubbleWindow::~BubbleWindow() {
  // The tabs hand their running questions to the background threads as they go; then the Parts
  // and their background threads go before the panels (children, destroyed by QWidget
  // afterwards), so that no result is handed to a destroyed panel.
  delete parts_->tabs;
  parts_->tabs = nullptr;
  parts_.reset();
}

bool BubbleWindow::visible() const {
  return isVisible();
}

ScreenRect BubbleWindow::frame() const {
  return screenRect(frameGeometry());
}

std::optional<ScreenPoint> BubbleWindow::anchor() const {
  return isVisible() ? parts_->anchor : std::nullopt;
}

void BubbleWindow::show(ScreenPoint at, const HoverResult& result) {
  Parts& p = *parts_;
  const bool sameWord = isVisible() && p.result && *p.result == result;
  p.anchor = at;
  if (!sameWord) {
    if (p.typing) allowTyping(false);
    p.result = result;
    p.content = bubbleContent(result, context_.loc);
    drawContent();
    startWord();
    // A kept word met again on screen: its sightings count (written a few seconds later).
    context_.store.markSeen(p.content.record.word, p.content.record.lang);
    drawKeepRow();
  }
  place();
  QWidget::show();
}

void BubbleWindow::close() {
  if (parts_->typing) allowTyping(false);
  parts_->anchor.reset();
  hide();
}

bool BubbleWindow::onWayTowards(ScreenPoint pointer) const {
  const auto& anchor = parts_->anchor;
  if (!anchor || !isVisible()) return false;
  return headingTowards(*anchor, pointer, frame());
}

void BubbleWindow::startWord() {
  Parts& p = *parts_;
  const BubbleContent& content = p.content;
  ExplainQuestion question;
  question.word = content.word;
  if (!content.sentence.empty()) question.sentence = content.sentence;
  question.sourceLanguage = Loc::frenchLanguageName(content.language, content.traditional);
  if (content.language == "zh")
    question.chengyu = isChengyu(context_.dictionary, text::fromUtf8(content.word).value_or(u""));
  p.explanation->setWord(std::move(question));

  SentenceSelection selection;
  selection.text = content.sentence;
  selection.languageCode = content.language;
  selection.traditional = content.traditional;
  SynonymRequest synonyms;
  synonyms.word = content.word;
  synonyms.languageCode = content.language;
  if (!content.sentence.empty()) synonyms.sentence = content.sentence;
  p.tabs->setSentence(std::move(selection), std::move(synonyms));
  p.tabs->hide();
  p.sentenceButton->setVisible(!content.sentence.empty());
}

void BubbleWindow::drawContent() {
  Parts& p = *parts_;
  const BubbleContent& content = p.content;
  const QString secondary = palette().color(QPalette::PlaceholderText).name();
  auto readingHtml = [&](const Reading& reading) {
    QString out;
    for (const auto& syllable : reading.syllables) {
      if (!out.isEmpty()) out += QLatin1Char(' ');
      const QString color =
          syllable.color ? QString::fromStdString(syllable.color->hex()) : secondary;
      out += QStringLiteral("<span style=\"color:%1\">%2</span>").arg(color, html(syllable.text));
    }
    return out;
  };

  p.headword->setText(QString::fromStdString(content.headword));
  p.headword->setAccessibleName(QString::fromStdString(content.headword));
  p.reading->setText(readingHtml(content.reading));
  p.reading->setAccessibleName(QString::fromStdString(content.reading.text));
  p.reading->setVisible(!content.reading.empty());

  QString senses;
  for (std::size_t i = 0; i < content.senses.size(); ++i) {
    const SenseGroup& group = content.senses[i];
    if (!senses.isEmpty()) senses += QStringLiteral("<br>");
    QString head;
    if (!group.headword.empty()) head += QStringLiteral("<b>%1</b> ").arg(html(group.headword));
    // The first group's reading is the one shown under the headword.
    if (i > 0 && !group.reading.empty()) head += readingHtml(group.reading) + QLatin1Char(' ');
    QString defs;
    for (const auto& def : group.defs) {
      if (!defs.isEmpty()) defs += QStringLiteral("; ");
      defs += html(def);
    }
    senses += head + defs;
  }
  if (content.moreSenses) senses += QStringLiteral(" …");
  p.senses->setText(senses);
  p.senses->setVisible(!senses.isEmpty());

  QString notes;
  for (const auto& note : content.notes) {
    if (!notes.isEmpty()) notes += QStringLiteral("<br>");
    notes += QStringLiteral("<i>%1</i>").arg(html(note));
  }
  p.notes->setText(notes);
  p.notes->setVisible(!notes.isEmpty());

  const std::string_view sentence = content.sentence;
  QString marked;
  if (const auto& range = content.wordInSentence) {
    marked = html(sentence.substr(0, range->begin)) +
             QStringLiteral("<b><u>%1</u></b>")
                 .arg(html(sentence.substr(range->begin, range->end - range->begin))) +
             html(sentence.substr(range->end));
  } else {
    marked = html(sentence);
  }
  p.sentence->setText(marked);
  p.sentence->setVisible(!sentence.empty());
}

void BubbleWindow::drawKeepRow() {
  Parts& p = *parts_;
  if (!p.result) return;
  const auto saved = context_.store.lookup(p.content.record.word, p.content.record.lang);
  p.keep->setVisible(!saved);
  p.keptRow->setVisible(saved.has_value());
  if (saved)
    p.counter->setText(QString::fromStdString(fillPlaceholders(
        context_.loc.t("Gardé %d fois"), {std::to_string(saved->hits.value_or(1))})));
  if (isVisible()) refit();
}

void BubbleWindow::keepWord() {
  Parts& p = *parts_;
  if (!p.result) return;
  const KeepResult kept = context_.store.keep(p.content.record);
  traceKeep("keep", kept.word.hits.value_or(1));
  emit context_.events.wordsChanged();
}

void BubbleWindow::keepAgain() {
  Parts& p = *parts_;
  if (!p.result) return;
  const auto hits = context_.store.keepAgain(p.content.record.word, p.content.record.lang);
  if (!hits) return;
  traceKeep("keep", *hits);
  emit context_.events.wordsChanged();
}

void BubbleWindow::removeOnce() {
  Parts& p = *parts_;
  if (!p.result) return;
  const auto hits = context_.store.removeOnce(p.content.record.word, p.content.record.lang);
  if (!hits) return;
  traceKeep("remove", *hits);
  emit context_.events.wordsChanged();
}

void BubbleWindow::traceKeep(std::string_view event, long long hits) {
  const BubbleContent& content = parts_->content;
  context_.trace.event(event, {{"word", content.record.word},
                               {"lang", content.record.lang},
                               {"hits", hits},
                               {"sentence", content.sentence}});
}

void BubbleWindow::openSentence() {
  Parts& p = *parts_;
  p.tabs->setVisible(!p.tabs->isVisible());
  if (p.tabs->isVisible()) p.tabs->start();
  refit();
}

void BubbleWindow::allowTyping(bool on) {
  Parts& p = *parts_;
  if (p.typing == on) return;
  p.typing = on;
  // Changing the flags hides the window: shown again where it was, and activated only to type.
  const QPoint at = pos();
  const bool shown = isVisible();
  setWindowFlag(Qt::WindowDoesNotAcceptFocus, !on);
  setAttribute(Qt::WA_ShowWithoutActivating, !on);
  if (!shown) return;
  move(at);
  QWidget::show();
  if (on) {
    raise();
    activateWindow();
  }
}

void BubbleWindow::retranslate() {
  Parts& p = *parts_;
  p.keep->setText(QString::fromStdString(
      context_.loc.t("Garder ce mot (export CSV / Anki dans les Réglages)")));
  p.keepAgain->setText(QString::fromStdString(context_.loc.t("Encore une fois : compteur +1")));
  p.remove->setText(QString::fromStdString(context_.loc.t("Retirer des mots enregistrés")));
  p.sentenceButton->setText(QString::fromStdString(context_.loc.t("Phrase…")));
  p.explanation->retranslate();
  p.tabs->retranslate();
  if (p.result) {
    // The notes are interface texts too.
    p.content = bubbleContent(*p.result, context_.loc);
    drawContent();
    drawKeepRow();
  }
  if (isVisible()) refit();
}

void BubbleWindow::refit() {
  adjustSize();
  if (isVisible()) place();
}

void BubbleWindow::place() {
  Parts& p = *parts_;
  adjustSize();
  if (!p.anchor) return;
  const QPoint point(static_cast<int>(p.anchor->x), static_cast<int>(p.anchor->y));
  QScreen* screen = QGuiApplication::screenAt(point);
  if (!screen) screen = QGuiApplication::primaryScreen();
  if (!screen) {
    move(point + QPoint(static_cast<int>(kBubbleGap), static_cast<int>(kBubbleGap)));
    return;
  }
  const QSize size = frameGeometry().size();
  const ScreenRect placed = bubblePlacement(*p.anchor, size.width(), size.height(),
                                            screenRect(screen->availableGeometry()));
  move(static_cast<int>(placed.x), static_cast<int>(placed.y));
}

}  // namespace vesko::desktop
