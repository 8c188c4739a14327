#pragma once
// The hover's main loop in the app: the 0.03-second timer that ticks the controller, the reader
// thread whose answers come back to the main thread, and the trace line of each bubble shown,
// with the time from the read's start to the bubble. Created by the shell once the windows exist;
// everything it is handed must outlive it. Thread contract: main thread only; the reads run on
// the ThreadedReader's worker and reach `answer` through the main thread's event queue.

#include <QObject>
#include <QTimer>
#include <array>
#include <cstdint>
#include <memory>

#include "app/bubble.h"
#include "app/desktop.h"
#include "app/hover_controller.h"
#include "app/hover_read.h"
#include "app/threaded_reader.h"
#include "desktop/trace.h"

namespace vesko::desktop {

struct HoverLoopParts {
  PointerSource& pointer;
  OwnWindows& ownWindows;
  ScreenScales& screens;
  FrontmostApplication& frontmost;
  Bubble& bubble;
  const HoverRead& read;
  HoverNotices& notices;
  const DictionariesLoaded& dictionaries;
  const Settings& settings;
  SkippedLanguage& skipped;
  Log& log;
  Trace& trace;
};

class HoverLoop final : public QObject {
  Q_OBJECT
 public:
  explicit HoverLoop(HoverLoopParts parts);
  // Stops the timer, then waits for the read in progress (its answer is dropped).
  ~HoverLoop() override;

  HoverController& controller() { return controller_; }
  // Starts the 0.03-second timer.
  void start();

 private:
  // Notes when each generation's read started, for the bubble's trace line.
  class StartTimes final : public Reader {
   public:
    explicit StartTimes(const SteadyClock& clock) : clock_(clock) {}
    void bind(Reader& inner) { inner_ = &inner; }
    void start(ReadRequest request) override;
    std::optional<double> startOf(std::uint64_t generation) const;

   private:
    struct Started {
      std::uint64_t generation = 0;
      double at = 0;
    };
    const SteadyClock& clock_;
    Reader* inner_ = nullptr;
    std::array<Started, 8> recent_{};  // by generation modulo its size
  };

  void tick();
  void answer(std::uint64_t generation, const ReadReport& report);

  HoverLoopParts with_;
  const MonotonicClock clock_;
  StartTimes startTimes_;
  std::unique_ptr<ThreadedReader> reader_;
  HoverController controller_;
  QTimer timer_;
  QTimer restTimer_;  // one extra tick when a rest ends between two beats
};

}  // namespace vesko::desktop
