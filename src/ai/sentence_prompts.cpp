#include "ai/sentence_prompts.h"

#include "ai/explain_prompts.h"
#include "settings/loc.h"

namespace vesko {
namespace {

std::string joined(const std::vector<std::string>& items, std::string_view separator) {
  std::string out;
  for (const auto& item : items) {
    if (!out.empty()) out += separator;
    out += item;
  }
  return out;
}

// Loc names every interface language; the studied languages beyond them are named here.
std::string frenchName(std::string_view code, bool traditional) {
  if (code == "ja") return "japonais";
  return Loc::frenchLanguageName(code, traditional);
}

}  // namespace

std::string translationSourceName(std::string_view code, bool traditional) {
  if (code.starts_with("zh"))
    return traditional || code == "zh-Hant" ? "chinois (mandarin, caractères traditionnels)"
                                            : "chinois (mandarin, caractères simplifiés)";
  return frenchName(code, traditional);
}

std::string analysisSourceName(std::string_view code, bool traditional) {
  if (code.starts_with("zh"))
    return traditional || code == "zh-Hant" ? "chinois (caractères traditionnels)"
                                            : "chinois (caractères simplifiés)";
  return frenchName(code, traditional);
}

std::string translationPrompt(const TranslationRequest& request, const AITitles& titles) {
  const std::string source = translationSourceName(request.sourceCode, request.traditional);
  std::string prompt = "Le texte suivant est en " + source +
                       ". Traduis-le de façon naturelle en : " + joined(request.targets, ", ") +
                       ". ";
  prompt += "Ne discute pas de la langue d'origine, ne fais aucune remarque préalable. ";
  prompt +=
      "Réponds seulement avec une ligne par langue, au format « langue : traduction », puis une "
      "ligne « " +
      titles[AILabel::nuance] + " : … » si un mot mérite une remarque. ";
  prompt += "Termine par une ligne « " + titles[AILabel::expression] +
            " : … = … » qui donne l'expression ou la structure clé du texte, dans la langue "
            "d'origine, COMPLÈTE telle qu'elle apparaît dans le texte (ex. 摀著耳朵, jamais "
            "摀著…) ; « … » seulement AU MILIEU pour une partie qui change (與其…不如…), jamais à "
            "la fin ; et son sens (ex. « " +
            titles[AILabel::expression] + " : 對…沒印象 = … »). ";
  prompt += "Si le texte n'est qu'un seul mot, pas de ligne Expression. ";
  prompt +=
      "Si le texte (ou l'expression) se compose de plusieurs morceaux qui ont chacun un sens, "
      "ajoute AVANT la ligne Expression une ligne « " +
      titles[AILabel::parts] +
      " : morceau = traduction · morceau = traduction » : chaque plus petit mot ou élément qui a "
      "un sens, écrit comme dans le texte, = sa traduction courte en " +
      request.answerLanguageName + " (ex. « " + titles[AILabel::parts] +
      " : 等長 = isométrique · 收縮 = contraction »). Pas de ligne " + titles[AILabel::parts] +
      " pour un seul mot simple. ";
  prompt += "Dans chaque traduction, mets entre ** ** la partie qui correspond à cette expression.";
  prompt += "\n\nTexte (" + source + ") : " + request.text;
  if (request.line)
    prompt +=
        "\nCe texte est un MORCEAU de la phrase / ligne : « " + *request.line +
        " ». Traduis-le dans ce contexte. Vérifie d'abord s'il fait partie d'un mot ou "
        "d'une expression plus grande dans cette ligne (ex. 子氣 dans 小家子氣). Si oui, "
        "commence par « ⚠︎ Fait partie de : … », puis traduis et explique l'expression "
        "complète (c'est elle qui va dans la ligne Expression).";
  prompt += chineseUsageLines(request.targetCodes);
  return prompt;
}

std::string analysisPrompt(const AnalysisRequest& request, const AITitles& titles) {
  std::string prompt =
      "Décortique ce texte en " + analysisSourceName(request.sourceCode, request.traditional);
  if (request.sourceCode.starts_with("zh")) prompt += " (avec le pinyin)";
  if (request.sourceCode == "ja") prompt += " (avec la lecture en kana)";
  prompt += " pour un apprenant. Réponds en " + request.answerLanguageName +
            ", sans question ni remarque préalable.\n";
  prompt += titles[AILabel::structure] +
            " sur UNE ligne (éléments séparés par « + », chacun avec son rôle).\n";
  prompt += "Puis 3 à 6 lignes « • mot = sens ICI · nature » pour les mots clés.\n";
  prompt += "« " + titles[AILabel::grammar] +
            " : » le point de grammaire principal, expliqué simplement avec un mini exemple.\n";
  prompt += "« " + titles[AILabel::expression] +
            " : … = … » : l'expression ou la structure clé, COMPLÈTE telle qu'elle apparaît (« … » "
            "seulement au milieu).";
  prompt +=
      "\nSi ce texte n'a pas de sens tel quel (mot coupé, erreur de lecture de l'écran) ou si tu "
      "n'es pas sûr, commence par UNE ligne « 🤔 … » qui le dit et donne le texte probable "
      "(ex. "
      "« 🤔 识户 n'est pas un mot : sans doute 识广, dans 见多识广 »), puis décortique le "
      "texte "
      "probable.";
  if (request.sentence)
    prompt += "\nCe texte fait partie de la phrase : « " + *request.sentence +
              " ». Explique-le dans ce contexte.";
  prompt += titlesLine();
  prompt += "\n\n" + request.text;
  return prompt;
}

std::string correctionPrompt(std::string_view sentence, std::string_view languageName,
                             std::string_view answerLanguageName) {
  std::string prompt = "Corrige cette phrase écrite en " + std::string(languageName) +
                       ". Garde la même langue (" + std::string(languageName) +
                       ") pour la phrase corrigée. ";
  prompt +=
      "Réponds exactement ainsi :\n1re ligne : la phrase corrigée en entier (si elle est déjà "
      "correcte, recopie-la et ajoute « ✓ »).\n";
  prompt +=
      "Puis une ligne vide, puis UN seul point de grammaire (le plus important), expliqué "
      "simplement en " +
      std::string(answerLanguageName) + ", en 2 phrases maximum. ";
  prompt += "Pas de titre, pas de liste de toutes les fautes.\n\nPhrase : " + std::string(sentence);
  return prompt;
}

}  // namespace vesko
