// The last character box is written by read threads and taken by the main thread: every take
// sees a whole box that some read stored, and a box is fresh for one take only.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "app/last_character_rect.h"

namespace vesko {
namespace {

TEST(LastCharacterRectTest, FreshOnceThenOnlyLatest) {
  LastCharacterRect last;
  EXPECT_FALSE(last.takeFresh());
  EXPECT_FALSE(last.latest());
  last.store({1, 2, 3, 4});
  last.store({5, 6, 7, 8});
  EXPECT_EQ(last.takeFresh(), (ScreenRect{5, 6, 7, 8}));
  EXPECT_FALSE(last.takeFresh());
  EXPECT_EQ(last.latest(), (ScreenRect{5, 6, 7, 8}));
}

TEST(LastCharacterRectTest, ReadersAndTakersShareIt) {
  LastCharacterRect last;
  constexpr int kWriters = 3, kStores = 2000;
  std::atomic<bool> done{false};
  std::atomic<int> torn{0}, taken{0};
  std::vector<std::thread> writers;
  for (int w = 0; w < kWriters; ++w)
    writers.emplace_back([&, w] {
      // Each box's four fields agree, so a box mixed from two stores shows.
      for (int i = 0; i < kStores; ++i) {
        const double v = w * kStores + i;
        last.store({v, v, v, v});
      }
    });
  std::thread taker([&] {
    while (!done.load()) {
      if (auto box = last.takeFresh()) {
        ++taken;
        if (box->y != box->x || box->width != box->x || box->height != box->x) ++torn;
      }
    }
  });
  for (auto& writer : writers) writer.join();
  done = true;
  taker.join();
  EXPECT_EQ(torn.load(), 0);
  EXPECT_LE(taken.load(), kWriters * kStores);
  ASSERT_TRUE(last.latest());
  last.store({-1, -1, -1, -1});
  EXPECT_EQ(last.takeFresh(), (ScreenRect{-1, -1, -1, -1}));
}

}  // namespace
}  // namespace vesko
