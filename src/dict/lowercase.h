#pragma once
// Lowercasing of UTF-8 words as the dictionaries key them, by ICU's full case mapping in the root
// locale ("Été" → "été", "ŁÓDŹ" → "łódź"). Stateless; any thread.

#include <string>
#include <string_view>

namespace vesko {

// Invalid UTF-8 gives an empty string, which no dictionary holds.
std::string lowercased(std::string_view utf8);
// True when the word is already its own lowercase form (and valid UTF-8).
bool isLowercase(std::string_view utf8);

}  // namespace vesko
