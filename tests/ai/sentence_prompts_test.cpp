// The three prompts on a selected text, compared whole with the texts the model must receive: a
// changed word changes what the model answers, and the parser depends on the formats they impose.

#include "ai/sentence_prompts.h"

#include <gtest/gtest.h>

#include "dict/cedict.h"
#include "settings/loc.h"
#include "support/fake_clock.h"
#include "support/french_texts.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using Texts = testing::FrenchTexts;

const Texts& texts() {
  static const Texts made;
  return made;
}

TEST(SentencePrompts, TranslationOfAPieceIntoTraditionalChinese) {
  TranslationRequest request;
  request.text = "子氣";
  request.sourceCode = "zh";
  request.traditional = true;
  request.targets = {"anglais", "chinois traditionnel (Taïwan)", "chinois simplifié"};
  request.targetCodes = {"en", "zh-Hant", "zh-Hans"};
  request.answerLanguageName = "anglais";
  request.line = "他這個人很小家子氣";
  const AITitles titles(texts().loc, "en");
  const std::string expected =
      "Le texte suivant est en chinois (mandarin, caractères traditionnels). Traduis-le de façon "
      "naturelle en : anglais, chinois traditionnel (Taïwan), chinois simplifié. Ne discute pas de "
      "la langue d'origine, ne fais aucune remarque préalable. Réponds seulement avec une ligne "
      "par langue, au format « langue : traduction », puis une ligne « Nuance : … » si un mot "
      "mérite une remarque. Termine par une ligne « Expression : … = … » qui donne l'expression "
      "ou la structure clé du texte, dans la langue d'origine, COMPLÈTE telle qu'elle apparaît "
      "dans le texte (ex. 摀著耳朵, jamais 摀著…) ; « … » seulement AU MILIEU pour une partie qui "
      "change (與其…不如…), jamais à la fin ; et son sens (ex. « Expression : 對…沒印象 = … »). Si "
      "le texte n'est qu'un seul mot, pas de ligne Expression. Si le texte (ou l'expression) se "
      "compose de plusieurs morceaux qui ont chacun un sens, ajoute AVANT la ligne Expression une "
      "ligne « Pieces : morceau = traduction · morceau = traduction » : chaque plus petit mot ou "
      "élément qui a un sens, écrit comme dans le texte, = sa traduction courte en anglais (ex. « "
      "Pieces : 等長 = isométrique · 收縮 = contraction »). Pas de ligne Pieces pour un seul mot "
      "simple. Dans chaque traduction, mets entre ** ** la partie qui correspond à cette "
      "expression.\n\nTexte (chinois (mandarin, caractères traditionnels)) : 子氣\nCe texte est un "
      "MORCEAU de la phrase / ligne : « 他這個人很小家子氣 ». Traduis-le dans ce contexte. Vérifie "
      "d'abord s'il fait partie d'un mot ou d'une expression plus grande dans cette ligne (ex. "
      "子氣 "
      "dans 小家子氣). Si oui, commence par « ⚠︎ Fait partie de : … », puis traduis et "
      "explique "
      "l'expression complète (c'est elle qui va dans la ligne Expression). Pour le chinois : du "
      "chinois ORAL et naturel, comme on le dit vraiment à voix haute (口语), pas un registre "
      "écrit "
      "ni littéraire — pas de 与 / 之 / 乃 / 而 / 亦 / 其 / 即 ni de tournures de dissertation ; "
      "pas "
      "de mot à mot : rends le sens comme un locuteur natif le dirait. Pour le chinois "
      "traditionnel "
      ": usage de Taïwan (台灣用語, ex. 影片, 軟體, 資訊). Pour le chinois simplifié : usage de "
      "Chine "
      "continentale.";
  EXPECT_EQ(translationPrompt(request, titles), expected);
}

TEST(SentencePrompts, TranslationOfAWholeFrenchSentenceHasNoPieceOrChineseLines) {
  TranslationRequest request;
  request.text = "Il pleut des cordes.";
  request.sourceCode = "fr";
  request.targets = {"polonais"};
  request.targetCodes = {"pl"};
  request.answerLanguageName = "polonais";
  const std::string prompt = translationPrompt(request, AITitles(texts().loc, "fr"));
  EXPECT_TRUE(
      prompt.starts_with("Le texte suivant est en français. Traduis-le de façon naturelle "
                         "en : polonais. "));
  EXPECT_TRUE(prompt.ends_with("expression.\n\nTexte (français) : Il pleut des cordes."));
  EXPECT_EQ(prompt.find("MORCEAU"), std::string::npos);
  EXPECT_EQ(prompt.find("Pour le chinois"), std::string::npos);
}

