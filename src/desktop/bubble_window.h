#pragma once
// The bubble: the floating panel beside the pointer that shows one hover result (headword,
// reading, senses, notes, the sentence with the word marked), keeps the word, asks for an
// explanation and, for the sentence, the AI tabs. It never takes focus. Created once by the
// shell and driven by the hover controller through the Bubble interface.
// Thread contract: main thread only; AI answers are taken in on the main thread.

#include <QWidget>

#include "app/bubble.h"
#include "desktop/desktop_context.h"

namespace vesko::desktop {

class BubbleWindow final : public QWidget, public Bubble {
  Q_OBJECT
 public:
  explicit BubbleWindow(DesktopContext& context);
  ~BubbleWindow() override;

  // Bubble
  bool visible() const override;
  ScreenRect frame() const override;
  std::optional<ScreenPoint> anchor() const override;
  void show(ScreenPoint at, const HoverResult& result) override;
  void close() override;
  bool onWayTowards(ScreenPoint pointer) const override;

 private:
  struct Parts;
  DesktopContext& context_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vesko::desktop
