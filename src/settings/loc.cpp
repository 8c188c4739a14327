#include "settings/loc.h"

#include "settings/credits.h"

namespace vesko {

Loc::Loc(const Settings& settings, const LocTables& tables, HantCache& hant,
         std::vector<std::string> preferredLanguages)
    : settings_(settings),
      tables_(tables),
      hant_(hant),
      preferred_(std::move(preferredLanguages)) {}

Loc::Resolved Loc::resolve() const {
  std::string stored = settings_.text("uiLang");
  if (stored.empty()) stored = "auto";
  if (stored == "zh-Hant") return {"zh", true};
  if (stored != "auto") return {std::move(stored), false};

  const std::string first = preferred_.empty() ? "fr" : preferred_.front();
  // zh-HK gives simplified characters: only these three prefixes mean traditional.
  const bool traditional =
      first.starts_with("zh-Hant") || first.starts_with("zh-TW") || first.starts_with("zh-MO");
  for (const char* code : {"zh", "fr", "th", "ru", "pl"})
    if (first.starts_with(code)) return {code, traditional};
  return {"en", traditional};
}

std::string Loc::uiLanguage() const {
  return resolve().language;
}

bool Loc::isTraditional() const {
  return resolve().traditional;
}

std::string Loc::translate(std::string_view french, std::string_view language,
                           bool traditional) const {
  if (language == "zh" && traditional) {
    if (auto row = tables_[TableLanguage::traditionalChinese].find(french))
      return std::string(*row);
    if (auto row = tables_[TableLanguage::simplifiedChinese].find(french))
      return hant_.convert(*row);
    return std::string(french);
  }
  if (auto table = tableFor(language))
    if (auto row = tables_[*table].find(french)) return std::string(*row);
  return std::string(french);
}

std::string Loc::t(std::string_view french) const {
  auto resolved = resolve();
  return translate(french, resolved.language, resolved.traditional);
}

std::string Loc::t(std::string_view french, std::string_view language) const {
  if (language == "zh-Hant") return translate(french, "zh", true);
  if (language == "zh" || language == "zh-Hans") return translate(french, "zh", false);
  return translate(french, language, false);
}

std::string Loc::localeIdentifier() const {
  auto resolved = resolve();
  const auto& language = resolved.language;
  if (language == "zh") return resolved.traditional ? "zh_TW" : "zh_CN";
  if (language == "en") return "en_US";
  if (language == "th") return "th_TH";
  if (language == "ru") return "ru_RU";
  if (language == "pl") return "pl_PL";
  return "fr_FR";
}

std::string Loc::contentLanguage() const {
  auto language = uiLanguage();
  if (language == "th" || language == "ru" || language == "pl") return "en";
  return language;
}

std::optional<std::string> Loc::definitionLanguage(std::string_view code) const {
  std::string stored = settings_.text("defLang." + std::string(code));
  if (stored == "orig") return std::nullopt;
  if (!stored.empty() && stored != "auto") return stored;
  auto resolved = resolve();
  if (resolved.language == "zh") return resolved.traditional ? "zh-Hant" : "zh-Hans";
  return resolved.language;
}

std::string Loc::frenchLanguageName(std::string_view code, bool traditional) {
  if (code == "zh") code = traditional ? "zh-Hant" : "zh-Hans";
  if (code == "en") return "anglais";
  if (code == "zh-Hans") return "chinois simplifié";
  if (code == "zh-Hant") return "chinois traditionnel (Taïwan)";
  if (code == "ru") return "russe";
  if (code == "pl") return "polonais";
  if (code == "th") return "thaï";
  if (code == "ja") return "japonais";
  return "français";
}

std::string Loc::languageNameForPrompts() const {
  auto resolved = resolve();
  return frenchLanguageName(resolved.language, resolved.traditional);
}

std::string Loc::appVersion() {
  // A build carries one version; there is no separate build number to fall back on.
  return kAppVersion.empty() ? std::string("?") : std::string(kAppVersion);
}

std::vector<std::pair<std::string, std::string>> Loc::interfaceLanguageChoices() const {
  std::vector<std::pair<std::string, std::string>> choices;
  choices.emplace_back(t("Automatique (langue du Mac)"), std::string(kInterfaceLanguages[0].value));
  for (std::size_t i = 1; i < kInterfaceLanguages.size(); ++i)
    choices.emplace_back(kInterfaceLanguages[i].label, kInterfaceLanguages[i].value);
  return choices;
}

}  // namespace vesko