TEST(SentencePrompts, AnalysisOfJapaneseInASentence) {
  AnalysisRequest request;
  request.text = "食べてしまった";
  request.sourceCode = "ja";
  request.answerLanguageName = "français";
  request.sentence = "ケーキを全部食べてしまった。";
  const std::string expected =
      "Décortique ce texte en japonais (avec la lecture en kana) pour un apprenant. Réponds en "
      "français, sans question ni remarque préalable.\nStructure sur UNE ligne (éléments séparés "
      "par « + », chacun avec son rôle).\nPuis 3 à 6 lignes « • mot = sens ICI · nature » pour "
      "les mots clés.\n« Grammaire : » le point de grammaire principal, expliqué simplement avec "
      "un mini exemple.\n« Expression : … = … » : l'expression ou la structure clé, COMPLÈTE "
      "telle qu'elle apparaît (« … » seulement au milieu).\nSi ce texte n'a pas de sens tel quel "
      "(mot coupé, erreur de lecture de l'écran) ou si tu n'es pas sûr, commence par UNE ligne « "
      "🤔 … » qui le dit et donne le texte probable (ex. « 🤔 识户 n'est pas un mot : sans "
      "doute 识"
      "广, dans 见多识广 »), puis décortique le texte probable.\nCe texte fait partie de la phrase "
      ": « ケーキを全部食べてしまった。 ». Explique-le dans ce contexte. Écris ces titres "
      "exactement "
      "comme indiqué (ils sont déjà dans la langue de réponse), suivis de « : ».\n\n食べてしまった";
  EXPECT_EQ(analysisPrompt(request, AITitles(texts().loc, "fr")), expected);
}

TEST(SentencePrompts, AnalysisOfSimplifiedChineseAskForPinyinAndNoSentenceLine) {
  AnalysisRequest request;
  request.text = "见多识广";
  request.sourceCode = "zh";
  request.answerLanguageName = "russe";
  const AITitles titles(texts().loc, "ru");
  const std::string prompt = analysisPrompt(request, titles);
  EXPECT_TRUE(
      prompt.starts_with("Décortique ce texte en chinois (caractères simplifiés) (avec le "
                         "pinyin) pour un apprenant. Réponds en russe,"));
  EXPECT_NE(prompt.find("\nСтруктура sur UNE ligne"), std::string::npos);
  EXPECT_NE(prompt.find("« Грамматика : »"), std::string::npos);
  EXPECT_NE(prompt.find("« Выражение : … = … »"), std::string::npos);
  EXPECT_EQ(prompt.find("fait partie de la phrase"), std::string::npos);
}

TEST(SentencePrompts, Correction) {
  const std::string expected =
      "Corrige cette phrase écrite en anglais. Garde la même langue (anglais) pour la phrase "
      "corrigée. Réponds exactement ainsi :\n1re ligne : la phrase corrigée en entier (si elle est "
      "déjà correcte, recopie-la et ajoute « ✓ »).\nPuis une ligne vide, puis UN seul point de "
      "grammaire (le plus important), expliqué simplement en français, en 2 phrases maximum. Pas "
      "de titre, pas de liste de toutes les fautes.\n\nPhrase : She don't like apples.";
  EXPECT_EQ(correctionPrompt("She don't like apples.", "anglais", "français"), expected);
}

TEST(SentencePrompts, SourceNames) {
  struct Case {
    const char* code;
    bool traditional;
    const char* translation;
    const char* analysis;
  };
  for (const Case& c : {
           Case{"zh", false, "chinois (mandarin, caractères simplifiés)",
                "chinois (caractères simplifiés)"},
           Case{"zh", true, "chinois (mandarin, caractères traditionnels)",
                "chinois (caractères traditionnels)"},
           Case{"zh-Hant", false, "chinois (mandarin, caractères traditionnels)",
                "chinois (caractères traditionnels)"},
           Case{"ja", false, "japonais", "japonais"},
           Case{"th", false, "thaï", "thaï"},
           Case{"ru", false, "russe", "russe"},
       }) {
    SCOPED_TRACE(c.code);
    EXPECT_EQ(translationSourceName(c.code, c.traditional), c.translation);
    EXPECT_EQ(analysisSourceName(c.code, c.traditional), c.analysis);
  }
}

}  // namespace
}  // namespace vesko
