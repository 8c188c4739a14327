#include "learn/mastery.h"

namespace vesko {

Mastery masteryOf(const SavedWord& word) {
  if (word.archived == "known") return Mastery::known;
  if (!word.reviewStep) return Mastery::newWord;
  // Steps outside the ladder (a hand-edited file) are drawn as the nearest end.
  const long long step = *word.reviewStep;
  if (step <= 0) return Mastery::fragile;
  if (step == 1) return Mastery::learning;
  if (step == 2) return Mastery::coming;
  if (step <= 5) return Mastery::solid;
  return Mastery::known;
}

std::string_view masteryName(Mastery mastery) {
  return kMasteryLooks[static_cast<std::size_t>(mastery)].name;
}

std::string_view masteryColour(Mastery mastery) {
  return kMasteryLooks[static_cast<std::size_t>(mastery)].colour;
}

}  // namespace vesko
