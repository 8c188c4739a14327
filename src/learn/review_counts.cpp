#include "learn/review_counts.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

namespace vesko {
namespace {

struct CounterKeys {
  std::string_view day;
  std::string_view count;
};

constexpr CounterKeys kOldKeys{"review.oldDay", "review.oldCount"};
constexpr CounterKeys kNewKeys{"review.newDay", "review.newCount"};

const CounterKeys& keysFor(CardAge age) {
  return age == CardAge::oldCard ? kOldKeys : kNewKeys;
}

}  // namespace

std::string reviewDayText(const Clock& clock, TimePoint t) {
  const auto local = std::chrono::floor<std::chrono::seconds>(t) + clock.utcOffset(t);
  const std::chrono::year_month_day day{std::chrono::floor<std::chrono::days>(local)};
  return fmt::format("{:04}-{:02}-{:02}", static_cast<int>(day.year()),
                     static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
}

DailyCounts ReviewCounts::today() const {
  const std::string day = reviewDayText(clock_, clock_.now());
  auto count = [&](const CounterKeys& keys) {
    return settings_.text(keys.day) == day ? std::max(settings_.integer(keys.count), 0LL) : 0;
  };
  return {count(kOldKeys), count(kNewKeys)};
}

std::expected<void, SettingsError> ReviewCounts::raise(CardAge age) {
  const CounterKeys& keys = keysFor(age);
  const std::string day = reviewDayText(clock_, clock_.now());
  const std::string_view both[] = {keys.day, keys.count};
  // The day and its count change together, so that two processes grading at midnight cannot
  // add to yesterday's count or lose each other's card.
  return settings_.update(both, [&](std::vector<std::optional<SettingValue>> current) {
    long long count = 0;
    const auto* storedDay = current[0] ? std::get_if<std::string>(&*current[0]) : nullptr;
    const auto* storedCount = current[1] ? std::get_if<long long>(&*current[1]) : nullptr;
    if (storedDay && *storedDay == day && storedCount) count = std::max(*storedCount, 0LL);
    // A count that large can only be a damaged file; it stays where it is.
    if (count < std::numeric_limits<long long>::max()) ++count;
    return std::vector<std::optional<SettingValue>>{SettingValue(day), SettingValue(count)};
  });
}

}  // namespace vesko
