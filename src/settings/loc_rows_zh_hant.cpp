// Interface texts in Traditional Chinese (Taiwan usage): the French text the program shows → its
// translation. One row per text; every table has a row for every text, with the same placeholders
// (%d, %@, %%). tests/settings/loc_table_test.cpp checks both, and that every text the
// code hands to Loc::t has a row.

#include "settings/loc_rows.h"

namespace vesko::loc_rows {
namespace {

// clang-format off
constexpr LocRow kRows[] = {
  // The hover, the status item and the word chooser
  {"Au simple survol", "滑鼠停留即讀取"},
  {"Avec la touche maintenue", "按住按鍵時讀取"},
  {"n'est pas dans « Tes langues » : Réglages → Langues", "不在「我的語言」中：設定 → 語言"},
  {"se lit en maintenant la touche", "按住按鍵時才會讀取"},
  {"activée (clic : Réglages · clic droit : menu · ⌥X : éteindre)", "已開啟（按一下：設定 · 按右鍵：選單 · ⌥X：關閉）"},
  {"désactivée (clic : Réglages · clic droit : menu · ⌥X : allumer)", "已關閉（按一下：設定 · 按右鍵：選單 · ⌥X：開啟）"},
  {"Vesko : autorise l'« Enregistrement de l'écran » (Réglages)", "Vesko：請允許「螢幕錄影」（設定）"},
  {"forme du dictionnaire", "辭書形"},
  {"nom propre (translittération probable)", "專有名詞（可能是音譯）"},

  // AI providers and the messages that stand in for an answer
  {"IA d'Apple, hors ligne", "Apple 的 AI（離線）"},
  {"IA locale, hors ligne", "本機 AI（離線）"},
  {"IA Vesko", "Vesko AI"},
  {"L'IA est en pause pour le moment. Réessaie plus tard.", "AI 暫時停用，請稍後再試。"},
  {"Il manque la clé", "缺少"},
  {"dans Réglages → IA.", "金鑰（設定 → AI）。"},
  {"L'IA d'Apple n'est pas disponible sur ce Mac : choisis Claude ou DeepSeek dans Réglages → IA.", "這台 Mac 無法使用 Apple 的 AI：請在設定 → AI 中選擇 Claude 或 DeepSeek。"},
  {"L'IA d'Apple n'est pas disponible.", "無法使用 Apple 的 AI。"},
  {"Ajoute ta clé Claude dans Réglages → IA.", "請在設定 → AI 中加入你的 Claude 金鑰。"},
  {"Ajoute ta clé ChatGPT (OpenAI) dans Réglages → IA.", "請在設定 → AI 中加入你的 ChatGPT（OpenAI）金鑰。"},
  {"Ajoute ta clé DeepSeek dans Réglages → IA.", "請在設定 → AI 中加入你的 DeepSeek 金鑰。"},
  {"Service injoignable. En Chine, Claude et ChatGPT sont bloqués : choisis DeepSeek dans Réglages → IA.", "無法連線到服務。在中國大陸，Claude 和 ChatGPT 無法使用：請在設定 → AI 中選擇 DeepSeek。"},
  {"Pas de connexion internet ou service injoignable.", "沒有網路連線，或無法連線到服務。"},
  {"erreur", "錯誤"},
  {"Le service a refusé la demande :", "服務拒絕了請求："},
  {"%@ est surchargé en ce moment. Réessaie dans une minute, ou choisis une autre IA dans Réglages → IA.", "%@ 目前負載過高。請一分鐘後再試，或在設定 → AI 中換一個 AI。"},
  {"Réponse vide.", "回答是空的。"},
  {"IA Vesko ne répond pas pour le moment. Réessaie dans un instant.", "Vesko AI 暫時沒有回應，請稍後再試。"},
  {"L'IA n'a pas pu répondre.", "AI 未能給出回答。"},

  // Section titles of AI answers (the parser finds them again: distinct within a language)
  {"Structure", "結構"},
  {"Expression", "表達"},
  {"Termes", "詞彙"},
  {"Origine", "來源"},
  {"Grammaire", "文法"},
  {"Nuance", "細微差別"},
  {"Sens littéral", "字面意思"},
  {"Sens", "意思"},
  {"Caractères", "逐字"},
  {"Famille", "同族詞"},
  {"Ici", "此處"},
  {"Exemple", "例句"},
  {"Phrase", "句子"},
  {"Mot", "詞"},
  {"Morceaux", "拆解"},

  // Languages named in French
  {"français", "法語"},
  {"anglais", "英語"},
  {"chinois simplifié", "簡體中文"},
  {"chinois traditionnel (Taïwan)", "繁體中文（台灣）"},
  {"russe", "俄語"},
  {"polonais", "波蘭語"},
  {"thaï", "泰語"},
  {"japonais", "日語"},

  // The popup's AI actions
  {"C'est quoi ?", "這是什麼？"},
  {"Synonymes et contraires", "近義詞和反義詞"},
  {"Décortiquer", "解析"},
  {"Corriger", "訂正"},
  {"Corriger une phrase", "訂正句子"},
  {"Erreur ? Redemander", "有誤？重新提問"},
  {"Qu'est-ce qui ne va pas ? (facultatif)", "哪裡不對？（選填）"},
  {"La réponse est fausse : elle est oubliée (termes compris) et l'IA recommence avec un modèle plus solide.", "回答有誤：已將它連同其中的詞彙一起刪除，AI 正在用更強的模型重新回答。"},
  {"Plus petits morceaux", "最小組成部分"},
  {"Garder ce morceau dans mes mots", "把這部分加入我的生詞"},

  // AI usage
  {"Ce que tu consommes (estimation)", "你的用量（估算）"},
  {"IA aujourd'hui", "今天的 AI 用量"},
  {"IA ce mois-ci", "本月的 AI 用量"},
  {"IA le mois dernier", "上個月的 AI 用量"},
  {"Calculé avec les prix publics des fournisseurs, à partir de ce que chaque réponse indique. Le chiffre exact est sur leur site.", "依各服務商公開的價格、根據每次回答回報的用量計算。確切數字以其官網為準。"},
  {"rien pour l'instant", "目前沒有"},
  {"(prix fondateur)", "（首批用戶價）"},

  // AI models
  {"Réglages → IA → Modèles", "設定 → AI → 模型"},
  {"Charger la liste", "載入清單"},
  {"Liste indisponible : vérifie la clé et la connexion.", "無法取得清單：請檢查金鑰和網路連線。"},
  {"Modèle IA mis à jour :", "AI 模型已更新："},
  {"Ce modèle n'existe plus chez le fournisseur : choisis-en un autre dans Réglages → IA → Modèles.", "服務商已不再提供此模型：請在設定 → AI → 模型中另選一個。"},

  // Kept words
  {"Garder ce mot (export CSV / Anki dans les Réglages)", "收藏這個詞（可在設定中匯出 CSV / Anki）"},
  {"Encore une fois : compteur +1", "又遇到了：計數 +1"},
  {"Retirer des mots enregistrés", "從收藏的詞中移除"},
  {"sens n° %d, gardé avec cette phrase", "第 %d 個義項，與這個句子一起儲存"},
  {"Je connais · À apprendre · Pas utile", "已認識 · 要學 · 不需要"},
  {"Je connais", "已認識"},
  {"À apprendre", "要學"},
  {"Pas utile", "不需要"},
  {"Un fichier de données était illisible ; une copie a été gardée :", "有一個資料檔無法讀取，已保留一份副本："},

  // Review
  {"⚪ nouveau → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 acquis", "⚪ 新詞 → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 已掌握"},
  {"acquis", "已掌握"},
  {"Nouveau : pas encore relu", "新詞：尚未複習"},
  {"Niveau %d sur %d", "第 %d 級（共 %d 級）"},
  {"jours", "天"},
  {"puis une fois par an (acquis)", "之後每年一次（已掌握）"},
  {"à relire maintenant", "現在複習"},
  {"Une fois par an pour vérifier · prochaine : %@", "每年複查一次 · 下次：%@"},
  {"Prochaine révision : %@", "下次複習：%@"},
  {"%d cartes attendent les jours suivants (40 anciennes + 10 nouvelles par jour au plus).", "還有 %d 張卡片留到之後幾天（每天最多 40 張舊卡 + 10 張新卡）。"},
  {"Carte révisée en avance : 3, 4 et 5 gardent sa couleur (c'est le temps entre deux bonnes réponses qui la fait monter).", "這張卡片是提前複習的：3、4、5 分都不會改變顏色（顏色靠兩次答對之間的間隔來提升）。"},
  {"1 — raté : revient dans 10 minutes, une couleur en moins", "1 — 沒答對：10 分鐘後再出現，降一個顏色"},
  {"2 — pas très à l'aise : revient demain, une couleur en moins", "2 — 不太熟：明天再出現，降一個顏色"},
  {"3 — moyen : même rythme", "3 — 普通：節奏不變"},
  {"4 — à l'aise : étape suivante", "4 — 熟練：升一級"},
  {"5 — très à l'aise : deux étapes d'un coup", "5 — 非常熟練：一次升兩級"},

  // Settings and the diagnostic log
  {"Automatique (langue du Mac)", "自動（跟隨 Mac 的語言）"},
  {"Ouvrir debug.log", "打開 debug.log"},
  {"Journal de diagnostic (debug.log)", "診斷記錄（debug.log）"},
  {"Journal des 3 dernières minutes", "最近 3 分鐘的記錄"},
  {"Joindre ce que Vesko a fait ces 3 dernières minutes (peut contenir du texte lu à l'écran ; visible dans le mail avant l'envoi)", "附上 Vesko 最近 3 分鐘的操作記錄（可能包含從螢幕上讀取的文字；寄出前可在郵件中查看）"},

  // The review session in a terminal
  {"Entrée : voir la réponse · q : quitter", "Enter：顯示答案 · q：離開"},
  {"Ta note (1 à 5) · q : quitter", "你的評分（1 到 5）· q：離開"},
  {"Rien à relire aujourd'hui.", "今天沒有要複習的內容。"},
  {"Révision finie : %d cartes notées.", "複習結束：已評分 %d 張卡片。"},
  {"%d min", "%d 分鐘"},
  {"%d j", "%d 天"},
  // The local model server that stands in for the on-device model
  {"L'IA locale n'est pas disponible : lance un serveur de modèle local, ou choisis Claude ou DeepSeek dans Réglages → IA.", "本機 AI 無法使用：請啟動本機模型伺服器，或在設定 → AI 中選擇 Claude 或 DeepSeek。"},
  // The settings window
  {"Réglages", "設定"},
  {"Langues", "語言"},
  {"IA", "AI"},
  {"Mots", "單字"},
  {"Journal", "日誌"},
  {"Réglage non enregistré :", "設定未儲存："},
  {"Réglage inconnu.", "未知的設定。"},
  {"Valeur d'un autre type que celui du réglage.", "值的類型與該設定不符。"},
  {"settings.json est illisible : il est laissé tel quel et rien n'est enregistré.", "無法讀取 settings.json：檔案保持原樣，不儲存任何內容。"},
  {"settings.json ne peut pas être écrit.", "無法寫入 settings.json。"},
  {"Tes langues", "你的語言"},
  {"Chinois", "中文"},
  {"Japonais", "日語"},
  {"Thaï", "泰語"},
  {"Français", "法語"},
  {"Anglais", "英語"},
  {"Russe", "俄語"},
  {"Polonais", "波蘭語"},
  {"Pas étudiée", "不學習"},
  {"Langue prioritaire", "優先語言"},
  {"Mot en alphabet latin (français et anglais étudiés)", "拉丁字母的詞（同時學習法語和英語）"},
  {"Caractères chinois seuls (chinois et japonais étudiés)", "只有漢字（同時學習中文和日語）"},
  {"Lecture", "讀取"},
  {"Touche à maintenir", "需按住的鍵"},
  {"Alt", "Alt"},
  {"Ctrl", "Ctrl"},
  {"Maj", "Shift"},
  {"Super", "Super"},
  {"Délai avant lecture", "讀取前的等待"},
  {"Langue de l'interface", "介面語言"},
  {"Fournisseur", "服務商"},
  {"IA utilisée", "使用的 AI"},
  {"IA de secours", "備用 AI"},
  {"Aucune", "無"},
  {"En Chine, demander d'abord l'IA de secours", "在中國時先問備用 AI"},
  {"Adresse du serveur de modèle local", "本機模型伺服器位址"},
  {"L'adresse commence par http:// ou https://.", "位址以 http:// 或 https:// 開頭。"},
  {"Il manque le nom du serveur, par exemple http://127.0.0.1:11434/v1.", "缺少伺服器名稱，例如 http://127.0.0.1:11434/v1。"},
  {"Clés", "金鑰"},
  {"Colle ta clé ici", "在此貼上你的金鑰"},
  {"Enregistrer", "儲存"},
  {"Effacer", "清除"},
  {"Un moment…", "請稍候…"},
  {"Clé enregistrée dans le trousseau.", "金鑰已儲存在鑰匙圈中。"},
  {"Clé lue dans la variable d'environnement %@.", "金鑰讀取自環境變數 %@。"},
  {"Pas de clé.", "沒有金鑰。"},
  {"Le trousseau ne répond pas :", "鑰匙圈沒有回應："},
  {"Le trousseau n'a pas pu garder la clé :", "鑰匙圈無法儲存金鑰："},
  {"Clé enregistrée.", "金鑰已儲存。"},
  {"Clé effacée.", "金鑰已清除。"},
  {"Modèles", "模型"},
  {"Chargement…", "載入中…"},
  {"%d modèles", "%d 個模型"},
  {"Exporter pour Anki", "匯出到 Anki"},
  {"Exporter en CSV…", "匯出為 CSV…"},
  {"Exporter en TSV…", "匯出為 TSV…"},
  {"Exporter les mots gardés", "匯出保存的單字"},
  {"Fichier CSV", "CSV 檔案"},
  {"Fichier TSV", "TSV 檔案"},
  {"Mots gardés : %d", "保存的單字：%d"},
  {"%d mots écrits dans %@", "已將 %d 個單字寫入 %@"},
  {"Export impossible :", "無法匯出："},
  {"Dossier des données", "資料夾"},
  {"Ouvrir le dossier", "打開資料夾"},
  {"Aucun programme n'a pu l'ouvrir.", "沒有程式能打開它。"},
  {"debug.log n'existe pas encore : allume le journal de diagnostic, puis survole un mot.", "debug.log 還不存在：請開啟診斷日誌，再將滑鼠停在一個詞上。"},
  // The review window
  {"Révision", "複習"},
  {"Montrer la réponse", "顯示答案"},
  {"Réviser en avance", "提前複習"},
  {"Espace ou Entrée : montrer la réponse", "空白鍵或 Enter：顯示答案"},
  {"Touches 1 à 5 : ta note", "按 1 到 5：你的評分"},

  // The bubble
  {"élision : « %@ » devant ce mot", "省音：此詞前省去了「%@」"},
  {"Expliquer avec l'IA", "用 AI 解釋"},
  {"Phrase…", "句子…"},
  {"Traduire", "翻譯"},
  {"L'IA réfléchit…", "AI 正在思考…"},
  {"Gardé %d fois", "已收藏 %d 次"},
  {"Redemander", "重新提問"},
  // The desktop app's status item
  {"Vesko ne joint pas le bus d'accessibilité : le texte des autres programmes reste illisible.", "Vesko 連不上無障礙匯流排：讀不到其他程式的文字。"},
  {"Lance at-spi2-core, ou ouvre une session de bureau.", "請啟動 at-spi2-core，或登入桌面工作階段。"},
  {"Session Wayland : Vesko ne voit ni le pointeur ni l'écran des autres programmes.", "Wayland 工作階段：Vesko 看不到指標，也看不到其他程式的螢幕。"},
  {"Ouvre une session X11 (Xorg) pour lire au survol.", "請登入 X11（Xorg）工作階段，才能滑鼠停留讀取。"},
  {"Alt+X est déjà pris par un autre programme.", "Alt+X 已被其他程式占用。"},
  {"Libère Alt+X dans cet autre programme, puis relance Vesko.", "請在那個程式裡釋放 Alt+X，然後重新啟動 Vesko。"},
  {"Réglages…", "設定…"},
  {"Révision (%d)", "複習（%d）"},
  {"Quitter Vesko", "結束 Vesko"},
  {"chargement du dictionnaire…", "正在載入詞典…"},
};
// clang-format on

}  // namespace

std::span<const LocRow> traditionalChinese() {
  return kRows;
}

}  // namespace vesko::loc_rows
