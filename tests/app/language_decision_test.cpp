// Which language the word under the pointer is read in, and which studied-nowhere language a read
// reports instead.

#include <gtest/gtest.h>

#include <string>

#include "app/word_chooser.h"
#include "support/fake_language_data.h"
#include "support/temp_dir.h"
#include "text/unicode.h"

namespace vesko {
namespace {

using testing::FakeDictionary;
using testing::FakeHeadwords;
using testing::FakeLanguageData;
using testing::FakeRecognizer;

Snapshot studying(std::string_view languages, std::string prefLatin = "fr",
                  std::string prefHan = "zh") {
  Snapshot snapshot;
  snapshot.zh = languages.find("zh") != std::string_view::npos;
  snapshot.ja = languages.find("ja") != std::string_view::npos;
  snapshot.th = languages.find("th") != std::string_view::npos;
  snapshot.fr = languages.find("fr") != std::string_view::npos;
  snapshot.en = languages.find("en") != std::string_view::npos;
  snapshot.ru = languages.find("ru") != std::string_view::npos;
  snapshot.pl = languages.find("pl") != std::string_view::npos;
  snapshot.prefLatin = std::move(prefLatin);
  snapshot.prefHan = std::move(prefHan);
  return snapshot;
}

// UTF-16 index of the first `at` in `text`.
std::ptrdiff_t indexOf(const std::u16string& text, std::string_view at) {
  auto position = text.find(*text::fromUtf8(at));
  EXPECT_NE(position, std::u16string::npos) << "test row names a missing spot";
  return static_cast<std::ptrdiff_t>(position);
}

class LanguageDecisionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    polish_.add("kot", "cat").add("to", "this").add("zdrowie", "health");
    data_.dictionaries[Language::pl] = &polish_;
    data_.headwordSets[Language::en] = &english_;
    data_.headwordSets[Language::fr] = &french_;
    data_.languageRecognizer = &recognizer_;
  }

  FakeDictionary polish_;
  FakeHeadwords english_{"cat", "house", "the", "to", "c'mon", "health"};
  FakeHeadwords french_{"maison", "chat", "the"};
  FakeRecognizer recognizer_;
  FakeLanguageData data_;
  CEDict cedict_;
  SkippedLanguage skipped_;
  WordChooser chooser_{cedict_, data_, skipped_};
};

