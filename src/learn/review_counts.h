#pragma once
// The day's tally of graded cards, kept in the settings as a day and a count for old cards
// (review.oldDay, review.oldCount) and for new ones (review.newDay, review.newCount). A count
// belongs to its day: read on another day it is 0, so the tally starts afresh each morning.
// Holds references to the settings and the clock, which must outlive it; any thread (each raise
// is one locked read-modify-write of the settings file, also against other processes).

#include <expected>
#include <string>

#include "learn/review_day.h"
#include "settings/clock.h"
#include "settings/settings.h"

namespace vesko {

enum class CardAge { oldCard, newCard };

// "yyyy-MM-dd" of `t` in the clock's local time.
std::string reviewDayText(const Clock& clock, TimePoint t);

class ReviewCounts {
 public:
  ReviewCounts(Settings& settings, const Clock& clock) : settings_(settings), clock_(clock) {}
  ReviewCounts(const ReviewCounts&) = delete;
  ReviewCounts& operator=(const ReviewCounts&) = delete;

  DailyCounts today() const;
  // One more card of that age graded today.
  std::expected<void, SettingsError> raise(CardAge age);

 private:
  Settings& settings_;
  const Clock& clock_;
};

}  // namespace vesko
