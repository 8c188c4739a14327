#pragma once
// The bubble: the floating panel beside the pointer that shows one hover result (headword,
// reading, senses, notes, the sentence with the word marked), keeps the word, asks for an
// explanation and, for the sentence, the AI tabs. It never takes focus. Created once by the
// shell and driven by the hover controller through the Bubble interface.
// Thread contract: main thread only; AI answers are taken in on the main thread.

#include <QWidget>
#include <memory>
#include <string_view>

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

 public slots:
  // The keep row's three actions, as its buttons trigger them.
  void keepWord();
  void keepAgain();
  void removeOnce();
  // Shows or hides the sentence's tabs; shown, the current tab asks.
  void openSentence();
  // Draws every text again in the interface language.
  void retranslate();

 private:
  struct Parts;
  void startWord();
  void drawContent();
  void drawKeepRow();
  void traceKeep(std::string_view event, long long hits);
  // Lets the window take the keyboard (a remark is typed) or gives it back.
  void allowTyping(bool on);
  void refit();
  void place();

  DesktopContext& context_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vesko::desktop
