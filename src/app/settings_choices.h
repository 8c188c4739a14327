#pragma once
// What the settings window offers for the hover and how each choice is stored: the looked-up
// languages with their reading-mode keys, the reading modes, the trigger keys, which language wins
// a Latin-script word or Han-only text, the bounds of the rest delay, and why a setting could not
// be written. Labels are French, for Loc::t. Constant data and pure functions; any thread.

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "app/language.h"
#include "settings/settings.h"

namespace vesko {

struct StudiedLanguageRow {
  Language language;
  std::string_view modeKey;  // "mode.zh": 0 on hover, 1 with the key held, 2 not studied
  std::string_view name;     // French, capitalised: "Chinois"
};

// A choice stored as a number: the value written, the label shown.
struct NumberChoice {
  long long value;
  std::string_view label;
};

// A choice stored as a text.
struct TextChoice {
  std::string_view value;
  std::string_view label;
};

// clang-format off
inline constexpr std::array<StudiedLanguageRow, 7> kStudiedLanguages{{
  {Language::zh, "mode.zh", "Chinois"},
  {Language::ja, "mode.ja", "Japonais"},
  {Language::th, "mode.th", "Thaï"},
  {Language::fr, "mode.fr", "Français"},
  {Language::en, "mode.en", "Anglais"},
  {Language::ru, "mode.ru", "Russe"},
  {Language::pl, "mode.pl", "Polonais"},
}};

inline constexpr std::array<NumberChoice, 3> kReadingModeChoices{{
  {0, "Au simple survol"},
  {1, "Avec la touche maintenue"},
  {2, "Pas étudiée"},
}};

// The `modifier` values by the names a Linux keyboard gives the keys; Alt (4, as any value that is
// not 1–3) comes first because it is the default.
inline constexpr std::array<NumberChoice, 4> kTriggerKeyChoices{{
  {4, "Alt"},
  {1, "Ctrl"},
  {2, "Maj"},
  {3, "Super"},
}};

// `prefLatin`: which of French and English wins a Latin-script word when both are studied.
inline constexpr std::array<TextChoice, 2> kLatinPreferenceChoices{{
  {"fr", "Français"},
  {"en", "Anglais"},
}};

// `prefHan`: which of Chinese and Japanese wins Han-only text when both are studied.
inline constexpr std::array<TextChoice, 2> kHanPreferenceChoices{{
  {"zh", "Chinois"},
  {"ja", "Japonais"},
}};
// clang-format on

// The rest delay the window offers, in seconds: below 0.02 the timer reads while the pointer is
// still moving, above 2 seconds the bubble feels broken.
inline constexpr double kMinDelay = 0.02;
inline constexpr double kMaxDelay = 2.0;

// The position in kReadingModeChoices of a stored mode: 0 and 1 as they are, anything else is
// "not studied", as the hover reads it.
std::size_t readingModeChoice(long long stored);
// The position in kTriggerKeyChoices of a stored `modifier`: 1–3 their key, anything else Alt.
std::size_t triggerKeyChoice(long long stored);
// The position of `stored` in `choices`; `fallback` when it is none of them.
std::size_t textChoice(std::span<const TextChoice> choices, std::string_view stored,
                       std::size_t fallback);
// The position in `choices` of `stored`; `fallback` when it is none of them.
std::size_t interfaceLanguageChoice(std::span<const std::pair<std::string, std::string>> choices,
                                    std::string_view stored, std::size_t fallback = 0);

// `seconds` brought within [kMinDelay, kMaxDelay]; a value that is not a number gives the
// setting's default.
double boundedDelay(double seconds);

// Why a setting could not be written, in French for Loc::t: "settings.json ne peut pas être
// écrit".
std::string_view settingsErrorText(SettingsError error);

}  // namespace vesko
