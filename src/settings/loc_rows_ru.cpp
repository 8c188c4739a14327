// Interface texts in Russian (informal, as the French uses tu): the French text the program shows →
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
  {"Au simple survol", "При наведении"},
  {"Avec la touche maintenue", "С зажатой клавишей"},
  {"n'est pas dans « Tes langues » : Réglages → Langues", "не входит в «Твои языки»: Настройки → Языки"},
  {"se lit en maintenant la touche", "читается только с зажатой клавишей"},
  {"activée (clic : Réglages · clic droit : menu · ⌥X : éteindre)", "включено (щелчок: Настройки · правый щелчок: меню · ⌥X: выключить)"},
  {"désactivée (clic : Réglages · clic droit : menu · ⌥X : allumer)", "выключено (щелчок: Настройки · правый щелчок: меню · ⌥X: включить)"},
  {"Vesko : autorise l'« Enregistrement de l'écran » (Réglages)", "Vesko: разреши «Запись экрана» (Настройки)"},
  {"forme du dictionnaire", "словарная форма"},
  {"nom propre (translittération probable)", "имя собственное (вероятно, транслитерация)"},

  // AI providers and the messages that stand in for an answer
  {"IA d'Apple, hors ligne", "ИИ Apple, офлайн"},
  {"IA locale, hors ligne", "Локальный ИИ, офлайн"},
  {"IA Vesko", "ИИ Vesko"},
  {"L'IA est en pause pour le moment. Réessaie plus tard.", "ИИ временно приостановлен. Попробуй позже."},
  {"Il manque la clé", "Нет ключа"},
  {"dans Réglages → IA.", "в Настройках → ИИ."},
  {"L'IA d'Apple n'est pas disponible sur ce Mac : choisis Claude ou DeepSeek dans Réglages → IA.", "ИИ Apple недоступен на этом Mac: выбери Claude или DeepSeek в Настройках → ИИ."},
  {"L'IA d'Apple n'est pas disponible.", "ИИ Apple недоступен."},
  {"Ajoute ta clé Claude dans Réglages → IA.", "Добавь свой ключ Claude в Настройках → ИИ."},
  {"Ajoute ta clé ChatGPT (OpenAI) dans Réglages → IA.", "Добавь свой ключ ChatGPT (OpenAI) в Настройках → ИИ."},
  {"Ajoute ta clé DeepSeek dans Réglages → IA.", "Добавь свой ключ DeepSeek в Настройках → ИИ."},
  {"Service injoignable. En Chine, Claude et ChatGPT sont bloqués : choisis DeepSeek dans Réglages → IA.", "Сервис недоступен. В Китае Claude и ChatGPT заблокированы: выбери DeepSeek в Настройках → ИИ."},
  {"Pas de connexion internet ou service injoignable.", "Нет подключения к интернету, или сервис недоступен."},
  {"erreur", "ошибка"},
  {"Le service a refusé la demande :", "Сервис отклонил запрос:"},
  {"%@ est surchargé en ce moment. Réessaie dans une minute, ou choisis une autre IA dans Réglages → IA.", "%@ сейчас перегружен. Попробуй через минуту или выбери другой ИИ в Настройках → ИИ."},
  {"Réponse vide.", "Пустой ответ."},
  {"IA Vesko ne répond pas pour le moment. Réessaie dans un instant.", "ИИ Vesko сейчас не отвечает. Попробуй чуть позже."},
  {"L'IA n'a pas pu répondre.", "ИИ не смог ответить."},

  // Section titles of AI answers (the parser finds them again: distinct within a language)
  {"Structure", "Структура"},
  {"Expression", "Выражение"},
  {"Termes", "Термины"},
  {"Origine", "Происхождение"},
  {"Grammaire", "Грамматика"},
  {"Nuance", "Нюанс"},
  {"Sens littéral", "Буквальный смысл"},
  {"Sens", "Смысл"},
  {"Caractères", "Иероглифы"},
  {"Famille", "Семья слов"},
  {"Ici", "Здесь"},
  {"Exemple", "Пример"},
  {"Phrase", "Предложение"},
  {"Mot", "Слово"},
  {"Morceaux", "Части"},

  // Languages named in French
  {"français", "французский"},
  {"anglais", "английский"},
  {"chinois simplifié", "упрощённый китайский"},
  {"chinois traditionnel (Taïwan)", "традиционный китайский (Тайвань)"},
  {"russe", "русский"},
  {"polonais", "польский"},
  {"thaï", "тайский"},
  {"japonais", "японский"},

  // The popup's AI actions
  {"C'est quoi ?", "Что это?"},
  {"Synonymes et contraires", "Синонимы и антонимы"},
  {"Décortiquer", "Разобрать"},
  {"Corriger", "Исправить"},
  {"Corriger une phrase", "Исправить предложение"},
  {"Erreur ? Redemander", "Ошибка? Спросить снова"},
  {"Qu'est-ce qui ne va pas ? (facultatif)", "Что не так? (необязательно)"},
  {"La réponse est fausse : elle est oubliée (termes compris) et l'IA recommence avec un modèle plus solide.", "Ответ неверный: он удалён (вместе с терминами), и ИИ отвечает заново на более сильной модели."},
  {"Plus petits morceaux", "Мельчайшие части"},
  {"Garder ce morceau dans mes mots", "Сохранить эту часть в мои слова"},

  // AI usage
  {"Ce que tu consommes (estimation)", "Твой расход (оценка)"},
  {"IA aujourd'hui", "ИИ сегодня"},
  {"IA ce mois-ci", "ИИ в этом месяце"},
  {"IA le mois dernier", "ИИ в прошлом месяце"},
  {"Calculé avec les prix publics des fournisseurs, à partir de ce que chaque réponse indique. Le chiffre exact est sur leur site.", "Рассчитано по открытым ценам провайдеров на основе данных каждого ответа. Точная сумма — на их сайте."},
  {"rien pour l'instant", "пока ничего"},
  {"(prix fondateur)", "(цена для первых пользователей)"},

  // AI models
  {"Réglages → IA → Modèles", "Настройки → ИИ → Модели"},
  {"Charger la liste", "Загрузить список"},
  {"Liste indisponible : vérifie la clé et la connexion.", "Список недоступен: проверь ключ и подключение."},
  {"Modèle IA mis à jour :", "Модель ИИ обновлена:"},
  {"Ce modèle n'existe plus chez le fournisseur : choisis-en un autre dans Réglages → IA → Modèles.", "Провайдер больше не предлагает эту модель: выбери другую в Настройках → ИИ → Модели."},

  // Kept words
  {"Garder ce mot (export CSV / Anki dans les Réglages)", "Сохранить слово (экспорт в CSV / Anki — в Настройках)"},
  {"Encore une fois : compteur +1", "Ещё раз: счётчик +1"},
  {"Retirer des mots enregistrés", "Убрать из сохранённых слов"},
  {"sens n° %d, gardé avec cette phrase", "значение № %d, сохранено с этим предложением"},
  {"Je connais · À apprendre · Pas utile", "Знаю · Учить · Не нужно"},
  {"Je connais", "Знаю"},
  {"À apprendre", "Учить"},
  {"Pas utile", "Не нужно"},
  {"Un fichier de données était illisible ; une copie a été gardée :", "Не удалось прочитать файл данных; его копия сохранена:"},

  // Review
  {"⚪ nouveau → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 acquis", "⚪ новое → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 выучено"},
  {"acquis", "выучено"},
  {"Nouveau : pas encore relu", "Новое: ещё не повторялось"},
  {"Niveau %d sur %d", "Уровень %d из %d"},
  {"jours", "дней"},
  {"puis une fois par an (acquis)", "затем раз в год (выучено)"},
  {"à relire maintenant", "повторить сейчас"},
  {"Une fois par an pour vérifier · prochaine : %@", "Раз в год для проверки · следующая: %@"},
  {"Prochaine révision : %@", "Следующее повторение: %@"},
  {"%d cartes attendent les jours suivants (40 anciennes + 10 nouvelles par jour au plus).", "Карточек на следующие дни: %d (в день — не больше 40 старых и 10 новых)."},
  {"Carte révisée en avance : 3, 4 et 5 gardent sa couleur (c'est le temps entre deux bonnes réponses qui la fait monter).", "Карточка повторена досрочно: 3, 4 и 5 не меняют её цвет (цвет растёт за счёт времени между двумя верными ответами)."},
  {"1 — raté : revient dans 10 minutes, une couleur en moins", "1 — мимо: вернётся через 10 минут, на цвет ниже"},
  {"2 — pas très à l'aise : revient demain, une couleur en moins", "2 — неуверенно: вернётся завтра, на цвет ниже"},
  {"3 — moyen : même rythme", "3 — средне: тот же темп"},
  {"4 — à l'aise : étape suivante", "4 — уверенно: следующий шаг"},
  {"5 — très à l'aise : deux étapes d'un coup", "5 — очень уверенно: сразу два шага"},

  // Settings and the diagnostic log
  {"Automatique (langue du Mac)", "Автоматически (язык Mac)"},
  {"Ouvrir debug.log", "Открыть debug.log"},
  {"Journal de diagnostic (debug.log)", "Журнал диагностики (debug.log)"},
  {"Journal des 3 dernières minutes", "Журнал за последние 3 минуты"},
  {"Joindre ce que Vesko a fait ces 3 dernières minutes (peut contenir du texte lu à l'écran ; visible dans le mail avant l'envoi)", "Приложить то, что Vesko делал последние 3 минуты (может содержать текст, прочитанный с экрана; его видно в письме до отправки)"},

  // The review session in a terminal
  {"Entrée : voir la réponse · q : quitter", "Enter: показать ответ · q: выйти"},
  {"Ta note (1 à 5) · q : quitter", "Твоя оценка (от 1 до 5) · q: выйти"},
  {"Rien à relire aujourd'hui.", "Сегодня повторять нечего."},
  {"Révision finie : %d cartes notées.", "Повторение окончено: оценено карточек: %d."},
  {"%d min", "%d мин"},
  {"%d j", "%d дн."},
  // The local model server that stands in for the on-device model
  {"L'IA locale n'est pas disponible : lance un serveur de modèle local, ou choisis Claude ou DeepSeek dans Réglages → IA.", "Локальный ИИ недоступен: запусти локальный сервер модели или выбери Claude или DeepSeek в Настройках → ИИ."},
  // The settings window
  {"Réglages", "Настройки"},
  {"Langues", "Языки"},
  {"IA", "ИИ"},
  {"Mots", "Слова"},
  {"Journal", "Журнал"},
  {"Réglage non enregistré :", "Настройка не сохранена:"},
  {"Réglage inconnu.", "Неизвестная настройка."},
  {"Valeur d'un autre type que celui du réglage.", "Значение не того типа, что у настройки."},
  {"settings.json est illisible : il est laissé tel quel et rien n'est enregistré.", "settings.json не читается: он остаётся как есть, и ничего не сохраняется."},
  {"settings.json ne peut pas être écrit.", "Не удаётся записать settings.json."},
  {"Tes langues", "Твои языки"},
  {"Chinois", "Китайский"},
  {"Japonais", "Японский"},
  {"Thaï", "Тайский"},
  {"Français", "Французский"},
  {"Anglais", "Английский"},
  {"Russe", "Русский"},
  {"Polonais", "Польский"},
  {"Pas étudiée", "Не изучаю"},
  {"Langue prioritaire", "Приоритетный язык"},
  {"Mot en alphabet latin (français et anglais étudiés)", "Слово латиницей (изучаются французский и английский)"},
  {"Caractères chinois seuls (chinois et japonais étudiés)", "Только китайские иероглифы (изучаются китайский и японский)"},
  {"Lecture", "Чтение"},
  {"Touche à maintenir", "Клавиша, которую держать"},
  {"Alt", "Alt"},
  {"Ctrl", "Ctrl"},
  {"Maj", "Shift"},
  {"Super", "Super"},
  {"Délai avant lecture", "Задержка перед чтением"},
  {"Langue de l'interface", "Язык интерфейса"},
  {"Fournisseur", "Поставщик"},
  {"IA utilisée", "Используемый ИИ"},
  {"IA de secours", "Запасной ИИ"},
  {"Aucune", "Нет"},
  {"En Chine, demander d'abord l'IA de secours", "В Китае сначала спрашивать запасной ИИ"},
  {"Adresse du serveur de modèle local", "Адрес локального сервера модели"},
  {"L'adresse commence par http:// ou https://.", "Адрес начинается с http:// или https://."},
  {"Il manque le nom du serveur, par exemple http://127.0.0.1:11434/v1.", "Не хватает имени сервера, например http://127.0.0.1:11434/v1."},
  {"Clés", "Ключи"},
  {"Colle ta clé ici", "Вставь сюда свой ключ"},
  {"Enregistrer", "Сохранить"},
  {"Effacer", "Удалить"},
  {"Un moment…", "Минутку…"},
  {"Clé enregistrée dans le trousseau.", "Ключ сохранён в связке ключей."},
  {"Clé lue dans la variable d'environnement %@.", "Ключ взят из переменной окружения %@."},
  {"Pas de clé.", "Ключа нет."},
  {"Le trousseau ne répond pas :", "Связка ключей не отвечает:"},
  {"Le trousseau n'a pas pu garder la clé :", "Связка ключей не смогла сохранить ключ:"},
  {"Clé enregistrée.", "Ключ сохранён."},
  {"Clé effacée.", "Ключ удалён."},
  {"Modèles", "Модели"},
  {"Chargement…", "Загрузка…"},
  {"%d modèles", "Моделей: %d"},
  {"Exporter pour Anki", "Экспорт для Anki"},
  {"Exporter en CSV…", "Экспорт в CSV…"},
  {"Exporter en TSV…", "Экспорт в TSV…"},
  {"Exporter les mots gardés", "Экспорт сохранённых слов"},
  {"Fichier CSV", "Файл CSV"},
  {"Fichier TSV", "Файл TSV"},
  {"Mots gardés : %d", "Сохранённых слов: %d"},
  {"%d mots écrits dans %@", "Записано слов: %d, файл %@"},
  {"Export impossible :", "Экспорт не удался:"},
  {"Dossier des données", "Папка данных"},
  {"Ouvrir le dossier", "Открыть папку"},
  {"Aucun programme n'a pu l'ouvrir.", "Ни одна программа не смогла это открыть."},
  {"debug.log n'existe pas encore : allume le journal de diagnostic, puis survole un mot.", "debug.log ещё не существует: включи диагностический журнал и наведи указатель на слово."},
  // The review window
  {"Révision", "Повторение"},
  {"Montrer la réponse", "Показать ответ"},
  {"Réviser en avance", "Повторить заранее"},
  {"Espace ou Entrée : montrer la réponse", "Пробел или Enter: показать ответ"},
  {"Touches 1 à 5 : ta note", "Клавиши от 1 до 5: твоя оценка"},

  // The bubble
  {"élision : « %@ » devant ce mot", "элизия: «%@» перед этим словом"},
  {"Expliquer avec l'IA", "Объяснить с помощью ИИ"},
  {"Phrase…", "Предложение…"},
  {"Traduire", "Перевести"},
  {"L'IA réfléchit…", "ИИ думает…"},
  {"Gardé %d fois", "Сохранено раз: %d"},
  {"Redemander", "Спросить снова"},
  // The desktop app's status item
  {"Vesko ne joint pas le bus d'accessibilité : le texte des autres programmes reste illisible.", "Vesko не может подключиться к шине специальных возможностей: текст других программ не читается."},
  {"Lance at-spi2-core, ou ouvre une session de bureau.", "Запусти at-spi2-core или войди в сеанс рабочего стола."},
  {"Session Wayland : Vesko ne voit ni le pointeur ni l'écran des autres programmes.", "Сеанс Wayland: Vesko не видит ни указатель, ни экран других программ."},
  {"Ouvre une session X11 (Xorg) pour lire au survol.", "Войди в сеанс X11 (Xorg), чтобы читать при наведении."},
  {"Alt+X est déjà pris par un autre programme.", "Alt+X уже занято другой программой."},
  {"Libère Alt+X dans cet autre programme, puis relance Vesko.", "Освободи Alt+X в той программе, затем перезапусти Vesko."},
  {"Réglages…", "Настройки…"},
  {"Révision (%d)", "Повторение (%d)"},
  {"Quitter Vesko", "Выйти из Vesko"},
  {"chargement du dictionnaire…", "загрузка словаря…"},
};
// clang-format on

}  // namespace

std::span<const LocRow> russian() {
  return kRows;
}

}  // namespace vesko::loc_rows
