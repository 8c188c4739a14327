#pragma once
// Révision: today's cards one after the other, the answer on demand, the five grades with the
// wait each would give, the card's level and rhythm, and what is left for the coming days.
// Created once by the shell, shown on demand. Thread contract: main thread only.

#include <QWidget>
#include <memory>

#include "desktop/desktop_context.h"

class QKeyEvent;

namespace vesko::desktop {

class ReviewWindow final : public QWidget {
  Q_OBJECT
 public:
  explicit ReviewWindow(DesktopContext& context);
  ~ReviewWindow() override;

  // Plans today's cards afresh and shows the window in front with the first one.
  void present();

  // What the keys do, also from the buttons: show the current card's answer; grade it (1 to 5)
  // once the answer is shown; review the next cards ahead of time when nothing is due.
  void showAnswer();
  void grade(int grade);
  void reviewAhead();

 private:
  struct Parts;
  // Draws every text from the sitting's state, in the interface language.
  void redraw();
  // Another window or program changed the words: a sitting with no card in progress is planned
  // again, so that cards due meanwhile appear.
  void refreshWhenIdle();
  void keyPressEvent(QKeyEvent* event) override;

  DesktopContext& context_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vesko::desktop
