#pragma once
// Révision: today's cards one after the other, the answer on demand, the five grades with the
// wait each would give, the card's level and rhythm, and what is left for the coming days.
// Created once by the shell, shown on demand. Thread contract: main thread only.

#include <QWidget>
#include <memory>

#include "desktop/desktop_context.h"

namespace vesko::desktop {

class ReviewWindow final : public QWidget {
  Q_OBJECT
 public:
  explicit ReviewWindow(DesktopContext& context);
  ~ReviewWindow() override;

  // Plans today's cards afresh and shows the window in front with the first one.
  void present();

 private:
  struct Parts;
  DesktopContext& context_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vesko::desktop
