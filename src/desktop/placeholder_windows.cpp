// PLACEHOLDER, for this branch only: bare stand-ins for the bubble, settings and review windows,
// so that the shell links and its hover can be tried before the real windows are merged. Delete
// this file (and its lines in CMakeLists.txt) when bubble_window.cpp, settings_window.cpp and
// review_window.cpp arrive.

#include <QLabel>
#include <QVBoxLayout>

#include "desktop/bubble_window.h"
#include "desktop/review_window.h"
#include "desktop/settings_window.h"

namespace vesko::desktop {

struct BubbleWindow::Parts {
  QLabel* label = nullptr;
  std::optional<ScreenPoint> anchor;
};

BubbleWindow::BubbleWindow(DesktopContext& context)
    : context_(context), parts_(std::make_unique<Parts>()) {
  setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                 Qt::WindowDoesNotAcceptFocus);
  setAttribute(Qt::WA_ShowWithoutActivating);
  auto* layout = new QVBoxLayout(this);
  parts_->label = new QLabel(this);
  layout->addWidget(parts_->label);
}

BubbleWindow::~BubbleWindow() = default;

bool BubbleWindow::visible() const {
  return isVisible();
}

ScreenRect BubbleWindow::frame() const {
  const QRect rect = frameGeometry();
  return {static_cast<double>(rect.x()), static_cast<double>(rect.y()),
          static_cast<double>(rect.width()), static_cast<double>(rect.height())};
}

std::optional<ScreenPoint> BubbleWindow::anchor() const {
  return isVisible() ? parts_->anchor : std::nullopt;
}

void BubbleWindow::show(ScreenPoint at, const HoverResult& result) {
  QString text;
  if (const auto* chinese = result.chinese()) {
    text = QString::fromStdString(chinese->word);
    if (!chinese->entries.empty() && !chinese->entries.front().defs.empty())
      text += QStringLiteral("\n") + QString::fromStdString(chinese->entries.front().pinyin) +
              QStringLiteral("\n") + QString::fromStdString(chinese->entries.front().defs.front());
  } else if (const auto* word = result.word()) {
    text = QString::fromStdString(word->word);
    if (!word->entries.empty() && !word->entries.front().defs.empty())
      text += QStringLiteral("\n") + QString::fromStdString(word->entries.front().defs.front());
  }
  parts_->label->setText(text);
  adjustSize();
  move(static_cast<int>(at.x) + 16, static_cast<int>(at.y) + 16);
  parts_->anchor = at;
  QWidget::show();
}

void BubbleWindow::close() {
  parts_->anchor.reset();
  hide();
}

bool BubbleWindow::onWayTowards(ScreenPoint pointer) const {
  return parts_->anchor && headingTowards(*parts_->anchor, pointer, frame());
}

struct SettingsWindow::Parts {};

SettingsWindow::SettingsWindow(DesktopContext& context)
    : context_(context), parts_(std::make_unique<Parts>()) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Vesko"), this));
}
SettingsWindow::~SettingsWindow() = default;
void SettingsWindow::present() {
  show();
  raise();
  activateWindow();
}

struct ReviewWindow::Parts {};

ReviewWindow::ReviewWindow(DesktopContext& context)
    : context_(context), parts_(std::make_unique<Parts>()) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Vesko"), this));
}
ReviewWindow::~ReviewWindow() = default;
void ReviewWindow::present() {
  show();
  raise();
  activateWindow();
}

}  // namespace vesko::desktop
