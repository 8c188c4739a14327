#pragma once
// The wall clock, injected so that tests run the real logic at a time they choose. Local times are
// the current time zone's: the "HH:mm:ss" stamps of the diagnostic log and the "yyyy-MM-dd-HHmm"
// stamps of set-aside files. `SystemClock` is stateless and safe on any thread; a fake clock in a
// test must be too when the code under test reads it from a worker thread.

#include <chrono>
#include <string>

namespace vesko {

using TimePoint = std::chrono::system_clock::time_point;

class Clock {
 public:
  virtual ~Clock() = default;
  virtual TimePoint now() const = 0;
  // Offset of local time from UTC at `t` (seconds east of Greenwich).
  virtual std::chrono::seconds utcOffset(TimePoint t) const = 0;
};

class SystemClock final : public Clock {
 public:
  TimePoint now() const override;
  std::chrono::seconds utcOffset(TimePoint t) const override;
};

// "HH:mm:ss" in local time.
std::string timeOfDay(const Clock& clock, TimePoint t);
// "yyyy-MM-dd-HHmm" in local time.
std::string minuteStamp(const Clock& clock, TimePoint t);

}  // namespace vesko
