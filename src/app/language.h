#pragma once
// The languages a hover can look up, with their two-letter codes, and the per-hover copy of the
// learner's language switches. Plain values; any thread.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

enum class Language : std::uint8_t { zh, ja, th, fr, en, ru, pl };

// "zh", "ja", "th", "fr", "en", "ru", "pl".
std::string_view languageCode(Language language);
std::optional<Language> languageFromCode(std::string_view code);

// The language switches, copied once per hover so that a read never sees settings change under
// it. Field order follows the settings screen.
struct Snapshot {
  bool zh = false;
  bool fr = false;
  bool en = false;
  bool th = false;
  std::vector<std::string> dicts;  // enabled dictionary names
  bool conj = true;                // conjugation shown
  bool ja = false;
  bool ru = false;
  bool pl = false;
  std::string prefLatin = "fr";  // which of "fr" and "en" wins a Latin word when both are studied
  std::string prefHan = "zh";    // which of "zh" and "ja" wins Han-only text when both are studied

  bool studies(Language language) const;
};

}  // namespace vesko
