// The language recogniser on the real model, as scripts/fetch-dicts-en-fr leaves it, with a few
// clear sentences. Skipped when the model is absent, unless VESKO_REQUIRE_DATA is set.
// Defines its own main(): Debian's libfasttext.so exports one that would win over gtest_main's.

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "dict/fasttext_recognizer.h"
#include "settings/resources.h"

namespace vesko {
namespace {

class RecognizerDataTest : public ::testing::Test {
 protected:
  static std::filesystem::path model() { return Resources::folder() / "lang/lid.176.ftz"; }
  void SetUp() override {
    if (std::filesystem::exists(model())) return;
    if (std::getenv("VESKO_REQUIRE_DATA")) FAIL() << model() << " missing";
    GTEST_SKIP() << "run scripts/fetch-dicts-en-fr for the language model";
  }
};

TEST_F(RecognizerDataTest, ClearSentences) {
  FastTextRecognizer recognizer(model());
  ASSERT_FALSE(recognizer.loadError());
  constexpr std::array<std::string_view, 3> kAll = {"pl", "fr", "en"};
  struct Row {
    const char* text;
    const char* language;
  };
  const Row rows[] = {
      {"Le chat dort sur le canapé depuis ce matin.", "fr"},
      {"The cat has been sleeping on the sofa all morning.", "en"},
      {"Kot śpi na kanapie od samego rana.", "pl"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    const auto guesses = recognizer.hypotheses(row.text, kAll, 3);
    ASSERT_FALSE(guesses.empty());
    EXPECT_EQ(guesses[0].language, row.language);
    EXPECT_GT(guesses[0].probability, 0.9);
    double total = 0;
    for (const auto& g : guesses) total += g.probability;
    EXPECT_NEAR(total, 1.0, 1e-6);
  }
  // Constrained: a Polish sentence judged between French and English only still gets an answer,
  // and at most the number asked for.
  constexpr std::array<std::string_view, 2> kFrEn = {"fr", "en"};
  const auto two = recognizer.hypotheses("Kot śpi na kanapie od samego rana.", kFrEn, 1);
  ASSERT_EQ(two.size(), 1u);
  EXPECT_NE(two[0].language, "pl");
  EXPECT_TRUE(recognizer.hypotheses("The cat sleeps.", {}, 3).empty());
}

TEST(FastTextRecognizerTest, MissingModelGivesNoHypothesis) {
  FastTextRecognizer recognizer(std::filesystem::path(VESKO_TEST_DATA) / "no-such-model.ftz");
  EXPECT_TRUE(recognizer.loadError());
  constexpr std::array<std::string_view, 2> kFrEn = {"fr", "en"};
  EXPECT_TRUE(recognizer.hypotheses("Le chat dort.", kFrEn, 2).empty());
}

TEST(FastTextRecognizerTest, NotAModelIsAnErrorNotACrash) {
  FastTextRecognizer recognizer(std::filesystem::path(VESKO_TEST_DATA) / "verbiste/verbs-fr.xml");
  EXPECT_TRUE(recognizer.loadError());
}

}  // namespace
}  // namespace vesko

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
