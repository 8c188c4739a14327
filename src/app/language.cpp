#include "app/language.h"

#include <array>

namespace vesko {
namespace {

// clang-format off
constexpr std::array<std::pair<Language, std::string_view>, 7> kCodes = {{
    {Language::zh, "zh"}, {Language::ja, "ja"}, {Language::th, "th"}, {Language::fr, "fr"},
    {Language::en, "en"}, {Language::ru, "ru"}, {Language::pl, "pl"},
}};
// clang-format on

}  // namespace

std::string_view languageCode(Language language) {
  for (const auto& [value, code] : kCodes)
    if (value == language) return code;
  return {};
}

std::optional<Language> languageFromCode(std::string_view code) {
  for (const auto& [value, name] : kCodes)
    if (name == code) return value;
  return std::nullopt;
}

bool Snapshot::studies(Language language) const {
  switch (language) {
    case Language::zh:
      return zh;
    case Language::ja:
      return ja;
    case Language::th:
      return th;
    case Language::fr:
      return fr;
    case Language::en:
      return en;
    case Language::ru:
      return ru;
    case Language::pl:
      return pl;
  }
  return false;
}

}  // namespace vesko
