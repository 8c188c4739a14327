#pragma once
// What the AI page of the settings window offers and says: the backup-provider choices, where a
// provider's key comes from (never the key itself), the outcome of saving a key, and the check of
// the local model server's address. Labels are French, for Loc::t. Pure functions; any thread.

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "ai/keys.h"
#include "ai/provider.h"
#include "ai/secret_store.h"
#include "settings/loc.h"

namespace vesko {

struct ProviderChoice {
  long long value;         // what `aiBackup` stores
  std::string_view label;  // French
};

// "Aucune" (0), then the providers reached with the learner's key, in the providers' order.
std::vector<ProviderChoice> backupProviderChoices();
// The position in backupProviderChoices() of a stored `aiBackup`: only 1–3 name a backup.
std::size_t backupProviderChoice(long long stored);

// "Clé enregistrée dans le trousseau.", "Clé lue dans la variable d'environnement
// DEEPSEEK_API_KEY." or "Pas de clé.", followed by why the keyring could not be asked when it
// could not; in the interface language.
std::string keySourceText(AIProvider provider, const FoundKey& found, const Loc& loc);

// "Clé enregistrée." / "Clé effacée." or why the keyring refused, in the interface language.
std::string keySavedText(bool cleared, const std::expected<void, SecretStoreError>& outcome,
                         const Loc& loc);

// The local model server's base URL as it will be stored (blanks around it dropped), or why it
// cannot be one, in French for Loc::t: it must be http:// or https:// followed by a host.
std::expected<std::string, std::string_view> checkedLocalModelURL(std::string_view text);

}  // namespace vesko
