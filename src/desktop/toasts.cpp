#include "desktop/toasts.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTimer>

namespace vesko::desktop {
namespace {
constexpr int kMargin = 16;  // from the screen's edges and between toasts
constexpr int kMaxWidth = 420;
}  // namespace

struct Toasts::Shown {
  QLabel label;
};

Toasts::Toasts(QObject* parent) : QObject(parent) {}

Toasts::~Toasts() = default;

void Toasts::show(const std::string& text, std::chrono::milliseconds duration,
                  std::chrono::milliseconds delay) {
  if (delay.count() <= 0) {
    appear(text, duration);
    return;
  }
  QTimer::singleShot(delay, this, [this, text, duration] { appear(text, duration); });
}

void Toasts::appear(const std::string& text, std::chrono::milliseconds duration) {
  auto shown = std::make_unique<Shown>();
  QLabel& label = shown->label;
  // A notice, not a window to work in: it never takes the focus from what the learner reads.
  label.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                       Qt::WindowDoesNotAcceptFocus);
  label.setAttribute(Qt::WA_ShowWithoutActivating);
  label.setObjectName(QStringLiteral("veskoToast"));
  label.setText(QString::fromStdString(text));
  label.setWordWrap(true);
  label.setMaximumWidth(kMaxWidth);
  label.setMargin(12);
  label.setStyleSheet(QStringLiteral(
      "QLabel#veskoToast { background: #2b2b2b; color: white; border-radius: 8px; }"));
  label.adjustSize();
  const Shown* key = shown.get();
  shown_.push_back(std::move(shown));
  place();
  shown_.back()->label.show();
  QTimer::singleShot(duration, this, [this, key] { remove(key); });
}

void Toasts::remove(const Shown* shown) {
  std::erase_if(shown_, [shown](const auto& each) { return each.get() == shown; });
  place();
}

void Toasts::place() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  const QRect area = screen->availableGeometry();
  int top = area.top() + kMargin;
  for (const auto& shown : shown_) {
    QLabel& label = shown->label;
    label.move(area.right() - kMargin - label.width(), top);
    top += label.height() + kMargin / 2;
  }
}

}  // namespace vesko::desktop
