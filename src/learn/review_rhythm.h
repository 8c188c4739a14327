#pragma once
// The review ladder and its arithmetic: where a grade moves a kept word and when it comes back.
// Pure functions of a word, a grade and the time; the store applies the result and saves it.
// Stateless; any thread.

#include <array>
#include <expected>

#include "learn/saved_word.h"

namespace vesko {

// Days between reviews at each rung. Steps 0–5 are the working levels; step 6 is the acquired
// rung, checked once a year.
inline constexpr std::array<int, 7> kReviewLadder{1, 3, 7, 16, 35, 90, 365};
inline constexpr int kAcquiredStep = 6;
inline constexpr double kDaySeconds = 86'400;
// A missed card comes back within the same sitting.
inline constexpr double kMissedSeconds = 600;

struct ScheduledReview {
  int step = 0;
  double interval = 0;  // seconds until the next review
  friend bool operator==(const ScheduledReview&, const ScheduledReview&) = default;
};

// A step outside the ladder can only come from a damaged file or a caller's bug; it is refused
// rather than clamped, so that the damage shows instead of being graded over.
enum class ScheduleError { stepOutsideLadder, gradeOutsideScale };

class ReviewRhythm {
 public:
  // Grade 1 (missed) to 5 (very comfortable) given at `step`; `early` when the card was not yet
  // due. 1 and 2 move down a rung, 3 stays, 4 moves up one, 5 up two; an early review never moves
  // up, and the acquired rung is reached only from step 5.
  static std::expected<ScheduledReview, ScheduleError> schedule(long long step, bool early,
                                                                int grade);

  // When the word is next due: its `reviewDue`, or, never reviewed, a day after it was kept.
  static StoreDate dueDate(const SavedWord& word);
  // Whether a review now comes before the word's `reviewDue` (absent: never early).
  static bool isEarly(const SavedWord& word, StoreDate now);
  // What grading the word now would give, for the line under each grade.
  static std::expected<ScheduledReview, ScheduleError> preview(const SavedWord& word, int grade,
                                                               StoreDate now);
  // Applies the grade to the record: rung, due date, last grade, counters; a failed acquired word
  // returns to the rotation. The record is left as it was on an error. Saving is the store's.
  static std::expected<ScheduledReview, ScheduleError> applyGrade(SavedWord& word, int grade,
                                                                  StoreDate now);
  // Archived as known, or past the last working rung.
  static bool isAcquired(const SavedWord& word);
};

}  // namespace vesko
