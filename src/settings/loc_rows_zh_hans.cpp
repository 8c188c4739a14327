// Interface texts in Simplified Chinese (mainland usage): the French text the program shows → its
// translation. One row per text; every table has a row for every text, with the same placeholders
// (%d, %@, %%). tests/settings/loc_table_test.cpp checks both, and that every text the
// code hands to Loc::t has a row.

#include "settings/loc_rows.h"

namespace vesko::loc_rows {
namespace {

// clang-format off
constexpr LocRow kRows[] = {
  // The hover, the status item and the word chooser
  {"Au simple survol", "鼠标停留即读取"},
  {"Avec la touche maintenue", "按住按键时读取"},
  {"n'est pas dans « Tes langues » : Réglages → Langues", "不在“我的语言”中：设置 → 语言"},
  {"se lit en maintenant la touche", "按住按键时才会读取"},
  {"activée (clic : Réglages · clic droit : menu · ⌥X : éteindre)", "已开启（单击：设置 · 右键：菜单 · ⌥X：关闭）"},
  {"désactivée (clic : Réglages · clic droit : menu · ⌥X : allumer)", "已关闭（单击：设置 · 右键：菜单 · ⌥X：开启）"},
  {"Vesko : autorise l'« Enregistrement de l'écran » (Réglages)", "Vesko：请允许“屏幕录制”（设置）"},
  {"forme du dictionnaire", "辞书形"},
  {"nom propre (translittération probable)", "专有名词（可能是音译）"},

  // AI providers and the messages that stand in for an answer
  {"IA d'Apple, hors ligne", "Apple 的 AI（离线）"},
  {"IA locale, hors ligne", "本地 AI（离线）"},
  {"IA Vesko", "Vesko AI"},
  {"L'IA est en pause pour le moment. Réessaie plus tard.", "AI 暂时停用，请稍后再试。"},
  {"Il manque la clé", "缺少"},
  {"dans Réglages → IA.", "密钥（设置 → AI）。"},
  {"L'IA d'Apple n'est pas disponible sur ce Mac : choisis Claude ou DeepSeek dans Réglages → IA.", "这台 Mac 无法使用 Apple 的 AI：请在设置 → AI 中选择 Claude 或 DeepSeek。"},
  {"L'IA d'Apple n'est pas disponible.", "无法使用 Apple 的 AI。"},
  {"Ajoute ta clé Claude dans Réglages → IA.", "请在设置 → AI 中添加你的 Claude 密钥。"},
  {"Ajoute ta clé ChatGPT (OpenAI) dans Réglages → IA.", "请在设置 → AI 中添加你的 ChatGPT（OpenAI）密钥。"},
  {"Ajoute ta clé DeepSeek dans Réglages → IA.", "请在设置 → AI 中添加你的 DeepSeek 密钥。"},
  {"Service injoignable. En Chine, Claude et ChatGPT sont bloqués : choisis DeepSeek dans Réglages → IA.", "无法连接服务。在中国大陆，Claude 和 ChatGPT 无法访问：请在设置 → AI 中选择 DeepSeek。"},
  {"Pas de connexion internet ou service injoignable.", "没有网络连接，或无法连接服务。"},
  {"erreur", "错误"},
  {"Le service a refusé la demande :", "服务拒绝了请求："},
  {"%@ est surchargé en ce moment. Réessaie dans une minute, ou choisis une autre IA dans Réglages → IA.", "%@ 当前负载过高。请一分钟后再试，或在设置 → AI 中换一个 AI。"},
  {"Réponse vide.", "回答为空。"},
  {"IA Vesko ne répond pas pour le moment. Réessaie dans un instant.", "Vesko AI 暂时没有响应，请稍后再试。"},
  {"L'IA n'a pas pu répondre.", "AI 未能给出回答。"},

  // Section titles of AI answers (the parser finds them again: distinct within a language)
  {"Structure", "结构"},
  {"Expression", "表达"},
  {"Termes", "词汇"},
  {"Origine", "来源"},
  {"Grammaire", "语法"},
  {"Nuance", "细微差别"},
  {"Sens littéral", "字面意思"},
  {"Sens", "意思"},
  {"Caractères", "逐字"},
  {"Famille", "同族词"},
  {"Ici", "此处"},
  {"Exemple", "例句"},
  {"Phrase", "句子"},
  {"Mot", "词"},
  {"Morceaux", "拆分"},

  // Languages named in French
  {"français", "法语"},
  {"anglais", "英语"},
  {"chinois simplifié", "简体中文"},
  {"chinois traditionnel (Taïwan)", "繁体中文（台湾）"},
  {"russe", "俄语"},
  {"polonais", "波兰语"},
  {"thaï", "泰语"},
  {"japonais", "日语"},

  // The popup's AI actions
  {"C'est quoi ?", "这是什么？"},
  {"Synonymes et contraires", "近义词和反义词"},
  {"Décortiquer", "解析"},
  {"Corriger", "改正"},
  {"Corriger une phrase", "改正句子"},
  {"Erreur ? Redemander", "有误？重新提问"},
  {"Qu'est-ce qui ne va pas ? (facultatif)", "哪里不对？（选填）"},
  {"La réponse est fausse : elle est oubliée (termes compris) et l'IA recommence avec un modèle plus solide.", "回答有误：已将它连同其中的词汇一起删除，AI 正在用更强的模型重新回答。"},
  {"Plus petits morceaux", "最小组成部分"},
  {"Garder ce morceau dans mes mots", "把这部分加入我的生词"},

  // AI usage
  {"Ce que tu consommes (estimation)", "你的用量（估算）"},
  {"IA aujourd'hui", "今天的 AI 用量"},
  {"IA ce mois-ci", "本月的 AI 用量"},
  {"IA le mois dernier", "上个月的 AI 用量"},
  {"Calculé avec les prix publics des fournisseurs, à partir de ce que chaque réponse indique. Le chiffre exact est sur leur site.", "按各服务商公开的价格、根据每次回答报告的用量计算。准确数字以其官网为准。"},
  {"rien pour l'instant", "暂无"},
  {"(prix fondateur)", "（首批用户价）"},

  // AI models
  {"Réglages → IA → Modèles", "设置 → AI → 模型"},
  {"Charger la liste", "加载列表"},
  {"Liste indisponible : vérifie la clé et la connexion.", "无法获取列表：请检查密钥和网络连接。"},
  {"Modèle IA mis à jour :", "AI 模型已更新："},
  {"Ce modèle n'existe plus chez le fournisseur : choisis-en un autre dans Réglages → IA → Modèles.", "服务商已不再提供此模型：请在设置 → AI → 模型中另选一个。"},

  // Kept words
  {"Garder ce mot (export CSV / Anki dans les Réglages)", "收藏这个词（可在设置中导出 CSV / Anki）"},
  {"Encore une fois : compteur +1", "又遇到了：计数 +1"},
  {"Retirer des mots enregistrés", "从收藏的词中移除"},
  {"sens n° %d, gardé avec cette phrase", "第 %d 个义项，与这个句子一起保存"},
  {"Je connais · À apprendre · Pas utile", "已认识 · 要学 · 不需要"},
  {"Je connais", "已认识"},
  {"À apprendre", "要学"},
  {"Pas utile", "不需要"},
  {"Un fichier de données était illisible ; une copie a été gardée :", "有一个数据文件无法读取，已保留一份副本："},

  // Review
  {"⚪ nouveau → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 acquis", "⚪ 新词 → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 已掌握"},
  {"acquis", "已掌握"},
  {"Nouveau : pas encore relu", "新词：尚未复习"},
  {"Niveau %d sur %d", "第 %d 级（共 %d 级）"},
  {"jours", "天"},
  {"puis une fois par an (acquis)", "之后每年一次（已掌握）"},
  {"à relire maintenant", "现在复习"},
  {"Une fois par an pour vérifier · prochaine : %@", "每年复查一次 · 下次：%@"},
  {"Prochaine révision : %@", "下次复习：%@"},
  {"%d cartes attendent les jours suivants (40 anciennes + 10 nouvelles par jour au plus).", "还有 %d 张卡片留到之后几天（每天最多 40 张旧卡 + 10 张新卡）。"},
  {"Carte révisée en avance : 3, 4 et 5 gardent sa couleur (c'est le temps entre deux bonnes réponses qui la fait monter).", "这张卡片是提前复习的：3、4、5 分都不会改变颜色（颜色靠两次答对之间的间隔来提升）。"},
  {"1 — raté : revient dans 10 minutes, une couleur en moins", "1 — 没答对：10 分钟后再出现，降一个颜色"},
  {"2 — pas très à l'aise : revient demain, une couleur en moins", "2 — 不太熟：明天再出现，降一个颜色"},
  {"3 — moyen : même rythme", "3 — 一般：节奏不变"},
  {"4 — à l'aise : étape suivante", "4 — 熟练：升一级"},
  {"5 — très à l'aise : deux étapes d'un coup", "5 — 非常熟练：一次升两级"},

  // Settings and the diagnostic log
  {"Automatique (langue du Mac)", "自动（跟随 Mac 的语言）"},
  {"Ouvrir debug.log", "打开 debug.log"},
  {"Journal de diagnostic (debug.log)", "诊断日志（debug.log）"},
  {"Journal des 3 dernières minutes", "最近 3 分钟的日志"},
  {"Joindre ce que Vesko a fait ces 3 dernières minutes (peut contenir du texte lu à l'écran ; visible dans le mail avant l'envoi)", "附上 Vesko 最近 3 分钟的操作记录（可能包含从屏幕上读取的文字；发送前可在邮件中查看）"},

  // The review session in a terminal
  {"Entrée : voir la réponse · q : quitter", "回车：显示答案 · q：退出"},
  {"Ta note (1 à 5) · q : quitter", "你的评分（1 到 5）· q：退出"},
  {"Rien à relire aujourd'hui.", "今天没有要复习的内容。"},
  {"Révision finie : %d cartes notées.", "复习结束：已评分 %d 张卡片。"},
  {"%d min", "%d 分钟"},
  {"%d j", "%d 天"},
  // The local model server that stands in for the on-device model
  {"L'IA locale n'est pas disponible : lance un serveur de modèle local, ou choisis Claude ou DeepSeek dans Réglages → IA.", "本地 AI 不可用：请启动本地模型服务器，或在设置 → AI 中选择 Claude 或 DeepSeek。"},
  // The settings window
  {"Réglages", "设置"},
  {"Langues", "语言"},
  {"IA", "AI"},
  {"Mots", "单词"},
  {"Journal", "日志"},
  {"Réglage non enregistré :", "设置未保存："},
  {"Réglage inconnu.", "未知的设置。"},
  {"Valeur d'un autre type que celui du réglage.", "值的类型与该设置不符。"},
  {"settings.json est illisible : il est laissé tel quel et rien n'est enregistré.", "无法读取 settings.json：文件保持原样，不保存任何内容。"},
  {"settings.json ne peut pas être écrit.", "无法写入 settings.json。"},
  {"Tes langues", "你的语言"},
  {"Chinois", "中文"},
  {"Japonais", "日语"},
  {"Thaï", "泰语"},
  {"Français", "法语"},
  {"Anglais", "英语"},
  {"Russe", "俄语"},
  {"Polonais", "波兰语"},
  {"Pas étudiée", "不学习"},
  {"Langue prioritaire", "优先语言"},
  {"Mot en alphabet latin (français et anglais étudiés)", "拉丁字母的词（同时学习法语和英语）"},
  {"Caractères chinois seuls (chinois et japonais étudiés)", "只有汉字（同时学习中文和日语）"},
  {"Lecture", "读取"},
  {"Touche à maintenir", "需按住的键"},
  {"Alt", "Alt"},
  {"Ctrl", "Ctrl"},
  {"Maj", "Shift"},
  {"Super", "Super"},
  {"Délai avant lecture", "读取前的等待"},
  {"Langue de l'interface", "界面语言"},
  {"Fournisseur", "服务商"},
  {"IA utilisée", "使用的 AI"},
  {"IA de secours", "备用 AI"},
  {"Aucune", "无"},
  {"En Chine, demander d'abord l'IA de secours", "在中国时先问备用 AI"},
  {"Adresse du serveur de modèle local", "本地模型服务器地址"},
  {"L'adresse commence par http:// ou https://.", "地址以 http:// 或 https:// 开头。"},
  {"Il manque le nom du serveur, par exemple http://127.0.0.1:11434/v1.", "缺少服务器名称，例如 http://127.0.0.1:11434/v1。"},
  {"Clés", "密钥"},
  {"Colle ta clé ici", "在此粘贴你的密钥"},
  {"Enregistrer", "保存"},
  {"Effacer", "清除"},
  {"Un moment…", "请稍候…"},
  {"Clé enregistrée dans le trousseau.", "密钥已保存在钥匙环中。"},
  {"Clé lue dans la variable d'environnement %@.", "密钥读取自环境变量 %@。"},
  {"Pas de clé.", "没有密钥。"},
  {"Le trousseau ne répond pas :", "钥匙环没有响应："},
  {"Le trousseau n'a pas pu garder la clé :", "钥匙环无法保存密钥："},
  {"Clé enregistrée.", "密钥已保存。"},
  {"Clé effacée.", "密钥已清除。"},
  {"Modèles", "模型"},
  {"Chargement…", "加载中…"},
  {"%d modèles", "%d 个模型"},
  {"Exporter pour Anki", "导出到 Anki"},
  {"Exporter en CSV…", "导出为 CSV…"},
  {"Exporter en TSV…", "导出为 TSV…"},
  {"Exporter les mots gardés", "导出保存的单词"},
  {"Fichier CSV", "CSV 文件"},
  {"Fichier TSV", "TSV 文件"},
  {"Mots gardés : %d", "保存的单词：%d"},
  {"%d mots écrits dans %@", "已将 %d 个单词写入 %@"},
  {"Export impossible :", "无法导出："},
  {"Dossier des données", "数据文件夹"},
  {"Ouvrir le dossier", "打开文件夹"},
  {"Aucun programme n'a pu l'ouvrir.", "没有程序能打开它。"},
  {"debug.log n'existe pas encore : allume le journal de diagnostic, puis survole un mot.", "debug.log 还不存在：请打开诊断日志，再将鼠标停在一个词上。"},
  // The review window
  {"Révision", "复习"},
  {"Montrer la réponse", "显示答案"},
  {"Réviser en avance", "提前复习"},
  {"Espace ou Entrée : montrer la réponse", "空格或回车：显示答案"},
  {"Touches 1 à 5 : ta note", "按 1 到 5：你的评分"},

  // The bubble
  {"élision : « %@ » devant ce mot", "省音：此词前省去了“%@”"},
  {"Expliquer avec l'IA", "用 AI 解释"},
  {"Phrase…", "句子…"},
  {"Traduire", "翻译"},
  {"L'IA réfléchit…", "AI 正在思考…"},
  {"Gardé %d fois", "已收藏 %d 次"},
  {"Redemander", "重新提问"},
  // The desktop app's status item
  {"Vesko ne joint pas le bus d'accessibilité : le texte des autres programmes reste illisible.", "Vesko 连不上无障碍总线：读不到其他程序的文字。"},
  {"Lance at-spi2-core, ou ouvre une session de bureau.", "请启动 at-spi2-core，或登录桌面会话。"},
  {"Session Wayland : Vesko ne voit ni le pointeur ni l'écran des autres programmes.", "Wayland 会话：Vesko 看不到指针，也看不到其他程序的屏幕。"},
  {"Ouvre une session X11 (Xorg) pour lire au survol.", "请登录 X11（Xorg）会话，才能鼠标停留读取。"},
  {"Alt+X est déjà pris par un autre programme.", "Alt+X 已被其他程序占用。"},
  {"Libère Alt+X dans cet autre programme, puis relance Vesko.", "请在那个程序里释放 Alt+X，然后重新启动 Vesko。"},
  {"Réglages…", "设置…"},
  {"Révision (%d)", "复习（%d）"},
  {"Quitter Vesko", "退出 Vesko"},
  {"chargement du dictionnaire…", "正在加载词典…"},
};
// clang-format on

}  // namespace

std::span<const LocRow> simplifiedChinese() {
  return kRows;
}

}  // namespace vesko::loc_rows
