#include "app/settings_choices.h"

#include <algorithm>
#include <cmath>

namespace vesko {
namespace {

template <typename Row, typename Value>
std::size_t positionOf(std::span<const Row> rows, const Value& value, std::size_t fallback) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].value == value) return i;
  return fallback;
}

}  // namespace

std::size_t readingModeChoice(long long stored) {
  return positionOf<NumberChoice>(kReadingModeChoices, stored, kReadingModeChoices.size() - 1);
}

std::size_t triggerKeyChoice(long long stored) {
  return positionOf<NumberChoice>(kTriggerKeyChoices, stored, 0);
}

std::size_t textChoice(std::span<const TextChoice> choices, std::string_view stored,
                       std::size_t fallback) {
  return positionOf<TextChoice>(choices, stored, fallback);
}

std::size_t interfaceLanguageChoice(std::span<const std::pair<std::string, std::string>> choices,
                                    std::string_view stored, std::size_t fallback) {
  for (std::size_t i = 0; i < choices.size(); ++i)
    if (choices[i].second == stored) return i;
  return fallback;
}

double boundedDelay(double seconds) {
  if (std::isnan(seconds)) return findSettingKey("delay")->number;
  return std::clamp(seconds, kMinDelay, kMaxDelay);
}

std::string_view settingsErrorText(SettingsError error) {
  switch (error) {
    case SettingsError::unknownKey:
      return "Réglage inconnu.";
    case SettingsError::wrongType:
      return "Valeur d'un autre type que celui du réglage.";
    case SettingsError::unreadable:
      return "settings.json est illisible : il est laissé tel quel et rien n'est enregistré.";
    case SettingsError::writeFailed:
      return "settings.json ne peut pas être écrit.";
  }
  return "settings.json ne peut pas être écrit.";
}

}  // namespace vesko
