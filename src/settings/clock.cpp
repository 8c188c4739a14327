#include "settings/clock.h"

#include <fmt/format.h>

#include <ctime>

namespace vesko {
namespace {

std::chrono::local_seconds local(const Clock& clock, TimePoint t) {
  auto seconds = std::chrono::floor<std::chrono::seconds>(t);
  return std::chrono::local_seconds((seconds + clock.utcOffset(t)).time_since_epoch());
}

}  // namespace

TimePoint SystemClock::now() const {
  return std::chrono::system_clock::now();
}

std::chrono::seconds SystemClock::utcOffset(TimePoint t) const {
  std::time_t seconds = std::chrono::system_clock::to_time_t(t);
  std::tm parts{};
  if (!localtime_r(&seconds, &parts)) return std::chrono::seconds(0);
  return std::chrono::seconds(parts.tm_gmtoff);
}

std::string timeOfDay(const Clock& clock, TimePoint t) {
  auto at = local(clock, t);
  std::chrono::hh_mm_ss time(at - std::chrono::floor<std::chrono::days>(at));
  return fmt::format("{:02}:{:02}:{:02}", time.hours().count(), time.minutes().count(),
                     time.seconds().count());
}

std::string minuteStamp(const Clock& clock, TimePoint t) {
  auto at = local(clock, t);
  auto day = std::chrono::floor<std::chrono::days>(at);
  std::chrono::year_month_day date(day);
  std::chrono::hh_mm_ss time(at - day);
  return fmt::format("{:04}-{:02}-{:02}-{:02}{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                     time.hours().count(), time.minutes().count());
}

}  // namespace vesko
