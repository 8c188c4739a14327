// Synonym lists, the "📚" related words and the theme classification, read from answers as the
// models write them, and the synonym and theme prompts as sent.

#include "ai/word_lists.h"

#include <gtest/gtest.h>

namespace vesko {
namespace {

TEST(SynonymAnswer, NearWordsAndOppositesWithReadings) {
  const std::string answer =
      "≈ 漂亮 (piàoliang) = joli ; 美丽 (měilì) = beau ; 好看（hǎokàn）= agréable à voir\n"
      "≠ 丑 (chǒu) = laid；难看 (nánkàn) = moche";
  auto read = parseSynonyms(answer);
  ASSERT_TRUE(read);
  ASSERT_EQ(read->near.size(), 3u);
  EXPECT_EQ(read->near[0], (ListedWord{"漂亮", "piàoliang", "joli"}));
  EXPECT_EQ(read->near[2], (ListedWord{"好看", "hǎokàn", "agréable à voir"}));
  ASSERT_EQ(read->opposites.size(), 2u);
  EXPECT_EQ(read->opposites[1], (ListedWord{"难看", "nánkàn", "moche"}));
}

TEST(SynonymAnswer, WithoutOppositesLineOnlyNearWords) {
  auto read = parseSynonyms("Voici :\n≈ : rapide = fast; vite = quickly ;\n");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->near, (std::vector<ListedWord>{{"rapide", "", "fast"}, {"vite", "", "quickly"}}));
  EXPECT_TRUE(read->opposites.empty());
}

TEST(SynonymAnswer, NoListOrAMessageGivesNothing) {
  EXPECT_FALSE(parseSynonyms("Je ne connais pas ce mot."));
  EXPECT_FALSE(parseSynonyms("⚠️ ≈ pas de réseau"));
}

TEST(SynonymPrompt, ChineseWordInItsSentence) {
  SynonymRequest request{"漂亮", "zh", "她今天很漂亮。", "anglais"};
  const std::string expected =
      "Phrase : « 她今天很漂亮。 »\n\nDonne, pour le mot « 漂亮 » tel qu'il est employé dans cette "
      "phrase, des mots de la même langue (la même langue que le mot), adaptés au sens qu'il a ici "
      ":\nune ligne qui commence par « ≈ » avec 3 à 5 synonymes ou mots proches, du plus courant "
      "au "
      "plus rare ;\nune ligne qui commence par « ≠ » avec 2 ou 3 contraires (s'il n'y en a pas, "
      "n'écris pas cette ligne).\nChaque mot : mot (pinyin) = sens court en anglais, séparés par « "
      "; ». Rien d'autre. Jamais « 漂亮 » lui-même dans ces listes. Exemple : « ≈ 漂亮 (piàoliang) "
      "= "
      "joli ; 美丽 (měilì) = beau » puis « ≠ 丑 (chǒu) = laid ». Même écriture que « 漂亮 » "
      "(simplifié ou traditionnel).";
  EXPECT_EQ(synonymPrompt(request), expected);
}

TEST(SynonymPrompt, JapaneseWordAloneAsksForKana) {
  const std::string prompt = synonymPrompt({"速い", "ja", std::nullopt, "français"});
  EXPECT_TRUE(prompt.starts_with("\nDonne, pour le mot « 速い », des mots"));
  EXPECT_NE(prompt.find("Chaque mot : mot (lecture en kana) = sens court en français"),
            std::string::npos);
  EXPECT_EQ(prompt.find("Exemple"), std::string::npos);
}

TEST(ConceptWords, LineAndItsAnswer) {
  const std::string line = conceptWordsLine("環保", "zh", "français");
  EXPECT_EQ(
      line,
      "\nAjoute enfin une ligne qui commence par « 📚 » : 3 mots ou expressions en chinois avec "
      "le pinyin entre parenthèses, courants et utiles à apprendre, liés à ce concept (pas « "
      "環保 » lui-même), chacun puis « = » et son sens court en français, séparés par « ; » (ex. "
      "« 📚 回收 (huíshōu) = recycler ; 垃圾 (lājī) = déchets ; 再生紙 (zàishēngzhǐ) = papier "
      "recyclé »). Écris-les dans la même écriture que « 環保 » (simplifié ou traditionnel).");
  const std::string answer =
      "環保 : protection de l'environnement.\n📚 回收 (huíshōu) = recycler ; 垃圾 (lājī) = déchets";
  auto words = parseConceptWords(answer);
  ASSERT_TRUE(words);
  EXPECT_EQ(*words, (std::vector<ListedWord>{{"回收", "huíshōu", "recycler"},
                                             {"垃圾", "lājī", "déchets"}}));
  EXPECT_EQ(withoutConceptWords(answer), "環保 : protection de l'environnement.");
  EXPECT_FALSE(parseConceptWords("pas de liste"));
}

TEST(Themes, PromptNumbersTheElements) {
  EXPECT_EQ(themePrompt({"voyage", "nourriture"}, {"机场", "pomme"}),
            "Classe chaque mot ou phrase dans UN thème parmi : voyage, nourriture, autre.\nRéponds "
            "seulement avec une ligne par élément, au format « numéro: thème », sans rien d'autre."
            "\n\n1. 机场\n2. pomme\n");
}

TEST(Themes, ReadingAssignsOnlyKnownNumbersAndThemes) {
  const std::vector<std::string> themes{"voyage", "nourriture"};
  auto read = parseThemes("1: voyage\n2：nourriture\n7: voyage\n0: voyage\n3: cuisine\n4: autre",
                          themes, 4);
  EXPECT_TRUE(read.readable);
  EXPECT_EQ(read.themes, (std::vector<std::optional<std::string>>{"voyage", "nourriture",
                                                                  std::nullopt, "autre"}));
}

TEST(Themes, UnreadableAnswers) {
  for (const char* answer : {"Je ne sais pas.", "⚠️ 1: voyage", "", "voyage: 1"}) {
    SCOPED_TRACE(answer);
    auto read = parseThemes(answer, {"voyage"}, 1);
    EXPECT_FALSE(read.readable);
    EXPECT_FALSE(read.themes[0]);
  }
}

}  // namespace
}  // namespace vesko
