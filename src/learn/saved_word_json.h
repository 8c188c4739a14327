#pragma once
// mots.json's coding: an array of SavedWord objects whose keys are the field names, sorted,
// pretty-printed; dates as seconds since 2001-01-01 UTC; absent optionals left out. Decoding is
// strict where a wrong value would lose data (a required key missing, a value of the wrong type,
// an id that is not a UUID) and lenient where the other writers of this file are (unknown keys are
// ignored, `null` is an absent optional, 2.0 is the integer 2). Stateless; any thread.

#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "learn/saved_word.h"
#include "settings/clock.h"

namespace vesko {

// 2001-01-01 00:00:00 UTC on the Unix time line.
inline constexpr double kStoreEpochUnixSeconds = 978'307'200.0;

StoreDate storeDate(TimePoint t);
TimePoint timeOfStoreDate(StoreDate date);

// The whole file's text, ending with a newline.
std::string encodeWords(const std::vector<SavedWord>& words);
// One record, pretty-printed as in the file (for `vesko keep --json`) or on one line.
std::string encodeWord(const SavedWord& word, bool pretty);
// Why the text is not a list of words, for the diagnostic log: "entrée 3 : clé « lang » absente".
std::expected<std::vector<SavedWord>, std::string> decodeWords(std::string_view text);

}  // namespace vesko
