#pragma once
// The bubble as the hover controller drives it: the floating panel beside the pointer that shows
// one HoverResult. Implemented by the desktop shell; main thread only. `headingTowards` is the
// path test a shell's bubble may use: plain geometry, any thread.

#include <optional>

#include "app/geometry.h"
#include "app/hover_result.h"

namespace vesko {

class Bubble {
 public:
  virtual ~Bubble() = default;
  virtual bool visible() const = 0;
  // The bubble's frame in screen points; meaningful while visible.
  virtual ScreenRect frame() const = 0;
  // The pointer position the shown bubble was opened for by a hover; nothing when hidden or when
  // it was opened by other means (a shortcut, a selection).
  virtual std::optional<ScreenPoint> anchor() const = 0;
  // Opens the bubble for `result` beside `at`, or moves the open one there, and makes `at` its
  // anchor.
  virtual void show(ScreenPoint at, const HoverResult& result) = 0;
  virtual void close() = 0;
  // Whether the pointer, now at `pointer`, is on its way from the anchor towards the bubble, so
  // that the learner can reach it without it closing. Asked at most ticks while the pointer is
  // away from the anchor: geometry only, no allocation.
  virtual bool onWayTowards(ScreenPoint pointer) const = 0;
};

// Whether `pointer` lies in the region swept from `anchor` to `frame`: inside the frame, or
// between the anchor and the frame (in the convex hull of the anchor and the frame). A pointer
// that leaves the anchor sideways or backwards is not heading for the bubble.
bool headingTowards(ScreenPoint anchor, ScreenPoint pointer, const ScreenRect& frame);

}  // namespace vesko
