#pragma once
// Points and rectangles in global screen points: origin at the top-left of the main screen, y
// growing downwards, as X11 and AT-SPI give them. Plain values.

#include <cmath>

namespace vesko {

struct ScreenPoint {
  double x = 0;
  double y = 0;
  friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

inline double distance(ScreenPoint a, ScreenPoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

struct ScreenRect {
  double x = 0;  // left
  double y = 0;  // top
  double width = 0;
  double height = 0;

  double right() const { return x + width; }
  double bottom() const { return y + height; }
  bool empty() const { return width <= 0 || height <= 0; }
  // Edges included, so that a point on a character's border belongs to it.
  bool contains(ScreenPoint p) const {
    return !empty() && p.x >= x && p.x <= right() && p.y >= y && p.y <= bottom();
  }
  ScreenRect grownBy(double dx, double dy) const {
    return {x - dx, y - dy, width + 2 * dx, height + 2 * dy};
  }
  ScreenRect intersected(const ScreenRect& o) const {
    const double l = std::fmax(x, o.x), t = std::fmax(y, o.y);
    const double r = std::fmin(right(), o.right()), b = std::fmin(bottom(), o.bottom());
    if (r <= l || b <= t) return {};
    return {l, t, r - l, b - t};
  }
  friend bool operator==(const ScreenRect&, const ScreenRect&) = default;
};

}  // namespace vesko
