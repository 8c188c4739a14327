// Interface texts in Polish (informal, as the French uses tu): the French text the program shows →
// its translation. One row per text; every table has a row for every text, with the same
// placeholders
// (%d, %@, %%). tests/settings/loc_table_test.cpp checks both, and that every text the
// code hands to Loc::t has a row.

#include "settings/loc_rows.h"

namespace vesko::loc_rows {
namespace {

// clang-format off
constexpr LocRow kRows[] = {
  // The hover, the status item and the word chooser
  {"Au simple survol", "Po najechaniu kursorem"},
  {"Avec la touche maintenue", "Z przytrzymanym klawiszem"},
  {"n'est pas dans « Tes langues » : Réglages → Langues", "nie jest na liście „Twoje języki”: Ustawienia → Języki"},
  {"se lit en maintenant la touche", "jest czytany tylko z przytrzymanym klawiszem"},
  {"activée (clic : Réglages · clic droit : menu · ⌥X : éteindre)", "włączony (klik: Ustawienia · prawy klik: menu · ⌥X: wyłącz)"},
  {"désactivée (clic : Réglages · clic droit : menu · ⌥X : allumer)", "wyłączony (klik: Ustawienia · prawy klik: menu · ⌥X: włącz)"},
  {"Vesko : autorise l'« Enregistrement de l'écran » (Réglages)", "Vesko: zezwól na „Nagrywanie ekranu” (Ustawienia)"},
  {"forme du dictionnaire", "forma słownikowa"},
  {"nom propre (translittération probable)", "nazwa własna (prawdopodobnie transliteracja)"},

  // AI providers and the messages that stand in for an answer
  {"IA d'Apple, hors ligne", "AI Apple, offline"},
  {"IA locale, hors ligne", "Lokalna AI, offline"},
  {"IA Vesko", "AI Vesko"},
  {"L'IA est en pause pour le moment. Réessaie plus tard.", "AI jest chwilowo wstrzymana. Spróbuj później."},
  {"Il manque la clé", "Brakuje klucza"},
  {"dans Réglages → IA.", "w Ustawieniach → AI."},
  {"L'IA d'Apple n'est pas disponible sur ce Mac : choisis Claude ou DeepSeek dans Réglages → IA.", "AI Apple nie jest dostępna na tym Macu: wybierz Claude lub DeepSeek w Ustawieniach → AI."},
  {"L'IA d'Apple n'est pas disponible.", "AI Apple jest niedostępna."},
  {"Ajoute ta clé Claude dans Réglages → IA.", "Dodaj swój klucz Claude w Ustawieniach → AI."},
  {"Ajoute ta clé ChatGPT (OpenAI) dans Réglages → IA.", "Dodaj swój klucz ChatGPT (OpenAI) w Ustawieniach → AI."},
  {"Ajoute ta clé DeepSeek dans Réglages → IA.", "Dodaj swój klucz DeepSeek w Ustawieniach → AI."},
  {"Service injoignable. En Chine, Claude et ChatGPT sont bloqués : choisis DeepSeek dans Réglages → IA.", "Usługa jest nieosiągalna. W Chinach Claude i ChatGPT są zablokowane: wybierz DeepSeek w Ustawieniach → AI."},
  {"Pas de connexion internet ou service injoignable.", "Brak połączenia z internetem lub usługa jest nieosiągalna."},
  {"erreur", "błąd"},
  {"Le service a refusé la demande :", "Usługa odrzuciła żądanie:"},
  {"%@ est surchargé en ce moment. Réessaie dans une minute, ou choisis une autre IA dans Réglages → IA.", "%@ jest teraz przeciążony. Spróbuj za minutę albo wybierz inną AI w Ustawieniach → AI."},
  {"Réponse vide.", "Pusta odpowiedź."},
  {"IA Vesko ne répond pas pour le moment. Réessaie dans un instant.", "AI Vesko chwilowo nie odpowiada. Spróbuj za moment."},
  {"L'IA n'a pas pu répondre.", "AI nie mogła odpowiedzieć."},

  // Section titles of AI answers (the parser finds them again: distinct within a language)
  {"Structure", "Struktura"},
  {"Expression", "Wyrażenie"},
  {"Termes", "Terminy"},
  {"Origine", "Pochodzenie"},
  {"Grammaire", "Gramatyka"},
  {"Nuance", "Niuans"},
  {"Sens littéral", "Znaczenie dosłowne"},
  {"Sens", "Znaczenie"},
  {"Caractères", "Znaki"},
  {"Famille", "Rodzina"},
  {"Ici", "Tutaj"},
  {"Exemple", "Przykład"},
  {"Phrase", "Zdanie"},
  {"Mot", "Słowo"},
  {"Morceaux", "Części"},

  // Languages named in French
  {"français", "francuski"},
  {"anglais", "angielski"},
  {"chinois simplifié", "chiński uproszczony"},
  {"chinois traditionnel (Taïwan)", "chiński tradycyjny (Tajwan)"},
  {"russe", "rosyjski"},
  {"polonais", "polski"},
  {"thaï", "tajski"},
  {"japonais", "japoński"},

  // The popup's AI actions
  {"C'est quoi ?", "Co to jest?"},
  {"Synonymes et contraires", "Synonimy i antonimy"},
  {"Décortiquer", "Rozłóż na części"},
  {"Corriger", "Popraw"},
  {"Corriger une phrase", "Popraw zdanie"},
  {"Erreur ? Redemander", "Błąd? Zapytaj ponownie"},
  {"Qu'est-ce qui ne va pas ? (facultatif)", "Co jest nie tak? (opcjonalnie)"},
  {"La réponse est fausse : elle est oubliée (termes compris) et l'IA recommence avec un modèle plus solide.", "Odpowiedź jest błędna: została usunięta (razem z terminami), a AI próbuje ponownie z mocniejszym modelem."},
  {"Plus petits morceaux", "Najmniejsze części"},
  {"Garder ce morceau dans mes mots", "Zachowaj tę część w moich słowach"},

  // AI usage
  {"Ce que tu consommes (estimation)", "Twoje zużycie (szacunkowo)"},
  {"IA aujourd'hui", "AI dzisiaj"},
  {"IA ce mois-ci", "AI w tym miesiącu"},
  {"IA le mois dernier", "AI w zeszłym miesiącu"},
  {"Calculé avec les prix publics des fournisseurs, à partir de ce que chaque réponse indique. Le chiffre exact est sur leur site.", "Obliczone według cenników dostawców na podstawie danych z każdej odpowiedzi. Dokładna kwota jest na ich stronie."},
  {"rien pour l'instant", "na razie nic"},
  {"(prix fondateur)", "(cena dla pierwszych użytkowników)"},

  // AI models
  {"Réglages → IA → Modèles", "Ustawienia → AI → Modele"},
  {"Charger la liste", "Wczytaj listę"},
  {"Liste indisponible : vérifie la clé et la connexion.", "Lista niedostępna: sprawdź klucz i połączenie."},
  {"Modèle IA mis à jour :", "Zaktualizowano model AI:"},
  {"Ce modèle n'existe plus chez le fournisseur : choisis-en un autre dans Réglages → IA → Modèles.", "Dostawca nie oferuje już tego modelu: wybierz inny w Ustawieniach → AI → Modele."},

  // Kept words
  {"Garder ce mot (export CSV / Anki dans les Réglages)", "Zachowaj to słowo (eksport CSV / Anki w Ustawieniach)"},
  {"Encore une fois : compteur +1", "Jeszcze raz: licznik +1"},
  {"Retirer des mots enregistrés", "Usuń z zapisanych słów"},
  {"sens n° %d, gardé avec cette phrase", "znaczenie nr %d, zapisane z tym zdaniem"},
  {"Je connais · À apprendre · Pas utile", "Znam · Do nauki · Nieprzydatne"},
  {"Je connais", "Znam"},
  {"À apprendre", "Do nauki"},
  {"Pas utile", "Nieprzydatne"},
  {"Un fichier de données était illisible ; une copie a été gardée :", "Nie udało się odczytać pliku z danymi; zachowano jego kopię:"},

  // Review
  {"⚪ nouveau → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 acquis", "⚪ nowe → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 opanowane"},
  {"acquis", "opanowane"},
  {"Nouveau : pas encore relu", "Nowe: jeszcze nie powtórzone"},
  {"Niveau %d sur %d", "Poziom %d z %d"},
  {"jours", "dni"},
  {"puis une fois par an (acquis)", "potem raz w roku (opanowane)"},
  {"à relire maintenant", "powtórz teraz"},
  {"Une fois par an pour vérifier · prochaine : %@", "Raz w roku dla sprawdzenia · następna: %@"},
  {"Prochaine révision : %@", "Następna powtórka: %@"},
  {"%d cartes attendent les jours suivants (40 anciennes + 10 nouvelles par jour au plus).", "Kart czekających na kolejne dni: %d (dziennie najwyżej 40 starych + 10 nowych)."},
  {"Carte révisée en avance : 3, 4 et 5 gardent sa couleur (c'est le temps entre deux bonnes réponses qui la fait monter).", "Karta powtórzona przed czasem: 3, 4 i 5 nie zmieniają jej koloru (kolor rośnie dzięki odstępowi między dwiema dobrymi odpowiedziami)."},
  {"1 — raté : revient dans 10 minutes, une couleur en moins", "1 — źle: wraca za 10 minut, o kolor niżej"},
  {"2 — pas très à l'aise : revient demain, une couleur en moins", "2 — niepewnie: wraca jutro, o kolor niżej"},
  {"3 — moyen : même rythme", "3 — średnio: to samo tempo"},
  {"4 — à l'aise : étape suivante", "4 — dobrze: następny etap"},
  {"5 — très à l'aise : deux étapes d'un coup", "5 — bardzo dobrze: dwa etapy naraz"},

  // Settings and the diagnostic log
  {"Automatique (langue du Mac)", "Automatycznie (język Maca)"},
  {"Ouvrir debug.log", "Otwórz debug.log"},
  {"Journal de diagnostic (debug.log)", "Dziennik diagnostyczny (debug.log)"},
  {"Journal des 3 dernières minutes", "Dziennik z ostatnich 3 minut"},
  {"Joindre ce que Vesko a fait ces 3 dernières minutes (peut contenir du texte lu à l'écran ; visible dans le mail avant l'envoi)", "Dołącz to, co Vesko robił przez ostatnie 3 minuty (może zawierać tekst odczytany z ekranu; zobaczysz go w mailu przed wysłaniem)"},

  // The review session in a terminal
  {"Entrée : voir la réponse · q : quitter", "Enter: pokaż odpowiedź · q: wyjdź"},
  {"Ta note (1 à 5) · q : quitter", "Twoja ocena (od 1 do 5) · q: wyjdź"},
  {"Rien à relire aujourd'hui.", "Dziś nie ma nic do powtórki."},
  {"Révision finie : %d cartes notées.", "Powtórka skończona: ocenione karty: %d."},
  {"%d min", "%d min"},
  {"%d j", "%d dn."},
  // The local model server that stands in for the on-device model
  {"L'IA locale n'est pas disponible : lance un serveur de modèle local, ou choisis Claude ou DeepSeek dans Réglages → IA.", "Lokalna AI jest niedostępna: uruchom lokalny serwer modelu albo wybierz Claude lub DeepSeek w Ustawieniach → AI."},
  // The settings window
  {"Réglages", "Ustawienia"},
  {"Langues", "Języki"},
  {"IA", "AI"},
  {"Mots", "Słowa"},
  {"Journal", "Dziennik"},
  {"Réglage non enregistré :", "Nie zapisano ustawienia:"},
  {"Réglage inconnu.", "Nieznane ustawienie."},
  {"Valeur d'un autre type que celui du réglage.", "Wartość ma inny typ niż ustawienie."},
  {"settings.json est illisible : il est laissé tel quel et rien n'est enregistré.", "Nie można odczytać settings.json: zostaje bez zmian i nic nie jest zapisywane."},
  {"settings.json ne peut pas être écrit.", "Nie można zapisać settings.json."},
  {"Tes langues", "Twoje języki"},
  {"Chinois", "Chiński"},
  {"Japonais", "Japoński"},
  {"Thaï", "Tajski"},
  {"Français", "Francuski"},
  {"Anglais", "Angielski"},
  {"Russe", "Rosyjski"},
  {"Polonais", "Polski"},
  {"Pas étudiée", "Nie uczę się"},
  {"Langue prioritaire", "Język pierwszeństwa"},
  {"Mot en alphabet latin (français et anglais étudiés)", "Słowo w alfabecie łacińskim (uczysz się francuskiego i angielskiego)"},
  {"Caractères chinois seuls (chinois et japonais étudiés)", "Same znaki chińskie (uczysz się chińskiego i japońskiego)"},
  {"Lecture", "Czytanie"},
  {"Touche à maintenir", "Klawisz do przytrzymania"},
  {"Alt", "Alt"},
  {"Ctrl", "Ctrl"},
  {"Maj", "Shift"},
  {"Super", "Super"},
  {"Délai avant lecture", "Opóźnienie przed odczytem"},
  {"Langue de l'interface", "Język interfejsu"},
  {"Fournisseur", "Dostawca"},
  {"IA utilisée", "Używana AI"},
  {"IA de secours", "Zapasowa AI"},
  {"Aucune", "Brak"},
  {"En Chine, demander d'abord l'IA de secours", "W Chinach najpierw pytaj zapasową AI"},
  {"Adresse du serveur de modèle local", "Adres lokalnego serwera modelu"},
  {"L'adresse commence par http:// ou https://.", "Adres zaczyna się od http:// lub https://."},
  {"Il manque le nom du serveur, par exemple http://127.0.0.1:11434/v1.", "Brakuje nazwy serwera, na przykład http://127.0.0.1:11434/v1."},
  {"Clés", "Klucze"},
  {"Colle ta clé ici", "Wklej tutaj swój klucz"},
  {"Enregistrer", "Zapisz"},
  {"Effacer", "Usuń"},
  {"Un moment…", "Chwileczkę…"},
  {"Clé enregistrée dans le trousseau.", "Klucz zapisany w pęku kluczy."},
  {"Clé lue dans la variable d'environnement %@.", "Klucz odczytany ze zmiennej środowiskowej %@."},
  {"Pas de clé.", "Brak klucza."},
  {"Le trousseau ne répond pas :", "Pęk kluczy nie odpowiada:"},
  {"Le trousseau n'a pas pu garder la clé :", "Pęk kluczy nie mógł zachować klucza:"},
  {"Clé enregistrée.", "Klucz zapisany."},
  {"Clé effacée.", "Klucz usunięty."},
  {"Modèles", "Modele"},
  {"Chargement…", "Wczytywanie…"},
  {"%d modèles", "Modele: %d"},
  {"Exporter pour Anki", "Eksport do Anki"},
  {"Exporter en CSV…", "Eksportuj jako CSV…"},
  {"Exporter en TSV…", "Eksportuj jako TSV…"},
  {"Exporter les mots gardés", "Eksportuj zachowane słowa"},
  {"Fichier CSV", "Plik CSV"},
  {"Fichier TSV", "Plik TSV"},
  {"Mots gardés : %d", "Zachowane słowa: %d"},
  {"%d mots écrits dans %@", "Zapisano słowa (%d) w %@"},
  {"Export impossible :", "Eksport nieudany:"},
  {"Dossier des données", "Folder danych"},
  {"Ouvrir le dossier", "Otwórz folder"},
  {"Aucun programme n'a pu l'ouvrir.", "Żaden program nie mógł tego otworzyć."},
  {"debug.log n'existe pas encore : allume le journal de diagnostic, puis survole un mot.", "debug.log jeszcze nie istnieje: włącz dziennik diagnostyczny, a potem najedź na słowo."},
  // The review window
  {"Révision", "Powtórka"},
  {"Montrer la réponse", "Pokaż odpowiedź"},
  {"Réviser en avance", "Powtórz z wyprzedzeniem"},
  {"Espace ou Entrée : montrer la réponse", "Spacja lub Enter: pokaż odpowiedź"},
  {"Touches 1 à 5 : ta note", "Klawisze od 1 do 5: twoja ocena"},

  // The bubble
  {"élision : « %@ » devant ce mot", "elizja: „%@” przed tym słowem"},
  {"Expliquer avec l'IA", "Wyjaśnij z AI"},
  {"Phrase…", "Zdanie…"},
  {"Traduire", "Przetłumacz"},
  {"L'IA réfléchit…", "AI myśli…"},
  {"Gardé %d fois", "Zachowane %d razy"},
  {"Redemander", "Zapytaj ponownie"},
  // The desktop app's status item
  {"Vesko ne joint pas le bus d'accessibilité : le texte des autres programmes reste illisible.", "Vesko nie łączy się z magistralą dostępności: tekstu innych programów nie da się odczytać."},
  {"Lance at-spi2-core, ou ouvre une session de bureau.", "Uruchom at-spi2-core albo zaloguj się do sesji pulpitu."},
  {"Session Wayland : Vesko ne voit ni le pointeur ni l'écran des autres programmes.", "Sesja Wayland: Vesko nie widzi ani wskaźnika, ani ekranu innych programów."},
  {"Ouvre une session X11 (Xorg) pour lire au survol.", "Zaloguj się do sesji X11 (Xorg), aby czytać po najechaniu kursorem."},
  {"Alt+X est déjà pris par un autre programme.", "Alt+X jest już zajęty przez inny program."},
  {"Libère Alt+X dans cet autre programme, puis relance Vesko.", "Zwolnij Alt+X w tamtym programie, a potem uruchom Vesko ponownie."},
  {"Réglages…", "Ustawienia…"},
  {"Révision (%d)", "Powtórka (%d)"},
  {"Quitter Vesko", "Zamknij Vesko"},
  {"chargement du dictionnaire…", "wczytywanie słownika…"},
};
// clang-format on

}  // namespace

std::span<const LocRow> polish() {
  return kRows;
}

}  // namespace vesko::loc_rows
