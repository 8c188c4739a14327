#include "learn/review_rhythm.h"

#include <algorithm>

namespace vesko {
namespace {

double ladderSeconds(long long step) {
  return kReviewLadder[static_cast<std::size_t>(step)] * kDaySeconds;
}

}  // namespace

std::expected<ScheduledReview, ScheduleError> ReviewRhythm::schedule(long long step, bool early,
                                                                     int grade) {
  if (step < 0 || step > kAcquiredStep) return std::unexpected(ScheduleError::stepOutsideLadder);
  if (grade < 1 || grade > 5) return std::unexpected(ScheduleError::gradeOutsideScale);
  const long long top = kAcquiredStep;
  long long next = grade <= 2   ? std::max(step - 1, 0LL)
                   : grade == 3 ? step
                   : grade == 4 ? std::min(step + 1, top)
                                : std::min(step + 2, top);
  // Answering well before the interval has run proves less than remembering across it.
  if (early) next = std::min(step, next);
  if (next == kAcquiredStep && step < kAcquiredStep - 1) next = kAcquiredStep - 1;

  double interval = 0;
  if (grade == 1) {
    interval = kMissedSeconds;
  } else if (grade == 2) {
    interval = kDaySeconds;
  } else if (!early) {
    interval = ladderSeconds(next);
  } else if (grade == 3) {
    interval = ladderSeconds(std::max(step - 1, 0LL));
  } else if (grade == 4) {
    interval = ladderSeconds(next);
  } else {
    // The colour stays, but a sure early answer still earns a longer wait.
    interval = ladderSeconds(std::min(step + 1, top));
  }
  return ScheduledReview{static_cast<int>(next), interval};
}

StoreDate ReviewRhythm::dueDate(const SavedWord& word) {
  return word.reviewDue ? *word.reviewDue : word.date + kDaySeconds;
}

bool ReviewRhythm::isEarly(const SavedWord& word, StoreDate now) {
  return word.reviewDue && *word.reviewDue > now;
}

std::expected<ScheduledReview, ScheduleError> ReviewRhythm::preview(const SavedWord& word,
                                                                    int grade, StoreDate now) {
  return schedule(word.reviewStep.value_or(0), isEarly(word, now), grade);
}

std::expected<ScheduledReview, ScheduleError> ReviewRhythm::applyGrade(SavedWord& word, int grade,
                                                                       StoreDate now) {
  auto scheduled = preview(word, grade, now);
  if (!scheduled) return scheduled;
  word.reviewStep = scheduled->step;
  word.confidence = grade;
  word.reviews = word.reviews.value_or(0) + 1;
  if (grade < 3 && word.archived == "known") word.archived.reset();
  word.senseTurn = word.senseTurn.value_or(0) + 1;
  word.reviewDue = now + scheduled->interval;
  word.lastSeen = now;
  return scheduled;
}

bool ReviewRhythm::isAcquired(const SavedWord& word) {
  return word.archived == "known" || (word.reviewStep && *word.reviewStep > kAcquiredStep - 1);
}

}  // namespace vesko
