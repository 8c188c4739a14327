#pragma once
// A monotonic clock that moves only when the test moves it. Main-thread tests only.

#include "app/steady_clock.h"

namespace vesko::testing {

class FakeSteadyClock final : public SteadyClock {
 public:
  double seconds() const override { return now_; }
  void set(double seconds) { now_ = seconds; }
  void advance(double seconds) { now_ += seconds; }

 private:
  double now_ = 1000.0;
};

}  // namespace vesko::testing
