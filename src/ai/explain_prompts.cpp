#include "ai/explain_prompts.h"

#include <algorithm>
#include <array>

namespace vesko {
namespace {

// The prompts' fixed French text. The models see exactly this: a change here changes answers.
// clang-format off
constexpr std::string_view kChineseOral = " Pour le chinois : du chinois ORAL et naturel, comme on le dit vraiment à voix haute (口语), pas un registre écrit ni littéraire — pas de 与 / 之 / 乃 / 而 / 亦 / 其 / 即 ni de tournures de dissertation ; pas de mot à mot : rends le sens comme un locuteur natif le dirait.";
constexpr std::string_view kChineseTaiwan = " Pour le chinois traditionnel : usage de Taïwan (台灣用語, ex. 影片, 軟體, 資訊).";
constexpr std::string_view kChineseMainland = " Pour le chinois simplifié : usage de Chine continentale.";

constexpr std::string_view kPhraseLineStart = "Commence par UNE ligne « ";
constexpr std::string_view kPhraseLineMiddle = " » qui montre la structure de la phrase autour du mot, éléments séparés par « + » avec leur rôle (ex. « ";
constexpr std::string_view kPhraseLineEnd = " : 都 + 押 + 入牢房 = adverbe + verbe + complément de lieu »). ";
constexpr std::string_view kAnalyseTheWord = "Puis analyse UNIQUEMENT le mot entre 【 】, tel qu'il est employé dans CETTE phrase : sa nature, sa fonction (sujet, verbe, complément, particule…), avec quel mot il se construit, et ce qu'il veut dire ici. ";
constexpr std::string_view kMeaningHereFirst = "Le sens dans CETTE phrase passe en premier et doit être juste pour ce contexte (ex. « paying upfront » = payer d'avance, pas « franc ») ; les autres sens du mot : une seule ligne courte à la fin, ou rien. L'expression doit venir de la phrase elle-même. Appuie-toi sur les mots voisins. Ne pose aucune question.";
constexpr std::string_view kDoubt = " Si le mot entre 【 】 n'a pas vraiment de sens dans cette phrase (mot coupé, erreur de lecture de l'écran, faute de frappe) ou si tu n'es pas sûr de son sens ICI, commence par UNE ligne « 🤔 … » qui le dit franchement et donne le mot ou l'expression probable (ex. « 🤔 识户 n'est pas un mot : c'est sans doute 识广, dans 见多识广 »). Si c'est un nom propre ou le titre d'une œuvre (film, manga, série, livre), dis-le et donne son titre officiel.";
constexpr std::string_view kExpressionStart = " Termine TOUJOURS par une ligne « ";
constexpr std::string_view kExpressionRule = " : … = … » : l'expression figée, la structure ou la collocation courante dont ce mot fait partie, dans la langue d'origine et COMPLÈTE telle qu'elle apparaît dans le texte (ex. 摀著耳朵, jamais 摀著…) ; « … » seulement AU MILIEU pour une partie qui change entre deux mots fixes (與其…不如…), jamais à la fin ; puis son sens dans la langue de réponse (ex. « ";
constexpr std::string_view kExpressionExample1 = " : 與其…不如… = … », « ";
constexpr std::string_view kExpressionExample2 = " : 對…沒印象 = … »). Cherche bien : il y en a presque toujours une. Omets cette ligne seulement s'il n'y en a vraiment aucune (nom simple, nom propre), et dans ce cas n'en parle pas : ne commente jamais ces consignes.";
constexpr std::string_view kTitles = " Écris ces titres exactement comme indiqué (ils sont déjà dans la langue de réponse), suivis de « : ».";
constexpr std::string_view kReadAlone = " a été lu seul, sans phrase. Ne pose aucune question. Donne sa nature et ses 2 emplois les plus courants, chacun avec un exemple très court.";

constexpr std::string_view kIsChengyu = " » est un chengyu (成语).";
constexpr std::string_view kChengyuContextStart = " (Texte où il apparaît, à ne pas recopier : « ";
constexpr std::string_view kChengyuContextEnd = " »)";
constexpr std::string_view kChengyuFormat = " Ne pose aucune question. Réponds exactement ainsi :";
constexpr std::string_view kChengyuLiteralLineStart = "1. Une ligne « ";
constexpr std::string_view kChengyuLiteralLineEnd = " = … » avec le sens littéral de chaque caractère DANS ce chengyu, séparés par « + ».";
constexpr std::string_view kChengyuCharacterLine = "2. Une ligne par caractère : « **caractère** (pinyin) : son sens ici — pourquoi il est dans le chengyu ». \nSi le caractère a plusieurs lectures ou sens, dis lequel est employé et lequel ne l'est pas (ex. 朝 cháo = dynastie, pas zhāo = matin).";
constexpr std::string_view kChengyuLiteral = " (mot à mot, en une phrase).";
constexpr std::string_view kChengyuMeaning = " (le vrai sens, et le sens figuré s'il existe).";
constexpr std::string_view kChengyuHere = " ce que le chengyu veut dire dans cette phrase.";
constexpr std::string_view kChengyuExample = " une phrase courte avec pinyin et traduction.";

constexpr std::string_view kWrong = "ATTENTION : ta réponse précédente était FAUSSE :";
constexpr std::string_view kRemark = "Remarque de l'utilisateur : ";
constexpr std::string_view kReread = "Relis le texte caractère par caractère, sans réutiliser les noms de ta réponse précédente. Si tu n'es pas sûr d'un nom, translittère-le (pinyin) et dis-le. Garde le même format de réponse.";

struct RewriteRow {
  std::string_view code;
  std::string_view instruction;  // complete, or the English one's start when `name` is set
  std::string_view name;         // the language named in English
};
constexpr std::string_view kRewriteInStart = "Rewrite the following explanation entirely in ";
constexpr std::string_view kRewriteInEnd = ". Keep the same lines, headings and symbols (【 】, ☆, **); quoted words, example sentences and translations stay in their own language. Output only the rewritten text.";
constexpr std::array<RewriteRow, 7> kRewrites{{
  {"fr", "Réécris entièrement l'explication suivante en français. Garde les mêmes lignes, les mêmes titres et les mêmes symboles (【 】, ☆, **) ; les mots cités, les phrases d'exemple et les traductions restent dans leur langue. Donne seulement le texte réécrit.", ""},
  {"zh-Hans", "把下面这段说明完整改写成简体中文。保留同样的行、标题和符号（【 】、☆、**）；引用的原文词句、例句和翻译保持原来的语言。只输出改写后的文字。", ""},
  {"zh-Hant", "把下面這段說明完整改寫成繁體中文（台灣）。保留同樣的行、標題和符號（【 】、☆、**）；引用的原文詞句、例句和翻譯保持原來的語言。只輸出改寫後的文字。", ""},
  {"en", "", "English"},
  {"pl", "", "Polish"},
  {"ru", "", "Russian"},
  {"th", "", "Thai"},
}};
// clang-format on

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

std::string chineseUsageLines(std::span<const std::string> targets) {
  auto has = [&](std::string_view code) {
    return std::ranges::find(targets, code) != targets.end();
  };
  bool chinese = std::ranges::any_of(
      targets, [](const std::string& code) { return code == "zh" || code.starts_with("zh-"); });
  if (!chinese) return {};
  std::string lines(kChineseOral);
  if (has("zh-Hant")) lines += kChineseTaiwan;
  if (has("zh-Hans")) lines += kChineseMainland;
  return lines;
}

std::string doubtClause() {
  return std::string(kDoubt);
}

std::string expressionLine(const AITitles& titles) {
  const std::string& title = titles[AILabel::expression];
  std::string line(kExpressionStart);
  line += title;
  line += kExpressionRule;
  line += title;
  line += kExpressionExample1;
  line += title;
  line += kExpressionExample2;
  return line;
}

std::string titlesLine() {
  return std::string(kTitles);
}

std::optional<std::string> markedSentence(std::string_view sentence, std::string_view word) {
  if (word.empty()) return std::nullopt;
  std::size_t at = sentence.find(word);
  if (at == std::string_view::npos) return std::nullopt;
  std::string marked(sentence.substr(0, at));
  marked += "【";
  marked += word;
  marked += "】";
  marked += sentence.substr(at + word.size());
  return marked;
}

std::string wordPrompt(std::string_view word, const std::optional<std::string>& sentence,
                       std::string_view sourceLanguage, const AITitles& titles) {
  std::string prompt;
  if (!sentence || isBlank(*sentence)) {
    prompt += word;
    prompt += kReadAlone;
    prompt += expressionLine(titles);
    prompt += kTitles;
    return prompt;
  }
  // The presentation line: the sentence with the word marked; a word the sentence does not hold
  // (a reading error, a changed form) is given marked after it, so that the doubt clause applies.
  prompt +=
      sourceLanguage.empty() ? "Texte : « " : "Texte en " + std::string(sourceLanguage) + " : « ";
  if (auto marked = markedSentence(*sentence, word)) {
    prompt += *marked;
    prompt += " »\n";
  } else {
    prompt += *sentence;
    prompt += " »\nMot : 【";
    prompt += word;
    prompt += "】\n";
  }
  const std::string& phrase = titles[AILabel::phrase];
  prompt += kPhraseLineStart;
  prompt += phrase;
  prompt += kPhraseLineMiddle;
  prompt += phrase;
  prompt += kPhraseLineEnd;
  prompt += kAnalyseTheWord;
  prompt += kMeaningHereFirst;
  prompt += kDoubt;
  prompt += expressionLine(titles);
  prompt += kTitles;
  return prompt;
}

std::string chengyuPrompt(std::string_view chengyu, const std::optional<std::string>& sentence,
                          const AITitles& titles) {
  std::string prompt = "« ";
  prompt += chengyu;
  prompt += kIsChengyu;
  if (sentence && !isBlank(*sentence)) {
    prompt += kChengyuContextStart;
    prompt += *sentence;
    prompt += kChengyuContextEnd;
  }
  prompt += kChengyuFormat;
  prompt += '\n';
  prompt += kChengyuLiteralLineStart;
  prompt += titles[AILabel::literal];
  prompt += kChengyuLiteralLineEnd;
  prompt += '\n';
  prompt += kChengyuCharacterLine;
  const std::pair<AILabel, std::string_view> lines[] = {{AILabel::literal, kChengyuLiteral},
                                                        {AILabel::meaning, kChengyuMeaning},
                                                        {AILabel::here, kChengyuHere},
                                                        {AILabel::example, kChengyuExample}};
  // Each line as the model is to write it: its title and colon, then what goes after them.
  for (const auto& [label, what] : lines) {
    prompt += '\n';
    prompt += titles[label];
    prompt += " :";
    prompt += what;
  }
  return prompt;
}

std::string retrySuffix(std::string_view previousAnswer, std::string_view remark) {
  std::string suffix = "\n\n";
  suffix += kWrong;
  suffix += "\n« ";
  suffix += previousAnswer;
  suffix += " »\n";
  if (!isBlank(remark)) {
    suffix += kRemark;
    suffix += remark;
    suffix += '\n';
  }
  suffix += kReread;
  return suffix;
}

std::string rewritePrompt(std::string_view explanation, std::string_view target) {
  auto row = std::ranges::find(kRewrites, target, &RewriteRow::code);
  if (row == kRewrites.end()) row = kRewrites.begin();  // an unknown language: French, as answers
  std::string prompt;
  if (row->name.empty()) {
    prompt += row->instruction;
  } else {
    prompt += kRewriteInStart;
    prompt += row->name;
    prompt += kRewriteInEnd;
  }
  prompt += "\n\n";
  prompt += explanation;
  return prompt;
}

}  // namespace vesko
