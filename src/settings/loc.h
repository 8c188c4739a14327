#pragma once
// The interface language and the translation of the program's French texts into it. The language
// comes from the `uiLang` setting, or from the system's preferred languages when it is "auto", and
// is read again at every call, so that a change in the picker applies to the next text drawn.
// Thread contract: any thread; `Loc` holds no state of its own beyond what it was given.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/hant_cache.h"
#include "settings/loc_table.h"
#include "settings/settings.h"

namespace vesko {

// The interface-language picker, in order: label, stored value. The first label is translated;
// the others are written in their own language.
struct InterfaceLanguage {
  std::string_view label;
  std::string_view value;
};
// clang-format off
inline constexpr std::array<InterfaceLanguage, 8> kInterfaceLanguages{{
  {"Automatique (langue du Mac)", "auto"},
  {"Français", "fr"},
  {"English", "en"},
  {"中文（简体）", "zh"},
  {"中文（繁體）", "zh-Hant"},
  {"ไทย", "th"},
  {"Русский", "ru"},
  {"Polski", "pl"},
}};
// clang-format on

class Loc {
 public:
  // Everything given must outlive the `Loc`. `preferredLanguages`: the system's, most preferred
  // first (see preferredLanguages()).
  Loc(const Settings& settings, const LocTables& tables, HantCache& hant,
      std::vector<std::string> preferredLanguages);
  Loc(const Loc&) = delete;
  Loc& operator=(const Loc&) = delete;

  // "fr", "en", "zh", "th", "ru", "pl", or any other stored code as it is.
  std::string uiLanguage() const;
  // Whether Chinese is shown in traditional characters.
  bool isTraditional() const;
  // `french` in the interface language, or `french` itself. Translate a format string before
  // filling in its placeholders: a formatted text finds no row.
  std::string t(std::string_view french) const;
  // `french` in an answer language ("en", "zh-Hans", "zh-Hant", "pl", "ru", "th"; anything else
  // gives `french`): the section titles of AI answers are written in the answer language.
  std::string t(std::string_view french, std::string_view language) const;
  // "zh_TW", "zh_CN", "en_US", "th_TH", "ru_RU", "pl_PL" or "fr_FR", for dates and numbers.
  std::string localeIdentifier() const;
  // The language of longer generated content: English for a Thai, Russian or Polish interface.
  std::string contentLanguage() const;
  // The language definitions for the studied language `code` are wanted in; nothing means in the
  // word's own language.
  std::optional<std::string> definitionLanguage(std::string_view code) const;
  // The interface language named in French, for prompts written in French ("anglais").
  std::string languageNameForPrompts() const;
  static std::string frenchLanguageName(std::string_view code, bool traditional);
  static std::string appVersion();

  // The picker's (label, value) pairs, the first label in the interface language.
  std::vector<std::pair<std::string, std::string>> interfaceLanguageChoices() const;

 private:
  struct Resolved {
    std::string language;
    bool traditional;
  };
  Resolved resolve() const;
  std::string translate(std::string_view french, std::string_view language, bool traditional) const;

  const Settings& settings_;
  const LocTables& tables_;
  HantCache& hant_;
  const std::vector<std::string> preferred_;
};

}  // namespace vesko
