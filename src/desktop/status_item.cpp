#include "desktop/status_item.h"

#include <QPainter>
#include <QPixmap>

#include "learn/review_counts.h"
#include "learn/review_day.h"
#include "learn/review_texts.h"
#include "learn/word_store.h"
#include "settings/clock.h"
#include "settings/log.h"

namespace vesko::desktop {
namespace {

constexpr std::string_view kShortcut = "Alt+X";

// A rounded square with 文 on it: blue while on, grey while off. Drawn, so no image file.
QIcon drawnIcon(bool on) {
  QIcon icon;
  for (int size : {16, 22, 24, 32, 48, 64}) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(on ? QColor(0x2f, 0x6f, 0xd6) : QColor(0x8a, 0x8a, 0x8a));
    painter.drawRoundedRect(QRectF(0.5, 0.5, size - 1, size - 1), size * 0.22, size * 0.22);
    QFont font = painter.font();
    font.setPixelSize(static_cast<int>(size * 0.7));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 0, size, size), Qt::AlignCenter, QStringLiteral("文"));
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

}  // namespace

StatusItem::StatusItem(DesktopContext& context) : context_(context) {
  status_ = menu_.addAction(QString());
  status_->setEnabled(false);
  menu_.addSeparator();
  settings_ = menu_.addAction(QString());
  review_ = menu_.addAction(QString());
  problemsEnd_ = menu_.addSeparator();
  quit_ = menu_.addAction(QString());
  connect(settings_, &QAction::triggered, &context_.events, &DesktopEvents::settingsRequested);
  connect(review_, &QAction::triggered, &context_.events, &DesktopEvents::reviewRequested);
  connect(quit_, &QAction::triggered, this, &StatusItem::quitRequested);

  icon_.setContextMenu(&menu_);
  connect(&icon_, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason why) {
    if (why == QSystemTrayIcon::Trigger) emit context_.events.settingsRequested();
  });
  connect(&context_.events, &DesktopEvents::languageChanged, this, &StatusItem::retranslate);
  connect(&context_.events, &DesktopEvents::wordsChanged, this, &StatusItem::refreshReviewCount);
  // Cards fall due as the day goes on, without any change to the words.
  minute_.setInterval(60'000);
  connect(&minute_, &QTimer::timeout, this, &StatusItem::refreshReviewCount);
  minute_.start();
  retranslate();
}

bool StatusItem::show() {
  // Shown either way: a tray that starts after the app still takes the icon.
  icon_.show();
  if (QSystemTrayIcon::isSystemTrayAvailable()) return true;
  context_.log.log("barre d'état : pas de zone de notification sur ce bureau");
  return false;
}

void StatusItem::setOn(bool on) {
  on_ = on;
  retranslate();
}

void StatusItem::setLoading(bool loading) {
  loading_ = loading;
  retranslate();
}

void StatusItem::addProblem(DesktopProblem problem) {
  if (std::ranges::find(problems_, problem) != problems_.end()) return;
  problems_.push_back(problem);
  retranslate();
}

void StatusItem::retranslate() {
  const Loc& loc = context_.loc;
  std::string line = statusLine(loc, on_, kShortcut);
  if (loading_) line += " · " + loc.t("chargement du dictionnaire…");
  // The product name needs no translation; a dash reads alike in every language.
  const QString status = QStringLiteral("Vesko — ") + QString::fromStdString(line);
  status_->setText(status);
  QString tooltip = status;
  icon_.setIcon(drawnIcon(on_));
  settings_->setText(QString::fromStdString(loc.t("Réglages…")));
  quit_->setText(QString::fromStdString(loc.t("Quitter Vesko")));

  for (QAction* action : problemLines_) {
    menu_.removeAction(action);
    action->deleteLater();
  }
  problemLines_.clear();
  for (DesktopProblem problem : problems_) {
    const ProblemText text = problemText(problem);
    for (std::string_view part : {text.problem, text.remedy}) {
      // The problem, then what to do, indented under it.
      const std::string prefix = part == text.problem ? "⚠️ " : "      ";
      auto* action = new QAction(QString::fromStdString(prefix + loc.t(part)), &menu_);
      action->setEnabled(false);
      menu_.insertAction(problemsEnd_, action);
      problemLines_.push_back(action);
    }
    tooltip += QStringLiteral("\n⚠️ ") + QString::fromStdString(loc.t(text.problem));
  }
  if (!problemLines_.empty())
    problemLines_.push_back(menu_.insertSeparator(problemLines_.front()));
  icon_.setToolTip(tooltip);
  refreshReviewCount();
}

void StatusItem::refreshReviewCount() {
  const auto day = planDay(context_.store.words(), storeDateOf(context_.clock.now()),
                           context_.counts.today());
  review_->setText(QString::fromStdString(fillPlaceholders(
      context_.loc.t("Révision (%d)"), {std::to_string(day.today.size())})));
}

}  // namespace vesko::desktop

