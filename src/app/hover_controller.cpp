#include "app/hover_controller.h"

#include <utility>

namespace vesko {
namespace {

constexpr std::uint8_t kAnyModifier = kShift | kControl | kAlt | kSuper;

}  // namespace

HoverController::HoverController(HoverCollaborators collaborators)
    : with_(collaborators), settings_(collaborators.settings) {}

void HoverController::tick() {
  if (!on_) return;
  const PointerState state = with_.pointer.sample();
  const ScreenPoint pointer = state.position;

  // 1. A bubble opened by other means stays while the pointer is near it.
  if (holdNear(pointer)) return;

  // 2. A read that has not answered for too long is given up.
  const double now = with_.clock.seconds();
  abandonStaleRead(now);

  // 3. No reading during drags and clicks.
  if (state.buttonPressed) return;

  settings_.refresh();
  const std::uint8_t trigger = settings_.triggerModifiers();

  // 4. Command (Super) alone closes a hover bubble, unless it is the trigger key.
  if ((state.modifiers & kAnyModifier) == kSuper && trigger != kSuper) {
    closeHoverBubble();
    return;
  }

  // 5. Over our own windows (the bubble, settings, panels) nothing is read.
  if (with_.ownWindows.ownWindowAt(pointer)) return;

  // 6. Pressing the trigger key reads the spot under the pointer again at once.
  const bool held = (state.modifiers & trigger) == trigger;
  if (held != keyHeld_) {
    keyHeld_ = held;
    if (held) lastLookup_.reset();
  }

  // 7. A move restarts the rest wait and closes a bubble the pointer leaves behind.
  if (distance(pointer, lastMouse_) > kMoveThreshold) {
    lastMouse_ = pointer;
    lastMoveTime_ = now;
    restEnds_ = now + settings_.delay();
    const std::optional<ScreenPoint> anchor = with_.bubble.anchor();
    if (anchor && distance(pointer, *anchor) > kAnchorRadius && !with_.bubble.onWayTowards(pointer))
      with_.bubble.close();
    if (settings_.delay() > 0.02) return;
  }

  // 8. On its way towards the bubble, the pointer leaves it alone.
  const std::optional<ScreenPoint> anchor = with_.bubble.anchor();
  if (anchor && distance(pointer, *anchor) > kAnchorRadius && with_.bubble.onWayTowards(pointer))
    return;

  // 9. One read at a time, and none before the dictionaries are there.
  if (readInFlight_ || !with_.dictionaries.loaded()) return;

  // 10. Wait for the pointer to rest.
  if (now - lastMoveTime_ < settings_.delay()) return;
  restEnds_.reset();

  // 11. This spot was read already.
  if (lastLookup_ && distance(pointer, *lastLookup_) < kRepeatRadius) return;

  // 12. The scale factor of the screen under the pointer, for the screen reader's capture.
  const double scale = with_.screens.scaleFactorAt(pointer).value_or(2.0);

  // 13. The languages on for this hover; with none, there is nothing to read.
  const Snapshot& snapshot = settings_.snapshot(keyHeld_);
  if (!anyLanguageOn(snapshot)) {
    with_.notices.nothingToRead(snapshot);
    closeHoverBubble();
    return;
  }

  // 14. Send the read off.
  startRead(pointer, now, scale, snapshot);
}

bool HoverController::holdNear(ScreenPoint pointer) {
  if (!keepNear_) return false;
  if (with_.bubble.visible() &&
      with_.bubble.frame().grownBy(kNearMargin, kNearMargin).contains(pointer))
    return true;
  keepNear_ = false;
  return false;
}

void HoverController::abandonStaleRead(double now) {
  if (!readInFlight_ || now - readStartTime_ <= kReadTimeout) return;
  readInFlight_ = false;
  ++generation_;
  with_.log.log("survol : recherche sans réponse depuis 4 s → on repart");
}

void HoverController::closeHoverBubble() {
  if (with_.bubble.visible() && with_.bubble.anchor()) with_.bubble.close();
}

void HoverController::startRead(ScreenPoint pointer, double now, double scale,
                                const Snapshot& snapshot) {
  lastLookup_ = pointer;
  readPoint_ = pointer;
  readInFlight_ = true;
  readStartTime_ = now;
  ++generation_;
  with_.skipped.clear();
  with_.reader.start(ReadRequest{
      .generation = generation_,
      .point = pointer,
      .scaleFactor = scale,
      .snapshot = snapshot,
      .frontmostApplication = with_.frontmost.identifier().value_or("?"),
  });
}

void HoverController::answer(std::uint64_t generation, std::optional<HoverResult> result) {
  if (generation != generation_ || !readInFlight_) return;
  readInFlight_ = false;
  if (result) {
    with_.bubble.show(readPoint_, *result);
    return;
  }
  if (const auto skipped = with_.skipped.get())
    with_.notices.languageSkipped(*skipped, settings_.mode(*skipped) == ReadingMode::withKey);
}

void HoverController::setOn(bool on) {
  if (on == on_) return;
  on_ = on;
  lastLookup_.reset();
  if (on) return;
  if (readInFlight_) {
    readInFlight_ = false;
    ++generation_;
  }
  closeHoverBubble();
  keepNear_ = false;
}

}  // namespace vesko