TEST_F(LanguageDecisionTest, EveryBranch) {
  struct Row {
    const char* name;
    const char* text;
    const char* at;  // the pointer is on the first occurrence; "" for index -1
    const char* languages;
    const char* prefLatin;
    const char* prefHan;
    std::vector<LanguageGuess> guesses;
    const char* expected;  // "" for no result
    const char* skipped;   // "" when the read skips nothing
  };
  const std::vector<Row> rows = {
      {"negative index", "cat", "", "en", "fr", "zh", {}, "", ""},
      {"Han, Chinese only", "我学习", "学", "zh", "fr", "zh", {}, "zh", ""},
      {"Han, Japanese only", "我学习", "学", "ja", "fr", "zh", {}, "ja", ""},
      {"Han, both, prefer Chinese", "我学习", "学", "zh,ja", "fr", "zh", {}, "zh", ""},
      {"Han, both, prefer Japanese", "我学习", "学", "zh,ja", "fr", "ja", {}, "ja", ""},
      {"one kana anywhere sends Han to Japanese",
       "学习する",
       "学",
       "zh,ja",
       "fr",
       "zh",
       {},
       "ja",
       ""},
      {"kana under the pointer", "すし", "す", "zh,ja", "fr", "zh", {}, "ja", ""},
      {"half-width katakana", "ｽｼ", "ｽ", "ja", "fr", "zh", {}, "ja", ""},
      {"kana without Japanese is skipped as Chinese",
       "すし",
       "す",
       "zh,fr",
       "fr",
       "zh",
       {},
       "",
       "zh"},
      {"Han studied nowhere", "学习", "学", "fr", "fr", "zh", {}, "", "zh"},
      {"iteration mark with Japanese", "人々", "々", "ja", "fr", "zh", {}, "ja", ""},
      {"iteration mark without Japanese is no ideograph",
       "人々",
       "々",
       "zh",
       "fr",
       "zh",
       {},
       "",
       "zh"},
      {"Han outside the BMP", "𠀀", "𠀀", "zh", "fr", "zh", {}, "zh", ""},
      {"Latin with only Chinese studied", "cat", "c", "zh", "fr", "zh", {}, "", ""},
      {"a digit is no letter", "a 12", "1", "fr,en", "fr", "zh", {}, "", ""},
      {"punctuation is no letter", "a, b", ",", "fr", "fr", "zh", {}, "", ""},
      {"Thai", "ภาษาไทย", "ษ", "th", "fr", "zh", {}, "th", ""},
      {"Thai vowel mark", "ภาษาไทย", "ไ", "th", "fr", "zh", {}, "th", ""},
      {"Thai not studied", "ภาษาไทย", "ภ", "fr", "fr", "zh", {}, "", "th"},
      {"Cyrillic", "привет", "в", "ru", "fr", "zh", {}, "ru", ""},
      {"Cyrillic not studied", "привет", "п", "en", "fr", "zh", {}, "", "ru"},
      {"Greek is no studied script", "λόγος", "λ", "fr,en", "fr", "zh", {}, "", ""},
      {"Polish diacritic", "żółw", "ż", "pl,en", "fr", "zh", {}, "pl", ""},
      {"Polish diacritic, Polish not studied", "mały żółw", "w", "fr", "fr", "zh", {}, "", "pl"},
      {"na zdrowie has no diacritic", "na zdrowie", "z", "en", "fr", "zh", {}, "en", ""},
      {"Polish headword only", "kot", "k", "pl,en", "fr", "zh", {}, "pl", ""},
      {"Polish and English headword", "to", "t", "pl,en", "fr", "zh", {}, "en", ""},
      {"Polish by the recogniser",
       "Wczoraj byliśmy w kinie z kolegami",
       "kinie",
       "pl,en",
       "fr",
       "zh",
       {{"pl", 0.85}},
       "pl",
       ""},
      {"recogniser not sure enough",
       "Wczoraj byliśmy w kinie z kolegami",
       "kinie",
       "pl,en",
       "fr",
       "zh",
       {{"pl", 0.79}},
       "en",
       ""},
      {"sentence too short for the recogniser",
       "w kinie",
       "kinie",
       "pl,en",
       "fr",
       "zh",
       {{"pl", 0.99}},
       "en",
       ""},
      {"elision, French studied", "l'avion", "a", "fr,en", "fr", "zh", {}, "fr", ""},
      {"elision, only English studied", "l'avion", "v", "en", "fr", "zh", {}, "", "fr"},
      {"c'mon is no elision", "c'mon", "m", "fr,en", "fr", "zh", {}, "en", ""},
      {"English only", "maison", "m", "en", "fr", "zh", {}, "en", ""},
      {"French only", "house", "h", "fr", "fr", "zh", {}, "fr", ""},
      {"both, English headword", "the house", "house", "fr,en", "fr", "zh", {}, "en", ""},
      {"both, French headword", "la maison", "m", "fr,en", "en", "zh", {}, "fr", ""},
      {"both, headword in both, preference", "the", "t", "fr,en", "en", "zh", {}, "en", ""},
      {"both, unknown word, confident guess",
       "zorglub is what they kept saying all day",
       "z",
       "fr,en",
       "fr",
       "zh",
       {{"en", 0.95}, {"fr", 0.05}},
       "en",
       ""},
      {"both, unknown word, short text keeps preference",
       "zorglub",
       "z",
       "fr,en",
       "fr",
       "zh",
       {{"en", 0.95}, {"fr", 0.05}},
       "fr",
       ""},
      {"neither studied, English headword", "house", "h", "th", "fr", "zh", {}, "", "en"},
      {"neither studied, French headword", "maison", "m", "ru", "fr", "zh", {}, "", "fr"},
      {"neither studied, guess", "zorglub", "z", "ja", "en", "zh", {}, "", "en"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    recognizer_.guesses = row.guesses;
    skipped_.clear();
    const std::u16string text = *text::fromUtf8(row.text);
    const std::ptrdiff_t index = row.at[0] ? indexOf(text, row.at) : -1;
    auto language =
        chooser_.detect(text, index, studying(row.languages, row.prefLatin, row.prefHan));
    EXPECT_EQ(language ? languageCode(*language) : "", std::string_view(row.expected));
    auto skipped = skipped_.get();
    EXPECT_EQ(skipped ? languageCode(*skipped) : "", std::string_view(row.skipped));
  }
}

TEST_F(LanguageDecisionTest, IndexPastTheEndOrEmptyTextGivesNothing) {
  const Snapshot all = studying("zh,ja,th,fr,en,ru,pl");
  EXPECT_FALSE(chooser_.detect(u"cat", 3, all));
  EXPECT_FALSE(chooser_.detect(u"", 0, all));
  EXPECT_FALSE(chooser_.detect(u"cat", -1, all));
  EXPECT_FALSE(skipped_.get());
}

TEST_F(LanguageDecisionTest, PolishTest) {
  struct Row {
    const char* text;
    const char* at;
    std::vector<LanguageGuess> guesses;
    bool polish;
  };
  const std::vector<Row> rows = {
      {"żółw", "ż", {}, true},
      {"Ź", "Ź", {}, true},  // a diacritic counts before the length
      {"na zdrowie", "n", {}, false},
      {"k", "k", {}, false},
      {"kot", "o", {}, true},
      {"KOT", "K", {}, true},
      {"to", "t", {}, false},
      {"health", "h", {{"pl", 0.99}}, false},
      {"On mówi, że jutro przyjdzie do domu", "jutro", {{"pl", 0.8}}, true},
      {"On mówi, że jutro przyjdzie do domu", "jutro", {{"fr", 0.9}}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    recognizer_.guesses = row.guesses;
    const std::u16string text = *text::fromUtf8(row.text);
    EXPECT_EQ(chooser_.isPolish(text, indexOf(text, row.at)), row.polish);
  }
}

TEST_F(LanguageDecisionTest, HeadwordTest) {
  struct Row {
    const char16_t* word;
    const char* expected;
  };
  const Row rows[] = {
      {u"cat", "en"}, {u"CAT", "en"},   {u"maison", "fr"}, {u"Maison", "fr"},
      {u"the", ""},   {u"zorglub", ""}, {u"a", ""},        {u"", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(text::toUtf8(row.word));
    auto language = chooser_.headwordLanguage(row.word);
    EXPECT_EQ(language ? languageCode(*language) : "", std::string_view(row.expected));
  }
}

TEST_F(LanguageDecisionTest, TextGuess) {
  const std::u16string longText = u"this text is long enough to be trusted";
  struct Row {
    const char* name;
    std::u16string text;
    const char* preference;
    std::vector<LanguageGuess> guesses;
    const char* expected;
  };
  const std::vector<Row> rows = {
      {"no hypothesis gives French", longText, "de", {}, "fr"},
      {"no hypothesis keeps the preference", longText, "en", {}, "en"},
      {"equal probabilities give French", longText, "de", {{"en", 0.5}, {"fr", 0.5}}, "fr"},
      {"English ahead, no preference", u"short", "de", {{"en", 0.6}, {"fr", 0.4}}, "en"},
      {"confident English beats French", longText, "fr", {{"en", 0.95}, {"fr", 0.05}}, "en"},
      {"exactly 0.9 is confident", longText, "fr", {{"en", 0.9}, {"fr", 0.1}}, "en"},
      {"not confident enough", longText, "fr", {{"en", 0.89}, {"fr", 0.11}}, "fr"},
      {"confident but short", u"twenty-four characters!!", "fr", {{"en", 0.99}}, "fr"},
      {"25 characters are enough", u"twenty-five characters!!!", "fr", {{"en", 0.99}}, "en"},
      {"confident French beats English", longText, "en", {{"fr", 0.95}, {"en", 0.05}}, "fr"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    recognizer_.guesses = row.guesses;
    EXPECT_EQ(chooser_.guessLatin(row.text, row.preference), row.expected);
  }
}

TEST_F(LanguageDecisionTest, NoRecogniserNeverCallsOne) {
  data_.languageRecognizer = nullptr;
  EXPECT_EQ(chooser_.guessLatin(u"whatever text there is here, long enough", "en"), "en");
  EXPECT_FALSE(chooser_.isPolish(u"Wczoraj byliśmy w kinie z kolegami", 17));
}

}  // namespace
}  // namespace vesko
