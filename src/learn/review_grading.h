#pragma once
// Grading a kept word in the store: the review ladder's arithmetic applied inside the store's
// change, to the record as it is on disk at that moment, and saved at once. Every review (the
// terminal sitting, `vesko grade`, the desktop window) grades through it. Main thread only, as the
// store.

#include <expected>
#include <optional>
#include <string>

#include "learn/review_rhythm.h"
#include "learn/saved_word.h"
#include "learn/word_store.h"

namespace vesko {

struct GradedWord {
  SavedWord word;             // the record as saved
  ScheduledReview scheduled;  // its new rung and the wait before it comes back
  bool wasNew = false;        // it had never been reviewed before this grade
};

// Nothing when the word is no longer kept (another program removed it); an error, and no change,
// when its step is off the ladder or the grade off the scale.
std::expected<std::optional<GradedWord>, ScheduleError> gradeKeptWord(WordStore& store,
                                                                      const std::string& id,
                                                                      int grade, StoreDate now);

}  // namespace vesko
