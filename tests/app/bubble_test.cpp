#include "app/bubble.h"

#include <gtest/gtest.h>

namespace vesko {
namespace {

TEST(BubbleTest, HeadingTowardsIsTheRegionBetweenAnchorAndFrame) {
  // Anchor at (0, 0); the bubble to the lower right, x 20..220, y 10..210: the way towards it
  // lies between the rays through its top-right and its bottom-left corners.
  const ScreenPoint anchor{0, 0};
  const ScreenRect frame{20, 10, 200, 200};
  struct Row {
    const char* what;
    ScreenPoint pointer;
    bool towards;
  };
  const Row rows[] = {
      {"inside the bubble", {100, 50}, true},
      {"on its edge", {20, 10}, true},
      {"straight at its middle", {12, 6}, true},
      {"towards its top-left corner", {16, 8}, true},
      {"just below the ray to its top-right corner", {22, 1.2}, true},
      {"just above it", {22, 0.8}, false},
      {"just right of the ray to its bottom-left corner", {1.2, 12}, true},
      {"just left of it", {0.8, 12}, false},
      {"along its top edge's line, beside it", {20, 0}, false},
      {"backwards", {-15, -5}, false},
      {"sideways, above it", {0, -20}, false},
      {"down, beside it", {0, 30}, false},
      {"beyond the bubble", {300, 150}, false},
      {"past its right side", {240, 60}, false},
      {"at the anchor", {0, 0}, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(headingTowards(anchor, row.pointer, frame), row.towards);
  }
}

TEST(BubbleTest, NoFrameMeansNoWayTowardsIt) {
  EXPECT_FALSE(headingTowards({0, 0}, {5, 5}, ScreenRect{}));
}

}  // namespace
}  // namespace vesko
