// The French conjugator and the Verbiste reader on a few verbs in Verbiste's format
// (tests/data/verbiste), with entries that do not fit and files that are not Verbiste's.

#include "dict/french_conjugator.h"

#include <gtest/gtest.h>

#include "dict/verbiste_xml.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using vesko::testing::testData;

FrenchConjugator fixture() {
  return FrenchConjugator(testData("verbiste/verbs-fr.xml"),
                          testData("verbiste/conjugation-fr.xml"));
}

TEST(FrenchConjugatorTest, Infinitives) {
  const auto conjugator = fixture();
  ASSERT_FALSE(conjugator.loadError());
  struct Row {
    const char* word;
    const char* base;  // "": no infinitive
    const char* note;
  };
  const Row rows[] = {
      {"mangeaient", "manger", "indicatif imparfait de « manger »"},
      {"Mangeaient", "manger", "indicatif imparfait de « manger »"},
      {"mangeons", "manger", "indicatif présent de « manger »"},
      {"allé", "aller", "participe passé de « aller »"},
      {"allées", "aller", "participe passé de « aller »"},
      {"vont", "aller", "indicatif présent de « aller »"},
      {"irons", "aller", "indicatif futur de « aller »"},
      {"aime", "aimer", "indicatif présent, subjonctif présent ou impératif présent de « aimer »"},
      {"aimions", "aimer", "indicatif imparfait ou subjonctif présent de « aimer »"},
      {"aimant", "aimer", "participe présent de « aimer »"},
      {"suis", "être", "indicatif présent de « être » (aussi de « suivre »)"},
      {"suivons", "suivre", "indicatif présent ou impératif présent de « suivre »"},
      {"été", "être", "participe passé de « être »"},
      {"hais", "haïr", "indicatif présent de « haïr »"},  // one of two variants
      {"haïs", "haïr", "indicatif présent ou participe passé de « haïr »"},
      // Must not match.
      {"manger", "", ""},   // an infinitive
      {"aimer", "", ""},
      {"chantons", "", ""}, // its template is missing
      {"finissons", "", ""},
      {"finons", "", ""},   // "finir" does not end as "aim:er" says
      {"table", "", ""},
      {"mangeai", "", ""},  // a tense the fixture's template leaves empty
      {"x", "", ""},
      {"", "", ""},
      {"\xC3\x28", "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    const auto base = conjugator.baseForm(row.word);
    if (*row.base == '\0') {
      EXPECT_FALSE(base) << base->word;
    } else {
      ASSERT_TRUE(base);
      EXPECT_EQ(base->word, row.base);
      EXPECT_EQ(base->note, row.note);
    }
  }
}

TEST(FrenchConjugatorTest, BadFilesAreAnErrorNotACrash) {
  struct Row {
    const char* verbs;
    const char* conjugation;
  };
  const Row rows[] = {
      {"bad/04-verbiste-unclosed.xml", "verbiste/conjugation-fr.xml"},
      {"bad/05-verbiste-other-root.xml", "verbiste/conjugation-fr.xml"},
      {"verbiste/verbs-fr.xml", "bad/05-verbiste-other-root.xml"},
      {"verbiste/verbs-fr.xml", "verbiste/no-such-file.xml"},
      {"verbiste/conjugation-fr.xml", "verbiste/verbs-fr.xml"},  // swapped
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.verbs) + " " + row.conjugation);
    FrenchConjugator conjugator(testData(row.verbs), testData(row.conjugation));
    EXPECT_TRUE(conjugator.loadError());
    EXPECT_FALSE(conjugator.baseForm("mangeaient"));
  }
}

TEST(VerbisteXmlTest, TemplatesAndStems) {
  const auto templates = parseVerbisteTemplates(
      "<conjugation-fr><template name='aim:er'><indicative><present><p><i>e</i></p><p></p>"
      "<p><i>ais</i><i>aie</i></p></present></indicative><participle><past-participle>"
      "<p><i> é </i></p></past-participle></participle></template><template/></conjugation-fr>");
  ASSERT_TRUE(templates);
  ASSERT_EQ(templates->size(), 1u);  // the unnamed one is skipped
  const auto& endings = (*templates)[0].endings;
  ASSERT_EQ(endings.size(), 4u);
  EXPECT_EQ(endings[2].ending, "aie");
  EXPECT_EQ(endings[3].tense, FrenchTense::pastParticiple);
  EXPECT_EQ(endings[3].ending, "é");

  EXPECT_EQ(verbisteStem("aimer", "aim:er"), "aim");
  EXPECT_EQ(verbisteStem("aller", ":aller"), "");
  EXPECT_FALSE(verbisteStem("finir", "aim:er"));
  EXPECT_FALSE(verbisteStem("aimer", "aimer"));
  EXPECT_FALSE(parseVerbisteVerbs("<verbs-fr><v>"));
  EXPECT_FALSE(parseVerbisteVerbs(""));
}

}  // namespace
}  // namespace vesko
