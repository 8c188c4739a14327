#include "app/recognition_modes.h"

#include <algorithm>

namespace vesko {

std::optional<RecognitionMode> recognitionMode(std::string_view key) {
  const auto* found = std::ranges::find(kRecognitionModes, key, &RecognitionMode::key);
  if (found == std::end(kRecognitionModes)) return std::nullopt;
  return *found;
}

std::vector<std::string> recognitionModes(const Snapshot& snapshot) {
  std::vector<std::string> modes;
  // Chinese and Japanese share Han characters: the learner's preferred one reads first, so that
  // its line is the one handed on when both models read the same spot.
  const bool japaneseFirst = snapshot.prefHan == "ja";
  if (snapshot.zh && !japaneseFirst) modes.emplace_back("zh-Hans");
  if (snapshot.ja) modes.emplace_back("ja");
  if (snapshot.zh && japaneseFirst) modes.emplace_back("zh-Hans");
  if (snapshot.th) modes.emplace_back("th");
  if (snapshot.ru) modes.emplace_back("ru");
  if (snapshot.fr || snapshot.pl) {
    modes.emplace_back("latin");
  } else if (snapshot.en) {
    modes.emplace_back("en");
  }
  return modes;
}

}  // namespace vesko
