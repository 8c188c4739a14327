#include "app/hover_notices.h"

namespace vesko {

std::string skippedLanguageText(const Loc& loc, Language language, bool readWithKey) {
  const std::string name =
      loc.t(Loc::frenchLanguageName(languageCode(language), loc.isTraditional()));
  const std::string reason = readWithKey
                                 ? loc.t("se lit en maintenant la touche")
                                 : loc.t("n'est pas dans « Tes langues » : Réglages → Langues");
  // Chinese writes no space between the name and what follows.
  if (loc.uiLanguage().starts_with("zh")) return name + reason;
  return name + " " + reason;
}

std::string_view statusText(bool on) {
  return on ? "activée (clic : Réglages · clic droit : menu · ⌥X : éteindre)"
            : "désactivée (clic : Réglages · clic droit : menu · ⌥X : allumer)";
}

}  // namespace vesko
