// The hover timer ticks 33 times a second for as long as the program runs, so a tick that only
// waits must not allocate. This binary replaces the global operator new with one that counts the
// calls made while counting is switched on, around ticks that end before a read starts.

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "app/hover_controller.h"
#include "support/hover_fakes.h"

namespace {

std::atomic<bool> counting{false};
std::atomic<long> allocations{0};

}  // namespace

// GCC takes the free() in these replacements for a mismatch with the operator new it inlined
// beside them; both sides are ours and both use malloc and free.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

void* operator new(std::size_t size) {
  if (counting.load(std::memory_order_relaxed)) allocations.fetch_add(1);
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
  return ::operator new(size);
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete[](void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
  std::free(p);
}

namespace vesko {
namespace {

using testing::HoverFixture;

// Ticks with counting on; the allocations they made.
long allocationsDuring(HoverFixture& f, int ticks) {
  allocations = 0;
  counting = true;
  for (int i = 0; i < ticks; ++i) f.tick();
  counting = false;
  return allocations.load();
}

TEST(HoverControllerAllocTest, CountingSeesAnAllocation) {
  counting = true;
  auto* p = new int(7);
  counting = false;
  delete p;
  EXPECT_EQ(allocations.load(), 1);
}

TEST(HoverControllerAllocTest, WaitingTicksAllocateNothing) {
  HoverFixture f;
  f.moveTo(300, 200);
  f.tick();  // the move

  // Waiting for rest, then moving within the jitter threshold, before the 0.1 s rest is over.
  EXPECT_EQ(allocationsDuring(f, 1), 0) << "waiting for rest";
  f.moveTo(301, 200);
  EXPECT_EQ(allocationsDuring(f, 1), 0) << "jitter";

  // A read in flight.
  const ReadRequest request = f.restAndRead(300, 200);
  EXPECT_EQ(allocationsDuring(f, 5), 0) << "read in flight";
  f.controller.answer(request.generation, HoverFixture::someResult());

  // The spot was read; the bubble is shown there.
  EXPECT_EQ(allocationsDuring(f, 5), 0) << "same spot";

  // Moving towards the bubble, and moving with a large step while it stays.
  f.moveTo(516, 302);
  f.moveTo(310, 200);
  EXPECT_EQ(allocationsDuring(f, 1), 0) << "moving";
  f.moveTo(330, 195);
  EXPECT_EQ(allocationsDuring(f, 3), 0) << "on the way to the bubble";

  // Button held, Command alone, over one of our windows, dictionaries loading.
  f.pointer.state.buttonPressed = true;
  EXPECT_EQ(allocationsDuring(f, 3), 0) << "button";
  f.pointer.state.buttonPressed = false;
  f.pointer.state.modifiers = kSuper;
  EXPECT_EQ(allocationsDuring(f, 3), 0) << "Command alone";
  f.pointer.state.modifiers = 0;
  f.ownWindows.window = {{0, 0, 1000, 1000}};
  EXPECT_EQ(allocationsDuring(f, 3), 0) << "own window";
  f.ownWindows.window.reset();
  f.dictionaries.ready = false;
  f.moveTo(700, 700);
  EXPECT_EQ(allocationsDuring(f, 10), 0) << "dictionaries loading";
  f.dictionaries.ready = true;

  // A bubble held near the pointer.
  f.bubble.openWithoutAnchor({600, 600, 200, 100});
  f.controller.keepNear();
  EXPECT_EQ(allocationsDuring(f, 3), 0) << "held";
}

}  // namespace
}  // namespace vesko
