// Interface texts in English: the French text the program shows → its translation.
// One row per text; every table has a row for every text, with the same placeholders
// (%d, %@, %%). tests/settings/loc_table_test.cpp checks both, and that every text the
// code hands to Loc::t has a row.

#include "settings/loc_rows.h"

namespace vesko::loc_rows {
namespace {

// clang-format off
constexpr LocRow kRows[] = {
  // The hover, the status item and the word chooser
  {"Au simple survol", "On hover"},
  {"Avec la touche maintenue", "While holding the key"},
  {"n'est pas dans « Tes langues » : Réglages → Langues", "is not in “Your languages”: Settings → Languages"},
  {"se lit en maintenant la touche", "is read while the key is held"},
  {"activée (clic : Réglages · clic droit : menu · ⌥X : éteindre)", "on (click: Settings · right-click: menu · ⌥X: turn off)"},
  {"désactivée (clic : Réglages · clic droit : menu · ⌥X : allumer)", "off (click: Settings · right-click: menu · ⌥X: turn on)"},
  {"Vesko : autorise l'« Enregistrement de l'écran » (Réglages)", "Vesko: allow “Screen Recording” (Settings)"},
  {"forme du dictionnaire", "dictionary form"},
  {"nom propre (translittération probable)", "proper name (likely a transliteration)"},

  // AI providers and the messages that stand in for an answer
  {"IA d'Apple, hors ligne", "Apple's AI, offline"},
  {"IA locale, hors ligne", "Local AI, offline"},
  {"IA Vesko", "Vesko AI"},
  {"L'IA est en pause pour le moment. Réessaie plus tard.", "The AI is paused for now. Try again later."},
  {"Il manque la clé", "Missing key for"},
  {"dans Réglages → IA.", "in Settings → AI."},
  {"L'IA d'Apple n'est pas disponible sur ce Mac : choisis Claude ou DeepSeek dans Réglages → IA.", "Apple's AI isn't available on this Mac: choose Claude or DeepSeek in Settings → AI."},
  {"L'IA d'Apple n'est pas disponible.", "Apple's AI isn't available."},
  {"Ajoute ta clé Claude dans Réglages → IA.", "Add your Claude key in Settings → AI."},
  {"Ajoute ta clé ChatGPT (OpenAI) dans Réglages → IA.", "Add your ChatGPT (OpenAI) key in Settings → AI."},
  {"Ajoute ta clé DeepSeek dans Réglages → IA.", "Add your DeepSeek key in Settings → AI."},
  {"Service injoignable. En Chine, Claude et ChatGPT sont bloqués : choisis DeepSeek dans Réglages → IA.", "Can't reach the service. In China, Claude and ChatGPT are blocked: choose DeepSeek in Settings → AI."},
  {"Pas de connexion internet ou service injoignable.", "No internet connection, or the service can't be reached."},
  {"erreur", "error"},
  {"Le service a refusé la demande :", "The service refused the request:"},
  {"%@ est surchargé en ce moment. Réessaie dans une minute, ou choisis une autre IA dans Réglages → IA.", "%@ is overloaded right now. Try again in a minute, or choose another AI in Settings → AI."},
  {"Réponse vide.", "Empty answer."},
  {"IA Vesko ne répond pas pour le moment. Réessaie dans un instant.", "Vesko AI isn't answering right now. Try again in a moment."},
  {"L'IA n'a pas pu répondre.", "The AI couldn't answer."},

  // Section titles of AI answers (the parser finds them again: distinct within a language)
  {"Structure", "Structure"},
  {"Expression", "Expression"},
  {"Termes", "Terms"},
  {"Origine", "Origin"},
  {"Grammaire", "Grammar"},
  {"Nuance", "Nuance"},
  {"Sens littéral", "Literal meaning"},
  {"Sens", "Meaning"},
  {"Caractères", "Characters"},
  {"Famille", "Family"},
  {"Ici", "Here"},
  {"Exemple", "Example"},
  {"Phrase", "Sentence"},
  {"Mot", "Word"},
  {"Morceaux", "Pieces"},

  // Languages named in French
  {"français", "French"},
  {"anglais", "English"},
  {"chinois simplifié", "Simplified Chinese"},
  {"chinois traditionnel (Taïwan)", "Traditional Chinese (Taiwan)"},
  {"russe", "Russian"},
  {"polonais", "Polish"},
  {"thaï", "Thai"},
  {"japonais", "Japanese"},

  // The popup's AI actions
  {"C'est quoi ?", "What is it?"},
  {"Synonymes et contraires", "Synonyms and opposites"},
  {"Décortiquer", "Break down"},
  {"Corriger", "Correct"},
  {"Corriger une phrase", "Correct a sentence"},
  {"Erreur ? Redemander", "Wrong? Ask again"},
  {"Qu'est-ce qui ne va pas ? (facultatif)", "What's wrong? (optional)"},
  {"La réponse est fausse : elle est oubliée (termes compris) et l'IA recommence avec un modèle plus solide.", "The answer is wrong: it has been discarded (terms included) and the AI is trying again with a stronger model."},
  {"Plus petits morceaux", "Smallest pieces"},
  {"Garder ce morceau dans mes mots", "Keep this piece in my words"},

  // AI usage
  {"Ce que tu consommes (estimation)", "What you use (estimate)"},
  {"IA aujourd'hui", "AI today"},
  {"IA ce mois-ci", "AI this month"},
  {"IA le mois dernier", "AI last month"},
  {"Calculé avec les prix publics des fournisseurs, à partir de ce que chaque réponse indique. Le chiffre exact est sur leur site.", "Worked out from the providers' public prices and what each answer reports. The exact figure is on their website."},
  {"rien pour l'instant", "nothing yet"},
  {"(prix fondateur)", "(founder price)"},

  // AI models
  {"Réglages → IA → Modèles", "Settings → AI → Models"},
  {"Charger la liste", "Load the list"},
  {"Liste indisponible : vérifie la clé et la connexion.", "List unavailable: check the key and the connection."},
  {"Modèle IA mis à jour :", "AI model updated:"},
  {"Ce modèle n'existe plus chez le fournisseur : choisis-en un autre dans Réglages → IA → Modèles.", "The provider no longer offers this model: choose another one in Settings → AI → Models."},

  // Kept words
  {"Garder ce mot (export CSV / Anki dans les Réglages)", "Keep this word (CSV / Anki export in Settings)"},
  {"Encore une fois : compteur +1", "Again: counter +1"},
  {"Retirer des mots enregistrés", "Remove from saved words"},
  {"sens n° %d, gardé avec cette phrase", "sense no. %d, kept with this sentence"},
  {"Je connais · À apprendre · Pas utile", "I know it · To learn · Not useful"},
  {"Je connais", "I know it"},
  {"À apprendre", "To learn"},
  {"Pas utile", "Not useful"},
  {"Un fichier de données était illisible ; une copie a été gardée :", "A data file could not be read; a copy was kept:"},

  // Review
  {"⚪ nouveau → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 acquis", "⚪ new → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 learned"},
  {"acquis", "learned"},
  {"Nouveau : pas encore relu", "New: not reviewed yet"},
  {"Niveau %d sur %d", "Level %d of %d"},
  {"jours", "days"},
  {"puis une fois par an (acquis)", "then once a year (learned)"},
  {"à relire maintenant", "review now"},
  {"Une fois par an pour vérifier · prochaine : %@", "Once a year as a check · next: %@"},
  {"Prochaine révision : %@", "Next review: %@"},
  {"%d cartes attendent les jours suivants (40 anciennes + 10 nouvelles par jour au plus).", "%d cards are waiting for the coming days (at most 40 old + 10 new a day)."},
  {"Carte révisée en avance : 3, 4 et 5 gardent sa couleur (c'est le temps entre deux bonnes réponses qui la fait monter).", "Card reviewed early: 3, 4 and 5 keep its colour (what moves it up is the time between two good answers)."},
  {"1 — raté : revient dans 10 minutes, une couleur en moins", "1 — missed: back in 10 minutes, one colour down"},
  {"2 — pas très à l'aise : revient demain, une couleur en moins", "2 — not sure: back tomorrow, one colour down"},
  {"3 — moyen : même rythme", "3 — medium: same pace"},
  {"4 — à l'aise : étape suivante", "4 — comfortable: next step"},
  {"5 — très à l'aise : deux étapes d'un coup", "5 — very comfortable: two steps at once"},

  // Settings and the diagnostic log
  {"Automatique (langue du Mac)", "Automatic (Mac language)"},
  {"Ouvrir debug.log", "Open debug.log"},
  {"Journal de diagnostic (debug.log)", "Diagnostic log (debug.log)"},
  {"Journal des 3 dernières minutes", "Log of the last 3 minutes"},
  {"Joindre ce que Vesko a fait ces 3 dernières minutes (peut contenir du texte lu à l'écran ; visible dans le mail avant l'envoi)", "Attach what Vesko did in the last 3 minutes (may include text read from the screen; you can see it in the email before sending)"},

  // The review session in a terminal
  {"Entrée : voir la réponse · q : quitter", "Enter: show the answer · q: quit"},
  {"Ta note (1 à 5) · q : quitter", "Your grade (1 to 5) · q: quit"},
  {"Rien à relire aujourd'hui.", "Nothing to review today."},
  {"Révision finie : %d cartes notées.", "Review done: %d cards graded."},
  {"%d min", "%d min"},
  {"%d j", "%d d"},
  // The local model server that stands in for the on-device model
  {"L'IA locale n'est pas disponible : lance un serveur de modèle local, ou choisis Claude ou DeepSeek dans Réglages → IA.", "The local AI isn't available: start a local model server, or choose Claude or DeepSeek in Settings → AI."},
  // The settings window
  {"Réglages", "Settings"},
  {"Langues", "Languages"},
  {"IA", "AI"},
  {"Mots", "Words"},
  {"Journal", "Log"},
  {"Réglage non enregistré :", "Setting not saved:"},
  {"Réglage inconnu.", "Unknown setting."},
  {"Valeur d'un autre type que celui du réglage.", "The value is not of the setting's type."},
  {"settings.json est illisible : il est laissé tel quel et rien n'est enregistré.", "settings.json can't be read: it is left as it is and nothing is saved."},
  {"settings.json ne peut pas être écrit.", "settings.json can't be written."},
  {"Tes langues", "Your languages"},
  {"Chinois", "Chinese"},
  {"Japonais", "Japanese"},
  {"Thaï", "Thai"},
  {"Français", "French"},
  {"Anglais", "English"},
  {"Russe", "Russian"},
  {"Polonais", "Polish"},
  {"Pas étudiée", "Not studied"},
  {"Langue prioritaire", "Preferred language"},
  {"Mot en alphabet latin (français et anglais étudiés)", "Latin-script word (French and English both studied)"},
  {"Caractères chinois seuls (chinois et japonais étudiés)", "Chinese characters only (Chinese and Japanese both studied)"},
  {"Lecture", "Reading"},
  {"Touche à maintenir", "Key to hold"},
  {"Alt", "Alt"},
  {"Ctrl", "Ctrl"},
  {"Maj", "Shift"},
  {"Super", "Super"},
  {"Délai avant lecture", "Delay before reading"},
  {"Langue de l'interface", "Interface language"},
  {"Fournisseur", "Provider"},
  {"IA utilisée", "AI in use"},
  {"IA de secours", "Backup AI"},
  {"Aucune", "None"},
  {"En Chine, demander d'abord l'IA de secours", "In China, ask the backup AI first"},
  {"Adresse du serveur de modèle local", "Local model server address"},
  {"L'adresse commence par http:// ou https://.", "The address starts with http:// or https://."},
  {"Il manque le nom du serveur, par exemple http://127.0.0.1:11434/v1.", "The server name is missing, for example http://127.0.0.1:11434/v1."},
  {"Clés", "Keys"},
  {"Colle ta clé ici", "Paste your key here"},
  {"Enregistrer", "Save"},
  {"Effacer", "Clear"},
  {"Un moment…", "One moment…"},
  {"Clé enregistrée dans le trousseau.", "Key saved in the keyring."},
  {"Clé lue dans la variable d'environnement %@.", "Key read from the environment variable %@."},
  {"Pas de clé.", "No key."},
  {"Le trousseau ne répond pas :", "The keyring isn't answering:"},
  {"Le trousseau n'a pas pu garder la clé :", "The keyring couldn't keep the key:"},
  {"Clé enregistrée.", "Key saved."},
  {"Clé effacée.", "Key removed."},
  {"Modèles", "Models"},
  {"Chargement…", "Loading…"},
  {"%d modèles", "%d models"},
  {"Exporter pour Anki", "Export for Anki"},
  {"Exporter en CSV…", "Export as CSV…"},
  {"Exporter en TSV…", "Export as TSV…"},
  {"Exporter les mots gardés", "Export the kept words"},
  {"Fichier CSV", "CSV file"},
  {"Fichier TSV", "TSV file"},
  {"Mots gardés : %d", "Kept words: %d"},
  {"%d mots écrits dans %@", "%d words written to %@"},
  {"Export impossible :", "Export failed:"},
  {"Dossier des données", "Data folder"},
  {"Ouvrir le dossier", "Open the folder"},
  {"Aucun programme n'a pu l'ouvrir.", "No program could open it."},
  {"debug.log n'existe pas encore : allume le journal de diagnostic, puis survole un mot.", "debug.log doesn't exist yet: switch on the diagnostic log, then hover over a word."},
  // The review window
  {"Révision", "Review"},
  {"Montrer la réponse", "Show the answer"},
  {"Réviser en avance", "Review ahead"},
  {"Espace ou Entrée : montrer la réponse", "Space or Enter: show the answer"},
  {"Touches 1 à 5 : ta note", "Keys 1 to 5: your grade"},

  // The bubble
  {"élision : « %@ » devant ce mot", "elision: “%@” before this word"},
  {"Expliquer avec l'IA", "Explain with AI"},
  {"Phrase…", "Sentence…"},
  {"Traduire", "Translate"},
  {"L'IA réfléchit…", "The AI is thinking…"},
  {"Gardé %d fois", "Kept %d times"},
  {"Redemander", "Ask again"},
  // The desktop app's status item
  {"Vesko ne joint pas le bus d'accessibilité : le texte des autres programmes reste illisible.", "Vesko can't reach the accessibility bus: other programs' text can't be read."},
  {"Lance at-spi2-core, ou ouvre une session de bureau.", "Start at-spi2-core, or log in to a desktop session."},
  {"Session Wayland : Vesko ne voit ni le pointeur ni l'écran des autres programmes.", "Wayland session: Vesko sees neither the pointer nor other programs' screens."},
  {"Ouvre une session X11 (Xorg) pour lire au survol.", "Log in to an X11 (Xorg) session to read on hover."},
  {"Alt+X est déjà pris par un autre programme.", "Alt+X is already taken by another program."},
  {"Libère Alt+X dans cet autre programme, puis relance Vesko.", "Free Alt+X in that other program, then restart Vesko."},
  {"Réglages…", "Settings…"},
  {"Révision (%d)", "Review (%d)"},
  {"Quitter Vesko", "Quit Vesko"},
  {"chargement du dictionnaire…", "loading the dictionary…"},
};
// clang-format on

}  // namespace

std::span<const LocRow> english() {
  return kRows;
}

}  // namespace vesko::loc_rows
