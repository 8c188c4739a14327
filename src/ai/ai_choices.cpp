#include "ai/ai_choices.h"

#include <algorithm>
#include <cctype>

namespace vesko {
namespace {

std::string_view trimmed(std::string_view text) {
  auto blank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

bool startsWithNoCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  return std::equal(prefix.begin(), prefix.end(), text.begin(), [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
  });
}

}  // namespace

std::vector<ProviderChoice> backupProviderChoices() {
  std::vector<ProviderChoice> choices{{0, "Aucune"}};
  for (const auto& row : kProviders)
    if (usesKey(row.provider)) choices.push_back({static_cast<long long>(row.provider), row.label});
  return choices;
}

std::size_t backupProviderChoice(long long stored) {
  const auto choices = backupProviderChoices();
  for (std::size_t i = 1; i < choices.size(); ++i)
    if (choices[i].value == stored) return i;
  return 0;
}

std::string keySourceText(AIProvider provider, const FoundKey& found, const Loc& loc) {
  std::string text;
  switch (found.source) {
    case FoundKey::Source::store:
      text = loc.t("Clé enregistrée dans le trousseau.");
      break;
    case FoundKey::Source::environment: {
      text = loc.t("Clé lue dans la variable d'environnement %@.");
      if (auto at = text.find("%@"); at != std::string::npos)
        text.replace(at, 2, keyVariable(provider));
      break;
    }
    case FoundKey::Source::none:
      text = loc.t("Pas de clé.");
      break;
  }
  if (found.storeProblem)
    text += " " + loc.t("Le trousseau ne répond pas :") + " " + *found.storeProblem;
  return text;
}

std::string keySavedText(bool cleared, const std::expected<void, SecretStoreError>& outcome,
                         const Loc& loc) {
  if (!outcome)
    return loc.t("Le trousseau n'a pas pu garder la clé :") + " " + outcome.error().detail;
  return cleared ? loc.t("Clé effacée.") : loc.t("Clé enregistrée.");
}

std::expected<std::string, std::string_view> checkedLocalModelURL(std::string_view text) {
  const std::string_view url = trimmed(text);
  std::string_view rest;
  if (startsWithNoCase(url, "http://"))
    rest = url.substr(7);
  else if (startsWithNoCase(url, "https://"))
    rest = url.substr(8);
  else
    return std::unexpected("L'adresse commence par http:// ou https://.");
  const bool blankInside = std::any_of(
      url.begin(), url.end(), [](char c) { return std::isspace(static_cast<unsigned char>(c)); });
  if (rest.empty() || rest.front() == '/' || rest.front() == ':' || rest.front() == '?' ||
      blankInside)
    return std::unexpected("Il manque le nom du serveur, par exemple http://127.0.0.1:11434/v1.");
  return std::string(url);
}

}  // namespace vesko
