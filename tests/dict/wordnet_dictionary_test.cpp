// The English dictionary, headword set and conjugator on a WordNet-shaped fixture
// (tests/data/wordnet), whose index holds malformed lines of each kind.

#include "dict/wordnet_dictionary.h"

#include <gtest/gtest.h>

#include "dict/english_conjugator.h"
#include "dict/word_list_headwords.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using vesko::testing::testData;

TEST(WordNetDictionaryTest, GlossesWithTheirPartOfSpeechMostTaggedFirst) {
  WordNetDictionary wordnet(testData("wordnet"));
  ASSERT_FALSE(wordnet.loadError());
  const auto go = wordnet.lookup("go");
  ASSERT_EQ(go.size(), 1u);
  EXPECT_EQ(go[0].headword, "go");
  // Tagged 40 times as a verb, twice as a noun: the verb senses lead, in the index's order.
  const std::vector<std::string> defs = {"(v) change location; move, travel, or proceed",
                                         "(v) follow a certain course",
                                         "(n) a board game for two players"};
  EXPECT_EQ(go[0].defs, defs);
}

TEST(WordNetDictionaryTest, LookupsAndMalformedLines) {
  WordNetDictionary wordnet(testData("wordnet"));
  struct Row {
    const char* word;
    std::size_t defs;  // 0: not found
  };
  const Row rows[] = {
      {"dog", 1},        {"big", 1},   {"large", 1},  {"hot dog", 1},  // spaces for underscores
      {"united states", 1},
      {"hot_dog", 1},  // the index's own spelling is found too
      {"Dog", 0},      // callers lowercase
      {"cat", 0},      // synset count disagrees with the offsets
      {"cow", 0},      // a word where a number belongs
      {"broken", 0},   // too few fields
      {"ghost", 0},    // its offset points at no synset line
      {"1", 0},        // a licence header line
      {"", 0},         {"dogs", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    const auto entries = wordnet.lookup(row.word);
    EXPECT_EQ(entries.empty() ? 0u : entries[0].defs.size(), row.defs);
  }
  EXPECT_TRUE(wordnet.contains("ghost"));  // a lemma, even if its gloss cannot be read
  EXPECT_FALSE(wordnet.contains("cat"));
}

TEST(WordNetDictionaryTest, MissingFolderIsAnErrorNotACrash) {
  vesko::testing::TempDir dir;
  WordNetDictionary wordnet(dir.path() / "none");
  EXPECT_TRUE(wordnet.loadError());
  EXPECT_TRUE(wordnet.lookup("dog").empty());
  EXPECT_FALSE(wordnet.contains("dog"));
  EnglishConjugator conjugator(wordnet);
  EXPECT_FALSE(conjugator.baseForm("was"));
}

TEST(EnglishConjugatorTest, BaseForms) {
  WordNetDictionary wordnet(testData("wordnet"));
  EnglishConjugator conjugator(wordnet);
  struct Row {
    const char* word;
    const char* base;  // "": no base form
    const char* note;
  };
  const Row rows[] = {
      {"was", "be", "forme conjuguée de « be »"},
      {"Was", "be", "forme conjuguée de « be »"},
      {"went", "go", "forme conjuguée de « go »"},
      {"left", "leave", "forme conjuguée de « leave »"},
      {"running", "run", "participe présent ou gérondif de « run »"},  // a noun lemma too
      {"stopped", "stop", "passé ou participe passé de « stop »"},
      {"leaves", "leave", "3e personne du singulier de « leave »"},  // the verb before "leaf"
      {"goes", "go", "3e personne du singulier de « go »"},
      {"better", "good", "comparatif de « good »"},
      {"best", "good", "superlatif de « good »"},
      {"bigger", "big", "comparatif de « big »"},
      {"largest", "large", "superlatif de « large »"},
      {"nicer", "nice", "comparatif de « nice »"},
      {"dogs", "dog", "pluriel de « dog »"},
      {"things", "thing", "pluriel de « thing »"},
      {"boxes", "box", "pluriel de « box »"},
      {"churches", "church", "pluriel de « church »"},
      {"cities", "city", "pluriel de « city »"},
      {"men", "man", "pluriel de « man »"},
      {"children", "child", "pluriel de « child »"},
      // Must not match.
      {"dog", "", ""},       // a lemma already
      {"go", "", ""},
      {"glasses", "", ""},   // a noun lemma: not the plural of "glass"
      {"us", "", ""},        // a noun lemma: not "u"
      {"worse", "", ""},     // its base "bad" is no lemma of the fixture
      {"lonely", "", ""},    // an exception line without a base
      {"sings", "", ""},     // "sing" is no lemma
      {"s", "", ""},
      {"xyzzy", "", ""},
      {"", "", ""},
      {"\xC3\x28", "", ""},  // invalid UTF-8
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

TEST(WordListHeadwordsTest, LowercaseWordsOfTheListAndTheDictionary) {
  vesko::testing::TempDir dir;
  const auto list = dir.write("words.txt", "apple\nParis\ndog's\nzebra\r\n\xC3\x28\nÉcole\nété\n\n");
  WordNetDictionary wordnet(testData("wordnet"));
  WordListHeadwords headwords(list, wordnet);
  ASSERT_FALSE(headwords.loadError());
  struct Row {
    const char* word;
    bool found;
  };
  const Row rows[] = {
      {"apple", true}, {"zebra", true},  {"été", true},
      {"dog", true},    // from WordNet
      {"hot dog", true},
      {"paris", false}, {"Paris", false},  // capitalised: a name
      {"dog's", false}, {"école", false}, {"", false}, {"pear", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    EXPECT_EQ(headwords.contains(row.word), row.found);
  }
}

TEST(WordListHeadwordsTest, MissingListLeavesTheDictionary) {
  vesko::testing::TempDir dir;
  WordNetDictionary wordnet(testData("wordnet"));
  WordListHeadwords headwords(dir.path() / "none.txt", wordnet);
  EXPECT_TRUE(headwords.loadError());
  EXPECT_TRUE(headwords.contains("dog"));
  EXPECT_FALSE(headwords.contains("apple"));
}

}  // namespace
}  // namespace vesko
