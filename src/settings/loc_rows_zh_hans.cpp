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
