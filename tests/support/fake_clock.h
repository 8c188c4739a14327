#pragma once
// A clock that stands still until the test moves it, in a time zone the test chooses. Safe to read
// from any thread while the test sets it, since the log reads it on its worker.

#include <atomic>
#include <chrono>

#include "settings/clock.h"

namespace vesko::testing {

class FakeClock final : public Clock {
 public:
  // 2025-03-09 14:32:05 UTC, a Sunday afternoon.
  static constexpr std::chrono::sys_seconds kStart{
      std::chrono::sys_days{std::chrono::year{2025} / 3 / 9} + std::chrono::hours(14) +
      std::chrono::minutes(32) + std::chrono::seconds(5)};

  explicit FakeClock(std::chrono::seconds utcOffset = std::chrono::seconds(0))
      : offset_(utcOffset.count()) {
    set(kStart);
  }

  TimePoint now() const override {
    return TimePoint(std::chrono::nanoseconds(nanos_.load(std::memory_order_relaxed)));
  }
  std::chrono::seconds utcOffset(TimePoint) const override {
    return std::chrono::seconds(offset_.load(std::memory_order_relaxed));
  }

  void set(TimePoint t) {
    nanos_.store(std::chrono::duration_cast<std::chrono::nanoseconds>(t.time_since_epoch()).count(),
                 std::memory_order_relaxed);
  }
  void advance(std::chrono::nanoseconds by) {
    nanos_.fetch_add(by.count(), std::memory_order_relaxed);
  }

 private:
  std::atomic<long long> nanos_{0};
  std::atomic<long long> offset_;
};

}  // namespace vesko::testing
