#pragma once
// Short notices that appear in a corner of the screen and go by themselves: the unreadable-file
// notice, the replaced AI model. They never take focus. Created once by the shell.
// Thread contract: main thread only.

#include <QObject>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace vesko::desktop {

class Toasts final : public QObject {
  Q_OBJECT
 public:
  explicit Toasts(QObject* parent = nullptr);
  ~Toasts() override;

  // Shows `text` (already in the interface language) for `duration`, `delay` from now.
  void show(const std::string& text, std::chrono::milliseconds duration,
            std::chrono::milliseconds delay = std::chrono::milliseconds(0));

 private:
  struct Shown;
  void appear(const std::string& text, std::chrono::milliseconds duration);
  void remove(const Shown* shown);
  // Stacks the shown toasts down from the primary screen's top-right corner, oldest on top.
  void place();
  std::vector<std::unique_ptr<Shown>> shown_;
};

}  // namespace vesko::desktop
