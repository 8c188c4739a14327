#pragma once
// Recognition modes: a short key per set of recogniser languages ("latin" reads French, English
// and Polish at once), the language data each one loads, and which modes a hover asks for given
// the languages the learner studies. Plain tables and functions; any thread.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/language.h"

namespace vesko {

struct RecognitionMode {
  std::string_view key;        // the cache key and the name the read passes around
  std::string_view languages;  // the recogniser's language data, "+"-joined, first one leading
};

// clang-format off
inline constexpr RecognitionMode kRecognitionModes[] = {
    {"latin",   "fra+eng+pol"},
    {"th",      "tha+eng"},
    {"ru",      "rus+eng"},
    {"ja",      "jpn"},
    {"en",      "eng"},
    {"zh-Hans", "chi_sim"},
    {"zh-Hant", "chi_tra"},
};
// clang-format on

std::optional<RecognitionMode> recognitionMode(std::string_view key);

// The modes a hover reads the screen with, in the order their lines are offered to the word
// chooser (the first mode whose line lies under the pointer wins). Han-script modes come first, in
// the order of `prefHan`; then Thai, Russian, and last the Latin mode ("latin" when French or
// Polish is studied, "en" when English is studied alone). Chinese reads simplified characters:
// the traditional model is chosen explicitly by a caller that knows the text is traditional.
std::vector<std::string> recognitionModes(const Snapshot& snapshot);

}  // namespace vesko
