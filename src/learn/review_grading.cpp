#include "learn/review_grading.h"

namespace vesko {

std::expected<std::optional<GradedWord>, ScheduleError> gradeKeptWord(WordStore& store,
                                                                      const std::string& id,
                                                                      int grade, StoreDate now) {
  // Applied to the record as the store reads it under its lock: another program may have graded
  // it since this one last read the file.
  std::optional<GradedWord> graded;
  std::optional<ScheduleError> refused;
  store.change(id, [&](SavedWord& word) {
    const bool wasNew = !word.reviewStep;
    auto scheduled = ReviewRhythm::applyGrade(word, grade, now);
    if (!scheduled) {
      refused = scheduled.error();
      return;
    }
    graded = GradedWord{word, *scheduled, wasNew};
  });
  if (refused) return std::unexpected(*refused);
  return graded;
}

}  // namespace vesko
