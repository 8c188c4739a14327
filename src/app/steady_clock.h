#pragma once
// Monotonic time in seconds, for measuring waits (the pointer's rest, a read's age) that a change
// of the wall clock must not disturb. Injected so that tests move time themselves. `MonotonicClock`
// is stateless and safe on any thread.

#include <chrono>

namespace vesko {

class SteadyClock {
 public:
  virtual ~SteadyClock() = default;
  // Seconds since an arbitrary fixed origin.
  virtual double seconds() const = 0;
};

class MonotonicClock final : public SteadyClock {
 public:
  double seconds() const override {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
  }
};

}  // namespace vesko
