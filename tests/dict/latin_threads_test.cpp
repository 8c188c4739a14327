// The English and French dictionaries are loaded by whichever thread looks a word up first: many
// threads asking at once must see one load and the same answers.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "dict/english_conjugator.h"
#include "dict/french_conjugator.h"
#include "dict/wordnet_dictionary.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using vesko::testing::testData;

TEST(LatinThreadsTest, FirstLookupsRaceSafely) {
  WordNetDictionary wordnet(testData("wordnet"));
  EnglishConjugator english(wordnet);
  FrenchConjugator french(testData("verbiste/verbs-fr.xml"),
                          testData("verbiste/conjugation-fr.xml"));
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 50; ++i) {
        if ((t + i) % 2 == 0) {
          const auto base = english.baseForm("went");
          if (!base || base->word != "go") ++wrong;
          if (wordnet.lookup("dog").size() != 1) ++wrong;
        } else {
          const auto base = french.baseForm("allé");
          if (!base || base->word != "aller") ++wrong;
        }
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrong.load(), 0);
}

}  // namespace
}  // namespace vesko
