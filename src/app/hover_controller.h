#pragma once
// The hover controller: the program's main loop. The shell's 0.03-second timer calls `tick`, which
// samples the pointer and decides whether to wait, close the bubble or start one read of the text
// under the pointer; the shell hands the read's answer back through `answer`. Created once by the
// shell with its collaborators, which must outlive it.
// Thread contract: main thread only, every member. Reads run on the reader's background tasks and
// reach the controller only through `answer`, called on the main thread; the generation number
// is the only link between them.

#include <cstdint>
#include <optional>

#include "app/bubble.h"
#include "app/desktop.h"
#include "app/geometry.h"
#include "app/hover_notices.h"
#include "app/hover_result.h"
#include "app/hover_settings.h"
#include "app/pointer.h"
#include "app/read_request.h"
#include "app/steady_clock.h"
#include "app/word_chooser.h"
#include "settings/log.h"
#include "settings/settings.h"

namespace vesko {

struct HoverCollaborators {
  PointerSource& pointer;
  OwnWindows& ownWindows;
  ScreenScales& screens;
  FrontmostApplication& frontmost;
  Bubble& bubble;
  Reader& reader;
  HoverNotices& notices;
  const DictionariesLoaded& dictionaries;
  const SteadyClock& clock;
  const Settings& settings;
  // Written by the reads' word chooser; read here when a read answers with nothing.
  SkippedLanguage& skipped;
  Log& log;
};

class HoverController {
 public:
  static constexpr double kTickInterval = 0.03;  // seconds, the shell's timer
  static constexpr double kReadTimeout = 4.0;    // a read older than this is abandoned
  static constexpr double kMoveThreshold = 1.5;  // points: less is jitter, not a move
  static constexpr double kRepeatRadius = 2.0;   // points: closer to the last read is the same spot
  static constexpr double kAnchorRadius = 14.0;  // points: the bubble stays while this near
  static constexpr double kNearMargin = 120.0;   // points around a held bubble's frame

  explicit HoverController(HoverCollaborators collaborators);
  HoverController(const HoverController&) = delete;
  HoverController& operator=(const HoverController&) = delete;

  // One step of the main loop. A tick that waits allocates nothing and queries the platform only
  // through PointerSource::sample, OwnWindows::ownWindowAt and Bubble::onWayTowards.
  void tick();
  // The answer of the read started with `generation`: a result opens or moves the bubble at the
  // read's point; nothing leaves the bubble as it is. A stale generation is dropped.
  void answer(std::uint64_t generation, std::optional<HoverResult> result);

  // The shell opened the bubble by other means (a shortcut, a selection): leave it alone while
  // the pointer stays within its frame grown by kNearMargin.
  void keepNear() { keepNear_ = true; }

  // The on/off switch (⌥X). Off: ticks do nothing, the read in flight is forgotten and a hover
  // bubble closes. On: the spot under the pointer is read again.
  void setOn(bool on);
  void switchOnOff() { setOn(!on_); }
  bool on() const { return on_; }

  // When the pointer's current rest will have lasted the `delay` setting, while the controller
  // waits for it: the shell may tick at that moment rather than at its next beat, so that a read
  // starts on time instead of up to a tick late. Nothing when no rest is being waited for.
  std::optional<double> restEnds() const { return restEnds_; }

  // For the shell's status item and for tests.
  std::uint64_t generation() const { return generation_; }
  bool readInFlight() const { return readInFlight_; }
  bool keyHeld() const { return keyHeld_; }

 private:
  bool holdNear(ScreenPoint pointer);
  void abandonStaleRead(double now);
  void closeHoverBubble();
  void startRead(ScreenPoint pointer, double now, double scale, const Snapshot& snapshot);

  HoverCollaborators with_;
  HoverSettings settings_;

  bool on_ = true;
  ScreenPoint lastMouse_;
  double lastMoveTime_ = 0;
  std::optional<ScreenPoint> lastLookup_;  // none forces the next read
  bool keyHeld_ = false;
  bool readInFlight_ = false;
  double readStartTime_ = 0;
  ScreenPoint readPoint_;  // where the read in flight was started
  std::uint64_t generation_ = 0;
  bool keepNear_ = false;
  std::optional<double> restEnds_;  // set by a move, cleared once the rest has been waited for
};

}  // namespace vesko
