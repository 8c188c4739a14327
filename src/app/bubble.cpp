#include "app/bubble.h"

#include <algorithm>
#include <limits>

namespace vesko {

// The hull of a point A and a rectangle R holds P exactly when the ray from A through P meets R
// at or beyond P: P = A + s·(r − A) for some r in R and s in (0, 1] means r = A + t·(P − A) with
// t = 1/s ≥ 1. The slab method gives the interval of t where the ray is inside R.
bool headingTowards(ScreenPoint anchor, ScreenPoint pointer, const ScreenRect& frame) {
  if (frame.empty()) return false;
  if (frame.contains(pointer)) return true;
  const double dx = pointer.x - anchor.x, dy = pointer.y - anchor.y;
  if (dx == 0 && dy == 0) return true;  // not yet moved away
  double enter = 1.0, leave = std::numeric_limits<double>::infinity();
  auto slab = [&](double origin, double step, double low, double high) {
    if (step == 0) return origin >= low && origin <= high;
    double t1 = (low - origin) / step, t2 = (high - origin) / step;
    if (t1 > t2) std::swap(t1, t2);
    enter = std::max(enter, t1);
    leave = std::min(leave, t2);
    return enter <= leave;
  };
  return slab(anchor.x, dx, frame.x, frame.right()) && slab(anchor.y, dy, frame.y, frame.bottom());
}

}  // namespace vesko
